#include "shell/TargetYear.h"
#include <QDir>
#include <QFileInfo>
#include "shell/Session.h"
#include "store/Store.h"

QList<int> AvailableYears()
{
    // Up to the latest year folder, so the year closed by the year-end update stays in reach.
    int latest = 0;
    for (const QString& name : QDir::current().entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        bool isYear = false;
        const int y = name.toInt(&isYear);
        if (isYear && QString::number(y) == name) latest = qMax(latest, y);
    }
    QList<int> years;
    for (int y = 2000; y <= latest; ++y)
        if (QFileInfo(slipPath(y)).isFile()) years << y;
    return years;
}

namespace {
bool attachYear()
{
    const bool ok = OpenSlip() && AttachSlipTables();
    CloseSlip();
    return ok;
}
}

YearChange ChangeTargetYear(int year)
{
    Session& s = session();
    const int old = s.Nendo;
    s.Nendo = year;
    CloseStore();
    if (ReopenMaster() && attachYear()) return YearChange::Changed;
    // The store's error box has said why. Rather than end the run, go back to the year that
    // was open: its master is the start-up file unless the years have folders of their own.
    s.Nendo = old;
    CloseStore();
    const bool back = s.YearFolderMode ? ReopenMaster() : OpenStore();
    if (back && attachYear()) return YearChange::Restored;
    CloseStore();
    return YearChange::Lost;
}
