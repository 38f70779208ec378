#pragma once
// The grid of a list screen: GridCells over a QTableWidget. Row 0 is the table's heading;
// sizes in twips become pixels of the screen.
#include <QList>
#include <QString>
#include "pageout/Grd.h"

class QTableWidget;

class QtGridCells : public GridCells {
public:
    explicit QtGridCells(QTableWidget* table);
    int rows() const override;
    void setRows(int n) override;
    int cols() const override;
    void setCols(int n) override;
    QString text(int row, int col) const override;
    void setText(int row, int col, const QString& text) override;
    double columnWidth(int col) const override;
    void setColumnWidth(int col, double twips) override;
    void setRowHeight(int row, double twips) override;
    void setColumnAlignment(int col, int alignment) override;
    void setCellAlignment(int row, int col, int alignment) override;
    void setGridFont(const QString& name, double points) override;
    double textWidth(const QString& text) const override;
    QTableWidget* table() const { return table_; }

private:
    double pixels(double twips) const;
    QTableWidget* table_;
    QList<int> align_;
    QString fontName_;
    double points_ = 10;
};
