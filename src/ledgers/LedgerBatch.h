#pragma once
// Ledger processing ("台帳処理"): every marked sales and purchase line goes into the product,
// customer and supplier ledgers; then the marks are cleared and the negated rows of amended
// slips removed. The run is one unit of work: on any failure the store stays as it was and
// `error` gets "エラー：" with the number and text, for the caller to tell.
#include "ledgers/LedgerRun.h"

bool runLedgerProcessing(const ProgressFn& progress, QString* error);

// The three phases, for the driver above and for tests of one phase.
bool PostProductMonths(LedgerRun& run);
bool PostSalesGroups(LedgerRun& run);
bool PostPurchaseMonths(LedgerRun& run);
