#include "entry/Dates.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QVariant>

#include "store/Session.h"

namespace {

// Era years are Western years less this offset; the system knows one era only.
constexpr int EraOffset = 1988;

// Anything above this is "too big" for every box; it keeps the arithmetic from overflowing.
constexpr long long DigitCap = 999999999;

bool isAsciiDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

// The value of the ASCII digits of a box; full-width digits are not digits. No digits gives 0.
long long digitValue(const QString& text)
{
    long long v = 0;
    for (QChar c : text) {
        if (!isAsciiDigit(c))
            continue;
        v = v * 10 + (c.unicode() - '0');
        if (v > DigitCap)
            v = DigitCap;
    }
    return v;
}

bool hasText(const QString& text) { return !text.trimmed().isEmpty(); }

int eraShift() { return session().Hiz == 1 ? EraOffset : 0; }

// A number in an all-"#" picture: zero shows as blanks, and the text is cut from the right
// to the picture's width, so a wider number loses its left part.
QString formatRight(long long value, int width)
{
    const QString digits = value == 0 ? QString() : QString::number(value);
    return (QString(20, QLatin1Char(' ')) + digits).right(width);
}

QString twoDigits(int v) { return QStringLiteral("%1").arg(v, 2, 10, QLatin1Char('0')); }

bool isCalendarDate(long long y, long long m, long long d)
{
    return y >= 1 && y <= 9999 && m >= 1 && m <= 12 && d >= 1
        && d <= LastDayOfMonth(int(y), int(m));
}

}  // namespace

QString ClosingMonth(short sime, short year, short month, short day, int nendo, short sTuki,
                     short eTuki)
{
    int m = month;
    int y = year;
    if (sime < day) {
        ++m;
        if (m == 13) {
            m = 1;
            ++y;
        }
    }
    const int ym = y * 100 + m;
    const int first = nendo * 100 + sTuki;
    const int last = eTuki > sTuki ? nendo * 100 + eTuki : (nendo + 1) * 100 + eTuki;
    if (first <= ym && ym <= last)
        return QString::number(m);

    // Dates of the last fiscal month behind the partner's closing still belong to this
    // year's file, though their closing month falls in the next year.
    const int endYear = eTuki <= sTuki ? nendo + 1 : nendo;
    const long long yearEnd =
        endYear * 10000LL + eTuki * 100LL + LastDayOfMonth(endYear, eTuki);
    const long long given = year * 10000LL + month * 100LL + day;
    if (given <= yearEnd && ym >= first)
        return QStringLiteral("13");
    return QStringLiteral("RangeOver");
}

QString ClosingMonth(short sime, short year, short month, short day)
{
    const Session& s = session();
    return ClosingMonth(sime, year, month, day, s.Nendo, s.sTuki, s.eTuki);
}

short PartnerSime(const QString& kind, long code)
{
    const QSqlDatabase& db = session().MasterDb;
    if (!db.isValid() || !db.isOpen())
        return 0;
    const bool customer = kind == QLatin1String("TOR");
    QSqlQuery q(db);
    if (!q.prepare(customer ? QStringLiteral("SELECT Sime FROM Tor WHERE Code=?")
                            : QStringLiteral("SELECT Sime,SimeFlag FROM Sir WHERE Code=?")))
        return 0;
    q.addBindValue(qlonglong(code));
    if (!q.exec() || !q.next())
        return 0;
    if (customer)
        return short(q.value(0).toInt());
    // A supplier has its own closing day only when flagged so; otherwise the company's applies.
    if (q.value(1).toInt() == 2)
        return short(q.value(0).toInt());
    return session().Sime;
}

void PeriodOfMonth(short sime, int year, int month, QDate& from, QDate& to)
{
    if (sime == 31) {
        if (month < 1 || month > 12)
            return;
        from = QDate(year, month, 1);
        to = QDate(year, month, LastDayOfMonth(year, month));
        return;
    }
    int py = year;
    int pm = month - 1;
    if (month == 1) {
        pm = 12;
        py = year - 1;
    }
    // A period whose ends are not both real days leaves the caller's values as they were.
    if (!isCalendarDate(py, pm, sime + 1) || !isCalendarDate(year, month, sime))
        return;
    from = QDate(py, pm, sime + 1);
    to = QDate(year, month, sime);
}

