#include "store/QtOptimize.h"
#include <QApplication>
#include "shell/Dialogs.h"
#include "shell/Nendo_frm.h"
#include "shell/QtMenuRun.h"
#include "shell/Session.h"
#include "shell/TargetYear.h"
#include "store/BackupFiles.h"
#include "store/Optimize.h"
#include "store/Store.h"

void OptimizeStore()
{
    Session& s = session();
    if (const QString problem = masterLayoutProblem(s.YearFolderMode, s.Nendo); !problem.isEmpty()) {
        Tell(problem);
        return;
    }
    const int year = s.Nendo;
    UnloadHinForm();
    CloseStore();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    ShowWait(QStringLiteral("データベース修復中です。"));
    QString error;
    const bool ok = compactStore(s.YearFolderMode, year, &error);
    HideWait();
    QApplication::restoreOverrideCursor();
    // A repair on the way: where the damaged original is, before anything else.
    TellStoreNotices();
    if (ok) {
        Tell(QStringLiteral("ベルモーラを終了します。"));
        EndProgram();
        return;
    }
    Tell(error);
    // The files are as they were: the session opens them again and goes on.
    if (ChangeTargetYear(year) != YearChange::Changed) EndProgram();
}
