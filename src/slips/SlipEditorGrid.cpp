// The grid half of SlipEditor: rows and lines, the price lookup, amounts, tax and totals.
#include <algorithm>
#include "entry/Convert.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "slips/SlipEditor.h"
#include "slips/SlipKinds.h"
#include "slips/SlipTax.h"
#include "store/Sql.h"

namespace {
SlipLineTax taxOf(const SlipLine& l)
{
    SlipLineTax t;
    t.ZeiFlag = l.ZeiFlag;
    t.Gaku = ToCur(l.Gaku);
    t.Net = l.Net;
    t.Zei = l.Zei;
    t.sGaku = ToCur(l.sGaku);
    return t;
}

QString money(Money m, const QString& format) { return FormatRight(m, format); }
}  // namespace

bool SlipLine::isEmpty() const { return !HasText(HinCode); }

QString readCell(const QString& shown)
{
    QString t = shown;
    t.remove(QLatin1Char(','));
    return t.trimmed();
}

QString SlipEditor::formatCell(const QString& text, const QString& format)
{
    if (format == SlipFormat::Suu && text.contains(QLatin1Char('*'))) return text;
    return FormatRight(ToCur(text), format);
}

void SlipEditor::showLine(int row)
{
    const int i = Bar + row;
    const SlipLine& l = lines[i];
    SlipRow& r = rows[row];
    r = SlipRow();
    r.LineNo = QString::number(i + 1);
    r.fKubun = l.Kubun;
    if (l.isEmpty()) return;
    r.fHinCode = l.HinCode;
    r.fHinNamae = l.HinNamae;
    r.fSuu = l.clerkOwned() ? l.Suu : FormatRight(ToNum(l.Suu), SlipFormat::Suu);
    r.fSTanka = money(ToCur(l.STanka), SlipFormat::Tanka);
    r.fTanka = money(ToCur(l.UTanka), SlipFormat::Tanka);
    r.fSGaku = money(ToCur(l.sGaku), SlipFormat::Gaku);
    r.fGaku = money(ToCur(l.Gaku), SlipFormat::Gaku);
    r.fZei = money(l.Zei, SlipFormat::ZeiLine);
    r.ZeiInfo = zeiFlagText(l.ZeiFlag);
}

void SlipEditor::showLines()
{
    for (int r = 0; r < RowCount; ++r) showLine(r);
}

void SlipEditor::readRowsToLines()
{
    for (int r = 0; r < RowCount; ++r) {
        const SlipRow& row = rows[r];
        SlipLine& l = lines[Bar + r];
        l.Kubun = short(row.fKubun);
        l.HinCode = row.fHinCode.trimmed();
        l.HinNamae = row.fHinNamae.trimmed();
        l.Suu = readCell(row.fSuu);
        l.STanka = readCell(row.fSTanka);
        l.sGaku = readCell(row.fSGaku);
        l.UTanka = readCell(row.fTanka);
        l.Gaku = readCell(row.fGaku);
    }
}

void SlipEditor::readProductPrices(int row, const QString& storedCode)
{
    SlipRow& r = rows[row];
    const qlonglong partner = head.Partner.value_or(0);
    QVariant price;
    // No chain: a destination looks only at its own prices, never at the customer's.
    if (!sales()) {
        price = scalar(session().MasterDb, QStringLiteral("SELECT Tanka FROM Ska WHERE SirCode=? AND HinCode=?"),
                       {partner, storedCode});
    } else if (head.NouCode.value_or(0) == 0) {
        price = scalar(session().MasterDb, QStringLiteral("SELECT Tanka FROM Tka WHERE TorCode=? AND HinCode=?"),
                       {partner, storedCode});
    } else {
        price = scalar(session().MasterDb,
                       QStringLiteral("SELECT Tanka FROM Nka WHERE TorCode=? AND NouCode=? AND HinCode=?"),
                       {partner, qlonglong(*head.NouCode), storedCode});
    }
    if (!price.isValid()) return;
    r.fTanka = money(Money::fromStore(price), SlipFormat::Tanka);
    r.fGaku = r.fTanka;
}

bool SlipEditor::loadProductToLine(int row)
{
    if (row < 0 || row >= RowCount) return false;
    const int i = Bar + row;
    SlipRow& r = rows[row];
    QString code = r.fHinCode.trimmed();
    if (code.isEmpty()) return false;
    if (code == QLatin1String("=") && i >= 1) {
        code = lines[i - 1].HinCode.trimmed();
        r.fHinCode = code;
    }
    QString stored = code;
    stored = ZeroPad13(stored);
    Query q(session().MasterDb, QStringLiteral("SELECT * FROM Hin WHERE Code=?"), {stored});
    if (!q.next()) return false;

    QString shown = NullToEmpty(q.value(QStringLiteral("Code"))).trimmed();
    r.fHinCode = ZeroStrip(shown);
    r.fHinNamae = NullToEmpty(q.value(QStringLiteral("Namae"))).trimmed();
    lines[i].ZeiFlag = short(q.value(QStringLiteral("ZeiFlag")).toInt());
    r.ZeiInfo = zeiFlagText(lines[i].ZeiFlag);
    r.fSuu = QStringLiteral("1");
    const QString hinU = money(Money::fromStore(q.value(QStringLiteral("UTanka"))), SlipFormat::Tanka);
    const QString hinS = money(Money::fromStore(q.value(QStringLiteral("STanka"))), SlipFormat::Tanka);
    // The slip's own price is the selling price on sales and the buying price on purchases.
    r.fSTanka = sales() ? hinS : hinU;
    r.fTanka = sales() ? hinU : hinS;
    r.fSGaku = r.fSTanka;
    r.fGaku = r.fTanka;
    readProductPrices(row, stored);

    // The line's own tax waits until the clerk passes the quantity or the amount.
    calcLineAmounts(row);
    readRowsToLines();
    showTotals(1);
    return true;
}

