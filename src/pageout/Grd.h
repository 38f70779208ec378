#pragma once
// Grid print: a form declares its columns once, the grid is filled from a record set, the grid
// is what the clerk sees, and printing turns its cells into pages of the page language (one
// FREE line a cell); export writes the cells to a spreadsheet. The grid itself is a table
// widget on screen (QtGrd.h) or cells in memory for a print without a screen.
#include <QString>
#include <QStringList>
#include <functional>
#include "store/Money.h"

class ReportRows;
class ReportForm;

struct GrdColumn {
    QString Caption;   // row 0
    QString Name;      // column of the rows, or "@n" for the form's alpha(n)
    QString Kind;      // "S" or "N"
    QString Format;    // S: width as a count of blanks; N: numeric pattern
    double Width = 0;  // worked out by GrdSetHeaders (twips, before the screen factor)
    short Gap = 0;     // added to the measured width
    short Total = 0;   // non-zero: summed into the last row
    short SumOp = 0;   // non-zero: the last row's cell comes from the form's SumOP(index)
};

// The table control the grid is shown in. Row 0 is the heading row; sizes are twips.
class GridCells {
public:
    virtual ~GridCells() = default;
    virtual int rows() const = 0;
    virtual void setRows(int n) = 0;
    virtual int cols() const = 0;
    virtual void setCols(int n) = 0;
    virtual QString text(int row, int col) const = 0;
    virtual void setText(int row, int col, const QString& text) = 0;
    virtual double columnWidth(int col) const = 0;
    virtual void setColumnWidth(int col, double twips) = 0;
    virtual void setRowHeight(int row, double twips) = 0;
    // 1 left, 7 right.
    virtual void setColumnAlignment(int col, int alignment) = 0;
    virtual void setCellAlignment(int row, int col, int alignment) = 0;
    virtual void setGridFont(const QString& name, double points) = 0;
    // Width of a text in the grid's font, in twips.
    virtual double textWidth(const QString& text) const = 0;
};

// Cells in memory: for the print command and tests. `measure` gives a text's width in twips
// in a font (pageTextWidth of QtPageOutputs.h on a machine with fonts).
class MemoryGridCells : public GridCells {
public:
    using Measure = std::function<double(const QString& font, double points, const QString& text)>;
    explicit MemoryGridCells(Measure measure);
    int rows() const override { return int(cells_.size()); }
    void setRows(int n) override;
    int cols() const override { return cols_; }
    void setCols(int n) override;
    QString text(int row, int col) const override;
    void setText(int row, int col, const QString& text) override;
    double columnWidth(int col) const override { return widths_.value(col); }
    void setColumnWidth(int col, double twips) override;
    void setRowHeight(int, double) override {}
    void setColumnAlignment(int col, int alignment) override;
    void setCellAlignment(int, int, int) override {}
    void setGridFont(const QString& name, double points) override;
    double textWidth(const QString& text) const override { return measure_(font_, points_, text); }
    int columnAlignment(int col) const { return align_.value(col); }

private:
    Measure measure_;
    QString font_;
    double points_ = 10;
    int cols_ = 0;
    QList<QStringList> cells_;
    QList<double> widths_;
    QList<int> align_;
};

// The row limit, the title and date positions and the preview's page of a paper code.
struct GrdPaper {
    int rowsPerPage = 0;   // 0: no limit
    int titleX = 0;
    int dateX = 0;
    QString area;          // "<AREA>w,h", or empty
};
GrdPaper grdPaper(const QString& code);

class ExcelBook;
// The grid's cells onto a sheet from A1: the heading row as text, a cell that reads as a
// number as that number, a code with leading zeros as text.
void putCellsOnSheet(const GridCells& cells, ExcelBook& book);

class Grd {
public:
    explicit Grd(GridCells* cells);
    GridCells* cells() const { return cells_; }

    // One heading row, `cols` columns, "ＭＳ ゴシック" at 10 x the screen factor, paper "B4y".
    void GrdInit(int cols);
    void GrdAddColumn(const GrdColumn& column);
    void GrdSetHeaders();
    // Fills the grid from `rows`, with the "合計" row when a column after the first is summed.
    // False when the rows failed (told).
    bool GrdFill(ReportRows* rows, ReportForm* form);
    // Prints every row, a page of the paper's rows at a time, on the current page output.
    // False when a page failed (told).
    bool GrdPrint(const QString& title, const QString& subtitle, int mode);
    // The cells to a spreadsheet named by `name` (ExcelBook::save). False when not written.
    bool GrdExport(const QString& name);

    QString paper = QStringLiteral("B4y");
    const QList<GrdColumn>& columns() const { return columns_; }
    Money sum(int i) const { return i >= 0 && i < kSums ? sums_[i] : Money(); }
    // The session's screen factor; 0 counts as 1.
    static double factor();

private:
    static constexpr int kSums = 100;
    static constexpr int kResetSums = 40;
    static constexpr int kMaxColumns = 100;
    GridCells* cells_;
    QList<GrdColumn> columns_;
    Money sums_[kSums];
    int mode_ = 0;
};
