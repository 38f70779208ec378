#include "entry/Convert.h"

#include <cmath>
#include <cstdio>
#include <limits>

namespace {

bool isDigit(QChar c) { return c.unicode() >= u'0' && c.unicode() <= u'9'; }

// Blanks as a clerk sees them: the half-width and the full-width space.
bool isBlank(QChar c) { return c == QLatin1Char(' ') || c.unicode() == 0x3000; }

bool digitsAndBlanksOnly(const QString& text)
{
    for (QChar c : text)
        if (!isDigit(c) && c != QLatin1Char(' ')) return false;
    return true;
}

void stripLeadingZeros(QString& digits)
{
    qsizetype n = 0;
    while (n < digits.size() && digits[n] == QLatin1Char('0')) ++n;
    digits.remove(0, n);
}

// A number held as decimal digits, so that rounding works on what was typed or stored
// and not on its binary neighbour.
struct Decimal {
    bool negative = false;
    QString whole;  // no leading zeros, "" for a whole part of 0
    QString frac;

    bool isZero() const
    {
        if (!whole.isEmpty()) return false;
        for (QChar c : frac)
            if (c != QLatin1Char('0')) return false;
        return true;
    }
};

// The number at the head of a text, read as the old Val read the output of NumText:
// one leading minus, digits, one point; a second point or a later minus ends it.
Decimal leadingNumber(const QString& text)
{
    Decimal d;
    bool inFrac = false;
    bool first = true;
    for (QChar c : text) {
        if (isDigit(c)) {
            (inFrac ? d.frac : d.whole).append(c);
        } else if (c == QLatin1Char('.')) {
            if (inFrac) break;
            inFrac = true;
        } else if (c == QLatin1Char('-')) {
            if (!first) break;
            d.negative = true;
        } else {
            continue;  // dropped, as NumText drops it
        }
        first = false;
    }
    stripLeadingZeros(d.whole);
    return d;
}

// Fifteen significant digits, as the old format function saw a double.
Decimal decimalOf(double v)
{
    Decimal d;
    if (!std::isfinite(v) || v == 0) return d;
    d.negative = v < 0;
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.14e", std::fabs(v));
    const QString s = QString::fromLatin1(buf);
    const qsizetype e = s.indexOf(QLatin1Char('e'));
    QString digits = s.left(e);
    digits.remove(QLatin1Char('.'));
    const int exp = s.mid(e + 1).toInt();
    if (exp >= 0) {
        if (digits.size() < exp + 1) digits = digits.leftJustified(exp + 1, QLatin1Char('0'));
        d.whole = digits.left(exp + 1);
        d.frac = digits.mid(exp + 1);
    } else {
        d.frac = QString(-exp - 1, QLatin1Char('0')) + digits;
    }
    stripLeadingZeros(d.whole);
    return d;
}

Decimal decimalOf(Money m)
{
    Decimal d;
    const int64_t raw = m.raw();
    d.negative = raw < 0;
    const quint64 a = raw < 0 ? quint64(0) - quint64(raw) : quint64(raw);
    d.whole = QString::number(a / quint64(Money::Scale));
    stripLeadingZeros(d.whole);
    d.frac = QString::number(a % quint64(Money::Scale)).rightJustified(4, QLatin1Char('0'));
    return d;
}

// Keeps `places` decimals. A half goes away from zero, or to the even digit with halfEven.
void roundTo(Decimal& d, int places, bool halfEven)
{
    if (d.frac.size() <= places) {
        d.frac = d.frac.leftJustified(places, QLatin1Char('0'));
        return;
    }
    const QChar first = d.frac[places];
    bool up = first > QLatin1Char('5');
    if (first == QLatin1Char('5')) {
        up = true;
        if (halfEven) {
            bool exactHalf = true;
            for (qsizetype i = places + 1; i < d.frac.size(); ++i)
                if (d.frac[i] != QLatin1Char('0')) exactHalf = false;
            if (exactHalf) {
                const QString kept = d.whole + d.frac.left(places);
                const int last = kept.isEmpty() ? 0 : kept.back().unicode() - u'0';
                up = last % 2 != 0;
            }
        }
    }
    d.frac.truncate(places);
    if (!up) return;
    QString digits = d.whole + d.frac;
    qsizetype i = digits.size() - 1;
    while (i >= 0 && digits[i] == QLatin1Char('9')) digits[i--] = QLatin1Char('0');
    if (i < 0)
        digits.prepend(QLatin1Char('1'));
    else
        digits[i] = QChar(digits[i].unicode() + 1);
    d.whole = digits.left(digits.size() - places);
    d.frac = digits.right(places);
    stripLeadingZeros(d.whole);
}

// The double value; *overflow is set when it lies beyond the range of a double, where the
// old Val stopped with an overflow. Such a number reads as 0.
double toDouble(const Decimal& d, bool* overflow = nullptr)
{
    if (overflow) *overflow = false;
    if (d.isZero()) return 0;
    const QString s = (d.whole.isEmpty() ? QStringLiteral("0") : d.whole) + QLatin1Char('.')
                      + (d.frac.isEmpty() ? QStringLiteral("0") : d.frac);
    const double v = s.toDouble();
    if (!std::isfinite(v) || v > std::numeric_limits<double>::max()) {
        if (overflow) *overflow = true;
        return 0;
    }
    if (v == 0) return 0;
    return d.negative ? -v : v;
}

// A number picture: "#" a digit if there is one, "0" always a digit, "," thousands,
// "." the point. Other characters take width but show nothing.
struct Picture {
    int minWhole = 0;      // whole digits always shown, counted from the first "0"
    bool grouping = false;
    int places = 0;        // decimals after rounding
    int forcedPlaces = 0;  // decimals shown even when zero
};

Picture parsePicture(const QString& format)
{
    Picture p;
    const qsizetype point = format.indexOf(QLatin1Char('.'));
    const QString whole = point < 0 ? format : format.left(point);
    const QString frac = point < 0 ? QString() : format.mid(point + 1);
    bool forced = false;
    for (QChar c : whole) {
        if (c == QLatin1Char('0')) forced = true;
        if (c == QLatin1Char(',')) p.grouping = true;
        if (forced && (c == QLatin1Char('0') || c == QLatin1Char('#'))) ++p.minWhole;
    }
    for (QChar c : frac) {
        if (c == QLatin1Char('#') || c == QLatin1Char('0')) ++p.places;
        if (c == QLatin1Char('0')) p.forcedPlaces = p.places;
    }
    return p;
}

QString applyPicture(Decimal d, const QString& format)
{
    const Picture p = parsePicture(format);
    roundTo(d, p.places, false);
    QString frac = d.frac;
    while (frac.size() > p.forcedPlaces && frac.endsWith(QLatin1Char('0'))) frac.chop(1);
    QString whole = d.whole.rightJustified(p.minWhole, QLatin1Char('0'));
    if (p.grouping)
        for (qsizetype i = whole.size() - 3; i > 0; i -= 3) whole.insert(i, QLatin1Char(','));
    QString out = whole;
    if (!frac.isEmpty()) out += QLatin1Char('.') + frac;
    // A figure that rounds to zero carries no sign.
    if (d.negative && !d.isZero()) out.prepend(QLatin1Char('-'));
    return out;
}

QString rightAligned(const QString& shown, const QString& format)
{
    return (QString(20, QLatin1Char(' ')) + shown).right(format.size());
}

// One Shift JIS character: a code point and its byte length.
int sjisBytes(char32_t cp)
{
    if (cp < 0x80) return 1;
    if (cp >= 0xFF61 && cp <= 0xFF9F) return 1;  // half-width katakana
    if (cp == 0x00A5 || cp == 0x203E) return 1;  // JIS roman yen sign and overline
    return 2;
}

// Length in UTF-16 units of the character at i, and its code point.
qsizetype charAt(const QString& text, qsizetype i, char32_t& cp)
{
    const QChar c = text[i];
    if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
        cp = QChar::surrogateToUcs4(c, text[i + 1]);
        return 2;
    }
    cp = c.unicode();
    return 1;
}