void SlipEditor::calcLineAmounts(int row)
{
    if (row < 0 || row >= RowCount) return;
    SlipRow& r = rows[row];
    if (r.fSuu.contains(QLatin1Char('*'))) return;
    const double quantity = ToNum(r.fSuu);
    r.fSGaku = money(lineAmount(quantity, ToCur(r.fSTanka)), SlipFormat::Gaku);
    r.fGaku = money(lineAmount(quantity, ToCur(r.fTanka)), SlipFormat::Gaku);
}

void SlipEditor::calcLineTax(int row)
{
    if (row < 0 || row >= RowCount) return;
    SlipLine& l = lines[Bar + row];
    SlipLineTax t = taxOf(l);
    ::calcLineTax(t, slipDate(), SlipHsuType, SlipHsu);
    l.Net = t.Net;
    l.Zei = t.Zei;
    rows[row].fZei = money(l.Zei, SlipFormat::ZeiLine);
    rows[row].ZeiInfo = zeiFlagText(l.ZeiFlag);
}

void SlipEditor::calcSlipTax()
{
    if (!head.Partner) return;
    // A line whose code was blanked is not written, so it takes no part in the slip's tax.
    std::array<SlipLineTax, LineCount> t;
    std::array<int, LineCount> at;
    int n = 0;
    for (int i = 0; i < LineCount; ++i)
        if (!lines[i].isEmpty()) {
            at[n] = i;
            t[n++] = taxOf(lines[i]);
        }
    ::calcSlipTax(std::span<SlipLineTax>(t.data(), size_t(n)), SlipZeituuchi, slipDate(), SlipHsuType, SlipHsu);
    for (int k = 0; k < n; ++k) lines[at[k]].Zei = t[k].Zei;
    for (int r = 0; r < RowCount; ++r)
        if (!lines[Bar + r].isEmpty()) rows[r].fZei = money(lines[Bar + r].Zei, SlipFormat::ZeiTotal);
}

void SlipEditor::showTotals(int flag)
{
    if (flag != 0) calcSlipTax();
    // The totals are those of the lines that will be written.
    std::array<SlipLineTax, LineCount> t;
    int n = 0;
    for (const SlipLine& l : lines)
        if (!l.isEmpty()) t[n++] = taxOf(l);
    const SlipTotals s = slipTotals(std::span<const SlipLineTax>(t.data(), size_t(n)));
    // Totals are shown whole: unlike a grid cell, a total never loses its sign or a digit.
    totals.net = FormatNumber(s.sumNet, SlipFormat::Total);
    totals.zei = FormatNumber(s.sumZei, SlipFormat::Total);
    totals.total = FormatNumber(s.sumNet + s.sumZei, SlipFormat::Total);
    totals.profit = FormatNumber(sales() ? s.sumNet - s.sumOther : s.sumOther - s.sumNet, SlipFormat::Total);
    if (s.sumNet == Money() || s.sumOther == Money()) {
        totals.rate = QStringLiteral("***.**");
    } else {
        const double rate = sales() ? (s.sumNet - s.sumOther) / s.sumNet * 100.0
                                    : (s.sumOther - s.sumNet) / s.sumOther * 100.0;
        totals.rate = FormatNumber(rate, SlipFormat::Rate);
    }
}

void SlipEditor::work(int row)
{
    calcLineAmounts(row);
    readRowsToLines();
    calcLineTax(row);
    showTotals(1);
}

void SlipEditor::typeLineTax(int row)
{
    if (row < 0 || row >= RowCount) return;
    SlipLine& l = lines[Bar + row];
    l.ZeiFlag = 4;
    l.Zei = ToCur(rows[row].fZei);
    calcLineTax(row);
    showTotals(1);
}

void SlipEditor::deleteLine(int row)
{
    if (row < 0 || row >= RowCount) return;
    readRowsToLines();
    for (int j = Bar + row; j < LineCount - 1; ++j) lines[j] = lines[j + 1];
    lines[LineCount - 1] = SlipLine();
    showLines();
    showTotals(1);
}

bool SlipEditor::insertLine(int row)
{
    if (row < 0 || row >= RowCount) return false;
    readRowsToLines();
    if (!lines[LineCount - 1].isEmpty()) {
        Tell(QStringLiteral("行がいっぱいです。"));
        return false;
    }
    const int i = Bar + row;
    for (int j = LineCount - 1; j > i; --j) lines[j] = lines[j - 1];
    lines[i] = SlipLine();
    // The totals do not change.
    showLines();
    return true;
}

bool SlipEditor::lineHasKubun(int row) const { return row >= 0 && row < RowCount && rows[row].fKubun >= 0; }

void SlipEditor::scrollTo(int bar)
{
    bar = std::clamp(bar, 0, MaxBar);
    readRowsToLines();
    Bar = bar;
    showLines();
    readRowsToLines();
}

QString SlipEditor::tipText(TipField field, int row) const
{
    if (row < 0 || row >= RowCount) return QString();
    const int kind = rows[row].fKubun;
    switch (field) {
    case TipField::Suu: return kind == 1 ? QStringLiteral("マイナスで入力") : QString();
    case TipField::Tanka: return kind == 2 ? QStringLiteral("マイナスで入力") : QString();
    case TipField::KindChosen:
        if (kind == 1) return QStringLiteral("数量をマイナスで入力");
        if (kind == 2) return QStringLiteral("単価をマイナスで入力");
        return QString();
    }
    return QString();
}
