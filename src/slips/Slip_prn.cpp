#include "slips/Slip_prn.h"

#include <cmath>
#include "entry/Convert.h"
#include "pageout/Vtml.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {
// One slip is half an A4 sheet on its side (A5 landscape); with the receipt copy the sheet is
// A4 upright and the copy stands on its lower half.
constexpr int Width = 11906, HalfHeight = 8419, FullHeight = 16838;
constexpr int Left = 567, Right = 11339;
constexpr int TitleY = 300, NumberY = 380, DateY = 640;
constexpr int NameY = 1000, NameRule = 1340, HonorificX = 5300, DestY = 1450, MessageY = 1900;
constexpr int CompanyX = 7000, StampLeft = 9900, StampTop = 1100, StampBottom = 2150;
constexpr int TableTop = 2260, HeadBottom = 2560, RowPitch = 270, Rows = 15;
constexpr int TableBottom = HeadBottom + Rows * RowPitch;
constexpr int TotalRow = 280, TotalsBottom = TableBottom + 3 * TotalRow;
// Column edges: code, name, quantity, unit price, amount, tax.
constexpr int Edges[] = {Left, 2400, 6300, 7300, 8700, 10300, Right};
constexpr int Pad = 60;

const QString kMincho = QStringLiteral("ＭＳ 明朝");
const QString kGothic = QStringLiteral("ＭＳ ゴシック");

QString amountText(Money m) { return FormatNumber(m, QStringLiteral("#,###,##0")); }
QString priceText(Money m)
{
    return FormatNumber(m, m.hasFraction() ? QStringLiteral("#,###,##0.00") : QStringLiteral("#,###,##0"));
}

// The mark in the tax column of a line, where the customer's mode puts no tax of its own there.
QString taxKindMark(short zeiFlag)
{
    switch (zeiFlag) {
    case 2: return QStringLiteral("内税");
    case 3: return QStringLiteral("非課税");
    case 4: return QStringLiteral("別計算");
    default: return QString();
    }
}

QString taxNote(short zeituuchi)
{
    switch (zeituuchi) {
    case 1: return QStringLiteral("※消費税は請求書にて一括して計算いたします。");
    case 4: return QStringLiteral("※免税のため消費税は計算しておりません。");
    default: return QString();
    }
}

// Page lines with the alignment switched only when it changes. Right-aligned text stands
// against `right` by moving the page's x offset, since the language aligns on the area's edge.
// The offsets are not shrunk with the rest of the page, so they are shrunk here. Under shrink
// the language also places right-aligned text by its shrunk width and then shrinks that
// place, so the text runs past its edge by a tenth of its width; the offset takes that back
// (the slip's fonts are fixed pitch: a Shift JIS byte is half the size in width).
class Lines {
public:
    QStringList out;
    double shrink = session().ShrinkMode && !VtmlShrinkOff() ? 0.9 : 1.0;

    void font(const QString& name, int points)
    {
        out << QStringLiteral("<FONT>") + name << QStringLiteral("<SIZE>%1").arg(points);
        drawnPoints_ = std::nearbyint(points * shrink);
    }
    void yOffset(int y) { out << QStringLiteral("<YOFFSET>%1").arg(std::lround(y * shrink)); }
    void left(int x, int y, const QString& text)
    {
        if (text.isEmpty()) return;
        align(1, 0);
        put(x, y, text);
    }
    void right(int edge, int y, const QString& text)
    {
        if (text.isEmpty()) return;
        const double overshoot = (1 - shrink) * SjisLength(text) * drawnPoints_ * 10;
        align(3, int(std::lround((edge - Width) * shrink - overshoot)));
        put(0, y, text);
    }
    void centre(int y, const QString& text)
    {
        align(2, 0);
        put(0, y, text);
    }
    void reset() { align(1, 0); }

private:
    void put(int x, int y, const QString& text) { out << QStringLiteral("<FREE>%1,%2,%3").arg(x).arg(y).arg(text); }
    void align(int mode, int xOffset)
    {
        if (xOffset != xOffset_) out << QStringLiteral("<XOFFSET>%1").arg(xOffset_ = xOffset);
        if (mode == mode_) return;
        out << (mode == 1 ? QStringLiteral("<LEFT>") : mode == 2 ? QStringLiteral("<CENTER>") : QStringLiteral("<RIGHT>"));
        mode_ = mode;
    }
    int mode_ = 1;
    int xOffset_ = 0;
    double drawnPoints_ = 10;
};

