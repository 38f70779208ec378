#pragma once
// Consumption tax: which of the two rates applies, the tax of a tax-exclusive amount and
// the net of a tax-inclusive amount, rounded by each partner's unit (`HsuType`) and mode (`Hsu`).
// The plain forms read the rates from the session; the TaxRates forms let batch code pass them.
#include <QDate>
#include "store/Money.h"

struct TaxRates {
    Money Zeiritu;        // old rate, percent; paid up to and including TaxChangeDate
    Money TaxRateNew;     // new rate, percent
    QDate TaxChangeDate;  // last day of the old rate
};

// The rates held by the session.
TaxRates sessionTaxRates();

// True when the date is strictly later than the change date.
bool IsNewTaxRate(const TaxRates& rates, const QDate& date);
bool IsNewTaxRate(const QDate& date);

// Tax of a tax-exclusive amount. Negative amounts mirror positive ones.
Money CalcTax(const TaxRates& rates, bool isNewRate, Money amount, short HsuType, short Hsu);
Money CalcTax(bool isNewRate, Money amount, short HsuType, short Hsu);

// Net of a tax-inclusive amount. Always whole yen (a floor), so not symmetric in sign,
// and the unit only reaches the result through the scaled value's precision.
Money CalcNetAmount(const TaxRates& rates, bool isNewRate, Money amount, short HsuType, short Hsu);
Money CalcNetAmount(bool isNewRate, Money amount, short HsuType, short Hsu);
