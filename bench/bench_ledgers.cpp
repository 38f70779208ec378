// Ledger processing and a twelve-month rebuild on a demo company, each beside one plain grouped
// scan of the same lines in the same store.
// Usage: bench_ledgers [slips] (default 200000, about a million lines)
#include <cstdio>
#include <cstdlib>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include "ledgers/LedgerBatch.h"
#include "ledgers/Recovery.h"
#include "shell/Session.h"
#include "store/NewCompany.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "demo/DemoCompany.h"
#include "support/BenchCompany.h"
#include "demo/DemoMasters.h"

namespace {

qint64 count(const QString& sql)
{
    return scalar(session().MasterDb, sql).toLongLong();
}

// One grouped pass over the lines the ledgers read, summed the way the ledgers group them.
double plainScan(const QString& filter)
{
    QElapsedTimer t;
    t.start();
    for (const char* table : {"Dud", "Dsd"}) {
        Query q(session().MasterDb,
                QStringLiteral("SELECT Getudo, substr(Hizuke, 6, 2), Kubun, SUM(UGaku), SUM(ZeiGaku), SUM(Suu) FROM %1 "
                               "WHERE %2 GROUP BY Getudo, substr(Hizuke, 6, 2), Kubun")
                    .arg(QString::fromLatin1(table), filter));
        while (q.next()) {}
    }
    return t.elapsed() / 1000.0;
}

void report(const char* what, double seconds, double scan)
{
    std::printf("  %-28s %8.2f s   plain scan %6.2f s   ratio %6.1f\n", what, seconds, scan,
                scan > 0 ? seconds / scan : 0.0);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    DemoOptions opt;
    opt.slips = argc > 1 ? std::atoi(argv[1]) : 200000;
    opt.year = fiscalYearOf(QDate::currentDate(), 4);
    QTemporaryDir tmp;
    DemoSummary summary;
    if (!tmp.isValid() || !makeDemoCompany(tmp.filePath(QStringLiteral("demo")), opt, &summary) || !startCompany())
        return 1;
    QString error;
    const qint64 marked = count(QStringLiteral("SELECT (SELECT COUNT(*) FROM Dud WHERE ThiFlag=-1) + "
                                               "(SELECT COUNT(*) FROM Dsd WHERE ThiFlag=-1)"));
    std::printf("demo company %d: %d sales lines, %d purchase lines, %lld marked; %d customers, %d suppliers, "
                "%d products\n",
                opt.year, summary.salesLines, summary.purchaseLines, marked, summary.customers, summary.suppliers,
                summary.products);

    const double scanMarked = plainScan(QStringLiteral("ThiFlag=-1"));
    QElapsedTimer t;
    t.start();
    if (!runLedgerProcessing({}, &error)) {
        std::fprintf(stderr, "ledger processing: %s\n", qPrintable(error));
        return 1;
    }
    report("ledger processing", t.elapsed() / 1000.0, scanMarked);

    const Session& s = session();
    const double scanOffice = plainScan(QStringLiteral("EigCode=") + QString::number(s.EigCode));
    t.restart();
    if (!rebuildLedgers(RebuildKind::ALL, s.sTuki, s.eTuki, {}, &error)) {
        std::fprintf(stderr, "rebuild: %s\n", qPrintable(error));
        return 1;
    }
    report("rebuild of twelve months", t.elapsed() / 1000.0, scanOffice);

    std::printf("  customer ledger rows %lld, supplier ledger rows %lld, product ledger rows %lld\n",
                count(QStringLiteral("SELECT COUNT(*) FROM TtoD")), count(QStringLiteral("SELECT COUNT(*) FROM TsiD")),
                count(QStringLiteral("SELECT COUNT(*) FROM ThiD")));
    endCompany();
    QDir::setCurrent(QDir::tempPath());
    return 0;
}
