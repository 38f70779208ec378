// The partner reports on a full demo year after ledger processing and a month of deposits for
// every customer: the balance list of a month and the ledger of the month's busiest customer,
// each beside one plain query of the same rows in the same run; then their print and sheet.
// Usage: bench_ledger_reports [slips] [runs]   (default 30000 slips, 20 runs)
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>
#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTemporaryDir>
#include "demo/DemoCompany.h"
#include "support/BenchCompany.h"
#include "demo/DemoMasters.h"
#include "ledgers/Daichou.h"
#include "ledgers/LedgerBatch.h"
#include "pageout/PageOutput.h"
#include "pageout/PageSurface.h"
#include "reports/LedgerReportPrint.h"
#include "reports/ListDaichou.h"
#include "reports/Zandaka.h"
#include "shell/Session.h"
#include "store/NewCompany.h"
#include "store/Sql.h"
#include "store/Store.h"

namespace {

// A surface that measures by a fixed rule and draws nowhere: the report's own work alone.
class NullSurface : public PageSurface {
public:
    void setPageSize(int, int) override {}
    void setFontName(const QString&) override {}
    void setFontSize(int p) override { size_ = p; }
    // Half-width characters half as wide as the others, as the recording surface of the tests.
    double textWidth(const QString& t) override
    {
        double w = 0;
        for (QChar c : t) w += (c.unicode() < 0x80 || (c.unicode() >= 0xFF61 && c.unicode() <= 0xFF9F)) ? 10 : 20;
        return w * size_;
    }
    double textHeight(const QString&) override { return size_ * 24.0; }
    void drawText(double, double, const QString&) override {}
    void drawLine(double, double, double, double) override {}
    bool pictureSize(const QString&, double*, double*) override { return false; }
    void drawPicture(double, double, const QString&) override {}
    bool endPage() override { return ++pages, true; }
    int pages = 0;

private:
    int size_ = 10;
};

class NullOutput : public PageOutput {
public:
    NullSurface s;
    PageSurface* surface() override { return &s; }
    bool finish(QString*) override { return true; }
    int pages() const override { return s.pages; }
};

qint64 count(const QString& sql, const QVariantList& binds = {})
{
    return scalar(session().MasterDb, sql, binds).toLongLong();
}

// Median milliseconds of `runs` calls.
double median(int runs, const std::function<void()>& f)
{
    std::vector<double> ms;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer t;
        t.start();
        f();
        ms.push_back(t.nsecsElapsed() / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    return ms[ms.size() / 2];
}

int plainRows(const QString& sql, const QVariantList& binds)
{
    Query q(session().MasterDb, sql, binds);
    int n = 0;
    while (q.next()) ++n;
    return n;
}

void report(const char* what, double ms, double plain, int rows)
{
    std::printf("  %-40s %8.2f ms   plain query %7.2f ms   ratio %5.1f   (%d rows)\n", what, ms, plain,
                plain > 0 ? ms / plain : 0.0, rows);
}

// One deposit for each customer in `month`, as the deposit screen saves it.
int depositMonth(int month, const QDate& day)
{
    Query tors(session().MasterDb, QStringLiteral("SELECT Code FROM Tor ORDER BY Code"));
    QList<qint64> codes;
    while (tors.next()) codes << tors.value(0).toLongLong();
    int dno = int(count(QStringLiteral("SELECT COALESCE(MAX(Dno), 0) FROM Dny")));
    for (qint64 tor : codes) {
        LedgerAmounts a;
        a.Furikomi = Money::fromYen(10000 + tor % 7 * 1000);
        execSql(session().MasterDb,
                QStringLiteral("INSERT INTO Dny (Dno, Eda, EigCode, Hizuke, TorCode, NouCode, Kubun, Nnaiyo, NGaku, Getudo) "
                               "VALUES (?, 1, ?, ?, ?, 0, 3, '振込', ?, ?)"),
                {++dno, session().EigCode, day.toString(Qt::ISODate), tor, a.Furikomi.toStore(), month});
        QString error;
        if (!PostCustomer(tor, 0, a, QString::number(month), session().EigCode, 1, &error)) return -1;
    }
    return int(codes.size());
}

}  // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    DemoOptions opt;
    opt.slips = argc > 1 ? std::atoi(argv[1]) : 30000;
    const int runs = argc > 2 ? std::max(1, std::atoi(argv[2])) : 20;
    opt.year = fiscalYearOf(QDate::currentDate(), 4);
    QTemporaryDir tmp;
    DemoSummary summary;
    if (!tmp.isValid() || !makeDemoCompany(tmp.filePath(QStringLiteral("demo")), opt, &summary) || !startCompany())
        return 1;
    session().Sime = 31;
    QString error;
    if (!runLedgerProcessing({}, &error)) {
        std::fprintf(stderr, "ledger processing: %s\n", qPrintable(error));
        return 1;
    }
    const int month = 5;
    const int deposits = depositMonth(month, QDate(opt.year, month, 25));
    if (deposits < 0) {
        std::fprintf(stderr, "deposits failed\n");
        return 1;
    }
    std::printf("demo year %d: %d sales lines, %d purchase lines, %d customers; %d deposits in month %d; %d runs each\n",
                opt.year, summary.salesLines, summary.purchaseLines, summary.customers, deposits, month, runs);

