#include "ledgers/Tax.h"
#include "shell/Session.h"

namespace {

const Money Half = Money::fromRaw(Money::Scale / 2);
const Money OneYen = Money::fromYen(1);

Money rateOf(const TaxRates& rates, bool isNewRate)
{
    return isNewRate ? rates.TaxRateNew : rates.Zeiritu;
}

// 10, 100, 1000 for the ten, hundred and thousand yen units; 1 for anything else.
int64_t unitFactor(short HsuType)
{
    switch (HsuType) {
    case 2: return 10;
    case 3: return 100;
    case 4: return 1000;
    default: return 1;
    }
}

// The scale-down runs in double and comes back at four decimals, so a coarse unit
// loses precision here; that loss is part of the result.
Money scaleDown(Money x, int64_t factor)
{
    return factor == 1 ? x : Money::fromDouble(x / static_cast<double>(factor));
}

Money truncToYen(Money x)
{
    return Money::fromYen(x.truncYen());
}

Money floorToYen(Money x)
{
    int64_t q = x.truncYen();
    if (x.hasFraction() && x.raw() < 0)
        --q;
    return Money::fromYen(q);
}

} // namespace

TaxRates sessionTaxRates()
{
    const Session& s = session();
    return TaxRates{s.Zeiritu, s.TaxRateNew, s.TaxChangeDate};
}

bool IsNewTaxRate(const TaxRates& rates, const QDate& date)
{
    return date > rates.TaxChangeDate;
}

bool IsNewTaxRate(const QDate& date)
{
    return IsNewTaxRate(sessionTaxRates(), date);
}

Money CalcTax(const TaxRates& rates, bool isNewRate, Money amount, short HsuType, short Hsu)
{
    const Money rate = rateOf(rates, isNewRate);
    const int64_t factor = unitFactor(HsuType);
    Money x = Money::fromDouble((amount * rate) / 100.0);
    x = scaleDown(x, factor);

    const Money zero;
    switch (Hsu) {
    case 1:  // cut off
        x = truncToYen(x);
        break;
    case 2:  // half away from zero on both signs
        x = truncToYen(x > zero ? x + Half : x - Half);
        break;
    case 3:  // up, away from zero on both signs; whole values stay
        if (x.hasFraction())
            x = truncToYen(x) + (x > zero ? OneYen : -OneYen);
        break;
    default:  // unknown mode: decimals are kept
        break;
    }
    return x * factor;
}

Money CalcTax(bool isNewRate, Money amount, short HsuType, short Hsu)
{
    return CalcTax(sessionTaxRates(), isNewRate, amount, HsuType, Hsu);
}

Money CalcNetAmount(const TaxRates& rates, bool isNewRate, Money amount, short HsuType, short Hsu)
{
    const Money rate = rateOf(rates, isNewRate);
    const int64_t factor = unitFactor(HsuType);
    Money x = Money::fromDouble((amount * 100) / (Money::fromYen(100) + rate));
    x = scaleDown(x, factor);

    Money offset;
    switch (Hsu) {
    case 2: offset = Half; break;
    case 3: offset = x.hasFraction() ? OneYen : Money(); break;
    default: break;  // 1 and unknown modes: no offset
    }
    // Scaled back before the offset, then a floor: one-yen rounding whatever the unit.
    x = x * factor;
    return floorToYen(x + offset);
}

Money CalcNetAmount(bool isNewRate, Money amount, short HsuType, short Hsu)
{
    return CalcNetAmount(sessionTaxRates(), isNewRate, amount, HsuType, Hsu);
}
