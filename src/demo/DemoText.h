#pragma once
// Small makers of demo texts: every text goes out cut to its column's Shift JIS width and
// through EmptyToSpace, as the entry forms write it.
#include <QString>
#include <QVariant>
#include "entry/Convert.h"
#include "store/Money.h"
#include "demo/DemoNames.h"
#include "demo/DemoRandom.h"

inline QString demoU(const char* utf8) { return QString::fromUtf8(utf8); }

inline QVariant demoText(const QString& s, int bytes) { return EmptyToSpace(CutToBytes(s, bytes)); }

// A reading in half-width katakana within the width.
inline QVariant demoKana(const QString& fullWidth, int bytes)
{
    return EmptyToSpace(CutToBytes(halfKana(fullWidth), bytes));
}

inline QString demoDigits(DemoRandom& r, int n, bool leadingZero = true)
{
    QString s;
    for (int i = 0; i < n; ++i)
        s += QChar(u'0' + static_cast<char16_t>(i == 0 && !leadingZero ? 1 + r.below(9) : r.below(10)));
    return s;
}

// A ten-digit number under the area code, such as 03-3861-2451 or 045-212-3344.
inline QString demoPhone(DemoRandom& r, const char* area)
{
    const QString a = demoU(area);
    const int local = 10 - static_cast<int>(a.size()) - 4;
    const QString exchange = demoDigits(r, local, false);
    return a + QLatin1Char('-') + exchange + QLatin1Char('-') + demoDigits(r, 4);
}

// The fax line is usually the number next to the phone.
inline QString demoFax(const QString& tel)
{
    const int last = tel.right(4).toInt();
    return tel.left(tel.size() - 4) + QString::number((last + 1) % 10000).rightJustified(4, QLatin1Char('0'));
}

inline QString demoYubin(const char* zip)
{
    const QString z = demoU(zip);
    return z.left(3) + QLatin1Char('-') + z.mid(3);
}

// Block and lot, sometimes with a building: "2-11-7" or "3-4-1 共栄ビル 5F".
inline QString demoStreet(DemoRandom& r, const QString& building)
{
    QString s = QStringLiteral("%1-%2-%3").arg(r.range(1, 5)).arg(r.range(1, 30)).arg(r.range(1, 20));
    if (!building.isEmpty() && r.chance(3, 10))
        s += QLatin1Char(' ') + building + QStringLiteral("ビル %1F").arg(r.range(2, 8));
    return s;
}

// A price with its fraction cut to `unit` ten-thousandths, halves up (prices are positive).
inline Money demoRound(Money m, int64_t unit)
{
    return Money::fromRaw((m.raw() + unit / 2) / unit * unit);
}

// `percent` of a price, to whole yen from 100 yen up and to the sen below.
inline Money demoPercent(Money m, int percent)
{
    const Money p = Money::fromRaw(m.raw() * percent / 100);
    return demoRound(p, p >= Money::fromYen(100) ? Money::Scale : Money::Scale / 100);
}