template <typename Int>
Int toInteger(const QString& text, bool* ok)
{
    if (ok) *ok = true;
    bool overflow = false;
    const double v = toDouble(leadingNumber(text), &overflow);
    if (v == 0 && !overflow) return 0;
    // The old integer conversion rounded a half to the even number.
    double r = std::floor(v);
    const double diff = v - r;
    if (diff > 0.5 || (diff == 0.5 && std::fmod(r, 2.0) != 0)) r += 1;
    if (overflow || r < double(std::numeric_limits<Int>::min())
        || r > double(std::numeric_limits<Int>::max())) {
        if (ok) *ok = false;
        return 0;
    }
    return static_cast<Int>(r);
}

}  // namespace

QString NullToEmpty(const QVariant& value)
{
    return value.isNull() ? QString() : value.toString();
}

QVariant NullToZero(const QVariant& value)
{
    return value.isNull() ? QVariant(0) : value;
}

QString EmptyToSpace(const QString& value)
{
    return value.isEmpty() ? QStringLiteral(" ") : value;
}

bool HasText(const QString& value)
{
    for (QChar c : value)
        if (!isBlank(c)) return true;
    return false;
}

bool HasText(const QVariant& value)
{
    return !value.isNull() && HasText(value.toString());
}

QString ToText(double value)
{
    if (value == 0 || !std::isfinite(value)) return QStringLiteral("0");
    return QString::number(value, 'g', 15).toUpper();
}

