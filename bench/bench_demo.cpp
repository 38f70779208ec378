// Builds a demo company in a temporary folder and reports how fast its rows were written,
// the deposits and payments (saved one by one as the deposit screen saves them) apart.
// Usage: bench_demo [slips] (default 200000)
#include <cstdio>
#include <cstdlib>
#include <QCoreApplication>
#include <QDate>
#include <QFileInfo>
#include <QTemporaryDir>
#include "store/NewCompany.h"
#include "demo/DemoCompany.h"

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    DemoOptions opt;
    opt.slips = argc > 1 ? std::atoi(argv[1]) : 200000;
    QTemporaryDir tmp;
    if (!tmp.isValid()) {
        std::fprintf(stderr, "no temporary folder\n");
        return 1;
    }
    const QString dir = tmp.filePath(QStringLiteral("demo"));
    DemoSummary s;
    QString error;
    if (!createDemoCompany(dir, opt, &error, &s)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    const int slips = s.salesSlips + s.purchaseSlips;
    const int lines = s.salesLines + s.purchaseLines;
    const double secs = s.seconds > 0 ? s.seconds : 1e-9;
    std::printf("demo company, %d slips (%d sales, %d purchases), %d lines\n", slips, s.salesSlips,
                s.purchaseSlips, lines);
    std::printf("  %.2f s total\n", s.seconds);
    std::printf("  %d deposits and %d payments (%d rows) in %.2f s, %.0f slips/s\n", s.deposits, s.payments,
                s.cashRows, s.cashSeconds,
                s.cashSeconds > 0 ? (s.deposits + s.payments) / s.cashSeconds : 0.0);
    std::printf("  %.0f slips/s, %.0f lines/s, %.0f slip rows (heads + lines)/s\n", slips / secs, lines / secs,
                (slips + lines) / secs);
    const QString slipFile = QStringLiteral("%1/%2/SLIP.db").arg(dir).arg(fiscalYearOf(QDate::currentDate(), 4));
    std::printf("  SLIP.db %.1f MB\n", static_cast<double>(QFileInfo(slipFile).size()) / 1048576.0);
    return 0;
}
