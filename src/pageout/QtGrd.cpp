#include "pageout/QtGrd.h"
#include <QHeaderView>
#include <QTableWidget>
#include "pageout/QtPageOutputs.h"
#include "pageout/QtPageSurface.h"

namespace {

constexpr double kTwipsPerInch = 1440;

Qt::Alignment qtAlignment(int a)
{
    return (a == 7 ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

}  // namespace

QtGridCells::QtGridCells(QTableWidget* table) : table_(table)
{
    table_->verticalHeader()->hide();
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
}

double QtGridCells::pixels(double twips) const { return twips * table_->logicalDpiX() / kTwipsPerInch; }

int QtGridCells::rows() const { return table_->rowCount() + 1; }

void QtGridCells::setRows(int n) { table_->setRowCount(qMax(0, n - 1)); }

int QtGridCells::cols() const { return table_->columnCount(); }

void QtGridCells::setCols(int n)
{
    table_->setColumnCount(qMax(0, n));
    align_.resize(qMax(0, n));
}

QString QtGridCells::text(int row, int col) const
{
    const QTableWidgetItem* item = row == 0 ? table_->horizontalHeaderItem(col) : table_->item(row - 1, col);
    return item ? item->text() : QString();
}

void QtGridCells::setText(int row, int col, const QString& text)
{
    if (col < 0 || col >= cols() || row < 0 || row >= rows()) return;
    if (row == 0) {
        auto* h = new QTableWidgetItem(text);
        h->setTextAlignment(qtAlignment(align_.value(col)));
        table_->setHorizontalHeaderItem(col, h);
        return;
    }
    QTableWidgetItem* item = table_->item(row - 1, col);
    if (!item) {
        item = new QTableWidgetItem;
        item->setTextAlignment(qtAlignment(align_.value(col)));
        table_->setItem(row - 1, col, item);
    }
    item->setText(text);
}

double QtGridCells::columnWidth(int col) const
{
    return table_->columnWidth(col) * kTwipsPerInch / table_->logicalDpiX();
}

void QtGridCells::setColumnWidth(int col, double twips) { table_->setColumnWidth(col, qRound(pixels(twips))); }

void QtGridCells::setRowHeight(int row, double twips)
{
    if (row == 0) table_->horizontalHeader()->setMinimumHeight(qRound(pixels(twips)));
    else table_->setRowHeight(row - 1, qRound(pixels(twips)));
}

void QtGridCells::setColumnAlignment(int col, int alignment)
{
    if (col < 0 || col >= align_.size()) return;
    align_[col] = alignment;
    for (int r = 0; r < table_->rowCount(); ++r)
        if (QTableWidgetItem* item = table_->item(r, col)) item->setTextAlignment(qtAlignment(alignment));
}

void QtGridCells::setCellAlignment(int row, int col, int alignment)
{
    if (row <= 0) return;
    QTableWidgetItem* item = table_->item(row - 1, col);
    if (!item) {
        item = new QTableWidgetItem;
        table_->setItem(row - 1, col, item);
    }
    item->setTextAlignment(qtAlignment(alignment));
}

void QtGridCells::setGridFont(const QString& name, double points)
{
    fontName_ = name;
    points_ = points;
    // The paper's family on the screen too: the forms' names are fixed-pitch there.
    QFont f(pageFont(name, 10).family());
    f.setPointSizeF(points);
    table_->setFont(f);
    table_->horizontalHeader()->setFont(f);
}

// Measured as the paper measures, not in the screen's hinted pixels: the columns set here are
// the columns printed.
double QtGridCells::textWidth(const QString& text) const
{
    return pageTextWidth(fontName_.isEmpty() ? table_->font().family() : fontName_, points_, text);
}
