#pragma once
// The menu's dispatcher and its two exits. A caption runs the screen of the dispatch table
// through the screen registry; a caption nobody knows, or whose screen does not exist yet,
// does nothing.
#include <functional>
#include <QString>

// Runs the function of a menu caption. False when nothing was started.
bool MenuRun(const QString& caption);
// "台帳処理を実行しますか?": on yes the ledger processing runs; the caller goes on either way.
void OfferLedgerProcessing();
// "終了しますか？": on yes ledger processing, the exit-time backup when it is switched on,
// then the end of the program; true in that case. On no it returns false.
bool DoEndingAction();

// Ends the run: closes the store, gives the pointer back and leaves the event loop.
void EndProgram();
// True once EndProgram has run: leaving the event loop closes the windows, and the menu must
// not offer ledger processing a second time then.
bool ProgramEnding();
// Replaces what EndProgram does (tests) and clears ProgramEnding; returns the previous one.
// An empty function restores the default.
std::function<void()> setEndProgram(std::function<void()> f);
