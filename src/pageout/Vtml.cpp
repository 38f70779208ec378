// The page language: the document's lines, the tags, the drawing step and the page loop.
#include "pageout/Vtml.h"
#include <cmath>
#include "entry/Convert.h"
#include "entry/Dates.h"
#include "pageout/PageOutput.h"
#include "pageout/PageSurface.h"
#include "pageout/ReportForm.h"
#include "pageout/VtmlState.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

namespace {

// A line that leaves Zoubun at 0 still moves on by this much.
constexpr int kDefaultAdvance = 285;
// Twips of a screen pixel, by which pictures are measured.
constexpr int kTwipsPerPixel = 15;
// PAINT's fit flags place the picture as if in a box of this many pixels.
constexpr int kFitBoxWidth = 162;
constexpr int kFitBoxHeight = 100;

bool g_printing = false;

// The number reading of every argument: digits, "." and "-" kept, then a 16-bit whole number.
bool number16(const QString& text, int* out)
{
    return set16(*out, ToNum(text));
}

// "a,b..." -> "a" and "b...": a tag with too few arguments is an invalid argument.
bool splitFirst(const QString& arg, QString* head, QString* rest)
{
    const qsizetype p = arg.indexOf(QLatin1Char(','));
    if (p < 0) {
        vtmlFailArgument();
        return false;
    }
    *head = arg.left(p);
    *rest = arg.mid(p + 1);
    return true;
}

bool twoNumbers(const QString& arg, int* a, int* b, QString* rest = nullptr)
{
    QString first, second, tail;
    if (!splitFirst(arg, &first, &second)) return false;
    if (rest) {
        const QString both = second;
        if (!splitFirst(both, &second, &tail)) return false;
    }
    if (!number16(first, a) || !number16(second, b)) return false;
    if (rest) *rest = tail;
    return true;
}

bool flagArgument(const QString& text, bool* flag)
{
    const QString t = text.trimmed();
    if (t.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) *flag = true;
    else if (t.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) *flag = false;
    else {
        bool isNumber = false;
        const double v = t.toDouble(&isNumber);
        if (!isNumber) {
            vtmlFailArgument();
            return false;
        }
        *flag = v != 0;
    }
    return true;
}

QDate today()
{
    const QDate& t = vtml().today;
    return t.isValid() ? t : QDate::currentDate();
}

QString dateStamp(int kind)
{
    const QDate d = today();
    const QString y = QString::number(DisplayYear(d));
    const QString m = QString::number(d.month());
    const QString day = QString::number(d.day());
    switch (kind) {
    case 1:
        return (session().Hiz == 1 ? QStringLiteral("平成") : QString()) + y + QStringLiteral("年") + m
               + QStringLiteral("月") + day + QStringLiteral("日 ") + WeekdayText(d);
    case 2:
        return y + QLatin1Char('.') + m + QLatin1Char('.') + day;
    case 3:
        return m + QLatin1Char('.') + day;
    default:
        return {};
    }
}

int advance()
{
    const VtmlState& s = vtml();
    return s.Zoubun != 0 ? s.Zoubun : kDefaultAdvance;
}

void tagArea(const QString& arg)
{
    VtmlState& s = vtml();
    int w = 0, h = 0;
    if (!twoNumbers(arg, &w, &h)) return;
    s.AreaWidth = w;
    s.AreaHeight = h;
    // Under shrink the printer keeps its paper and only the preview window takes the size;
    // a PDF file has no paper or page setup of its own, so the area is its page.
    const bool paperless = !s.surface->hasOwnPaper() && !s.surface->isPreview();
    if (shrinkActive()) {
        if (s.surface->isPreview() || paperless) s.surface->setPageSize(w, h);
    } else if (!session().KeepPageSetup || paperless) {
        s.surface->setPageSize(w, h);
    }
}

void tagFree(const QString& arg, bool firstPageOnly)
{
    VtmlState& s = vtml();
    if (firstPageOnly && s.PageNo != 1) return;
    int x = 0, y = 0;
    QString text;
    if (!twoNumbers(arg, &x, &y, &text)) return;
    s.CurX = x;
    s.CurY = y;
    vtmlText(text);
}

void tagPaint(const QString& arg)
{
    VtmlState& s = vtml();
    QString fitR, fitB, rest;
    bool fitRight = false, fitBottom = false;
    QString afterR;
    if (!splitFirst(arg, &fitR, &afterR) || !splitFirst(afterR, &fitB, &rest)) return;
    if (!flagArgument(fitR, &fitRight) || !flagArgument(fitB, &fitBottom)) return;
    int x = 0, y = 0;
    QString file;
    if (!twoNumbers(rest, &x, &y, &file)) return;
    s.CurX = x;
    s.CurY = y;
    file = file.trimmed();
    if (file.isEmpty()) return;
    double w = 0, h = 0;
    // A picture that cannot be read is left out without a word.
    if (!s.surface->pictureSize(file, &w, &h)) return;
    const int pixelsWide = int(w / kTwipsPerPixel);
    const int pixelsHigh = int(h / kTwipsPerPixel);
    if (fitRight && pixelsWide < kFitBoxWidth && !set16(s.CurX, s.CurX + (kFitBoxWidth - pixelsWide) * kTwipsPerPixel)) return;
    if (fitBottom && pixelsHigh < kFitBoxHeight && !set16(s.CurY, s.CurY + (kFitBoxHeight - pixelsHigh) * kTwipsPerPixel)) return;
    s.surface->drawPicture(s.CurX, s.CurY, file);
}

void runLine(const QString& line)
{
    VtmlState& s = vtml();
    s.context = line;
    const qsizetype p = line.indexOf(QLatin1Char('>'));
    QString tag = QStringLiteral("*");
    QString arg = line;
    if (p == 0) {
        vtmlFailArgument();
        return;
    }
    if (p > 0) {
        // The first character is skipped unread: "<" by convention.
        tag = line.mid(1, p - 1);
        arg = line.mid(p + 1);
    }
    int n = 0;
    if (tag == QLatin1String("AREA")) tagArea(arg);
    else if (tag == QLatin1String("FONT")) vtmlFont(arg);
    else if (tag == QLatin1String("SIZE")) {
        if (number16(arg, &n)) vtmlSize(n);
    } else if (tag == QLatin1String("LOCATE")) {
        int x = 0, y = 0;
        if (twoNumbers(arg, &x, &y)) {
            s.CurX = x;
            s.CurY = y;
        }
    } else if (tag == QLatin1String("FREE")) tagFree(arg, false);
    else if (tag == QLatin1String("FREETOP")) tagFree(arg, true);
    else if (tag == QLatin1String("LEFT")) vtmlLeft();
    else if (tag == QLatin1String("CENTER")) s.AlignMode = 2;
    else if (tag == QLatin1String("RIGHT")) s.AlignMode = 3;
    else if (tag == QLatin1String("CL")) vtmlCL();
    else if (tag == QLatin1String("LINE")) vtmlRule();
    else if (tag == QLatin1String("FOOTER")) {
        if (number16(arg, &n)) set16(s.CurY, double(s.AreaHeight) - double(n) * advance());
    } else if (tag == QLatin1String("ZOUBUN")) {
        if (number16(arg, &n)) s.Zoubun = n;
    } else if (tag == QLatin1String("DTPOS")) {
        s.DataY = s.CurY;
        s.DataX = s.CurX;
    } else if (tag == QLatin1String("DTCNT")) {
        if (number16(arg, &n)) s.RowsPerPage = n;
    } else if (tag == QLatin1String("XOFFSET")) {
        if (number16(arg, &n)) s.XOffset = n;
    } else if (tag == QLatin1String("YOFFSET")) {
        if (number16(arg, &n)) s.YOffset = n;
    } else if (tag == QLatin1String("PAGE")) vtmlText(QString::number(s.PageNo) + QStringLiteral("ページ "));
    else if (tag == QLatin1String("DATE")) {
        if (number16(arg, &n)) vtmlText(dateStamp(n));
    } else if (tag == QLatin1String("PAINT")) tagPaint(arg);
    else if (tag == QLatin1String("BKGRD")) {
        if (s.form) s.form->BKGRD();
        else vtmlFail(QStringLiteral("エラー：背景を描く帳票がありません。「%1」").arg(line));
    } else vtmlText(arg);   // "*", and any tag the language does not know, is text
}

}  // namespace

