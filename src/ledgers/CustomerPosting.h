#pragma once
// The customer ledger: one customer's marked sales lines of one closing month, by delivery
// destination, with the month's tax by the customer's tax notification mode, and the chain of
// balances over the fiscal year.
#include <QtGlobal>
#include "store/Money.h"

class LedgerRun;

// Zeituuchi 1 (per invoice), 2 (per delivery slip), 3 (per line), 4 (exempt); any other mode
// posts nothing.
bool PostCustomerGroup(LedgerRun& run, int month, qint64 TorCode, int Zeituuchi);

// The month's tax of the customer's destinations (all offices): a single row counts whatever
// its destination, otherwise the customer's own row is left out.
Money SumDeliveryTax(LedgerRun& run, qint64 TorCode, int month);

// For each customer with destination rows -10: the carry over its own rows (NouCode 0), its
// head's Zan and its row 13. officeOnly holds the list to the run's office.
bool CarryCustomerOwnRows(LedgerRun& run, bool officeOnly, const QString& progressPrefix);
