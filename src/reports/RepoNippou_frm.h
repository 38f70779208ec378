#pragma once
// 商品別集計 for sales (MenuKey "Uri") or purchases (any other key): a date range and a
// partner (0 for all), the sums by product in the grid, F9 prints them on fanfold paper,
// F10 makes a spreadsheet.
#include <memory>
#include "reports/QtSummaryForm.h"

class Grd;
class RepoNippou;

class RepoNippou_frm : public SummaryForm {
    Q_OBJECT
public:
    RepoNippou_frm();
    ~RepoNippou_frm() override;
    QLabel* weekDayS() const { return weekDayS_; }
    QLabel* weekDayE() const { return weekDayE_; }
    QLabel* sTorNamae() const { return sTorNamae_; }
    QLabel* partnerCaption() const { return partnerCaption_; }
    RepoNippou& report() { return *report_; }

protected:
    void runCommand() override;
    void clearForm() override;
    void printReport() override;
    void exportSheet() override;
    std::optional<QString> lookup(QLineEdit* box) override;
    void boxLeft(QLineEdit* box) override;

private:
    std::unique_ptr<RepoNippou> report_;
    std::unique_ptr<Grd> grd_;
    QLabel* weekDayS_ = nullptr;
    QLabel* weekDayE_ = nullptr;
    QLabel* sTorNamae_ = nullptr;
    QLabel* partnerCaption_ = nullptr;
};
