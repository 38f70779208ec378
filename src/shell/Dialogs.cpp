#include "shell/Dialogs.h"
#include <cstdio>
#include "store/Sql.h"
#include "store/Store.h"

namespace {
// Used before a screen exists (command line, batch): texts go to stderr.
class ConsoleDialogs : public Dialogs {
public:
    bool Ask(const QString&, const QString&, const QString&) override { return true; }
    void Tell(const QString& m) override { std::fprintf(stderr, "%s\n", qPrintable(m)); }
    QString Request(const QString&, const QString& d) override { return d; }
    void ShowWait(const QString&) override {}
    void HideWait() override {}
    void MessageBox(const QString& t, const QString& m) override
    {
        std::fprintf(stderr, "%s: %s\n", qPrintable(t), qPrintable(m));
    }
};
ConsoleDialogs consoleDialogs;
Dialogs* installed = nullptr;
// The work's own notice while it is up, for the lock wait to give back.
QString workNotice;
}

Dialogs& dialogs() { return installed ? *installed : consoleDialogs; }

Dialogs* setDialogs(Dialogs* d)
{
    Dialogs* prev = installed;
    installed = d;
    workNotice.clear();
    return prev;
}

void ShowStoreFailure()
{
    dialogs().MessageBox(QStringLiteral("エラー"), storeFailureText(lastStoreFailure()));
}

void ShowWait(const QString& m)
{
    workNotice = m;
    dialogs().ShowWait(m);
}

void HideWait()
{
    workNotice.clear();
    dialogs().HideWait();
}

void showLockWaits()
{
    setLockWaitNotice([](bool waiting) {
        if (waiting) dialogs().ShowWait(QStringLiteral("他の端末の処理を待っています。しばらくお待ちください。"));
        else if (!workNotice.isEmpty()) dialogs().ShowWait(workNotice);
        else dialogs().HideWait();
    });
}

void TellStoreNotices()
{
    for (const QString& notice : takeStoreNotices()) Tell(notice);
}
