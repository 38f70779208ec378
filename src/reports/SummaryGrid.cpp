#include "reports/SummaryGrid.h"
#include <QRegularExpression>
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

namespace {

// As the grid export: "1,234" and "-5.50" are numbers, a code with leading zeros stays text.
QVariant sheetValue(const QString& text)
{
    static const QRegularExpression number(QStringLiteral("^-?(\\d{1,3}(,\\d{3})+|\\d+)(\\.\\d+)?$"));
    const QString t = text.trimmed();
    if (t.isEmpty()) return {};
    if (!number.match(t).hasMatch()) return text;
    const QString digits = t.startsWith(QLatin1Char('-')) ? t.mid(1) : t;
    if (digits.size() > 1 && digits.startsWith(QLatin1Char('0')) && digits.at(1) != QLatin1Char('.')) return text;
    return QString(t).remove(QLatin1Char(',')).toDouble();
}

} // namespace

bool exportCells(const GridCells& cells, const QString& path, QString* error)
{
    ExcelBook book;
    for (int r = 0; r < cells.rows(); ++r)
        for (int c = 0; c < cells.cols(); ++c) {
            const QString t = cells.text(r, c);
            book.setCell(r + 1, c + 1, r == 0 ? QVariant(t) : sheetValue(t));
        }
    return book.saveAs(path, error);
}