void slipBlock(Lines& l, const SlipPrintData& s, bool receipt, bool era)
{
    l.font(kGothic, 18);
    l.centre(TitleY, receipt ? QStringLiteral("受　領　書") : QStringLiteral("納　品　書"));
    l.font(kMincho, 10);
    l.right(Right, NumberY, QStringLiteral("伝票No. %1").arg(s.dno));
    l.right(Right, DateY, slipDateText(s.date, era));

    l.font(kMincho, 14);
    l.left(Left + 113, NameY, s.torName);
    l.left(HonorificX, NameY, QStringLiteral("様"));
    l.font(kMincho, 10);
    if (s.nou != 0) l.left(Left + 113, DestY, QStringLiteral("納入先　%1　様").arg(s.nouName));
    l.font(kMincho, 9);
    l.left(Left + 113, MessageY, receipt ? QStringLiteral("下記の通り受領いたしました。")
                                         : QStringLiteral("毎度ありがとうございます。下記の通り納品いたします。"));

    l.font(kGothic, 12);
    l.left(CompanyX, NameY, s.company.name);
    if (!receipt) {
        l.font(kMincho, 9);
        int y = NameY + 320;
        for (const QString& a : s.company.address) {
            l.left(CompanyX, y, a);
            y += 200;
        }
        l.left(CompanyX, y, s.company.phone);
    }

    l.font(kMincho, 10);
    const bool lineTax = s.Zeituuchi == 3;
    const QString captions[] = {QStringLiteral("コード"), QStringLiteral("品　　名"), QStringLiteral("数　量"),
                                QStringLiteral("単　価"), QStringLiteral("金　額"),
                                lineTax ? QStringLiteral("消費税") : QStringLiteral("税区分")};
    for (int c = 0; c < 6; ++c) l.left(Edges[c] + Pad, TableTop + 50, captions[c]);
    for (int i = 0; i < s.lines.size() && i < Rows; ++i) {
        const SlipPrintLine& line = s.lines[i];
        const int y = HeadBottom + i * RowPitch + 30;
        l.left(Edges[0] + Pad, y, line.code);
        l.left(Edges[1] + Pad, y, line.name);
        l.right(Edges[3] - Pad, y, amountText(Money::fromYen(line.suu)));
        l.right(Edges[4] - Pad, y, priceText(line.UTanka));
        l.right(Edges[5] - Pad, y, amountText(line.shownAmount()));
        if (lineTax) l.right(Edges[6] - Pad, y, amountText(line.ZeiGaku));
        else l.left(Edges[5] + Pad, y, taxKindMark(line.ZeiFlag));
    }

    const QString totalLabels[] = {QStringLiteral("税抜合計"), QStringLiteral("消費税"), QStringLiteral("合　計")};
    const Money totals[] = {s.net, s.zei, s.net + s.zei};
    for (int i = 0; i < 3; ++i) {
        const int y = TableBottom + i * TotalRow + 40;
        l.left(Edges[3] + Pad, y, totalLabels[i]);
        l.right(Edges[5] - Pad, y, amountText(totals[i]));
    }
    l.left(Left + Pad, TableBottom + 40, QStringLiteral("摘　要"));
    l.left(Left + 900, TableBottom + 40, s.tekiyo);
    l.font(kMincho, 9);
    l.left(Left + Pad, TableBottom + 2 * TotalRow + 40, taxNote(s.Zeituuchi));
    l.reset();
}

void blockRules(PaperPen& pen, int top, bool receipt)
{
    auto y = [top](int v) { return top + v; };
    pen.line(Left, y(NameRule), HonorificX + 300, y(NameRule));
    pen.box(Left, y(TableTop), Right, y(TableBottom));
    pen.line(Left, y(HeadBottom), Right, y(HeadBottom));
    for (int c = 1; c < 6; ++c) pen.line(Edges[c], y(TableTop), Edges[c], y(TableBottom));
    for (int i = 1; i < Rows; ++i) pen.line(Left, y(HeadBottom + i * RowPitch), Right, y(HeadBottom + i * RowPitch));
    // Totals under the price and amount columns, the remark box beside them.
    pen.box(Edges[3], y(TableBottom), Edges[5], y(TotalsBottom));
    pen.line(Edges[4], y(TableBottom), Edges[4], y(TotalsBottom));
    for (int i = 1; i < 3; ++i) pen.line(Edges[3], y(TableBottom + i * TotalRow), Edges[5], y(TableBottom + i * TotalRow));
    pen.box(Left, y(TableBottom), Edges[3], y(TotalsBottom));
    if (receipt) {
        pen.box(StampLeft, y(StampTop), Right, y(StampBottom));
        pen.font(kMincho, 9);
        pen.textCentre(StampLeft, Right, y(StampTop) + 40, QStringLiteral("受領印"));
    }
}

}  // namespace

