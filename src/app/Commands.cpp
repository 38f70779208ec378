#include "app/Commands.h"
#include <cstdio>
#include <QDir>
#include <QCoreApplication>
#include <QMap>
#include "app/PrintReports.h"
#include "ledgers/LedgerCommands.h"
#include "ledgers/StoreCommands.h"
#include "shell/MenuCaptions.h"
#include "store/NewCompany.h"

namespace {

constexpr int kBadArguments = 2;

void out(const QString& s) { std::fprintf(stdout, "%s\n", qPrintable(s)); }
void err(const QString& s) { std::fprintf(stderr, "%s\n", qPrintable(s)); }

QString usageText()
{
    QString text = QStringLiteral("使い方:\n"
                                  "  velmora                      現在のフォルダの会社で起動します\n");
    for (const Subcommand& c : subcommands())
        if (!c.usage.isEmpty()) text += c.usage + QLatin1Char('\n');
    return text + QStringLiteral("  velmora --help               この説明を表示します");
}

int usage()
{
    err(usageText());
    return kBadArguments;
}

// "--name value" pairs after the folder, each name once and among `allowed`.
bool options(const QStringList& args, int from, const QStringList& allowed, QMap<QString, QString>& opts)
{
    for (int i = from; i < args.size(); i += 2) {
        if (!args[i].startsWith(QLatin1String("--")) || i + 1 >= args.size()) return false;
        const QString name = args[i].mid(2);
        if (!allowed.contains(name) || opts.contains(name)) return false;
        opts[name] = args[i + 1];
    }
    return true;
}

// A whole number within [low, high]; otherwise the message and false.
bool intOption(const QMap<QString, QString>& o, const QString& key, int low, int high, const QString& what, int& v)
{
    if (!o.contains(key)) return true;
    bool ok = false;
    const int n = o[key].trimmed().toInt(&ok);
    if (!ok || n < low || n > high) {
        err(QStringLiteral("--%1 には %2 から %3 の%4を指定してください。").arg(key).arg(low).arg(high).arg(what));
        return false;
    }
    v = n;
    return true;
}

QString newUsage()
{
    return QStringLiteral("  velmora new DIR [--year YYYY] [--start-month M] [--company NAME]\n"
                          "                               新しい会社を作成します");
}

int runNew(const QStringList& args)
{
    QMap<QString, QString> o;
    if (args.size() < 2 || args[1].startsWith(QLatin1String("--"))
        || !options(args, 2, {QStringLiteral("year"), QStringLiteral("start-month"), QStringLiteral("company")}, o))
        return usage();
    // An empty name would be the current folder: a company is made only where it was asked for.
    if (args[1].trimmed().isEmpty()) {
        err(QStringLiteral("作成するフォルダの名前を指定してください。"));
        return kBadArguments;
    }
    NewCompanyOptions opt;
    opt.menu = standardMenuRows();
    if (!intOption(o, QStringLiteral("year"), 1900, 2999, QStringLiteral("年度"), opt.year)
        || !intOption(o, QStringLiteral("start-month"), 1, 12, QStringLiteral("月"), opt.startMonth))
        return kBadArguments;
    if (o.contains(QStringLiteral("company"))) {
        opt.company = o[QStringLiteral("company")].trimmed();
        if (opt.company.isEmpty()) {
            err(QStringLiteral("--company には会社名を指定してください。"));
            return kBadArguments;
        }
    }
    QString e;
    if (!createCompany(args[1], opt, &e)) {
        err(e);
        return 1;
    }
    out(QStringLiteral("%1 に会社を作成しました。").arg(QDir(args[1]).absolutePath()));
    return 0;
}

int runLedger(const QStringList& args) { return runLedgerCommand(args); }
int runStore(const QStringList& args) { return runStoreCommand(args); }

} // namespace

const QList<Subcommand>& subcommands()
{
    // Each subcommand adds its one row here.
    static const QList<Subcommand> table = {
        {QStringLiteral("new"), runNew, newUsage()},
        {QStringLiteral("demo"), runDemo, demoUsage()},
        {QStringLiteral("batch"), runLedger, ledgerCommandsUsage()},
        {QStringLiteral("rebuild"), runLedger, QString()},
        {QStringLiteral("yearend"), runStore, storeCommandsUsage()},
        {QStringLiteral("backup"), runStore, QString()},
        {QStringLiteral("optimize"), runStore, QString()},
        {QStringLiteral("print"), {}, QStringLiteral("  velmora print --help          帳票の印刷 (PDF、Excel) の使い方を表示します"),
         runPrintMain},
    };
    return table;
}

int runCommand(int argc, char** argv, const QStringList& args)
{
    for (const Subcommand& c : subcommands()) {
        if (c.word != args[0]) continue;
        if (c.runMain) return c.runMain(argc, argv, args);
        QCoreApplication app(argc, argv);
        return c.run(args);
    }
    QCoreApplication app(argc, argv);
    if (args.size() == 1 && (args[0] == QLatin1String("--help") || args[0] == QLatin1String("-h"))) {
        out(usageText());
        return 0;
    }
    err(QStringLiteral("%1 というコマンドはありません。").arg(args[0]));
    return usage();
}
