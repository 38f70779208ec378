// The year-end update of a full demo year, beside a plain copy of the company's two files made
// in the same run; then a repeated update, a backup and a compaction of the new year.
// Usage: bench_yearend [slips] (default 200000, about a million lines)
#include <cstdio>
#include <cstdlib>
#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include "ledgers/LedgerBatch.h"
#include "ledgers/YearEnd.h"
#include "shell/Session.h"
#include "store/Backup.h"
#include "store/NewCompany.h"
#include "store/Optimize.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "demo/DemoCompany.h"
#include "demo/DemoMasters.h"

namespace {

qint64 count(const QString& file, const QString& sql)
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("bench-count"));
    db.setDatabaseName(file);
    qint64 n = db.open() ? scalar(db, sql).toLongLong() : -1;
    db.close();
    db = QSqlDatabase();
    QSqlDatabase::removeDatabase(QStringLiteral("bench-count"));
    return n;
}

bool openYear(int year)
{
    CloseStore();
    Session& s = session();
    if (!OpenStore()) return false;
    s.Nendo = year;
    const bool ok = OpenSlip() && AttachSlipTables();
    CloseSlip();
    return ok;
}

double mib(const QString& file) { return QFileInfo(file).size() / 1048576.0; }

void report(const char* what, double seconds, double copy)
{
    std::printf("  %-34s %8.2f s   plain copy %6.2f s   ratio %5.1f\n", what, seconds, copy, copy > 0 ? seconds / copy : 0.0);
}

bool fail(const char* what, const QString& error)
{
    std::fprintf(stderr, "%s: %s\n", what, qPrintable(error));
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    DemoOptions opt;
    opt.slips = argc > 1 ? std::atoi(argv[1]) : 200000;
    opt.year = fiscalYearOf(QDate::currentDate(), 4);
    const int year = opt.year;
    QTemporaryDir tmp;
    if (!tmp.isValid()) return 1;
    const QString dir = tmp.filePath(QStringLiteral("demo"));
    DemoSummary summary;
    QString error;
    if (!createDemoCompany(dir, opt, &error, &summary)) return fail("demo", error), 1;
    QDir::setCurrent(dir);
    Session& s = session();
    s.sTuki = 4;
    s.eTuki = 3;
    const TaxRates rates = demoTaxRates();
    s.Zeiritu = rates.Zeiritu;
    s.TaxRateNew = rates.TaxRateNew;
    s.TaxChangeDate = rates.TaxChangeDate;
    if (!openYear(year)) return fail("open", QStringLiteral("the demo company does not open")), 1;
    s.EigCode = static_cast<short>(scalar(s.MasterDb, QStringLiteral("SELECT MIN(Code) FROM Eig")).toInt());
    // The year is closed by then: every line posted.
    if (!runLedgerProcessing({}, &error)) return fail("ledger processing", error), 1;
    const QString slip = slipPath(year);
    std::printf("demo company %d: %d sales lines, %d purchase lines, %lld lines of closing month 13; "
                "master %.1f MiB, slips %.1f MiB\n",
                year, summary.salesLines, summary.purchaseLines,
                count(slip, QStringLiteral("SELECT (SELECT COUNT(*) FROM Dud WHERE Getudo=13) + "
                                           "(SELECT COUNT(*) FROM Dsd WHERE Getudo=13)")),
                mib(QStringLiteral("MASTER/MASTER.db")), mib(slip));

    // The floor: the two files copied as files.
    QElapsedTimer t;
    t.start();
    QDir().mkpath(QStringLiteral("plain"));
    if (!QFile::copy(QStringLiteral("MASTER/MASTER.db"), QStringLiteral("plain/MASTER.db"))
        || !QFile::copy(slip, QStringLiteral("plain/SLIP.db")))
        return fail("plain copy", QStringLiteral("copy failed")), 1;
    const double copy = t.elapsed() / 1000.0;
    std::printf("  %-34s %8.2f s\n", "plain copy of the two files", copy);

    CloseStore();
    t.restart();
    // Where the time goes: each step's text with the seconds since the start.
    const auto steps = [&](const QString& text) { std::printf("    %6.2f s  %s\n", t.elapsed() / 1000.0, qPrintable(text)); };
    YearEndResult r = ExecuteUpdate(steps);
    if (!r.ok) return fail("year-end", r.error), 1;
    report("year-end update, first run", t.elapsed() / 1000.0, copy);
    std::printf("    new year: %lld sales lines, %.1f MiB\n", count(slipPath(year + 1), QStringLiteral("SELECT COUNT(*) FROM Dud")),
                mib(slipPath(year + 1)));

    s.Nendo = year;
    t.restart();
    r = ExecuteUpdate();
    if (!r.ok || r.kind != YearEndKind::RepeatedRun) return fail("repeated year-end", r.error), 1;
    report("year-end update, repeated run", t.elapsed() / 1000.0, copy);

    t.restart();
    BackupResult b;
    if (!backupStore(QStringLiteral("backup"), false, year, QDate::currentDate(), &b)) return fail("backup", b.error), 1;
    report("backup of the closed year", t.elapsed() / 1000.0, copy);

    t.restart();
    if (!compactStore(false, year, &error)) return fail("compaction", error), 1;
    report("compaction of the closed year", t.elapsed() / 1000.0, copy);
    QDir::setCurrent(QDir::tempPath());
    return 0;
}
