#pragma once
// The grids the monthly copy and the cut-off list fill themselves, cell by cell: row 0 the
// captions, then the rows as drawn. They go into the screen's table (or cells in memory for
// the print command) through the grid print's cells, so the screen, the print and the
// spreadsheet show the same texts.
#include <QList>
#include <QString>
#include <QStringList>

class GridCells;

struct SummaryColumn {
    QString Caption;
    bool Right = false;    // numbers stand flush right
    int Width = 0;         // twips before the screen factor
};

struct SummaryGrid {
    QList<SummaryColumn> columns;
    QList<QStringList> rows;   // the data rows and the closing "合計" row
    int RowHeight = 320;       // twips before the screen factor

    int columnCount() const { return int(columns.size()); }
    // Rows with the caption row.
    int rowCount() const { return int(rows.size()) + 1; }
    QString cell(int row, int column) const;
    // Puts the grid into `cells`: sizes by the session's screen factor, alignment, texts.
    void toCells(GridCells& cells) const;
};

// Writes every cell to the spreadsheet file `path` as the grid export does (a text that
// reads as a number goes as that number); for the print command, which names its file.
// False with *error when the file was not written.
bool exportCells(const GridCells& cells, const QString& path, QString* error);
