#pragma once
// The lists of one closing month by partner, read from the ledger heads and their month rows:
// the balance lists and the sales lists. Both take the month and the closing day, read the
// same statement, page 15 rows by a bar, print through the page language and export a sheet.
#include <QList>
#include <QString>
#include <QStringList>
#include "reports/LedgerReport.h"

class PartnerMonthList {
public:
    static constexpr int PageRows = 15;

    // `code` is the menu's: "Uza", "UzaDtl" or "Kza"; `figures` the amount columns of a row.
    PartnerMonthList(const QString& code, int figures);
    virtual ~PartnerMonthList() = default;

    QString code;
    int month = 0;
    int sime = 0;
    HeldRows rows;
    int rowCount = 0;
    int barMax = 0;

    bool supplier() const { return code == QLatin1String("Kza"); }

    // The checks of the two fields: "" when the text passes, else the message.
    static QString checkMonth(const QString& text, int* month);
    static QString checkSime(const QString& text, int* sime);

    // Reads the list of the current office and adds up its sums. No rows: "対象がありません。".
    // False when the store failed; the error has then been told.
    bool read(int month, int sime);
    // Empties the rows and the sums (F1).
    void clear();

    // The screen's title: the year and the name of the list.
    QString title() const { return yearTitle() + sheetName(); }
    virtual QStringList heads() const = 0;
    // One screen line of row r, in the order of the heads: code, name, then the figures.
    QStringList screenRow(int r) const;
    // The line "合計".
    QStringList totals() const;

    // The page: its fields and lines over the rows, and the computed cells.
    virtual ReportDocument printDocument() const = 0;
    virtual Money alphaValue(int n, int r) const = 0;
    // The spreadsheet and the name part of its file.
    virtual ReportSheet sheet() const = 0;
    virtual QString sheetName() const = 0;

    // "2026年度 4月 20日締分": the period line of the print.
    QString periodText() const;
    // Money of row r; Null counts as 0.
    Money m(int r, const char* column) const;
    // "Tto.NouCode" isn't 0: a destination's own row.
    bool destinationRow(int r) const;
    // The partner code, with "-" and the destination's code on a destination's row.
    QString hCode(int r) const;
    // The name as the screen shows it: the destination's name behind the customer's.
    QString torName(int r) const;

protected:
    // The amounts of row r as the screen shows them.
    virtual QList<Money> screenFigures(int r) const = 0;
    // Adds row r into the sums; by default its screen figures.
    virtual void addRow(int r);
    // HGaku + NGaku + KGaku: the one column of returns, discounts and the rest.
    Money returnsEtc(int r) const;
    QList<Money> sums;
    QString yearTitle() const;
    // The page's lines: a title, the period, the page number and the date, then the rows.
    QStringList pageLines(const QString& spacedTitle) const;
    // The printed code and name columns, and an amount column summed into the totals.
    QList<VtmlField> partnerFields() const;
    static VtmlField amountField(const QString& caption, const QString& name, short gap);
};

// The statement of the list of `code`: the month, its condition, the office and, unless the
// closing day is 0, the closing day.
QString partnerMonthStatement(const QString& code, int sime, QVariantList* binds, int month, short EigCode);
