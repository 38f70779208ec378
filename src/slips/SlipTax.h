#pragma once
// Tax rules of slip lines, free of any screen: the tax of one line by its kind, the partner's
// tax notification applied to the whole slip, the shown line amount and the slip totals.
// The plain forms read the rates from the session; the TaxRates forms let batch code pass them.
#include <span>
#include <QDate>
#include <QList>
#include "ledgers/Tax.h"
#include "store/Money.h"

struct SlipLineTax {
    short ZeiFlag = 0;  // 1 outside, 2 inside, 3 not taxable, 4 typed tax, 0 unset
    Money Gaku;         // amount as shown: tax-inclusive on kind 2, else without tax
    Money Net;          // amount without tax (`UGaku`)
    Money Zei;          // tax of the line (`ZeiGaku`)
    Money sGaku;        // counter amount, for the gross profit
};

struct SlipTotals {
    Money sumNet;
    Money sumZei;
    Money sumOther;
};

// Net and tax of one line from its shown amount, by its kind.
void calcLineTax(const TaxRates& rates, SlipLineTax& line, const QDate& date, short HsuType, short Hsu);
void calcLineTax(SlipLineTax& line, const QDate& date, short HsuType, short Hsu);

// The partner's tax notification (`Zeituuchi`) applied to all lines of the slip.
void calcSlipTax(const TaxRates& rates, std::span<SlipLineTax> lines, short Zeituuchi,
                 const QDate& date, short HsuType, short Hsu);
void calcSlipTax(std::span<SlipLineTax> lines, short Zeituuchi, const QDate& date, short HsuType, short Hsu);
void calcSlipTax(QList<SlipLineTax>& lines, short Zeituuchi, const QDate& date, short HsuType, short Hsu);

// Quantity times unit price as the amount field shows it: whole yen, ties away from zero.
Money lineAmount(double quantity, Money unitPrice);

// Sums over the lines. sumOther deducts the tax of inside-tax lines, whose counter amount
// counts as tax-inclusive.
SlipTotals slipTotals(std::span<const SlipLineTax> lines);
SlipTotals slipTotals(const QList<SlipLineTax>& lines);
