#pragma once
// What the partner reports share: rows read whole from the store and held for the screen and
// the page driver, the fiscal year texts, the dates of a month of the year, and the
// spreadsheet a report hands to the export.
#include <QDate>
#include <QHash>
#include <QList>
#include <QSqlDatabase>
#include <QSqlError>
#include <QString>
#include <QStringList>
#include <QVariant>
#include "pageout/ReportRows.h"
#include "pageout/VtmlField.h"
#include "store/Money.h"

// Rows of one statement held in memory. The screen pages through them by index; the page
// driver reads them forward through ReportRows. A held set never sees what another station
// writes after it was read.
class HeldRows : public ReportRows {
public:
    HeldRows() = default;
    HeldRows(QStringList columns, QList<QVariantList> rows);

    int size() const { return int(rows_.size()); }
    bool isEmpty() const { return rows_.isEmpty(); }
    // The column of row i; invalid for Null, for a row out of range and for an unknown column.
    // "Tto.TorCode" finds TorCode: the store names a joined column without its table.
    QVariant at(int row, const QString& column) const;
    Money money(int row, const QString& column) const { return Money::fromStore(at(row, column)); }
    const QStringList& columns() const { return columns_; }

    // Columns the page driver reads as Money: the store keeps money in ten-thousandths.
    void setMoneyColumns(const QStringList& columns);

    // Back before the first row, for the next forward read.
    void rewind() { cur_ = -1; }
    bool next() override;
    QVariant value(const QString& column) const override;
    bool hasColumn(const QString& column) const override;
    int count() const override { return size(); }
    int current() const { return cur_; }

private:
    int columnIndex(const QString& column) const;

    QStringList columns_;
    QHash<QString, int> index_;   // lower-case name -> first column of that name
    QList<bool> money_;           // by column
    QList<QVariantList> rows_;
    int cur_ = -1;
};

// Runs a statement and holds all its rows. False with "エラー：" and the store's text on failure.
bool readHeldRows(const QSqlDatabase& db, const QString& sql, const QVariantList& binds, HeldRows* rows,
                  QString* error);


// Year of a month of the fiscal year: the months before the first month belong to the next
// calendar year.
int fiscalCalendarYear(int month);
// A day of a month of the fiscal year; a day past the month's end falls back to its last day.
QDate fiscalDate(int month, int day);
// The dates of closing month `month` for the company's closing day, as the lists of all
// partners read a month. A month the closing rule gives no range for (13, or a closing day that
// February does not have) gives two invalid dates, which match no row.
void fiscalMonthRange(int month, QDate* from, QDate* to);

// Numbers as the screens and sheets show them: Null counts as 0.
QString moneyText(const QVariant& storeValue, const QString& pattern);
QString moneyText(Money value, const QString& pattern);

// One sheet of a spreadsheet export: cell values by row and column (both from 1) and the
// number formats asked for on single cells.
struct ReportSheet {
    QList<QVariantList> rows;                       // rows[0] is sheet row 1
    QHash<QPair<int, int>, QString> formats;        // (row, column) -> "yyyy/mm/dd"
    void add(const QVariantList& row) { rows << row; }
};

// A report's page: its fields and its lines, in the order the page language takes them.
struct ReportDocument {
    QList<VtmlField> fields;
    QStringList lines;
};

// A field record as the reports fill it: the numbers the previous field left stand unless set.
VtmlField reportField(const QString& caption, const QString& name, const QString& kind, const QString& format,
                      short gap, bool total, short fontSize = 0);

// A text drawn as a line of the page language: a plain line unless the text holds ">", which
// would cut it, then behind an empty tag (an unknown tag draws its argument as it stands).
QString textLine(const QString& text);
