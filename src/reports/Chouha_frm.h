#pragma once
// 帳端 for the code the menu passes ("TAN"; "URI" and "KAI" serve as well): a date range and
// an order, sales, returns, discounts, expenses, cost and margin by partner in the grid; F9
// prints the list, F10 makes a spreadsheet.
#include <memory>
#include "reports/QtSummaryForm.h"

class Chouha;

class Chouha_frm : public SummaryForm {
    Q_OBJECT
public:
    Chouha_frm();
    ~Chouha_frm() override;
    QComboBox* cbox() const { return cbox_; }
    QLabel* weekdays() const { return weekdays_; }
    QLabel* weekdaye() const { return weekdaye_; }

protected:
    void runCommand() override;
    void clearForm() override;
    void printReport() override;
    void exportSheet() override;

private:
    bool haveRows();

    std::unique_ptr<Chouha> report_;
    QComboBox* cbox_ = nullptr;
    QLabel* weekdays_ = nullptr;
    QLabel* weekdaye_ = nullptr;
};
