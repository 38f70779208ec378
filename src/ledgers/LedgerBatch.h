#pragma once
// Ledger processing ("台帳処理"): every marked sales and purchase line goes into the product,
// customer and supplier ledgers; then the marks are cleared and the negated rows of amended
// slips removed. The run is one unit of work: on any failure the store stays as it was and
// `error` gets "エラー：" with the number and text, for the caller to tell.
#include "ledgers/LedgerRun.h"
#include "ledgers/Unreached.h"

// `unreached`: the marked lines that the run could not take into a ledger (their marks went
// with the rest, as always); filled only when the run went through.
bool runLedgerProcessing(const ProgressFn& progress, QString* error, QList<UnreachedLine>* unreached = nullptr);

// The three phases, for the driver above and for tests of one phase.
bool PostProductMonths(LedgerRun& run);
bool PostSalesGroups(LedgerRun& run);
bool PostPurchaseMonths(LedgerRun& run);
