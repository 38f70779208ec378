#include "slips/SlipEditor.h"

#include "entry/Convert.h"
#include "entry/Dates.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "slips/SlipKinds.h"
#include "slips/SlipCodes.h"
#include "slips/SlipNumbering.h"
#include "store/Sql.h"

namespace {
QSqlDatabase db() { return session().MasterDb; }
}  // namespace

SlipEditor::SlipEditor(const QString& kind)
    : kind_(kind == QLatin1String("Dsr") ? QStringLiteral("Dsr") : QStringLiteral("Dur"))
{
}

QString SlipEditor::lineTable() const { return sales() ? QStringLiteral("Dud") : QStringLiteral("Dsd"); }
QString SlipEditor::side() const { return sales() ? QStringLiteral("URI") : QStringLiteral("KAI"); }
QString SlipEditor::title() const { return slipKind(kind_)->title; }
QString SlipEditor::classCaption() const { return sales() ? QStringLiteral("得意先分類") : QStringLiteral("仕入先分類"); }
QString SlipEditor::partnerCaption() const { return sales() ? QStringLiteral("得意先") : QStringLiteral("仕入先"); }
QString SlipEditor::classTable() const { return sales() ? QStringLiteral("Tbn") : QStringLiteral("Sbn"); }
QString SlipEditor::partnerTable() const { return sales() ? QStringLiteral("Tor") : QStringLiteral("Sir"); }
QStringList SlipEditor::lineKinds() const { return lineKubunTexts(kind_); }
QStringList SlipEditor::settlementTexts() const { return headKubunTexts(kind_); }

void SlipEditor::loadLists()
{
    classEntries = CodeTableEntries(classTable());
    tanEntries = CodeTableEntries(QStringLiteral("Tan"));
    fillPartnerEntries();
}

void SlipEditor::fillPartnerEntries()
{
    partnerEntries = sales() ? TorShopEntries(classFilter(head.ClassCode)) : SirEntries(classFilter(head.ClassCode));
}

void SlipEditor::resetHeadFields()
{
    head = SlipHead();
    nouEntries.clear();
}

void SlipEditor::clearDisplay()
{
    resetHeadFields();
    mode.clear();
    loadedDno = 0;
    weekday.clear();
    simeText.clear();
    zeiNotice.clear();
    Getudo.clear();
    totals = SlipTotalTexts();
    classEntries = CodeTableEntries(classTable());
    head.Dno = FormatRight(double(GetNextDno(kind_, session().EigCode)), SlipFormat::Dno);
    head.Kubun = 0;
}

void SlipEditor::clearLines()
{
    lines.fill(SlipLine());
    rows.fill(SlipRow());
    Bar = 0;
    showLines();
}

long SlipEditor::number() const
{
    bool ok = true;
    return ToInt32(head.Dno, &ok);
}

QDate SlipEditor::slipDate() const { return BoxesToDate(head.Year, head.Month, head.Day); }

void SlipEditor::refreshWeekday() { weekday = WeekdayText(slipDate()); }

SlipEditor::NumberOutcome SlipEditor::enterNumber()
{
    const short office = session().EigCode;
    long n = number();
    if (!mode.isEmpty() && n != 0 && n == loadedDno) return NumberOutcome::Unchanged;
    if (n == 0) n = GetNextDno(kind_, office);
    const bool exists = scalar(db(), QStringLiteral("SELECT Dno FROM %1 WHERE Dno=? AND EigCode=?").arg(kind_),
                               {qlonglong(n), office})
                            .isValid();
    loadedDno = n;
    if (exists) {
        mode = QStringLiteral("EDIT");
        clearLines();
        showSlip(n);
        head.Dno = FormatRight(double(n), SlipFormat::Dno);
        return NumberOutcome::Edit;
    }
    mode = QStringLiteral("NEW");
    resetHeadFields();
    head.Dno = FormatRight(double(n), SlipFormat::Dno);
    const DateBoxes d = DateToBoxes(session().SlipDate.isValid() ? session().SlipDate : QDate::currentDate());
    head.Year = d.year.trimmed();
    head.Month = d.month.trimmed();
    head.Day = d.day.trimmed();
    refreshWeekday();
    head.Kubun = 0;
    clearLines();
    // Only a notice: the typed number stands.
    if (n != GetNextDno(kind_, office)) Tell(QStringLiteral("伝票番号が連番でないですが、よろしいですか？"));
    return NumberOutcome::New;
}

