#pragma once
// Shared steps of the shell tests: change a company's store before it is started, and start
// it with hooks that write into the dialog log, so one list shows the whole order.
#include <QSqlDatabase>
#include <QStringList>
#include <QVariantList>
#include "shell/MenuModel.h"
#include "shell/Session.h"
#include "shell/Startup.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

// Runs statements on the company's master file, then closes it and clears the session.
inline void prepare(TempCompany& co, const QStringList& statements, const QList<QVariantList>& binds = {})
{
    co.open();
    for (int i = 0; i < statements.size(); ++i)
        execSql(session().MasterDb, statements[i], binds.value(i));
    CloseStore();
    session() = Session();
}

inline StartupHooks loggingHooks(ScriptedDialogs& dlg)
{
    StartupHooks h;
    h.showSplash = [&dlg] { dlg.log << "Hook:splash"; };
    h.loadLookupList = [&dlg] { dlg.log << "Hook:lookup"; };
    h.scaleMenu = [&dlg] { dlg.log << "Hook:scaleMenu"; };
    h.hideSplash = [&dlg] { dlg.log << "Hook:hideSplash"; };
    return h;
}

inline QVariant masterValue(const QString& sql, const QVariantList& binds = {})
{
    return scalar(session().MasterDb, sql, binds);
}