VtmlState& vtml()
{
    static VtmlState s;
    return s;
}

void vtmlFail(const QString& message)
{
    VtmlState& s = vtml();
    if (s.failed) return;
    s.failed = true;
    s.error = message;
}

void vtmlFailOverflow()
{
    vtmlFail(QStringLiteral("エラー：6 位置または数値が範囲（-32768～32767）を超えました。「%1」").arg(vtml().context));
}

void vtmlFailArgument()
{
    vtmlFail(QStringLiteral("エラー：5 帳票の行の引数が正しくありません。「%1」").arg(vtml().context));
}

bool set16(int& dst, double v)
{
    if (vtml().failed) return false;
    const double r = std::nearbyint(v);
    if (!std::isfinite(r) || r < -32768 || r > 32767) {
        vtmlFailOverflow();
        return false;
    }
    dst = int(r);
    return true;
}

bool shrinkActive() { return session().ShrinkMode && !vtml().ShrinkOff; }

double vtmlTextWidth(const QString& text) { return vtml().surface->textWidth(text); }

void vtmlText(const QString& text)
{
    VtmlState& s = vtml();
    if (s.failed) return;
    if (!s.surface) {
        vtmlFail(QStringLiteral("エラー：印刷中でないため文字を書けません。「%1」").arg(text));
        return;
    }
    const double width = s.surface->textWidth(text);
    if (s.AlignMode == 2 && !set16(s.CurX, (s.AreaWidth - width) / 2)) return;
    if (s.AlignMode == 3 && !set16(s.CurX, s.AreaWidth - width)) return;
    double x = 0, y = 0;
    if (shrinkActive()) {
        // The offsets are not scaled: they are the printer's own margins.
        x = s.CurX * 0.9 + s.XOffset;
        y = s.CurY * 0.9 + s.YOffset;
    } else {
        int ix = 0, iy = 0;
        if (!set16(ix, double(s.XOffset) + s.CurX) || !set16(iy, double(s.YOffset) + s.CurY)) return;
        x = ix;
        y = iy;
    }
    s.surface->drawText(x, y, text);
    if (!set16(s.CurX, s.CurX + width)) return;
    const double height = s.surface->textHeight(text);
    if (height > s.Zoubun) set16(s.Zoubun, height);
}

