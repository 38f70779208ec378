#include "BenchCompany.h"
#include <cstdio>
#include <QDate>
#include <QDir>
#include "ledgers/LedgerCommands.h"
#include "shell/Session.h"
#include "store/Store.h"

bool openNewCompany(const QString& dir, const NewCompanyOptions& o)
{
    QString error;
    if (!createCompany(dir, o, &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return false;
    }
    QDir::setCurrent(dir);
    if (!OpenStore()) return false;
    Session& s = session();
    s.Nendo = o.year > 0 ? o.year : fiscalYearOf(QDate::currentDate(), o.startMonth);
    const bool ok = OpenSlip() && AttachSlipTables();
    CloseSlip();
    s.EigCode = 1;
    return ok;
}

bool makeDemoCompany(const QString& dir, const DemoOptions& opt, DemoSummary* summary)
{
    QString error;
    if (!createDemoCompany(dir, opt, &error, summary)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return false;
    }
    QDir::setCurrent(dir);
    return true;
}

bool startCompany()
{
    if (startHeadless(0, processConsole()) == 0) return true;
    std::fprintf(stderr, "the company in %s does not open\n", qPrintable(QDir::currentPath()));
    return false;
}

void endCompany() { endHeadless(); }

void BenchDialogs::Tell(const QString& m)
{
    // Notices (a consecutive number taken, a carried balance) are expected; failures are not.
    if (!m.startsWith(QStringLiteral("エラー"))) return;
    ++failures;
    std::fprintf(stderr, "told: %s\n", qPrintable(m));
}
