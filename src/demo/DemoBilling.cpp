#include "demo/DemoBilling.h"
#include "slips/SlipTax.h"

namespace {
const short kPerInvoice = 1;
}

DemoBilling::Sums& DemoBilling::sums(std::map<DemoLedgerMonth, Sums>& in, const DemoLedgerMonth& at,
                                     const DemoPartnerRule& rule)
{
    Sums& s = in[at];
    s.rule = rule;
    return s;
}

void DemoBilling::addInvoiceTaxed(Sums& s, const QDate& date, Money net)
{
    if (IsNewTaxRate(rates_, date)) {
        s.invoiceNew += net;
        s.anyNew = true;
    } else {
        s.invoiceOld += net;
        s.anyOld = true;
    }
}

void DemoBilling::addSale(const DemoLedgerMonth& at, const DemoPartnerRule& rule, bool cash, const QDate& date,
                          const SlipLineTax& line)
{
    Sums& s = sums(sales_, at, rule);
    s.amount += line.Net;
    if (cash) s.cash += line.Net + line.Zei;
    // Per invoice the month's outside-tax lines are taxed together, cash slips among them;
    // per slip and per line the lines' own tax counts; exempt customers pay none.
    if (rule.Zeituuchi == kPerInvoice) {
        if (line.ZeiFlag == 1) addInvoiceTaxed(s, date, line.Net);
    } else if (rule.Zeituuchi == 2 || rule.Zeituuchi == 3) {
        if (line.ZeiFlag == 1 || line.ZeiFlag == 4) s.lineTax += line.Zei;
    }
}

void DemoBilling::addPurchase(const DemoLedgerMonth& at, const DemoPartnerRule& rule, bool cash, const QDate& date,
                              const SlipLineTax& line)
{
    Sums& s = sums(purchases_, at, rule);
    s.amount += line.Net;
    if (cash) s.cash += line.Net + line.Zei;
    // A supplier taxed per invoice is taxed on its credit slips only; the others by the lines'
    // own tax. Tax inside the price counts whatever the mode.
    if (rule.Zeituuchi == kPerInvoice) {
        if (line.ZeiFlag == 1 && !cash) addInvoiceTaxed(s, date, line.Net);
    } else if (line.ZeiFlag == 1 || line.ZeiFlag == 4) {
        s.lineTax += line.Zei;
    }
    if (line.ZeiFlag == 2) s.lineTax += line.Zei;
}

DemoBills DemoBilling::bills(const std::map<DemoLedgerMonth, Sums>& in) const
{
    DemoBills out;
    for (const auto& [at, s] : in) {
        Money tax = s.lineTax;
        if (s.anyOld) tax += CalcTax(rates_, false, s.invoiceOld, s.rule.HsuType, s.rule.Hsu);
        if (s.anyNew) tax += CalcTax(rates_, true, s.invoiceNew, s.rule.HsuType, s.rule.Hsu);
        out[at] = s.amount + tax - s.cash;
    }
    return out;
}