    // The balance list: the report's read and sums beside the bare statement.
    const short office = session().EigCode;
    QVariantList binds;
    const QString statement = partnerMonthStatement(QStringLiteral("Uza"), 0, &binds, month, office);
    Zandaka balances(QStringLiteral("Uza"));
    const double listMs = median(runs, [&] { balances.read(month, 0); });
    const double listPlain = median(runs, [&] { plainRows(statement, binds); });
    report("balance list (Uza) of a month", listMs, listPlain, balances.rowCount);

    // The busiest customer's ledger of the month: Mei filled and read in one unit of work,
    // beside one query of its lines and deposits.
    Query busiest(session().MasterDb, QStringLiteral("SELECT TorCode, COUNT(*) FROM Dud WHERE Getudo=? AND EigCode=? "
                                                     "GROUP BY TorCode ORDER BY 2 DESC LIMIT 1"),
                  {month, office});
    if (!busiest.next()) {
        std::fprintf(stderr, "no sales in month %d\n", month);
        return 1;
    }
    LedgerRange range;
    range.partner = busiest.value(0).toLongLong();
    range.month = month;
    ListDaichou ledger;
    const double ledgerMs = median(runs, [&] { ledger.Init(range); });
    const QString plain = QStringLiteral(
        "SELECT Dno, Eda, Hizuke, Kubun, HinNamae, Suu, UTanka, UGaku, NULL AS UriFlag FROM Dud "
        "WHERE Getudo=? AND TorCode=? AND EigCode=? AND Dno>0 UNION ALL "
        "SELECT Dno, Kubun, Hizuke, Kubun, Nnaiyo, NULL, NULL, NGaku, '*' FROM Dny WHERE Getudo=? AND TorCode=? AND EigCode=? "
        "ORDER BY Hizuke DESC, UriFlag, Dno, Eda");
    const QVariantList plainBinds{month, range.partner, office, month, range.partner, office};
    const double ledgerPlain = median(runs, [&] { plainRows(plain, plainBinds); });
    report("ledger of the busiest customer (Tdc)", ledgerMs, ledgerPlain, ledger.rowCount);

    range.partner = 0;
    ListDaichou all;
    const QDate from = range.from(), to = range.to();
    const double allMs = median(std::max(1, runs / 4), [&] { all.Init(range); });
    const double allPlain = median(std::max(1, runs / 4), [&] {
        plainRows(QStringLiteral("SELECT * FROM Dud WHERE Hizuke>=? AND Hizuke<=? AND EigCode=? AND Dno>0 ORDER BY Hizuke DESC, Dno, Eda"),
                  {from.toString(Qt::ISODate), to.toString(Qt::ISODate), office});
    });
    report("ledger of all customers of the month", allMs, allPlain, all.rowCount);

    // Paper and sheet of the same two reports, drawn on a surface that keeps nothing.
    NullOutput out;
    const double printList = median(runs, [&] {
        ScopedPageOutput s(&out);
        printPartnerList(balances);
    });
    const double printLedger = median(std::max(1, runs / 4), [&] {
        ScopedPageOutput s(&out);
        printLedgerView(all);
    });
    ReportSheet sheet;
    const double sheetLedger = median(std::max(1, runs / 4), [&] { all.exportSheet(&sheet, &error); });
    std::printf("  %-40s %8.2f ms\n", "print of the balance list", printList);
    std::printf("  %-40s %8.2f ms   (%d rows, read again twice)\n", "print of all customers' ledger", printLedger,
                all.rowCount);
    std::printf("  %-40s %8.2f ms\n", "sheet of all customers' ledger", sheetLedger);
    endCompany();
    QDir::setCurrent(QDir::tempPath());
    return 0;
}