SlipLayout slipLayout(short style)
{
    return style == 2 ? SlipLayout::WithReceipt : SlipLayout::Alone;
}

QString slipDateText(const QDate& date, bool era)
{
    const int year = era ? date.year() - 1988 : date.year();
    return QStringLiteral("%1%2年%3月%4日")
        .arg(era ? QStringLiteral("平成") : QString())
        .arg(year)
        .arg(date.month())
        .arg(date.day());
}

std::optional<SlipPrintData> readSlipForPrint(const QSqlDatabase& db, short office, long dno)
{
    Query head(db, QStringLiteral("SELECT Hizuke, TorCode, NouCode, Tekiyo FROM Dur WHERE Dno = ? AND EigCode = ?"),
               {qlonglong(dno), office});
    if (dno <= 0 || !head.next()) return std::nullopt;
    SlipPrintData s;
    s.dno = dno;
    s.date = QDate::fromString(NullToEmpty(head.value(0)), Qt::ISODate);
    s.tor = head.value(1).toLongLong();
    s.nou = head.value(2).toLongLong();
    s.tekiyo = NullToEmpty(head.value(3)).trimmed();
    Query tor(db, QStringLiteral("SELECT Namae, Zeituuchi FROM Tor WHERE Code = ?"), {s.tor});
    if (tor.next()) {
        s.torName = NullToEmpty(tor.value(0)).trimmed();
        s.Zeituuchi = short(tor.value(1).toInt());
    }
    if (s.nou != 0)
        s.nouName = NullToEmpty(scalar(db, QStringLiteral("SELECT Namae FROM Nou WHERE TorCode = ? AND Code = ?"),
                                       {s.tor, s.nou})).trimmed();
    Query lines(db,
                QStringLiteral("SELECT HinCode, HinNamae, Suu, UTanka, UGaku, ZeiGaku, ZeiFlag FROM Dud "
                               "WHERE Dno = ? AND EigCode = ? ORDER BY Eda"),
                {qlonglong(dno), office});
    while (lines.next()) {
        SlipPrintLine l;
        QString code = NullToEmpty(lines.value(0)).trimmed();
        l.code = ZeroStrip(code);
        l.name = NullToEmpty(lines.value(1)).trimmed();
        l.suu = lines.value(2).toLongLong();
        l.UTanka = Money::fromStore(lines.value(3));
        l.UGaku = Money::fromStore(lines.value(4));
        l.ZeiGaku = Money::fromStore(lines.value(5));
        l.ZeiFlag = short(lines.value(6).toInt());
        s.net += l.UGaku;
        s.zei += l.ZeiGaku;
        s.lines << l;
    }
    s.company = readPrintedCompany(db);
    return s;
}

QStringList slipPageLines(const SlipPrintData& slip, SlipLayout layout, bool era)
{
    const bool both = layout == SlipLayout::WithReceipt;
    Lines l;
    l.out << QStringLiteral("<AREA>%1,%2").arg(Width).arg(both ? FullHeight : HalfHeight) << QStringLiteral("<BKGRD>");
    slipBlock(l, slip, false, era);
    if (both) {
        l.yOffset(HalfHeight);
        slipBlock(l, slip, true, era);
        l.yOffset(0);
    }
    return l.out;
}

Slip_prn::Slip_prn(const QSqlDatabase& db) : db_(db) {}

bool Slip_prn::PrintSlip(long dno, QString* error)
{
    const Session& s = session();
    const std::optional<SlipPrintData> slip = readSlipForPrint(db_, s.EigCode, dno);
    if (!slip) {
        const QString message = QStringLiteral("該当する伝票がありません。");
        Tell(message);
        if (error) *error = message;
        return false;
    }
    layout_ = slipLayout(s.SlipStyle);
    VtmlClear();
    PbSetForm(this);
    for (const QString& line : slipPageLines(*slip, layout_, s.Hiz == 1)) VtmlAddLine(line);
    // VtmlPrint tells a failure itself; the message stays for a caller without a screen.
    const bool ok = VtmlPrint();
    PbSetForm(nullptr);
    if (!ok && error) *error = vtmlLastError();
    return ok;
}

void Slip_prn::BKGRD()
{
    PaperPen pen;
    if (!pen.ready()) return;
    blockRules(pen, 0, false);
    if (layout_ == SlipLayout::WithReceipt) {
        pen.dashes(0, Width, HalfHeight);
        blockRules(pen, HalfHeight, true);
    }
}
