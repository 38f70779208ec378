#include "reports/SummaryGrid.h"
#include "pageout/Excel.h"
#include "pageout/Grd.h"

QString SummaryGrid::cell(int row, int column) const
{
    if (column < 0 || column >= columns.size()) return {};
    if (row == 0) return columns[column].Caption;
    if (row < 1 || row > rows.size()) return {};
    return rows[row - 1].value(column);
}

void SummaryGrid::toCells(GridCells& cells) const
{
    const double f = Grd::factor();
    cells.setCols(columnCount());
    cells.setRows(rowCount());
    cells.setGridFont(QStringLiteral("ＭＳ ゴシック"), 10 * f);
    for (int c = 0; c < columnCount(); ++c) {
        cells.setColumnAlignment(c, columns[c].Right ? 7 : 1);
        cells.setColumnWidth(c, columns[c].Width * f);
    }
    for (int r = 0; r < rowCount(); ++r) {
        cells.setRowHeight(r, (r == 0 ? 320 : RowHeight) * f);
        for (int c = 0; c < columnCount(); ++c) {
            cells.setText(r, c, cell(r, c));
            if (r > 0) cells.setCellAlignment(r, c, columns[c].Right ? 7 : 1);
        }
    }
}

bool exportCells(const GridCells& cells, const QString& path, QString* error)
{
    ExcelBook book;
    putCellsOnSheet(cells, book);
    return book.saveAs(path, error);
}
