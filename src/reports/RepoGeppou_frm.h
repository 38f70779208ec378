#pragma once
// 販売商品月次控: a closing month and day, a customer (0 for all), a destination and whether
// product codes are split; the month's quantities by day in the 36-column grid, F9 prints a
// sheet for each customer (or destination), F10 makes a spreadsheet of the grid.
#include <memory>
#include "reports/QtSummaryForm.h"

class RepoGeppou;
struct GeppouRequest;

class RepoGeppou_frm : public SummaryForm {
    Q_OBJECT
public:
    RepoGeppou_frm();
    ~RepoGeppou_frm() override;
    QLabel* sTorNamae() const { return sTorNamae_; }
    QLabel* sNouNamae() const { return sNouNamae_; }

protected:
    void runCommand() override;
    void clearForm() override;
    void printReport() override;
    void exportSheet() override;
    std::optional<QString> lookup(QLineEdit* box) override;
    void boxLeft(QLineEdit* box) override;

private:
    // The request of the fields; false (said, and the field focused) when one is missing.
    bool request(GeppouRequest* r);

    std::unique_ptr<RepoGeppou> report_;
    QLabel* sTorNamae_ = nullptr;
    QLabel* sNouNamae_ = nullptr;
};
