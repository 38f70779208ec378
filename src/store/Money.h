#pragma once
// Money: a signed 64-bit count of ten-thousandths of a yen.
// Exactly three conversions exist: money x money is money (rounded at the fourth
// decimal, ties to even); a division runs in double; a double comes back to money
// by rounding at the fourth decimal, ties to even.
#include <cstdint>
#include <cmath>
#include <QString>
#include <QVariant>

class Money {
public:
    static constexpr int64_t Scale = 10000;

    constexpr Money() = default;
    static constexpr Money fromRaw(int64_t raw) { Money m; m.raw_ = raw; return m; }
    static constexpr Money fromYen(int64_t yen) { return fromRaw(yen * Scale); }
    // Back from double: round at the fourth decimal, a tie to the even digit.
    static Money fromDouble(double v) { return fromRaw(static_cast<int64_t>(std::nearbyint(v * Scale))); }
    // Reads a column: NULL and non-numbers are 0 (INTEGER ten-thousandths in the store).
    static Money fromStore(const QVariant& v) { return fromRaw(v.isNull() ? 0 : v.toLongLong()); }

    constexpr int64_t raw() const { return raw_; }
    double toDouble() const { return static_cast<double>(raw_) / Scale; }
    QVariant toStore() const { return QVariant(static_cast<qlonglong>(raw_)); }
    // Whole yen toward zero, and whether a fraction of a yen is left.
    constexpr int64_t truncYen() const { return raw_ / Scale; }
    constexpr bool hasFraction() const { return raw_ % Scale != 0; }
    // Plain decimal text, trailing zero decimals dropped: "1000", "-50.5".
    QString toText() const;

    constexpr Money operator+(Money o) const { return fromRaw(raw_ + o.raw_); }
    constexpr Money operator-(Money o) const { return fromRaw(raw_ - o.raw_); }
    constexpr Money operator-() const { return fromRaw(-raw_); }
    Money& operator+=(Money o) { raw_ += o.raw_; return *this; }
    Money& operator-=(Money o) { raw_ -= o.raw_; return *this; }
    Money operator*(Money o) const;
    Money operator*(int64_t n) const { return fromRaw(raw_ * n); }
    double operator/(Money o) const { return toDouble() / o.toDouble(); }
    double operator/(double d) const { return toDouble() / d; }

    constexpr auto operator<=>(const Money&) const = default;

private:
    int64_t raw_ = 0;
};

inline Money Money::operator*(Money o) const
{
    // Exact product in 128 bits, then one rounding at the fourth decimal, ties to even.
    __int128 p = static_cast<__int128>(raw_) * o.raw_;
    __int128 q = p / Scale, r = p % Scale;
    __int128 twice = (r < 0 ? -r : r) * 2;
    if (twice > Scale || (twice == Scale && (q % 2 != 0)))
        q += (p < 0) ? -1 : 1;
    return fromRaw(static_cast<int64_t>(q));
}

inline QString Money::toText() const
{
    int64_t a = raw_ < 0 ? -raw_ : raw_;
    QString s = QString::number(a / Scale);
    int64_t frac = a % Scale;
    if (frac) {
        QString f = QString::number(frac).rightJustified(4, QLatin1Char('0'));
        while (f.endsWith(QLatin1Char('0'))) f.chop(1);
        s += QLatin1Char('.') + f;
    }
    return raw_ < 0 ? QLatin1Char('-') + s : s;
}
