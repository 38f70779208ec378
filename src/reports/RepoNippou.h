#pragma once
// 商品別集計: what the sales (or purchase) lines of a date range come to by product: quantity,
// mean unit price and amount, closed by a total. Read straight from the slip lines, so it
// needs no ledger processing. The same object fills the screen's grid (or one in memory for
// the print command), prints it on fanfold paper and hands it to the spreadsheet.
#include <memory>
#include <QDate>
#include <QString>
#include "pageout/ReportForm.h"

class Grd;
class ReportRows;

class RepoNippou : public ReportForm {
public:
    // "Uri" is sales; any other code purchases.
    explicit RepoNippou(const QString& menuKey);
    ~RepoNippou() override;
    bool sales() const { return sales_; }
    QString title() const;          // "商品別売上集計" / "商品別仕入集計"
    QString partnerLabel() const;   // "得意先" / "仕入先"
    QString partnerTable() const;   // "Tor" / "Sir", the lookup of the partner field

    // Reads the sums by product of the lines dated from..to, of one partner or, with 0, of
    // all. False with *error in the system's wording when the store failed.
    bool load(const QDate& from, const QDate& to, qint64 partner, QString* error);
    // Products found by the last load.
    int count() const;
    // "<from>より<to>まで", the subtitle of the print.
    QString period() const;

    // The grid's five columns (GrdInit, GrdAddColumn, GrdSetHeaders).
    static void setUp(Grd& grd);
    // Fills the set-up grid from the rows of the last load, with the "合計" row. Once per load.
    bool fill(Grd& grd);
    // The grid on "15" paper, on the current page output.
    bool print(Grd& grd) const;

    // 0: the product code without leading zeros; 1: the mean unit price of the current row.
    QVariant alpha(short& n) override;

private:
    bool sales_;
    std::unique_ptr<ReportRows> rows_;
    QDate from_, to_;
};
