// The invoice run of one closing day over a demo company of many customers, to a PDF: invoices
// per second, beside the same run's statements alone (every statement of every document
// executed and read, nothing drawn) in the same store.
// Usage: bench_invoices [customers] [slips] (default 1000 customers, 30000 slips)
#include <cstdio>
#include <cstdlib>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include "ledgers/LedgerBatch.h"
#include "pageout/QtPageOutputs.h"
#include "reports/InvoiceData.h"
#include "reports/InvoiceRun.h"
#include "shell/Session.h"
#include "store/NewCompany.h"
#include "store/Sql.h"
#include "demo/DemoCompany.h"
#include "shell/QtScale.h"
#include "support/BenchCompany.h"

namespace {

qint64 count(const QString& sql, const QVariantList& binds = {})
{
    return scalar(session().MasterDb, sql, binds).toLongLong();
}

// Every statement the run executes for one document, read to its end.
int readDocument(const QSqlDatabase& db, InvoiceStep step, const InvoiceKey& key)
{
    if (!invoiceDue(db, key)) return 0;
    invoiceAddressee(db, step, key.tor, key.nou);
    const InvoiceStatement st = invoiceLines(step, key);
    Query q(db, st.sql, st.binds);
    while (q.next()) {}
    invoiceAmounts(db, key);
    return 1;
}

int queriesAlone(const QSqlDatabase& db, short sime, short month)
{
    int documents = 0;
    const short office = session().EigCode;
    for (qint64 tor : invoiceCustomers(db, sime, {}, {})) {
        const QList<qint64> destinations = invoiceDestinations(db, tor);
        if (destinations.isEmpty()) {
            documents += readDocument(db, InvoiceStep::Detail, {tor, 0, office, month});
            continue;
        }
        documents += readDocument(db, InvoiceStep::Summary, {tor, 0, office, month});
        documents += readDocument(db, InvoiceStep::AllDetail, {tor, 0, office, month});
        for (qint64 nou : destinations) documents += readDocument(db, InvoiceStep::Detail, {tor, nou, office, month});
    }
    return documents;
}

// The run and its statements on the open demo company; the PDF goes to `folder`.
int runBench(const DemoOptions& opt, const DemoSummary& summary, const QString& folder)
{
    QString error;
    const QSqlDatabase db = session().MasterDb;
    // The month with the most invoices due at the month's end.
    const short sime = 31;
    Query busiest(db, QStringLiteral("SELECT TtoD.Getudo, COUNT(*) FROM TtoD JOIN Tor ON Tor.Code = TtoD.TorCode "
                                     "WHERE Tor.Sime = ? AND TtoD.KTotal <> 0 AND TtoD.Getudo BETWEEN 1 AND 12 "
                                     "AND TtoD.EigCode = ? GROUP BY TtoD.Getudo ORDER BY 2 DESC, 1 LIMIT 1"),
                  {sime, session().EigCode});
    const short month = busiest.next() ? short(busiest.value(0).toInt()) : 5;
    const qint64 customers = count(QStringLiteral("SELECT COUNT(*) FROM Tor WHERE Sime = ?"), {sime});
    std::printf("demo company %d: %d customers (%d destinations), %d sales lines; closing day %d of month %d: "
                "%lld customers\n",
                opt.year, summary.customers, summary.destinations, summary.salesLines, sime, month, customers);

    const QString file = folder + QStringLiteral("/invoices.pdf");
    std::unique_ptr<PageOutput> out = makePdfOutput(file, &error);
    if (!out) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    InvoiceRun run(db);
    QElapsedTimer t;
    t.start();
    int pages = 0;
    const bool ok = printTo(*out, [&] {
        const bool done = run.IssueInvoices({QString::number(month), QString::number(sime), {}, {}, QDate::currentDate()})
                          == InvoiceRunOutcome::Done;
        pages = out->pages();
        return done;
    });
    const double runSeconds = t.elapsed() / 1000.0;
    if (!ok) {
        std::fprintf(stderr, "the run failed: %s\n", qPrintable(run.error()));
        return 1;
    }
    t.restart();
    const int documents = queriesAlone(db, sime, month);
    const double querySeconds = t.elapsed() / 1000.0;
    const double secs = runSeconds > 0 ? runSeconds : 1e-9;
    std::printf("  run to PDF     %8.2f s   %d invoices of %d customers, %d pages, PDF %.1f MB\n", runSeconds,
                run.documents(), run.customers(), pages,
                static_cast<double>(QFileInfo(file).size()) / 1048576.0);
    std::printf("  %.1f invoices/s, %.1f pages/s\n", run.documents() / secs, pages / secs);
    std::printf("  statements alone %6.2f s   %d documents (%.0f %% of the run)\n", querySeconds, documents,
                100.0 * querySeconds / secs);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    installJapaneseFonts();
    DemoOptions opt;
    opt.customers = argc > 1 ? std::atoi(argv[1]) : 1000;
    opt.slips = argc > 2 ? std::atoi(argv[2]) : 30000;
    opt.year = fiscalYearOf(QDate::currentDate(), 4);
    QTemporaryDir tmp;
    DemoSummary summary;
    if (!tmp.isValid() || !makeDemoCompany(tmp.filePath(QStringLiteral("demo")), opt, &summary) || !startCompany())
        return 1;
    QString error;
    if (!runLedgerProcessing({}, &error)) {
        std::fprintf(stderr, "ledger processing: %s\n", qPrintable(error));
        endCompany();
        return 1;
    }
    const int status = runBench(opt, summary, tmp.path());
    endCompany();
    QDir::setCurrent(QDir::tempPath());
    return status;
}