int LastDayOfMonth(int year, int month)
{
    switch (month) {
    case 1: case 3: case 5: case 7: case 8: case 10: case 12:
        return 31;
    case 4: case 6: case 9: case 11:
        return 30;
    case 2:
        if (year % 4 != 0)
            return 28;
        if (year % 100 == 0 && year % 400 != 0)
            return 28;
        return 29;
    default:
        return 0;  // not a month
    }
}

QDate DateFromParts(int year, int month, int day)
{
    const QDate start(year, 1, day);
    if (!start.isValid())
        return QDate();
    // addMonths keeps the day where it can and falls back to the month's last day otherwise.
    return start.addMonths(month - 1);
}

QDate BoxesToDate(const QString& year, const QString& month, const QString& day)
{
    return BoxesToDate(year, month, day, QDate::currentDate());
}

QDate BoxesToDate(const QString& yearBox, const QString& monthBox, const QString& dayBox,
                  const QDate& today)
{
    const int shift = eraShift();
    long long y = hasText(yearBox) ? digitValue(yearBox) : today.year() - shift;
    long long m = hasText(monthBox) ? digitValue(monthBox) : 1;
    long long d = hasText(dayBox) ? digitValue(dayBox) : 1;
    y += shift;

    // The order matters only for the record; each clamp looks at one value.
    if (y > 9999)
        y = today.year();
    if (m > 12)
        m = 12;
    if (d > 31)
        d = 31;
    if (y < 1)
        y = today.year();
    if (m < 1)
        m = today.month();
    if (d < 1)
        d = 1;
    return DateFromParts(int(y), int(m), int(d));
}

DateBoxes DateToBoxes(const QDate& date)
{
    if (!date.isValid())
        return {};
    return {formatRight(date.year() - eraShift(), 4), formatRight(date.month(), 2),
            formatRight(date.day(), 2), WeekdayText(date)};
}

bool BoxesAreDate(const QString& year, const QString& month, const QString& day)
{
    return isCalendarDate(digitValue(year) + eraShift(), digitValue(month), digitValue(day));
}

int DisplayYear(const QDate& date) { return date.year() - eraShift(); }

QString NendoText()
{
    const int nendo = session().Nendo;
    if (session().Hiz == 1)
        return QStringLiteral("H") + QString::number(nendo - EraOffset) + QStringLiteral("年");
    return QString::number(nendo) + QStringLiteral("年");
}

QString WeekdayText(const QDate& date)
{
    static const char16_t* const names[] = {u"月曜", u"火曜", u"水曜", u"木曜",
                                            u"金曜", u"土曜", u"日曜"};
    const int dow = date.dayOfWeek();  // 1 = Monday .. 7 = Sunday, 0 when invalid
    if (dow < 1 || dow > 7)
        return QString();
    return QString::fromUtf16(names[dow - 1]);
}

QString FormatDate(const QDate& date, int style)
{
    if (!date.isValid())
        return QString();
    const QString y = QString::number(DisplayYear(date));
    const QString mm = twoDigits(date.month());
    const QString dd = twoDigits(date.day());
    switch (style) {
    case -1:
        return QString::number(date.year()) + u'/' + mm + u'/' + dd;
    case 0:
        return y + u'/' + mm + u'/' + dd;
    case 1:
        return y + QStringLiteral("年") + mm + QStringLiteral("月") + dd + QStringLiteral("日 (")
            + WeekdayText(date) + u')';
    case 2:
        return mm + u'/' + dd;
    case 3:
        return dd;
    case 4:
        return mm + dd;
    default:
        return QString();
    }
}

QString NextGetudo(const QString& getudo)
{
    const QString t = getudo.trimmed();
    long long n = digitValue(t);
    if (t.startsWith(u'-'))
        n = -n;
    long long next = n + 1;
    // Month counts run 1..13 within a hundred (13 is the carried row), so a count stepping past
    // 13 wraps to 1 of the same hundred: 13 -> 1 and 213 -> 201 alike; 12 -> 13 stays.
    if (next > 0 && next % 100 == 14)
        next -= 13;
    return QString::number(next);
}
