#include "slips/SlipTax.h"
#include <cmath>

void calcLineTax(const TaxRates& rates, SlipLineTax& line, const QDate& date, short HsuType, short Hsu)
{
    const Money amount = line.Gaku;
    switch (line.ZeiFlag) {
    case 1:
        line.Net = amount;
        line.Zei = CalcTax(rates, IsNewTaxRate(rates, date), amount, HsuType, Hsu);
        break;
    case 2:
        line.Net = CalcNetAmount(rates, IsNewTaxRate(rates, date), amount, HsuType, Hsu);
        line.Zei = amount - line.Net;
        break;
    case 3:
        line.Net = amount;
        line.Zei = Money();
        break;
    case 4:  // the clerk's own tax stays
        line.Net = amount;
        break;
    default:  // unset or unknown kind: left as it is
        break;
    }
}

void calcLineTax(SlipLineTax& line, const QDate& date, short HsuType, short Hsu)
{
    calcLineTax(sessionTaxRates(), line, date, HsuType, Hsu);
}

void calcSlipTax(const TaxRates& rates, std::span<SlipLineTax> lines, short Zeituuchi,
                 const QDate& date, short HsuType, short Hsu)
{
    switch (Zeituuchi) {
    case 1:  // per invoice: the ledgers add the tax later
    case 4:  // exempt
        for (SlipLineTax& l : lines)
            if (l.ZeiFlag != 2)
                l.Zei = Money();
        break;
    case 2: {  // per delivery slip: one tax on the first outside-tax line
        Money sum;
        SlipLineTax* first = nullptr;
        for (SlipLineTax& l : lines) {
            if (l.ZeiFlag != 1)
                continue;
            sum += l.Gaku;
            l.Zei = Money();
            if (!first)
                first = &l;
        }
        if (first)
            first->Zei = CalcTax(rates, IsNewTaxRate(rates, date), sum, HsuType, Hsu);
        break;
    }
    default:  // 3 per line keeps each line's own tax; unknown modes leave the lines alone
        break;
    }
}

void calcSlipTax(std::span<SlipLineTax> lines, short Zeituuchi, const QDate& date, short HsuType, short Hsu)
{
    calcSlipTax(sessionTaxRates(), lines, Zeituuchi, date, HsuType, Hsu);
}

void calcSlipTax(QList<SlipLineTax>& lines, short Zeituuchi, const QDate& date, short HsuType, short Hsu)
{
    calcSlipTax(std::span<SlipLineTax>(lines.data(), static_cast<size_t>(lines.size())),
                Zeituuchi, date, HsuType, Hsu);
}

Money lineAmount(double quantity, Money unitPrice)
{
    // A quantity the money type cannot hold is not a quantity.
    if (!std::isfinite(quantity) || std::fabs(quantity) >= 1e14)
        return Money();
    // Exact decimal product first, so a price such as 100.10 does not lose its tie in binary.
    const Money p = Money::fromDouble(quantity) * unitPrice;
    int64_t yen = p.truncYen();
    const int64_t rest = p.raw() % Money::Scale;
    if ((rest < 0 ? -rest : rest) * 2 >= Money::Scale)
        yen += p.raw() < 0 ? -1 : 1;
    return Money::fromYen(yen);
}

SlipTotals slipTotals(std::span<const SlipLineTax> lines)
{
    SlipTotals t;
    for (const SlipLineTax& l : lines) {
        t.sumNet += l.Net;
        t.sumZei += l.Zei;
        t.sumOther += l.sGaku;
        if (l.ZeiFlag == 2)
            t.sumOther -= l.Zei;
    }
    return t;
}

SlipTotals slipTotals(const QList<SlipLineTax>& lines)
{
    return slipTotals(std::span<const SlipLineTax>(lines.data(), static_cast<size_t>(lines.size())));
}
