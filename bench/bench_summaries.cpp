// The product summary and the cut-off list of a whole year and the monthly copy of the busiest
// customer, on a demo company of about a million lines, each beside one plain grouped scan of
// the same lines in the same run.
// Usage: bench_summaries [DIR] — DIR is a demo company (made there with 200000 slips when it
// holds none; default /tmp/velmora-bench-summaries).
#include <cstdio>
#include <functional>
#include <QGuiApplication>
#include <QDir>
#include <QElapsedTimer>
#include "pageout/Grd.h"
#include "pageout/QtPageOutputs.h"
#include "reports/RepoGeppouCopy.h"
#include "reports/Chouha.h"
#include "reports/RepoGeppou.h"
#include "reports/RepoNippou.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "demo/DemoCompany.h"
#include "support/BenchCompany.h"

namespace {

QVariant one(const QString& sql, const QVariantList& binds = {}) { return scalar(session().MasterDb, sql, binds); }

// One grouped pass over lines, every row read.
double plainScan(const QString& sql, const QVariantList& binds)
{
    QElapsedTimer t;
    t.start();
    Query q(session().MasterDb, sql, binds);
    while (q.next()) {}
    return t.elapsed() / 1000.0;
}

// The newest year folder of the company.
// The same documents to a PDF file, as `velmora print ... --pdf` makes them.
double toPdf(const QString& file, const std::function<bool()>& draw, int* pages)
{
    QElapsedTimer t;
    t.start();
    std::unique_ptr<PageOutput> out = makePdfOutput(file);
    *pages = 0;
    if (!out) return -1;
    ScopedPageOutput scope(out.get());
    if (!draw()) return -1;
    *pages = out->pages();
    QString error;
    return out->finish(&error) ? t.elapsed() / 1000.0 : -1;
}

void reportPdf(const char* what, double seconds, int pages)
{
    std::printf("  %-34s %7.3f s   %d pages\n", what, seconds, pages);
}

void report(const char* what, double seconds, double scan, qlonglong rows)
{
    std::printf("  %-34s %7.3f s   plain scan %7.3f s   ratio %5.1f   %lld rows\n", what, seconds, scan,
                scan > 0 ? seconds / scan : 0.0, rows);
}

} // namespace

