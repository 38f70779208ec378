#pragma once
// The supplier ledger: all marked purchase lines of one closing month, every supplier in one
// pass. The tax of a run is rounded by itself and added to the month's tax.
class LedgerRun;

bool PostSupplierMonth(LedgerRun& run, int month);
