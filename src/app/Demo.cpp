#include <cstdio>
#include <QDir>
#include <QStringList>
#include "app/Commands.h"
#include "demo/DemoCompany.h"

namespace {

void err(const QString& s) { std::fprintf(stderr, "%s\n", qPrintable(s)); }

int usage()
{
    err(QStringLiteral("使い方:\n") + demoUsage());
    return 2;
}

} // namespace

QString demoUsage()
{
    return QStringLiteral("  velmora demo DIR [--slips N] [--seed S] [--customers N]\n"
                          "                               見本の会社を作成します\n"
                          "    DIR        作成するフォルダ (会社のデータがないこと)\n"
                          "    --slips N  売上・仕入伝票の数 (0..5000000、既定 3000)\n"
                          "    --seed S   乱数の種 (0 以上の整数、既定 1)\n"
                          "    --customers N  得意先の数 (12..100000、既定 100)");
}

int runDemo(const QStringList& args)
{
    if (args.size() < 2 || args[1].startsWith(QLatin1String("--"))) return usage();
    // An empty name would be the current folder: a company is made only where it was asked for.
    if (args[1].trimmed().isEmpty()) {
        err(QStringLiteral("作成するフォルダの名前を指定してください。"));
        return 2;
    }
    DemoOptions opt;
    QStringList seen;
    for (qsizetype i = 2; i < args.size(); i += 2) {
        if (i + 1 >= args.size()) return usage();
        const QString& key = args[i];
        const QString& value = args[i + 1];
        if (seen.contains(key)) return usage();
        seen << key;
        bool ok = false;
        if (key == QLatin1String("--slips")) {
            opt.slips = value.toInt(&ok);
            ok = ok && opt.slips >= 0 && opt.slips <= 5000000;
        } else if (key == QLatin1String("--seed")) {
            opt.seed = value.toULongLong(&ok);
        } else if (key == QLatin1String("--customers")) {
            opt.customers = value.toInt(&ok);
            ok = ok && opt.customers >= 12 && opt.customers <= 100000;
        }
        if (!ok) return usage();
    }
    DemoSummary s;
    QString error;
    if (!createDemoCompany(args[1], opt, &error, &s)) {
        err(error);
        return 1;
    }
    std::fprintf(stdout, "%s\n", qPrintable(QStringLiteral(
        "%1 に見本の会社を作成しました: 得意先 %2 (納入先 %3)、仕入先 %4、商品 %5、単価 %6、"
        "売上伝票 %7 (明細 %8)、仕入伝票 %9 (明細 %10)、入金伝票 %11、支払伝票 %12、%13 秒")
        .arg(QDir(args[1]).absolutePath()).arg(s.customers).arg(s.destinations).arg(s.suppliers)
        .arg(s.products).arg(s.prices).arg(s.salesSlips).arg(s.salesLines).arg(s.purchaseSlips)
        .arg(s.purchaseLines).arg(s.deposits).arg(s.payments).arg(s.seconds, 0, 'f', 1)));
    return 0;
}
