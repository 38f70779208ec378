#include "reports/SummaryGrid.h"
#include "entry/Convert.h"
#include "store/Money.h"

QString SummaryGrid::cell(int row, int column) const
{
    if (column < 0 || column >= columns.size()) return {};
    if (row == 0) return columns[column].Caption;
    if (row < 1 || row > rows.size()) return {};
    return rows[row - 1].value(column);
}

bool SummaryGrid::rightAligned(int column) const
{
    return column >= 0 && column < columns.size() && columns[column].Kind != QLatin1String("S");
}

QList<QStringList> SummaryGrid::table() const
{
    QList<QStringList> out;
    for (int r = 0; r < rowCount(); ++r) {
        QStringList line;
        for (int c = 0; c < columnCount(); ++c) line << cell(r, c);
        out << line;
    }
    return out;
}

void fillGrid(SummaryGrid& grid, int count, const GridValue& value)
{
    grid.rows.clear();
    QList<Money> sums(grid.columnCount());
    for (int r = 0; r < count; ++r) {
        QStringList cells;
        for (int c = 0; c < grid.columnCount(); ++c) {
            const SummaryColumn& col = grid.columns[c];
            const QVariant v = value(r, col);
            if (col.Kind == QLatin1String("S")) {
                cells << v.toString();
                continue;
            }
            cells << FormatRight(v.toDouble(), col.Format);
            if (col.Total) sums[c] += Money::fromDouble(v.toDouble());
        }
        grid.rows << cells;
    }
    bool anyTotal = false;
    for (int c = 1; c < grid.columnCount(); ++c) anyTotal = anyTotal || grid.columns[c].Total;
    if (!anyTotal) return;
    QStringList last(grid.columnCount());
    last[0] = QStringLiteral("合計");
    for (int c = 1; c < grid.columnCount(); ++c)
        if (grid.columns[c].Total) last[c] = FormatRight(sums[c], grid.columns[c].Format);
    grid.rows << last;
}
