#pragma once
// 商品別集計: what the sales (or purchase) lines of a date range come to by product: quantity,
// mean unit price and amount, closed by a total. Read straight from the slip lines, so it
// needs no ledger processing. The same object fills the screen's grid, the print and the sheet.
#include <QDate>
#include <QList>
#include <QString>
#include "pageout/ReportForm.h"
#include "reports/SummaryGrid.h"
#include "store/Money.h"

struct NippouRow {
    QString HinCode;
    QString aHinNamae;
    qint64 tSuu = 0;
    Money tUGaku;
};

class RepoNippou : public ReportForm {
public:
    // "Uri" is sales; any other code purchases.
    explicit RepoNippou(const QString& menuKey);
    bool sales() const { return sales_; }
    QString title() const;          // "商品別売上集計" / "商品別仕入集計"
    QString partnerLabel() const;   // "得意先" / "仕入先"
    QString partnerTable() const;   // "Tor" / "Sir", the lookup of the partner field

    // The sums by product of the lines dated from..to, of one partner or, with 0, of all.
    // False with *error in the system's wording when the store failed.
    bool load(const QDate& from, const QDate& to, qint64 partner, QString* error);
    const QList<NippouRow>& rows() const { return rows_; }
    // "<from>より<to>まで", the subtitle of the print.
    QString period() const;

    static QList<SummaryColumn> columns();
    // The grid of the loaded rows with its "合計" row.
    SummaryGrid grid();

    // 0: the product code without leading zeros; 1: the mean unit price of the current row.
    QVariant alpha(short& n) override;
    void setCurrentRow(int row) { current_ = row; }

private:
    bool sales_;
    QList<NippouRow> rows_;
    int current_ = -1;
    QDate from_, to_;
};
