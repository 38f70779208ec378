#include "pageout/Grd.h"
#include <QRegularExpression>
#include <algorithm>
#include <cmath>
#include "entry/Convert.h"
#include "entry/Dates.h"
#include "pageout/Excel.h"
#include "pageout/PageOutput.h"
#include "pageout/PageSurface.h"
#include "pageout/ReportForm.h"
#include "pageout/ReportRows.h"
#include "pageout/Vtml.h"
#include "pageout/VtmlState.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

namespace {

constexpr double kRowHeight = 320;
const QString kGridFont = QStringLiteral("ＭＳ ゴシック");

int whole(double v) { return int(std::nearbyint(v)); }

QVariant sheetValue(const QString& text)
{
    static const QRegularExpression number(QStringLiteral("^-?(\\d{1,3}(,\\d{3})+|\\d+)(\\.\\d+)?$"));
    const QString t = text.trimmed();
    if (t.isEmpty()) return {};
    if (!number.match(t).hasMatch()) return text;
    const QString digits = t.startsWith(QLatin1Char('-')) ? t.mid(1) : t;
    if (digits.size() > 1 && digits.startsWith(QLatin1Char('0')) && digits.at(1) != QLatin1Char('.')) return text;
    QString plain = t;
    plain.remove(QLatin1Char(','));
    return plain.toDouble();
}

}  // namespace

MemoryGridCells::MemoryGridCells(Measure measure) : measure_(std::move(measure)), font_(kGridFont) {}

void MemoryGridCells::setRows(int n)
{
    n = qMax(0, n);
    while (cells_.size() > n) cells_.removeLast();
    while (cells_.size() < n) cells_ << QStringList(QList<QString>(cols_));
}

void MemoryGridCells::setCols(int n)
{
    cols_ = qMax(0, n);
    for (QStringList& row : cells_) {
        while (row.size() > cols_) row.removeLast();
        while (row.size() < cols_) row << QString();
    }
    widths_.resize(cols_);
    align_.resize(cols_);
}

QString MemoryGridCells::text(int row, int col) const { return cells_.value(row).value(col); }

void MemoryGridCells::setText(int row, int col, const QString& text)
{
    if (row >= 0 && row < cells_.size() && col >= 0 && col < cols_) cells_[row][col] = text;
}

void MemoryGridCells::setColumnWidth(int col, double twips)
{
    if (col >= 0 && col < cols_) widths_[col] = twips;
}

void MemoryGridCells::setColumnAlignment(int col, int alignment)
{
    if (col >= 0 && col < cols_) align_[col] = alignment;
}

void MemoryGridCells::setGridFont(const QString& name, double points)
{
    font_ = name;
    points_ = points;
}

GrdPaper grdPaper(const QString& code)
{
    static const QList<QPair<QString, GrdPaper>> papers = {
        {QStringLiteral("B4y"), {35, 7200, 13000, QStringLiteral("<AREA>20640,14640")}},
        {QStringLiteral("A4y"), {32, 5860, 10580, QStringLiteral("<AREA>16800,12000")}},
        {QStringLiteral("B5y"), {27, 5100, 9220, QStringLiteral("<AREA>14640,10560")}},
        {QStringLiteral("A4t"), {35, 3120, 8000, QStringLiteral("<AREA>12000,16800")}},
        {QStringLiteral("B5t"), {35, 2400, 6720, QStringLiteral("<AREA>10560,14640")}},
        {QStringLiteral("15"), {40, 7200, 13000, QStringLiteral("<AREA>16800,14640")}},
    };
    for (const auto& p : papers)
        if (p.first == code) return p.second;
    return {};
}

Grd::Grd(GridCells* cells) : cells_(cells) {}

double Grd::factor()
{
    const double f = session().ScreenScale.toDouble();
    return f == 0 ? 1.0 : f;
}

void Grd::GrdInit(int cols)
{
    cells_->setCols(cols);
    cells_->setRows(1);
    cells_->setGridFont(kGridFont, 10 * factor());
    cells_->setRowHeight(0, kRowHeight * factor());
    columns_.clear();
    paper = QStringLiteral("B4y");
}

void Grd::GrdAddColumn(const GrdColumn& column)
{
    if (columns_.size() < kMaxColumns) columns_ << column;
}

void Grd::GrdSetHeaders()
{
    const double f = factor();
    cells_->setGridFont(kGridFont, 10 * f);
    if (cells_->cols() < columns_.size()) cells_->setCols(int(columns_.size()));
    for (int i = 0; i < columns_.size(); ++i) {
        GrdColumn& c = columns_[i];
        if (c.Kind == QLatin1String("S")) {
            cells_->setColumnAlignment(i, 1);
            c.Width = cells_->textWidth(QStringLiteral(" ")) * ToNum(c.Format) + c.Gap;
        } else {
            cells_->setColumnAlignment(i, 7);
            c.Width = cells_->textWidth(c.Format) + c.Gap;
        }
        cells_->setColumnWidth(i, c.Width * f);
        cells_->setText(0, i, c.Caption);
    }
}

