#include "slips/SlipHeadEditor.h"

#include "entry/Convert.h"
#include "entry/Dates.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "slips/SlipCodes.h"
#include "slips/SlipNumbering.h"
#include "store/Sql.h"

void SlipHeadEditor::setKindWord(const QString& kind, bool customers)
{
    kind_ = kind;
    customers_ = customers;
}

QString SlipHeadEditor::classCaption() const { return customers_ ? QStringLiteral("得意先分類") : QStringLiteral("仕入先分類"); }
QString SlipHeadEditor::partnerCaption() const { return customers_ ? QStringLiteral("得意先") : QStringLiteral("仕入先"); }
QString SlipHeadEditor::classTable() const { return customers_ ? QStringLiteral("Tbn") : QStringLiteral("Sbn"); }
QString SlipHeadEditor::partnerTable() const { return customers_ ? QStringLiteral("Tor") : QStringLiteral("Sir"); }

void SlipHeadEditor::loadLists()
{
    classEntries = CodeTableEntries(classTable());
    tanEntries = CodeTableEntries(QStringLiteral("Tan"));
    fillPartnerEntries();
}

void SlipHeadEditor::fillPartnerEntries()
{
    const std::optional<int> cls = classFilter(partnerHead().ClassCode);
    partnerEntries = customers_ ? TorShopEntries(cls) : SirEntries(cls);
}

long SlipHeadEditor::number() const
{
    bool ok = true;
    return ToInt32(partnerHead().Dno, &ok);
}

QDate SlipHeadEditor::slipDate() const
{
    const PartnerHead& h = partnerHead();
    return BoxesToDate(h.Year, h.Month, h.Day);
}

void SlipHeadEditor::refreshWeekday() { weekday = WeekdayText(slipDate()); }

void SlipHeadEditor::classLeft()
{
    if (!partnerHead().Partner) fillPartnerEntries();
}

SlipLookup SlipHeadEditor::classLookup() const { return {classTable(), QString(), QString()}; }

SlipLookup SlipHeadEditor::partnerLookup() const
{
    const std::optional<qint64>& cls = partnerHead().ClassCode;
    return {partnerTable(), cls ? QString::number(*cls) : QStringLiteral("ALL"), QString()};
}

std::optional<bool> SlipHeadEditor::findNumber(long& n) const
{
    const short office = session().EigCode;
    n = number();
    if (!mode.isEmpty() && n != 0 && n == loadedDno) return std::nullopt;
    if (n == 0) n = GetNextDno(kind_, office);
    return scalar(session().MasterDb, QStringLiteral("SELECT Dno FROM %1 WHERE Dno=? AND EigCode=?").arg(kind_),
                  {qlonglong(n), office})
        .isValid();
}

void SlipHeadEditor::showDate(const QDate& date)
{
    PartnerHead& h = partnerHead();
    const DateBoxes d = DateToBoxes(date);
    h.Year = d.year.trimmed();
    h.Month = d.month.trimmed();
    h.Day = d.day.trimmed();
    weekday = d.weekday;
}

void SlipHeadEditor::showStoredHead(const Query& q, const QString& classColumn, const QString& partnerColumn)
{
    PartnerHead& h = partnerHead();
    showDate(QDate::fromString(NullToEmpty(q.value(QStringLiteral("Hizuke"))), Qt::ISODate));
    h.TanCode = codeOf(q.value(QStringLiteral("TanCode")));
    h.ClassCode = codeOf(q.value(classColumn));
    h.Partner = codeOf(q.value(partnerColumn));
    fillPartnerEntries();
    if (h.Partner && !containsCode(partnerEntries, *h.Partner)) {
        const std::optional<qint64> cls = h.ClassCode;
        h.ClassCode.reset();
        fillPartnerEntries();
        h.ClassCode = cls;
    }
}

void SlipHeadEditor::takeClassAndStaff(const Query& partnerRow, qint64 code, const QString& classColumn)
{
    PartnerHead& h = partnerHead();
    if (!h.ClassCode) h.ClassCode = partnerRow.value(classColumn).toLongLong();
    if (!h.TanCode && code != 0) h.TanCode = partnerRow.value(QStringLiteral("TanCode")).toLongLong();
}

bool SlipHeadEditor::takeClosingMonth(short sime)
{
    const PartnerHead& h = partnerHead();
    const QString g = ::checkPeriod(h.Year, h.Month, h.Day, sime);
    if (g == QLatin1String("RangeOver")) {
        Tell(QStringLiteral("対象年度の範囲内ではありません。"));
        return false;
    }
    Getudo = g;
    return true;
}

SlipFocus SlipHeadEditor::checkHead(bool numberOk) const
{
    const PartnerHead& h = partnerHead();
    if (!numberOk) {
        Tell(QStringLiteral("伝票番号が不正です。"));
        return SlipFocus::Number;
    }
    if (!BoxesAreDate(h.Year, h.Month, h.Day)) {
        Tell(QStringLiteral("日付が不正です。"));
        return SlipFocus::Year;
    }
    if (!h.Partner || *h.Partner < 1) {
        Tell(customers_ ? QStringLiteral("得意先が記入されていません。") : QStringLiteral("仕入先が記入されていません。"));
        return SlipFocus::Partner;
    }
    return SlipFocus::None;
}
