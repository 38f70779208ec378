#pragma once
// Ledger processing: brings the monthly ledgers of products, customers and suppliers up to
// date with the slips entered since the last run. The menu runs it before the monthly screens
// and at every regular exit.
#include <QString>

// The progress screen of the run. AfterWork_frm registers itself while it exists; the core
// has no screen of its own.
class AfterWorkView {
public:
    virtual ~AfterWorkView() = default;
    // Hourglass on; the screen gets its events once before the run.
    virtual void runStarted() = 0;
    // One progress text, painted at once.
    virtual void showProgress(const QString& text) = 0;
    // Normal pointer; the screen goes away.
    virtual void runFinished() = 0;
    // After a run that went through: the lines no ledger took, for the clerk to read before
    // going on. Without a screen of its own the report is told.
    virtual void showUnreached(const QString& report);
};

// Installs the view (not owned); nullptr removes it. Returns the previous one.
AfterWorkView* setAfterWorkView(AfterWorkView* view);
AfterWorkView* afterWorkView();

// `interactive`: the run was started from a screen, so the progress goes to the view when one
// is registered. On failure the error is told and the store is left as before the run.
// True when the ledgers are up to date afterwards.
bool ActionAfterWork(bool interactive);