int main(int argc, char** argv)
{
    // Fonts for the PDF, without a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QString dir = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("/tmp/velmora-bench-summaries");
    if (!QFile::exists(dir + QStringLiteral("/MASTER.db"))) {
        DemoOptions opt;
        opt.slips = 200000;
        if (!makeDemoCompany(dir, opt)) return 1;
    }
    QDir::setCurrent(dir);
    if (!startCompany()) return 1;
    const Session& s = session();
    const QDate from(s.Nendo, s.sTuki, 1);
    const QDate to = from.addYears(1).addDays(-1);
    const QVariantList year{from.toString(Qt::ISODate), to.toString(Qt::ISODate)};
    std::printf("company %d in %s: %lld sales lines, %lld purchase lines\n", s.Nendo, qPrintable(dir),
                one(QStringLiteral("SELECT COUNT(*) FROM Dud")).toLongLong(),
                one(QStringLiteral("SELECT COUNT(*) FROM Dsd")).toLongLong());
    // The file read once, so neither side of a comparison pays for the first read from disk.
    plainScan(QStringLiteral("SELECT COUNT(*), SUM(UGaku) FROM Dud"), {});
    plainScan(QStringLiteral("SELECT COUNT(*), SUM(UGaku) FROM Dsd"), {});
    QString error;
    QElapsedTimer t;

    // The product summary of the year: the sales by product, into the grid.
    double scan = plainScan(QStringLiteral("SELECT HinCode, SUM(Suu), SUM(UGaku) FROM Dud NOT INDEXED "
                                           "WHERE Hizuke>=? AND Hizuke<=? GROUP BY HinCode"), year);
    t.start();
    RepoNippou nippou(QStringLiteral("Uri"));
    if (!nippou.load(from, to, 0, &error)) return std::fprintf(stderr, "%s\n", qPrintable(error)), 1;
    // Widths measured by character count: the bench has no fonts.
    MemoryGridCells cells([](const QString&, double points, const QString& text) { return points * 10 * text.size(); });
    Grd grd(&cells);
    RepoNippou::setUp(grd);
    if (!nippou.fill(grd)) return std::fprintf(stderr, "the grid was not filled\n"), 1;
    report("product summary, year", t.elapsed() / 1000.0, scan, cells.rows() - 1);
    int pages = 0;
    double pdf = toPdf(QStringLiteral("bench-products.pdf"), [&] { return nippou.print(grd); }, &pages);
    reportPdf("  its print to PDF", pdf, pages);

    // The cut-off list of the year, by customer ranked by sales and by staff member.
    scan = plainScan(QStringLiteral("SELECT TorCode, Kubun, SUM(UGaku), SUM(SGaku) FROM Dud NOT INDEXED "
                                    "WHERE Hizuke>=? AND Hizuke<=? AND EigCode=? AND Dno>0 GROUP BY TorCode, Kubun"),
                     year + QVariantList{s.EigCode});
    for (const char* code : {"URI", "TAN"}) {
        t.restart();
        Chouha list(QString::fromLatin1(code));
        if (list.run(from, to, 2, &error) == MeiTResult::Failed) return std::fprintf(stderr, "%s\n", qPrintable(error)), 1;
        const SummaryGrid g = list.grid();
        report(code[0] == 'U' ? "cut-off list by customer, year" : "cut-off list by staff, year", t.elapsed() / 1000.0,
               scan, g.rows.size());
        pdf = toPdf(QStringLiteral("bench-cutoff.pdf"), [&] { return list.print(); }, &pages);
        reportPdf("  its print to PDF", pdf, pages);
    }

    // The monthly copy of the busiest customer in its busiest month.
    Query busiest(s.MasterDb, QStringLiteral("SELECT Dud.TorCode, Dud.Getudo, Tor.Sime, COUNT(*) AS n FROM Dud "
                                             "INNER JOIN Tor ON Tor.Code=Dud.TorCode WHERE Dud.Getudo BETWEEN 1 AND 12 "
                                             "GROUP BY Dud.TorCode, Dud.Getudo ORDER BY n DESC LIMIT 1"));
    if (!busiest.next()) return std::fprintf(stderr, "no sales lines\n"), 1;
    GeppouRequest r;
    r.customer = busiest.value(0).toLongLong();
    r.month = busiest.value(1).toInt();
    r.sime = busiest.value(2).toInt();
    QDate pFrom, pTo;
    RepoGeppou::period(r.month, r.sime, &pFrom, &pTo);
    scan = plainScan(QStringLiteral("SELECT SUBSTR(HinCode,1,11), UTanka, Hizuke, SUM(Suu), SUM(UGaku) FROM Dud "
                                    "WHERE Hizuke>=? AND Hizuke<=? AND TorCode=? AND Dno>0 "
                                    "GROUP BY SUBSTR(HinCode,1,11), UTanka, Hizuke"),
                     {pFrom.toString(Qt::ISODate), pTo.toString(Qt::ISODate), r.customer});
    t.restart();
    RepoGeppou monthly;
    if (!monthly.load(r, &error)) return std::fprintf(stderr, "%s\n", qPrintable(error)), 1;
    const SummaryGrid days = monthly.grid();
    std::printf("  (customer %lld, month %d, closing day %d: %lld lines)\n", r.customer, r.month, r.sime,
                busiest.value(3).toLongLong());
    report("monthly copy, busiest customer", t.elapsed() / 1000.0, scan, days.rows.size());
    pdf = toPdf(QStringLiteral("bench-monthly.pdf"), [&] {
        int sheets = 0;
        return MonthlyCopy::printAll(r, &sheets, &error);
    }, &pages);
    reportPdf("  its print to PDF", pdf, pages);

    endCompany();
    return 0;
}
