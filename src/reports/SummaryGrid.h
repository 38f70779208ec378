#pragma once
// What the grid of a summary screen shows, cell by cell: row 0 the captions, then the rows as
// drawn. The screen, the grid print and the spreadsheet all take the cells from here, so what
// a clerk sees is what is printed and exported.
#include <functional>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

struct SummaryColumn {
    QString Caption;
    QString Name;          // column of the rows, or "@n" for the report's alpha(n)
    QString Kind;          // "S" text, "N" number
    QString Format;        // S: width as a count of blanks; N: number picture
    short Gap = 120;
    bool Total = false;
    int Width = 0;         // twips before the screen factor; 0: measured from Format and Gap
};

struct SummaryGrid {
    QList<SummaryColumn> columns;
    QList<QStringList> rows;   // the data rows and the closing "合計" row

    int columnCount() const { return int(columns.size()); }
    // Rows with the caption row.
    int rowCount() const { return int(rows.size()) + 1; }
    QString cell(int row, int column) const;
    bool rightAligned(int column) const;
    // The cells as text rows, row 0 the captions.
    QList<QStringList> table() const;
};

// The value of a cell: text for kind S, a number in yen for kind N.
using GridValue = std::function<QVariant(int row, const SummaryColumn& column)>;
// Fills `grid` with `count` rows column by column: text as it stands, numbers in their picture
// at its fixed width. When a column other than the first is totalled, a last row "合計" holds
// the sums, added up exactly as currency.
void fillGrid(SummaryGrid& grid, int count, const GridValue& value);
