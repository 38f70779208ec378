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
    : SlipHeadEditor(kind == QLatin1String("Dsr") ? QStringLiteral("Dsr") : QStringLiteral("Dur"),
                     kind != QLatin1String("Dsr"))
{
}

QString SlipEditor::lineTable() const { return sales() ? QStringLiteral("Dud") : QStringLiteral("Dsd"); }
QString SlipEditor::side() const { return sales() ? QStringLiteral("URI") : QStringLiteral("KAI"); }
QString SlipEditor::title() const { return slipKind(kind())->title; }
QStringList SlipEditor::lineKinds() const { return lineKubunTexts(kind()); }
QStringList SlipEditor::settlementTexts() const { return headKubunTexts(kind()); }

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
    head.Dno = FormatRight(double(GetNextDno(kind(), session().EigCode)), SlipFormat::Dno);
    head.Kubun = 0;
}

void SlipEditor::clearLines()
{
    lines.fill(SlipLine());
    rows.fill(SlipRow());
    Bar = 0;
    showLines();
}

SlipEditor::NumberOutcome SlipEditor::enterNumber()
{
    long n = 0;
    const std::optional<bool> stored = findNumber(n);
    if (!stored) return NumberOutcome::Unchanged;
    loadedDno = n;
    if (*stored) {
        mode = QStringLiteral("EDIT");
        clearLines();
        showSlip(n);
        head.Dno = FormatRight(double(n), SlipFormat::Dno);
        return NumberOutcome::Edit;
    }
    mode = QStringLiteral("NEW");
    resetHeadFields();
    head.Dno = FormatRight(double(n), SlipFormat::Dno);
    showDate(session().SlipDate.isValid() ? session().SlipDate : QDate::currentDate());
    head.Kubun = 0;
    clearLines();
    // Only a notice: the typed number stands.
    if (n != GetNextDno(kind(), session().EigCode)) Tell(QStringLiteral("伝票番号が連番でないですが、よろしいですか？"));
    return NumberOutcome::New;
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
    if (!displaying) takeClassAndStaff(q, code, sales() ? QStringLiteral("TbnCode") : QStringLiteral("SbnCode"));
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
    return takeClosingMonth(ToInt16(simeText, &ok));
}

bool SlipEditor::showSlip(long dno)
{
    const short office = session().EigCode;
    Query h(db(), QStringLiteral("SELECT * FROM %1 WHERE Dno=? AND EigCode=?").arg(kind()), {qlonglong(dno), office});
    if (!h.next()) return false;
    showStoredHead(h, sales() ? QStringLiteral("TbnCode") : QStringLiteral("SbnCode"),
                   sales() ? QStringLiteral("TorCode") : QStringLiteral("SirCode"));
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
    if (const SlipFocus f = checkHead(HasText(head.Dno)); f != SlipFocus::None) return f;
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
