#include "ledgers/AfterWork.h"
#include "ledgers/LedgerBatch.h"
#include "shell/Dialogs.h"

namespace {
AfterWorkView* gView = nullptr;
}

AfterWorkView* setAfterWorkView(AfterWorkView* view)
{
    AfterWorkView* prev = gView;
    gView = view;
    return prev;
}

AfterWorkView* afterWorkView() { return gView; }

void AfterWorkView::showUnreached(const QString& report) { Tell(report); }

bool ActionAfterWork(bool interactive)
{
    AfterWorkView* view = interactive ? gView : nullptr;
    ProgressFn progress;
    if (view) {
        view->runStarted();
        progress = [view](const QString& text) { view->showProgress(text); };
    }
    QString error;
    QList<UnreachedLine> unreached;
    // One unit of work: a failure rolls every phase back, marks included, so the next run
    // starts from the same slips and nothing is counted twice.
    const bool ok = runLedgerProcessing(progress, &error, &unreached);
    if (ok && !unreached.isEmpty()) {
        if (view) view->showUnreached(unreachedReport(unreached));
        else Tell(unreachedReport(unreached));
    }
    if (view) view->runFinished();
    if (!ok) Tell(error);
    return ok;
}
