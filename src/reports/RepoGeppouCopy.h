#pragma once
// The printed monthly copy: a page of its own for a customer (or one of its destinations),
// one line for each product and price with the month's quantities in three-character day
// columns, the month's sales and tax from the customer ledger above them. A customer without
// sales in the month gets no sheet.
#include <memory>
#include <QDate>
#include <QString>
#include "pageout/ReportForm.h"
#include "reports/RepoGeppou.h"

class ReportRows;

class MonthlyCopy : public ReportForm {
public:
    MonthlyCopy();
    ~MonthlyCopy() override;

    // One sheet, on the current page output. `r` gives the month, closing day and split.
    // False when the store or the page failed (*error holds the store's message; a page's
    // failure has been told). *printed says whether the customer had lines.
    bool PrintMonthlyCopy(const GeppouRequest& r, qint64 customer, qint64 dest, bool* printed, QString* error);
    // Every sheet of the request (RepoGeppou::sheets). *sheets counts those printed.
    static bool printAll(const GeppouRequest& r, int* sheets, QString* error);

    // The day heads over the period: each day of the month in three characters.
    static QString dayHeader(const QDate& from, const QDate& to);

    // 0: the code without leading zeros; 1: the 31 day quantities in three characters each;
    // 2: the mean unit price.
    QVariant alpha(short& n) override;

private:
    std::unique_ptr<ReportRows> rows_;
};
