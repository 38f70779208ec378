#pragma once
// 帳端: sales, returns, discounts, expenses, cost and gross margin of a free date range by
// customer (URI), supplier (KAI) or staff member (TAN), figures cut off at any date without
// waiting for the monthly ledgers. The same object serves the grid, the print and the sheet.
#include <memory>
#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include "pageout/ReportForm.h"
#include "reports/MeiT.h"
#include "reports/SummaryGrid.h"

class ExcelBook;
class ReportRows;

class Chouha : public ReportForm {
public:
    // "URI", "KAI" or "TAN"; anything else is taken as "URI".
    explicit Chouha(const QString& code);
    ~Chouha() override;
    QString code() const { return code_; }
    bool purchases() const { return code_ == QLatin1String("KAI"); }
    // "売上明細表", "仕入明細表" or "担当者別売上": the file name part of the sheet.
    QString titleWord() const;
    // The target year's text and the word: the title of the screen and the print.
    QString title() const;
    // The three orders of the list box.
    QStringList orderTexts() const;
    // The ten grid heads.
    QStringList gridHeads() const;

    // Runs the list for from..to in order 1..3 for the session's office.
    MeiTResult run(const QDate& from, const QDate& to, int order, QString* error);
    const QList<MeiTRow>& rows() const { return rows_; }
    int order() const { return order_; }

    // The grid of the last run, closed by "合計"; only the heads when the run found nothing.
    SummaryGrid grid() const;

    // The rows of the last run, in its order, on the current page output, with page and
    // running totals. False when the page failed (told).
    bool print();
    // The spreadsheet: the grid's heads up to "粗利", then a row for each partner.
    void fillBook(ExcelBook& book) const;
    // The screen's export, named by the title word; and the print command's, to `path`.
    bool exportSheet() const;
    bool exportTo(const QString& path, QString* error) const;

    // @0: the net of the current row, for the print.
    QVariant alpha(short& n) override;

private:
    QString code_;
    QList<MeiTRow> rows_;
    int order_ = 1;
    std::unique_ptr<ReportRows> printRows_;
};
