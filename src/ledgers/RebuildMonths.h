#pragma once
// Rebuilding one month of the customer or supplier ledger of the run's office from all its
// slips: the month is cleared, every line and every deposit or payment of the month is read
// again, whatever its mark, and the balances of the year follow.
class LedgerRun;

bool RebuildCustomerMonth(LedgerRun& run, int month);
bool RebuildSupplierMonth(LedgerRun& run, int month);
