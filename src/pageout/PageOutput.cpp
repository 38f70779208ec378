#include "pageout/PageOutput.h"
#include <QFileInfo>
#include "shell/Dialogs.h"

namespace {
PageOutput* g_current = nullptr;
}

PageOutput* currentPageOutput() { return g_current; }

void setCurrentPageOutput(PageOutput* out) { g_current = out; }

bool printTo(PageOutput& out, const std::function<bool()>& draw)
{
    bool drawn = false;
    {
        ScopedPageOutput scope(&out);
        drawn = draw();
    }
    if (!drawn) {
        out.abandon();
        return false;
    }
    QString error;
    if (!out.finish(&error)) {
        if (!error.isEmpty()) Tell(error);
        return false;
    }
    return true;
}

QString fileWriteReason(const QString& path)
{
    const QFileInfo file(path);
    const QFileInfo dir(file.absolutePath());
    if (!dir.isDir()) return QStringLiteral("保存先のフォルダがありません。");
    if (file.isDir()) return QStringLiteral("同じ名前のフォルダがあります。");
    if (!dir.isWritable() || (file.exists() && !file.isWritable()))
        return QStringLiteral("保存先のフォルダに書き込む権限がありません。");
    return QStringLiteral("ディスクの空きが足りないか、ファイルが使用中です。");
}
