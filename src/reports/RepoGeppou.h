#pragma once
// 販売商品月次控: a customer's closing month, one row for each product and unit price, the
// quantities spread over the days of the period. The spreading is one grouped statement with
// a conditional sum for each of the 31 days from the period's start, so a day without sales
// is blank and the days past a short period stay blank.
#include <array>
#include <QDate>
#include <QList>
#include <QPair>
#include <QString>
#include <QVariant>
#include "reports/SummaryGrid.h"
#include "store/Money.h"

struct GeppouRequest {
    int month = 0;         // closing month
    int sime = 0;          // closing day
    qint64 customer = 0;   // 0: all customers
    qint64 dest = 0;       // 0: every destination; the print of all customers splits on any other
    bool split = false;    // 商品分解 1: whole codes; 0: codes grouped by their first 11 characters
};

struct GeppouRow {
    QString aHinCode;
    QString aNamae;
    qint64 tSuuT = 0;
    Money tGaku;
    Money UTanka;
    std::array<QVariant, 31> days;   // quantity of each day from the start; null: no line that day
};

class RepoGeppou {
public:
    static constexpr int Days = 31;

    // The message for an empty month or closing day, "" when both are there.
    static QString checkFields(const QString& month, const QString& sime);
    // The period of closing month `month` for closing day `sime` in the target year (the next
    // calendar year for months before the year's first). False when there is no such period.
    static bool period(int month, int sime, QDate* from, QDate* to);

    // The rows of the request, by code and price. False with *error when the store failed;
    // no period or no lines give no rows.
    bool load(const GeppouRequest& r, QString* error);
    const QList<GeppouRow>& rows() const { return rows_; }
    QDate from() const { return from_; }
    QDate to() const { return to_; }
    // Days of the period (the rest of the 31 columns read past its end).
    int periodDays() const;

    // The 36 columns: code, name, 31 days numbered from the start, quantity, price, amount;
    // a last row "合計" with the amount.
    SummaryGrid grid() const;
    static SummaryGrid emptyGrid();

    // The sheets the print makes: (customer, destination). One customer: that one. All:
    // every customer closing on `sime`, by code; with a destination asked for, one sheet for
    // each of the customer's destinations, or destination 0 when it has none.
    static QList<QPair<qint64, qint64>> sheets(const GeppouRequest& r, QString* error);

private:
    QList<GeppouRow> rows_;
    QDate from_, to_;
};