void SlipEditor::classLeft()
{
    if (!head.Partner) fillPartnerEntries();
}

QString SlipEditor::zeiNoticeText(short zeituuchi, bool displaying)
{
    switch (zeituuchi) {
    case 1: return QStringLiteral("請求書毎");
    case 2: return QStringLiteral("納品書毎");
    case 3: return QStringLiteral("明細毎");
    // Only a displayed slip names the exempt mode; on entry it stays undefined.
    case 4: return displaying ? QStringLiteral("免税") : QStringLiteral("未定義");
    default: return QStringLiteral("未定義");
    }
}

bool SlipEditor::readPartner(qint64 code, bool displaying)
{
    Query q(db(), QStringLiteral("SELECT * FROM %1 WHERE Code = ?").arg(partnerTable()), {code});
    if (!q.next()) return false;   // vanished partner: the last one's values stay
    SlipHsuType = short(q.value(QStringLiteral("HsuType")).toInt());
    SlipHsu = short(q.value(QStringLiteral("Hsu")).toInt());
    SlipZeituuchi = short(q.value(QStringLiteral("Zeituuchi")).toInt());
    simeText = QString::number(q.value(QStringLiteral("Sime")).toInt());
    if (sales()) nouEntries = NouEntries(code);
    if (!displaying) {
        if (!head.ClassCode)
            head.ClassCode = q.value(sales() ? QStringLiteral("TbnCode") : QStringLiteral("SbnCode")).toLongLong();
        if (!head.TanCode && code != 0) head.TanCode = q.value(QStringLiteral("TanCode")).toLongLong();
    }
    return true;
}

bool SlipEditor::partnerChosen()
{
    if (!head.Partner) return true;
    readPartner(*head.Partner, false);
    zeiNotice = zeiNoticeText(SlipZeituuchi, false);
    return checkPeriod();
}

bool SlipEditor::checkPeriod()
{
    bool ok = true;
    const QString g = ::checkPeriod(head.Year, head.Month, head.Day, ToInt16(simeText, &ok));
    if (g == QLatin1String("RangeOver")) {
        Tell(QStringLiteral("対象年度の範囲内ではありません。"));
        return false;
    }
    Getudo = g;
    return true;
}

bool SlipEditor::showSlip(long dno)
{
    const short office = session().EigCode;
    Query h(db(), QStringLiteral("SELECT * FROM %1 WHERE Dno=? AND EigCode=?").arg(kind_), {qlonglong(dno), office});
    if (!h.next()) return false;
    const DateBoxes d = DateToBoxes(QDate::fromString(NullToEmpty(h.value(QStringLiteral("Hizuke"))), Qt::ISODate));
    head.Year = d.year.trimmed();
    head.Month = d.month.trimmed();
    head.Day = d.day.trimmed();
    weekday = d.weekday;
    head.TanCode = codeOf(h.value(QStringLiteral("TanCode")));
    head.ClassCode = codeOf(h.value(sales() ? QStringLiteral("TbnCode") : QStringLiteral("SbnCode")));
    head.Partner = codeOf(h.value(sales() ? QStringLiteral("TorCode") : QStringLiteral("SirCode")));
    fillPartnerEntries();
    if (head.Partner && !containsCode(partnerEntries, *head.Partner)) {
        const std::optional<qint64> cls = head.ClassCode;
        head.ClassCode.reset();
        fillPartnerEntries();
        head.ClassCode = cls;
    }
    if (head.Partner) readPartner(*head.Partner, true);
    zeiNotice = zeiNoticeText(SlipZeituuchi, true);
    const QString tekiyo = NullToEmpty(h.value(QStringLiteral("Tekiyo")));
    head.Tekiyo = HasText(tekiyo) ? tekiyo : QString();
    head.SNo = FormatRight(double(h.value(QStringLiteral("SNo")).toLongLong()), SlipFormat::Dno);
    head.Kubun = h.value(QStringLiteral("Kubun")).toInt();
    if (sales()) {
        const qint64 nou = h.value(QStringLiteral("NouCode")).toLongLong();
        head.NouCode = nou != 0 ? std::optional<qint64>(nou) : std::nullopt;
    }

    Query q(db(), QStringLiteral("SELECT * FROM %1 WHERE Dno=? AND EigCode=? ORDER BY Eda").arg(lineTable()),
            {qlonglong(dno), office});
    for (int i = 0; i < LineCount && q.next(); ++i) {
        SlipLine& l = lines[i];
        l.Kubun = short(q.value(QStringLiteral("Kubun")).toInt());
        QString code = NullToEmpty(q.value(QStringLiteral("HinCode"))).trimmed();
        l.HinCode = ZeroStrip(code);
        l.HinNamae = NullToEmpty(q.value(QStringLiteral("HinNamae"))).trimmed();
        l.Suu = QString::number(q.value(QStringLiteral("Suu")).toLongLong());
        l.STanka = Money::fromStore(q.value(QStringLiteral("STanka"))).toText();
        l.sGaku = Money::fromStore(q.value(QStringLiteral("sGaku"))).toText();
        l.UTanka = Money::fromStore(q.value(QStringLiteral("UTanka"))).toText();
        l.ZeiFlag = short(q.value(QStringLiteral("ZeiFlag")).toInt());
        l.Net = Money::fromStore(q.value(QStringLiteral("UGaku")));
        l.Zei = Money::fromStore(q.value(QStringLiteral("ZeiGaku")));
        l.Gaku = (l.ZeiFlag == 2 ? l.Net + l.Zei : l.Net).toText();
    }
    showLines();
    showTotals(0);
    return true;
}