QString ToText(Money value)
{
    return value.toText();
}

QString NumText(const QString& text)
{
    QString out;
    for (QChar c : text)
        if (isDigit(c) || c == QLatin1Char('.') || c == QLatin1Char('-')) out.append(c);
    return out.isEmpty() ? QStringLiteral("0") : out;
}

QString DigitText(const QString& text)
{
    QString out;
    for (QChar c : text)
        if (isDigit(c)) out.append(c);
    return out.isEmpty() ? QStringLiteral("0") : out;
}

double ToNum(const QString& text)
{
    return toDouble(leadingNumber(text));
}

Money ToCur(const QString& text, bool* ok)
{
    if (ok) *ok = true;
    Decimal d = leadingNumber(text);
    if (d.isZero()) return Money();
    roundTo(d, 4, true);
    // The money range is that of a 64-bit count of ten-thousandths.
    const QString digits = d.whole + d.frac;
    bool fits = false;
    const qulonglong magnitude = digits.toULongLong(&fits);
    const qulonglong limit = d.negative ? qulonglong(std::numeric_limits<int64_t>::max()) + 1
                                        : qulonglong(std::numeric_limits<int64_t>::max());
    if (!fits || magnitude > limit) {
        if (ok) *ok = false;
        return Money();
    }
    return Money::fromRaw(d.negative ? int64_t(0 - magnitude) : int64_t(magnitude));
}

qint16 ToInt16(const QString& text, bool* ok)
{
    return toInteger<qint16>(text, ok);
}

qint32 ToInt32(const QString& text, bool* ok)
{
    return toInteger<qint32>(text, ok);
}

QString FormatRight(double value, const QString& format)
{
    return rightAligned(applyPicture(decimalOf(value), format), format);
}

QString FormatRight(Money value, const QString& format)
{
    return rightAligned(applyPicture(decimalOf(value), format), format);
}

QString FormatNumber(double value, const QString& format) { return applyPicture(decimalOf(value), format); }

QString FormatNumber(Money value, const QString& format) { return applyPicture(decimalOf(value), format); }

QString ZeroPad13(QString& text)
{
    if (text.isEmpty()) text = QStringLiteral("0");
    if (!digitsAndBlanksOnly(text)) return text;
    // Digits are kept as they are: a code longer than a double holds exactly still
    // keeps its last thirteen digits.
    QString digits = text;
    digits.remove(QLatin1Char(' '));
    stripLeadingZeros(digits);
    if (digits.isEmpty()) digits = QStringLiteral("0");
    return digits.rightJustified(13, QLatin1Char('0')).right(13);
}

QString ZeroStrip(QString& text)
{
    if (text.isEmpty()) return QStringLiteral("0");
    if (!digitsAndBlanksOnly(text)) return text;
    stripLeadingZeros(text);
    return text.isEmpty() ? QStringLiteral("0") : text;
}

int SjisLength(const QString& text)
{
    int bytes = 0;
    for (qsizetype i = 0; i < text.size();) {
        char32_t cp = 0;
        i += charAt(text, i, cp);
        bytes += sjisBytes(cp);
    }
    return bytes;
}

QString CutToBytes(const QString& text, int maxBytes)
{
    int bytes = 0;
    qsizetype i = 0;
    while (i < text.size()) {
        char32_t cp = 0;
        const qsizetype units = charAt(text, i, cp);
        if (bytes + sjisBytes(cp) > maxBytes) break;
        bytes += sjisBytes(cp);
        i += units;
    }
    return text.left(i);
}

QString CopyIfEmpty(const QString& source, const QString& target, int maxBytes)
{
    return CutToBytes(HasText(target) ? target : source, maxBytes);
}
