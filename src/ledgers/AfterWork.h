#pragma once
// Ledger processing: brings the monthly ledgers of products, customers and suppliers up to
// date with the slips entered since the last run. The menu runs it before the monthly screens
// and at every regular exit.

// `interactive`: the run was started from a screen (the progress form is shown).
// True when the ledgers are up to date afterwards.
bool ActionAfterWork(bool interactive);
