// The report data driver: measuring the fields, the heading row, the data rows of a page,
// and the page, running and group totals.
#include "entry/Convert.h"
#include "pageout/PageSurface.h"
#include "pageout/ReportForm.h"
#include "pageout/ReportRows.h"
#include "pageout/Vtml.h"
#include "pageout/VtmlState.h"

namespace {

bool numericKind(const VtmlField& f) { return f.Kind == QLatin1String("N") || f.Kind == QLatin1String("P"); }

bool isComputed(const VtmlField& f) { return f.Name.startsWith(QLatin1Char('@')); }

// The value of a cell: alpha(n) for "@n", else the column with Null as "" or 0.
bool cellValue(const VtmlField& f, QVariant* value)
{
    VtmlState& s = vtml();
    if (isComputed(f)) {
        if (!s.form) {
            vtmlFail(QStringLiteral("エラー：項目「%1」の値を返す帳票がありません。").arg(f.Name));
            return false;
        }
        int n = 0;
        s.context = f.Name;
        if (!set16(n, ToNum(f.Name.mid(1)))) return false;
        short arg = short(n);
        *value = s.form->alpha(arg);
        if (value->isNull() || !value->isValid()) *value = numericKind(f) ? QVariant(0) : QVariant(QString());
        return true;
    }
    if (!s.rows->hasColumn(f.Name)) {
        vtmlFail(QStringLiteral("エラー：3265 項目「%1」が帳票のデータにありません。").arg(f.Name));
        return false;
    }
    *value = s.rows->value(f.Name);
    if (value->isNull() || !value->isValid()) *value = numericKind(f) ? QVariant(0) : QVariant(QString());
    return true;
}

void drawCell(int index, const VtmlField& f, int cellStartX)
{
    VtmlState& s = vtml();
    QVariant value;
    if (!cellValue(f, &value)) return;
    const QString text = numericKind(f) ? FixedValueText(value, f.Format)
                         : isMoneyVariant(value) ? value.value<Money>().toText() : value.toString();
    if (f.Total != 0 && numericKind(f)) {
        const Money m = variantMoney(value);
        s.PageTotal[index] += m;
        s.RunningTotal[index] += m;
    }
    const bool placed = f.X != 0 || f.Y != 0;
    const bool digits = f.Kind == QLatin1String("P");
    // Placed cells and digit cells stand on the row counted from the data's top.
    int rowY = 0;
    if ((placed || digits) && !set16(rowY, double(s.Zoubun) * s.RowsOnPage + f.Y + s.DataY)) return;
    if (placed) {
        s.CurX = f.X;
        s.CurY = rowY;
    }
    if (!f.FontName.isEmpty()) vtmlFont(f.FontName);
    if (f.FontSize != 0) vtmlSize(f.FontSize);
    if (!digits) {
        vtmlText(text);
        return;
    }
    // One digit to a cell, for paper with preprinted boxes.
    const int base = placed ? f.X : cellStartX;
    const double step = vtmlTextWidth(QStringLiteral(" ")) + f.Pitch;
    for (qsizetype i = 0; i < f.Format.size() && !s.failed; ++i) {
        if (!set16(s.CurX, base + i * step)) return;
        s.CurY = rowY;
        vtmlText(text.mid(i, 1));
    }
}

// The totals under their columns: field by field from DataX, as the rows are placed.
void walkTotals(const Money* totals)
{
    VtmlState& s = vtml();
    for (int i = 0; i < kVtmlTotalFields && i < s.fields.size() && !s.failed; ++i) {
        const VtmlField& f = s.fields[i];
        const int start = s.CurX;
        if (f.Total != 0) vtmlText(FixedNumberText(totals[i], f.Format));
        set16(s.CurX, double(start) + f.Width + f.Gap);
    }
}

void labelledTotals(const QString& label, const Money* totals)
{
    VtmlState& s = vtml();
    s.CurX = s.DataX;
    vtmlText(label);
    s.CurX = s.DataX;
    walkTotals(totals);
}

void pageEnd()
{
    VtmlState& s = vtml();
    if (s.NoTotals) {
        if (s.form) s.form->NoTotalAction();
        else vtmlFail(QStringLiteral("エラー：頁の終わりを描く帳票がありません。"));
        return;
    }
    vtmlRule();
    vtmlLeft();
    labelledTotals(QStringLiteral("頁計："), s.PageTotal);
    vtmlCL();
    labelledTotals(QStringLiteral("累計："), s.RunningTotal);
    for (int i = 0; i < kVtmlTotalFields; ++i) s.PageTotal[i] = Money();
    vtmlCL();
    vtmlRule();
}

void groupEnd(bool last)
{
    VtmlState& s = vtml();
    if (s.GroupField.isEmpty() || s.failed) return;
    vtmlRule();
    vtmlLeft();
    labelledTotals(QStringLiteral("小計："), s.PageTotal);
    for (int i = 0; i < kVtmlTotalFields; ++i) s.PageTotal[i] = Money();
    s.RowsOnPage += 2;
    set16(s.CurY, s.CurY + 2.0 * s.Zoubun);
    if (!last) return;
    set16(s.CurY, s.CurY - 2.0 * s.Zoubun);
    vtmlCL();
    vtmlRule();
    vtmlLeft();
    labelledTotals(QStringLiteral("総計："), s.RunningTotal);
    for (int i = 0; i < kVtmlMaxFields; ++i) s.PageTotal[i] = s.RunningTotal[i] = Money();
    vtmlCL();
    vtmlRule();
}

void headingRow()
{
    VtmlState& s = vtml();
    s.CurX = s.DataX;
    for (const VtmlField& f : std::as_const(s.fields)) {
        const int start = s.CurX;
        // Numbers stand flush right, so their heading does too.
        if (numericKind(f) && !set16(s.CurX, s.CurX + double(f.Width) - vtmlTextWidth(f.Caption))) return;
        vtmlText(f.Caption);
        if (!set16(s.CurX, double(start) + f.Width + f.Gap)) return;
    }
    set16(s.CurY, double(s.CurY) + s.Zoubun);
    if (!s.NoHeadRule) vtmlRule();
}

bool readNext()
{
    VtmlState& s = vtml();
    s.rowsAtEnd = !s.rows->next();
    if (!s.rows->ok()) {
        vtmlFail(s.rows->error());
        return false;
    }
    return true;
}

bool finishData()
{
    VtmlState& s = vtml();
    s.RowsOnPage = 0;
    s.DataEnded = true;
    pageEnd();
    groupEnd(true);
    ++s.PageNo;
    return true;
}

}  // namespace

