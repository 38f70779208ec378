// Deposits on a fresh company with a year of ledger months: saving a six-row deposit with its
// posting, amending it, showing the partner's panel, deleting it, each timed one by one.
// Usage: bench_cash [deposits] (default 500)
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include "support/BenchCompany.h"
#include "support/BenchTiming.h"
#include "shell/Session.h"
#include "slips/CashRegister.h"
#include "slips/CashSlipEditor.h"
#include "store/NewCompany.h"
#include "store/Sql.h"
#include "store/Store.h"

namespace {

constexpr int kCustomers = 50;

bool openCompany(const QString& dir)
{
    NewCompanyOptions o;
    o.year = 2026;
    if (!openNewCompany(dir, o)) return false;
    const QSqlDatabase db = session().MasterDb;
    execSql(db, "INSERT INTO Tbn (Code, Namae) VALUES (1, '一般')");
    for (int c = 1; c <= kCustomers; ++c) {
        execSql(db, "INSERT INTO Tor (Code, TbnCode, Kana, Namae, Sime, Shicode, TanCode) VALUES (?, 1, ?, ?, 20, 3, 1)",
                {c, QStringLiteral("ﾍﾞﾝﾁ%1").arg(c), QStringLiteral("得意先%1").arg(c)});
        // Every other customer has a destination billed through it, so a posting reaches two rows.
        if (c % 2 == 0)
            execSql(db, "INSERT INTO Nou (TorCode, Code, Namae, Ryaku, SeiFlag) VALUES (?, 1, '倉庫', '倉庫', 1)", {c});
    }
    return true;
}

// A deposit of six rows, one of each kind, typed onto the editor.
void fill(CashSlipEditor& ed, long number, int customer, int month)
{
    ed.loadLists();
    ed.clearHead();
    ed.clearDisplay();
    ed.head.Dno = QString::number(number);
    ed.enterNumber();
    ed.head.Month = QString::number(month);
    ed.head.Day = QStringLiteral("10");
    ed.head.Partner = customer;
    ed.partnerChosen();
    for (int r = 0; r < CashSlipEditor::RowCount; ++r) {
        ed.rows[r].Kubun = r;
        ed.rows[r].Gaku = QString::number(1000 * (r + 1) + number);
    }
    ed.SumGaku();
    ed.checkCashPeriod();
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int n = argc > 1 ? std::max(1, std::atoi(argv[1])) : 500;
    QTemporaryDir tmp;
    if (!tmp.isValid() || !openCompany(tmp.filePath(QStringLiteral("co")))) return 1;
    BenchDialogs quiet(true);
    setDialogs(&quiet);

    std::printf("deposits of six rows, %d customers, half with a destination billed through them\n", kCustomers);
    std::vector<CashSlipEditor> eds(n, CashSlipEditor(QStringLiteral("Dny")));
    for (int i = 0; i < n; ++i) fill(eds[i], i + 1, i % kCustomers + 1, 4 + i % 9);
    timeEach("Register, new deposit with its posting", n, [&](int i) { Register(eds[i], eds[i].mode); });
    for (int i = 0; i < n; ++i) {
        eds[i].rows[0].Gaku = QStringLiteral("777");
        eds[i].head.Day = QStringLiteral("25");   // into the next closing month
        eds[i].checkCashPeriod();
    }
    timeEach("Register, amendment to another month", n, [&](int i) { Register(eds[i], eds[i].mode); });
    timeEach("the partner's twelve months", n, [&](int i) { eds[i].showPartnerMonths(); });
    timeEach("reverseCashSlip, deletion", n, [&](int i) { reverseCashSlip(eds[i]); });
    // No handle of the connection is kept here: the store closes it at the end.
    auto db = [] { return session().MasterDb; };
    // The same saves once more with the files not synced at commit: what is left is our own work.
    execSql(db(), "PRAGMA main.synchronous=OFF");
    execSql(db(), "PRAGMA slip.synchronous=OFF");
    for (int i = 0; i < n; ++i) fill(eds[i], n + i + 1, i % kCustomers + 1, 4 + i % 9);
    timeEach("Register, new deposit, no sync at commit", n, [&](int i) { Register(eds[i], eds[i].mode); });
    timeEach("reverseCashSlip, no sync at commit", n, [&](int i) { reverseCashSlip(eds[i]); });
    std::printf("  left: %lld rows, NTotal %lld (both 0 when every posting was taken back), %d failures\n",
                scalar(db(), "SELECT count(*) FROM Dny").toLongLong(),
                scalar(db(), "SELECT IFNULL(SUM(NTotal), 0) FROM TtoD").toLongLong() / 10000, quiet.failures);
    setDialogs(nullptr);
    eds.clear();
    CloseStore();
    return 0;
}
