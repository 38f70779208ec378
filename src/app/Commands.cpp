#include "app/Commands.h"
#include <cstdio>
#include <QDir>
#include "ledgers/StoreCommands.h"
#include "ledgers/LedgerCommands.h"
#include "store/NewCompany.h"

namespace {

void out(const QString& s) { std::fprintf(stdout, "%s\n", qPrintable(s)); }
void err(const QString& s) { std::fprintf(stderr, "%s\n", qPrintable(s)); }

int usage()
{
    err(QStringLiteral(
        "使い方:\n"
        "  velmora                      現在のフォルダの会社で起動します\n"
        "  velmora new DIR [--year YYYY] [--start-month M] [--company NAME]\n"
        "                               新しい会社を作成します\n"
        "  velmora demo DIR [--slips N] [--seed S] [--customers N]\n"
        "                               見本の会社を作成します\n")
        + ledgerCommandsUsage() + QStringLiteral("\n") + storeCommandsUsage());
    return 2;
}

// "--name value" pairs after the folder; false on an unknown or incomplete option.
bool options(const QStringList& args, int from, QMap<QString, QString>& opts)
{
    for (int i = from; i < args.size(); ++i) {
        if (!args[i].startsWith(QLatin1String("--")) || i + 1 >= args.size()) return false;
        opts[args[i].mid(2)] = args[i + 1];
        ++i;
    }
    return true;
}

bool intOption(const QMap<QString, QString>& o, const QString& key, int& v)
{
    if (!o.contains(key)) return true;
    bool ok = false;
    v = o[key].toInt(&ok);
    if (!ok) err(QStringLiteral("--%1 には数字を指定してください。").arg(key));
    return ok;
}

int runNew(const QStringList& args)
{
    QMap<QString, QString> o;
    if (args.size() < 2 || !options(args, 2, o)) return usage();
    for (const QString& k : o.keys())
        if (k != QLatin1String("year") && k != QLatin1String("start-month") && k != QLatin1String("company")) return usage();
    NewCompanyOptions opt;
    if (!intOption(o, QStringLiteral("year"), opt.year) || !intOption(o, QStringLiteral("start-month"), opt.startMonth))
        return 2;
    if (o.contains(QStringLiteral("company"))) opt.company = o[QStringLiteral("company")];
    QString e;
    if (!createCompany(args[1], opt, &e)) {
        err(e);
        return 1;
    }
    out(QStringLiteral("%1 に会社を作成しました。").arg(QDir(args[1]).absolutePath()));
    return 0;
}

} // namespace

int runDemo(const QStringList& args);

bool isCommand(const QString& word)
{
    return word == QLatin1String("new") || word == QLatin1String("demo") || isLedgerCommand(word) || isStoreCommand(word)
           || word.startsWith(QLatin1String("-"));
}

int runCommand(const QStringList& args)
{
    if (args.first() == QLatin1String("new")) return runNew(args);
    if (args.first() == QLatin1String("demo")) return runDemo(args);
    if (isLedgerCommand(args.first())) return runLedgerCommand(args);
    if (isStoreCommand(args.first())) return runStoreCommand(args);
    return usage();
}