bool pbStart()
{
    VtmlState& s = vtml();
    if (!s.rows) {
        vtmlFail(QStringLiteral("エラー：帳票のデータが渡されていません。"));
        return false;
    }
    if (!s.rows->ok()) {
        vtmlFail(s.rows->error());
        return false;
    }
    return readNext();
}

void pbMeasureFields()
{
    VtmlState& s = vtml();
    for (VtmlField& f : s.fields) {
        if (s.failed) return;
        s.context = f.Caption;
        if (!f.FontName.isEmpty()) s.surface->setFontName(f.FontName);
        if (f.FontSize != 0) s.surface->setFontSize(f.FontSize);
        int width = 0;
        if (f.Kind == QLatin1String("S")) set16(width, ToNum(f.Format) * vtmlTextWidth(QStringLiteral(" ")));
        else if (f.Kind == QLatin1String("N")) set16(width, vtmlTextWidth(f.Format));
        else if (f.Kind == QLatin1String("P")) set16(width, vtmlTextWidth(f.Format) + double(f.Format.size()) * f.Pitch);
        f.Width = short(width);
    }
}

bool pbPageBody()
{
    VtmlState& s = vtml();
    s.CurY = s.DataY;
    vtmlLeft();
    if (s.RowsOnPage == 0) headingRow();
    if (s.failed) return true;
    if (s.rowsAtEnd) {
        // No row at all: the page's end is drawn, but DataEnded stays unset.
        s.RowsOnPage = 0;
        pageEnd();
        groupEnd(true);
        ++s.PageNo;
        return true;
    }
    while (!s.failed) {
        if (!s.GroupField.isEmpty()) {
            if (!s.rows->hasColumn(s.GroupField)) {
                vtmlFail(QStringLiteral("エラー：3265 項目「%1」が帳票のデータにありません。").arg(s.GroupField));
                return true;
            }
            const QVariant g = s.rows->value(s.GroupField);
            const QString key = g.isNull() ? QStringLiteral("0") : g.toString();
            if (s.hasPrevGroup && key != s.prevGroup) groupEnd(false);
            s.prevGroup = key;
            s.hasPrevGroup = true;
        }
        s.CurX = s.DataX;
        for (int i = 0; i < s.fields.size() && !s.failed; ++i) {
            const VtmlField& f = s.fields[i];
            const int startX = s.CurX;
            const int startY = s.CurY;
            s.context = f.Name;
            drawCell(i, f, startX);
            s.CurY = startY;
            set16(s.CurX, double(startX) + f.Width + f.Gap);
        }
        if (s.failed) return true;
        set16(s.CurY, double(s.CurY) + s.Zoubun);
        ++s.RowsOnPage;
        if (!readNext() || s.rowsAtEnd) break;
        if (s.RowsOnPage >= s.RowsPerPage) break;
    }
    if (s.failed) return true;
    if (s.rowsAtEnd) return finishData();
    s.RowsOnPage = 0;
    pageEnd();
    ++s.PageNo;
    return false;
}

QString FixedNumberText(double value, const QString& pattern) { return FormatRight(value, pattern); }

QString FixedNumberText(Money value, const QString& pattern) { return FormatRight(value, pattern); }

QString FixedValueText(const QVariant& v, const QString& pattern)
{
    if (isMoneyVariant(v)) return FixedNumberText(v.value<Money>(), pattern);
    if (isNumberVariant(v)) return FixedNumberText(v.toDouble(), pattern);
    const QString t = v.toString().trimmed();
    QString plain = t;
    plain.remove(QLatin1Char(','));
    bool isNum = false;
    const double d = plain.toDouble(&isNum);
    if (isNum || t.isEmpty()) return FixedNumberText(isNum ? d : 0.0, pattern);
    return (QString(20, QLatin1Char(' ')) + t).right(pattern.size());
}