void vtmlRule()
{
    VtmlState& s = vtml();
    if (s.failed) return;
    if (shrinkActive()) {
        const double y = s.CurY * 0.9 + s.YOffset;
        s.surface->drawLine(s.XOffset, y, s.AreaWidth * 0.9, y);
    } else {
        int y = 0;
        if (!set16(y, double(s.YOffset) + s.CurY)) return;
        // The right end is the page's edge, not moved by the offset.
        s.surface->drawLine(s.XOffset, y, s.AreaWidth, y);
    }
    set16(s.CurY, s.CurY + 100.0);
}

void vtmlCL()
{
    VtmlState& s = vtml();
    if (!set16(s.CurY, double(s.CurY) + advance())) return;
    s.CurX = 0;
    s.Zoubun = 0;
}

void vtmlLeft()
{
    vtml().CurX = 0;
    vtml().AlignMode = 1;
}

void vtmlFont(const QString& name)
{
    if (!vtml().failed) vtml().surface->setFontName(name);
}

void vtmlSize(int points)
{
    if (vtml().failed) return;
    int size = points;
    if (shrinkActive() && !set16(size, points * 0.9)) return;
    vtml().surface->setFontSize(size);
}

void VtmlClear()
{
    VtmlState& s = vtml();
    s.lines.clear();
    s.fields.clear();
    s.failed = false;
    s.error.clear();
    s.context.clear();
    s.CurX = s.CurY = 0;
    s.XOffset = s.YOffset = 0;
    s.DataX = s.DataY = 0;
    s.RowsOnPage = 0;
    s.PageNo = 1;
    s.AlignMode = 1;
    for (int i = 0; i < kVtmlMaxFields; ++i) s.PageTotal[i] = s.RunningTotal[i] = Money();
    s.NoHeadRule = s.NoTotals = s.DataEnded = false;
    s.GroupField.clear();
    s.rows = nullptr;
    s.form = nullptr;
    s.rowsAtEnd = false;
    s.hasPrevGroup = false;
    s.prevGroup.clear();
}

