#include "ledgers/StoreCommands.h"
#include <QDate>
#include "ledgers/YearEnd.h"
#include "shell/Session.h"
#include "store/Backup.h"
#include "store/Optimize.h"
#include "store/Store.h"

namespace {

constexpr int kFailed = 1;
constexpr int kBadArguments = 2;

int usage(const CommandConsole& c)
{
    c.err(QStringLiteral("使い方:\n") + storeCommandsUsage());
    return kBadArguments;
}

// One optional "--name value" after the command; false on anything else.
bool oneOption(const QStringList& args, const QString& name, QString* value)
{
    if (args.size() == 1) return true;
    if (args.size() != 3 || args[1] != QStringLiteral("--") + name || args[2].isEmpty()) return false;
    *value = args[2];
    return true;
}

int runYearEnd(const QStringList& args, const CommandConsole& c)
{
    QString officeText;
    if (!oneOption(args, QStringLiteral("office"), &officeText)) return usage(c);
    bool ok = officeText.isEmpty();
    const short office = ok ? 0 : officeText.trimmed().toShort(&ok);
    if (!ok || office < 0) {
        c.err(QStringLiteral("--office には営業所コード（数字）を指定してください。"));
        return kBadArguments;
    }
    if (const int r = startHeadless(office, c)) return r;
    const int from = session().Nendo;
    const YearEndResult r = ExecuteUpdate(c.out);
    endHeadless();
    if (!r.ok) {
        c.err(r.error.isEmpty() ? QStringLiteral("年次更新を中止しました。何も変更していません。") : r.error);
        return kFailed;
    }
    if (r.kind == YearEndKind::RepeatedRun)
        c.out(QStringLiteral("%1年度はすでにあるため、%2年度から更新しました（%1年度の伝票はそのままです）。").arg(r.newYear).arg(from));
    else if (r.kind == YearEndKind::Completion)
        c.out(QStringLiteral("途中で止まっていた年次更新を完了しました。"));
    c.out(QStringLiteral("年次更新は無事に終了しました。%1年度 → %2年度").arg(from).arg(r.newYear));
    return 0;
}

int runBackup(const QStringList& args, const CommandConsole& c)
{
    QString to;
    if (!oneOption(args, QStringLiteral("to"), &to)) return usage(c);
    if (const int r = startHeadless(0, c)) return r;
    const Session& s = session();
    const QString folder = to.isEmpty() ? backupFolder() : to;
    BackupResult r;
    const bool ok = backupStore(folder, s.YearFolderMode, s.Nendo, QDate::currentDate(), &r);
    endHeadless();
    if (!ok) {
        c.err(backupFailureText());
        c.err(r.error);
        return kFailed;
    }
    c.out(QStringLiteral("バックアップしました: %1, %2").arg(r.masterCopy, r.slipCopy));
    return 0;
}

int runOptimize(const QStringList& args, const CommandConsole& c)
{
    if (args.size() != 1) return usage(c);
    if (const int r = startHeadless(0, c)) return r;
    const bool marker = session().YearFolderMode;
    const int year = session().Nendo;
    // The files are replaced: the session lets go of them first; the start-up's lock stays.
    CloseStore();
    c.out(QStringLiteral("データベース修復中です。"));
    QString error;
    const bool ok = compactStore(marker, year, &error);
    endHeadless();
    // A repair on the way: where the damaged original is.
    for (const QString& notice : takeStoreNotices()) c.err(notice);
    if (!ok) {
        c.err(error);
        return kFailed;
    }
    QStringList done;
    for (const CompactionFiles& f : compactionFiles(marker, year)) done << f.file;
    c.out(QStringLiteral("最適化しました: %1（元のファイルは .bak に残しました）").arg(done.join(QStringLiteral(", "))));
    return 0;
}

} // namespace

bool isStoreCommand(const QString& word)
{
    return word == QLatin1String("yearend") || word == QLatin1String("backup") || word == QLatin1String("optimize");
}

QString storeCommandsUsage()
{
    return QStringLiteral(
        "  velmora yearend [--office N]  現在のフォルダの会社で年次更新を行います\n"
        "  velmora backup [--to DIR]     マスターと伝票のファイルをバックアップします\n"
        "                               (既定はオプションのバックアップパス)\n"
        "  velmora optimize              マスターと伝票のファイルを最適化します");
}

int runStoreCommand(const QStringList& args, const CommandConsole& console)
{
    if (args.isEmpty()) return usage(console);
    if (args.first() == QLatin1String("yearend")) return runYearEnd(args, console);
    if (args.first() == QLatin1String("backup")) return runBackup(args, console);
    if (args.first() == QLatin1String("optimize")) return runOptimize(args, console);
    return usage(console);
}
