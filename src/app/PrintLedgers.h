#pragma once
// `velmora print ledger`, `velmora print balances` and `velmora print sales`.
void registerLedgerPrints();