bool VtmlAddField(const VtmlField& f)
{
    VtmlState& s = vtml();
    if (s.fields.size() >= kVtmlMaxFields) {
        vtmlFail(QStringLiteral("エラー：9 帳票の項目が多すぎます（%1 項目まで）。「%2」").arg(kVtmlMaxFields).arg(f.Caption));
        return false;
    }
    s.fields << f;
    return true;
}

bool VtmlAddLine(const QString& line)
{
    VtmlState& s = vtml();
    if (s.lines.size() >= kVtmlMaxLines) {
        vtmlFail(QStringLiteral("エラー：9 帳票の行が多すぎます（%1 行まで）。「%2」").arg(kVtmlMaxLines).arg(line));
        return false;
    }
    s.lines << line;
    return true;
}

bool VtmlPrint()
{
    VtmlState& s = vtml();
    PageOutput* out = currentPageOutput();
    if (g_printing) vtmlFail(QStringLiteral("エラー：印刷の途中で次の帳票は印刷できません。"));
    else if (!out || !out->surface()) vtmlFail(QStringLiteral("エラー：印刷先が選ばれていません。"));   // none, or finished
    if (s.failed) {
        Tell(s.error);
        return false;
    }
    g_printing = true;
    s.surface = out->surface();
    if (!s.fields.isEmpty()) pbStart();
    while (!s.failed) {
        s.RowsOnPage = 0;
        for (const QString& line : std::as_const(s.lines)) {
            runLine(line);
            if (s.failed) break;
        }
        if (s.failed) break;
        pbMeasureFields();
        const bool finished = s.fields.isEmpty() || pbPageBody();
        if (s.failed) break;
        if (!s.surface->endPage()) {
            const QString why = s.surface->errorText();
            vtmlFail(why.isEmpty() ? QStringLiteral("エラー：印刷できませんでした。") : why);
            break;
        }
        s.CurX = 0;
        s.CurY = 0;
        if (finished) break;
    }
    if (s.failed) s.surface->discardPage();
    else s.surface->endDocument();
    s.surface = nullptr;
    g_printing = false;
    if (s.failed) Tell(s.error);
    return !s.failed;
}

const QString& vtmlLastError() { return vtml().error; }

void PbSetRows(ReportRows* rows) { vtml().rows = rows; }
void PbSetForm(ReportForm* form) { vtml().form = form; }

void PbText(const QString& text) { vtmlText(text); }
void PbSetX(double x) { set16(vtml().CurX, x); }
void PbSetY(double y) { set16(vtml().CurY, y); }
double PbCurX() { return vtml().CurX; }
double PbCurY() { return vtml().CurY; }

namespace {
bool totalIndex(int i) { return i >= 0 && i < kVtmlMaxFields; }
}

Money PbPageTotal(int i) { return totalIndex(i) ? vtml().PageTotal[i] : Money(); }
Money PbRunningTotal(int i) { return totalIndex(i) ? vtml().RunningTotal[i] : Money(); }
void PbSetPageTotal(int i, Money v)
{
    if (totalIndex(i)) vtml().PageTotal[i] = v;
}
void PbSetRunningTotal(int i, Money v)
{
    if (totalIndex(i)) vtml().RunningTotal[i] = v;
}
void PbSetNoHeadRule(bool on) { vtml().NoHeadRule = on; }
void PbSetNoTotals(bool on) { vtml().NoTotals = on; }
void PbSetGroupField(const QString& column) { vtml().GroupField = column; }
bool PbDataEnded() { return vtml().DataEnded; }
int VtmlPageNo() { return vtml().PageNo; }

void VtmlSetShrinkMode(bool on) { session().ShrinkMode = on; }
void VtmlSetKeepPageSetup(bool on) { session().KeepPageSetup = on; }
void VtmlSetShrinkOff(bool on) { vtml().ShrinkOff = on; }
bool VtmlShrinkOff() { return vtml().ShrinkOff; }
void VtmlSetToday(const QDate& date) { vtml().today = date; }

void VtmlFieldClear(VtmlField& f)
{
    f.Caption.clear();
    f.Name.clear();
    f.Kind.clear();
    f.Format.clear();
    f.FontName.clear();
}
