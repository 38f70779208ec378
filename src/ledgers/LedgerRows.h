#pragma once
// The rows a ledger pass works with, by `Getudo`, and the mark of a slip line. On a ledger
// month row 1 to 12 is a month of the fiscal year and 13 the row that carries the balance into
// the next year; the negative rows are scratch rows that live only inside one posting (every
// posting deletes them first and last).
#include <initializer_list>
#include <utility>
#include <QString>

// `ThiFlag` of a slip line.
namespace ThiFlag {
constexpr short Waiting = -1;   // waiting for ledger processing
constexpr short Posted = 0;
}

namespace LedgerRow {
constexpr int CarriedOut = 13;       // the balance carried into the next year
// Scratch rows of the product ledger ThiD.
constexpr int SoldQuantity = -1;     // USuu of the sales lines
constexpr int BoughtQuantity = -2;   // SSuu of the purchase lines
constexpr int SalesAmounts = -3;     // UGaku .. UKGaku of the sales lines by line kind
constexpr int BoughtAmounts = -4;    // SGaku .. SKGaku of the purchase lines by line kind
// Scratch rows of the customer and supplier ledgers TtoD and TsiD.
constexpr int LineAmounts = -1;      // Gaku, HGaku, NGaku, KGaku by line kind
constexpr int InvoiceTax = -2;       // tax per invoice (customers both rates, suppliers up to the change)
constexpr int LaterInvoiceTax = -3;  // tax per invoice of the lines after the rate change
constexpr int LineTax = -4;          // the lines' own tax, for partners not taxed per invoice
constexpr int InclusiveTax = -5;     // tax of tax-inclusive lines
constexpr int Cash = -6;             // cash sales or purchases, as Genkin
constexpr int Money = -8;            // money received or paid (the rebuild only)
// Every ledger: the sum of the scratch rows per head. It is also the list of the heads that
// the posting touched: later statements join to it so that only those heads are recomputed.
constexpr int Sum = -10;
}

// The number of a row as it goes into statement text.
inline QString rowText(int getudo) { return QString::number(getudo); }

// A statement made of named pieces: every "{name}" in `text` is replaced by its piece. The
// pieces are names of the store's own layout and numbers, never what a clerk typed.
QString sqlText(QString text, std::initializer_list<std::pair<const char*, QString>> pieces);
