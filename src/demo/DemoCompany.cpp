#include "demo/DemoCompany.h"
#include <functional>
#include <QDate>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include "shell/MenuCaptions.h"
#include "store/NewCompany.h"
#include "store/Sql.h"
#include "demo/DemoBilling.h"
#include "demo/DemoCash.h"
#include "demo/DemoCashPlan.h"
#include "demo/DemoMasters.h"
#include "demo/DemoRandom.h"
#include "demo/DemoSlips.h"

namespace {

// Fills one file of the new company in a single transaction.
bool fillFile(const QString& path, const std::function<bool(QSqlDatabase&)>& fill, QString* error)
{
    const QString conn = QStringLiteral("VelmoraDemo");
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), conn);
        db.setDatabaseName(path);
        if (!db.open()) {
            *error = db.lastError().text();
        } else {
            // The file was made a moment ago and nobody else has it: no journal and no waiting
            // for the disk while it fills. A failure removes the whole company anyway.
            execSql(db, QStringLiteral("PRAGMA journal_mode=OFF"));
            execSql(db, QStringLiteral("PRAGMA synchronous=OFF"));
            execSql(db, QStringLiteral("PRAGMA cache_size=-65536"));
            {
                UnitOfWork unit(db);
                ok = unit.active() && fill(db) && unit.commit();
                if (!ok && error->isEmpty()) *error = db.lastError().text();
            }
            execSql(db, QStringLiteral("PRAGMA journal_mode=DELETE"));
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(conn);
    return ok;
}

} // namespace

bool createDemoCompany(const QString& dir, const DemoOptions& options, QString* error, DemoSummary* summary)
{
    QElapsedTimer timer;
    timer.start();
    auto fail = [&](const QString& m) { if (error) *error = m; return false; };
    if (options.slips < 0) return fail(QStringLiteral("伝票数が正しくありません。"));
    if (options.customers < 12 || options.customers > 100000) return fail(QStringLiteral("得意先数が正しくありません。"));
    const short startMonth = 4;
    const int year = options.year ? options.year : fiscalYearOf(QDate::currentDate(), startMonth);
    const QString root = QDir(dir).absolutePath();
    const QString yearDir = root + QLatin1Char('/') + QString::number(year);
    const bool rootExisted = QFileInfo::exists(root);

    NewCompanyOptions n;
    n.year = year;
    n.startMonth = startMonth;
    n.company = demoCompanyName();
    n.menu = standardMenuRows();
    if (!createCompany(dir, n, error)) return false;

    const QString master = newCompanyMasterPath(root);
    const QString slip = yearDir + QStringLiteral("/SLIP.db");
    DemoRandom rnd(options.seed);
    const DemoMasterData data = buildDemoMasters(rnd, year, startMonth, options.customers);
    DemoSlipCounts counts;
    DemoCounters counters;
    DemoBilling billing(demoTaxRates());
    DemoCashCounts cash;
    QString err;
    // Slips first: the office counters of the master file follow from them. The money comes
    // last, saved as the deposit screen saves it, into both files at once.
    bool ok =
        fillFile(slip, [&](QSqlDatabase& db) { return writeDemoSlips(db, data, options.slips, rnd, counts, counters, billing, &err); }, &err)
        && fillFile(master, [&](QSqlDatabase& db) { return writeDemoMasters(db, data, counters, &err); }, &err);
    QElapsedTimer cashTimer;
    cashTimer.start();
    if (ok) {
        const QList<DemoCashSlip> plan = planDemoCash(data, billing.customerBills(), billing.supplierBills(), rnd);
        ok = writeDemoCash(master, slip, year, startMonth, plan, cash, &err);
    }
    if (!ok) {
        removeNewCompany(root, year);
        if (!rootExisted) QDir().rmdir(root);
        return fail(QStringLiteral("見本の会社を作成できませんでした。") + err);
    }
    if (summary) {
        summary->customers = static_cast<int>(data.customers.size());
        summary->destinations = static_cast<int>(data.destinations.size());
        summary->suppliers = static_cast<int>(data.suppliers.size());
        summary->products = static_cast<int>(data.products.size());
        summary->prices = data.priceRows;
        summary->salesSlips = counts.sales;
        summary->salesLines = counts.salesLines;
        summary->purchaseSlips = counts.purchases;
        summary->purchaseLines = counts.purchaseLines;
        summary->deposits = cash.deposits;
        summary->payments = cash.payments;
        summary->cashRows = cash.rows;
        summary->cashSeconds = static_cast<double>(cashTimer.elapsed()) / 1000.0;
        summary->seconds = static_cast<double>(timer.elapsed()) / 1000.0;
    }
    return true;
}