namespace {
// A quantity is a long in the store, and the grid shows it in six places: a longer one would
// lose its left digits on the way, so it must fit both. Commas, blanks and the "*" of an
// amount the clerk owns are not part of the number.
bool quantityText(const QString& text)
{
    bool ok = true;
    const qint32 v = ToInt32(text, &ok);
    return ok && ToNum(FormatRight(double(v), SlipFormat::Suu)) == double(v);
}

QString quantityRefusal() { return QStringLiteral("数量に不適切な数値です。\n999999以下にしてください。"); }
} // namespace

SlipFocus SlipEditor::checkSlip()
{
    if (!HasText(head.Dno)) {
        Tell(QStringLiteral("伝票番号が不正です。"));
        return SlipFocus::Number;
    }
    if (!BoxesAreDate(head.Year, head.Month, head.Day)) {
        Tell(QStringLiteral("日付が不正です。"));
        return SlipFocus::Year;
    }
    if (!head.Partner || *head.Partner < 1) {
        Tell(sales() ? QStringLiteral("得意先が記入されていません。") : QStringLiteral("仕入先が記入されていません。"));
        return SlipFocus::Partner;
    }
    // There is no entry that means the customer itself.
    if (!nouEntries.isEmpty() && !head.NouCode) {
        Tell(QStringLiteral("納入先が記入されていません。"));
        return SlipFocus::Nou;
    }
    readRowsToLines();
    // A quantity can reach F10 without its cell being left: the line is refused here too.
    for (int i = 0; i < LineCount; ++i)
        if (!lines[i].isEmpty() && !quantityText(lines[i].Suu)) {
            Tell(quantityRefusal());
            return SlipFocus::FirstRowKind;
        }
    return checkLineAmounts() ? SlipFocus::FirstRowKind : SlipFocus::None;
}

bool SlipEditor::quantityFits(int row)
{
    if (row < 0 || row >= RowCount || quantityText(rows[row].fSuu)) return true;
    Tell(quantityRefusal());
    return false;
}

bool SlipEditor::checkLineAmounts()
{
    for (int i = 0; i < LineCount; ++i) {
        const SlipLine& l = lines[i];
        // A "*" quantity marks amounts the clerk owns; there is no product to compare.
        if (l.isEmpty() || l.clerkOwned()) continue;
        if (ToNum(l.Suu) * ToNum(l.UTanka) == ToNum(l.Gaku)) continue;
        // One answer covers the slip.
        return Ask(QString::number(i + 1) + QStringLiteral("行で金額が個数×単価でありません。"),
                   QStringLiteral("修正"), QStringLiteral("無視"));
    }
    return false;
}

SlipLookup SlipEditor::productLookup() const
{
    const QString partner = QString::number(head.Partner.value_or(0));
    if (!sales()) return {QStringLiteral("Ska"), partner, QString()};
    const qint64 nou = head.NouCode.value_or(0);
    if (nou == 0) return {QStringLiteral("Tka"), partner, QString()};
    return {QStringLiteral("Nka"), partner, QString::number(nou)};
}

SlipLookup SlipEditor::partnerLookup() const
{
    return {partnerTable(), head.ClassCode ? QString::number(*head.ClassCode) : QStringLiteral("ALL"), QString()};
}

SlipLookup SlipEditor::classLookup() const { return {classTable(), QString(), QString()}; }