bool Grd::GrdFill(ReportRows* rows, ReportForm* form)
{
    for (int i = 0; i < kResetSums; ++i) sums_[i] = Money();
    cells_->setRows(1);
    // A fill that stops part way leaves no half list to print or export: the heading only,
    // and the sums as they were before the first row.
    Money before[kSums];
    std::copy(std::begin(sums_), std::end(sums_), std::begin(before));
    auto stop = [&](const QString& message) {
        cells_->setRows(1);
        std::copy(std::begin(before), std::end(before), std::begin(sums_));
        Tell(message);
        return false;
    };
    if (!rows || !rows->ok()) return stop(rows ? rows->error() : QStringLiteral("エラー：一覧のデータが渡されていません。"));
    const double f = factor();
    int r = 0;
    while (rows->next()) {
        ++r;
        cells_->setRows(r + 1);
        cells_->setRowHeight(r, kRowHeight * f);
        for (int c = 0; c < columns_.size(); ++c) {
            const GrdColumn& col = columns_[c];
            const bool text = col.Kind == QLatin1String("S");
            QVariant v;
            if (col.Name.startsWith(QLatin1Char('@'))) {
                if (!form) return stop(QStringLiteral("エラー：項目「%1」の値を返す画面がありません。").arg(col.Name));
                short n = ToInt16(col.Name.mid(1));
                v = form->alpha(n);
                // A summed computed column asks alpha a second time, so alpha must have no side effects.
                if (!text && col.Total != 0 && c < kSums) {
                    short again = ToInt16(col.Name.mid(1));
                    sums_[c] += variantMoney(form->alpha(again));
                }
            } else {
                if (!rows->hasColumn(col.Name))
                    return stop(QStringLiteral("エラー：3265 項目「%1」が一覧のデータにありません。").arg(col.Name));
                v = rows->value(col.Name);
                if (!text && col.Total != 0 && c < kSums) sums_[c] += variantMoney(v);
            }
            if (text) {
                cells_->setCellAlignment(r, c, 1);
                cells_->setText(r, c, isMoneyVariant(v) ? v.value<Money>().toText() : v.toString());
            } else {
                cells_->setText(r, c, FixedValueText(v.isNull() ? QVariant(0) : v, col.Format));
            }
        }
    }
    if (!rows->ok()) return stop(rows->error());
    bool summed = false;
    for (int c = 1; c < columns_.size(); ++c) summed = summed || columns_[c].Total != 0;
    if (!summed) return true;
    const int last = cells_->rows();
    cells_->setRows(last + 1);
    cells_->setRowHeight(last, kRowHeight * f);
    cells_->setText(last, 0, QStringLiteral("合計"));
    for (int c = 1; c < columns_.size(); ++c) {
        const GrdColumn& col = columns_[c];
        if (col.Total != 0 && c < kSums) cells_->setText(last, c, FixedNumberText(sums_[c], col.Format));
        if (col.SumOp != 0 && form) cells_->setText(last, c, FixedValueText(form->SumOP(c), col.Format));
    }
    return true;
}

bool Grd::GrdPrint(const QString& title, const QString& subtitle, int mode)
{
    mode_ = mode;
    const int total = cells_->rows();
    if (total <= 1) {
        Tell(QStringLiteral("エラー：印刷する行がありません。"));
        return false;
    }
    const GrdPaper p = grdPaper(paper);
    const double f = factor();
    const QDate today = vtml().today.isValid() ? vtml().today : QDate::currentDate();
    auto freeLine = [](int x, int y, const QString& text) {
        VtmlAddLine(QStringLiteral("<FREE>%1,%2,").arg(x).arg(y) + text);
    };
    int pageNo = 1;
    int dataRow = 1;
    for (;;) {
        VtmlClear();
        VtmlAddLine(QStringLiteral("<XOFFSET>720"));
        VtmlAddLine(QStringLiteral("<FONT>") + kGridFont);
        VtmlAddLine(QStringLiteral("<SIZE>10"));
        int x = 240;
        for (int c = 0; c < cells_->cols(); ++c) {
            freeLine(x, 1440, cells_->text(0, c));
            x = whole(x + cells_->columnWidth(c) / f);
        }
        VtmlAddLine(QStringLiteral("<SIZE>18"));
        freeLine(p.titleX, 120, title);
        VtmlAddLine(QStringLiteral("<SIZE>12"));
        freeLine(2400, 720, subtitle);
        freeLine(p.dateX, 240, QStringLiteral("日付") + FormatDate(today, 0));
        freeLine(p.dateX, 480, QStringLiteral("ページ ") + QString::number(pageNo));
        VtmlAddLine(QStringLiteral("<SIZE>10"));
        VtmlAddLine(QStringLiteral("<GRDBKGRD>"));
        ++pageNo;
        bool last = false;
        for (int k = 0; p.rowsPerPage == 0 || k < p.rowsPerPage; ++k) {
            const int y = k * 300 + 1680;
            x = 240;
            for (int c = 0; c < cells_->cols(); ++c) {
                freeLine(x, y, cells_->text(dataRow, c));
                x = whole(x + cells_->columnWidth(c) / f);
            }
            ++dataRow;
            if (dataRow >= total) {
                last = true;
                break;
            }
        }
        // The printer keeps the paper chosen in its dialog; the preview and a PDF take the
        // paper's page, given after the text: the surface takes a late AREA.
        PageOutput* out = currentPageOutput();
        const bool ownPaper = out && out->surface()->hasOwnPaper();
        if ((session().PreviewMode || !ownPaper) && !p.area.isEmpty()) VtmlAddLine(p.area);
        if (!VtmlPrint()) return false;
        if (last) return true;
    }
}

void putCellsOnSheet(const GridCells& cells, ExcelBook& book)
{
    for (int r = 0; r < cells.rows(); ++r)
        for (int c = 0; c < cells.cols(); ++c) {
            const QString t = cells.text(r, c);
            book.setCell(r + 1, c + 1, r == 0 ? QVariant(t) : sheetValue(t));
        }
}

bool Grd::GrdExport(const QString& name)
{
    ExcelBook book;
    if (!book.open()) return false;
    putCellsOnSheet(*cells_, book);
    return book.save(name, nullptr, nullptr);
}
