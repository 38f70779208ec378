// The slip screen's work per completed field, a product with its price lookup, and the saving
// of a fifteen-line slip, new and amended, on a fresh company.
// Usage: bench_slip [slips to save] (default 300)
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include "support/BenchCompany.h"
#include "support/BenchTiming.h"
#include "shell/Session.h"
#include "slips/SlipEditor.h"
#include "slips/SlipRegister.h"
#include "shell/MenuCaptions.h"
#include "store/NewCompany.h"
#include "store/Sql.h"
#include "store/Store.h"

namespace {

bool setUpCompany(const QString& dir)
{
    NewCompanyOptions o;
    o.year = 2026;
    o.menu = standardMenuRows();
    if (!openNewCompany(dir, o)) return false;
    Session& s = session();
    s.Zeiritu = Money::fromYen(8);
    s.TaxRateNew = Money::fromYen(10);
    s.TaxChangeDate = QDate(2026, 9, 30);
    const QSqlDatabase db = s.MasterDb;
    execSql(db, "INSERT INTO Tor (Code, TbnCode, Kana, Namae, Zeituuchi, HsuType, Hsu, Sime, TanCode) "
                "VALUES (1, 1, 'ﾍﾞﾝﾁ', 'ベンチ商事', 2, 1, 2, 20, 1)");
    for (int i = 1; i <= 15; ++i) {
        const QString code = QStringLiteral("%1").arg(1000 + i, 13, 10, QLatin1Char('0'));
        execSql(db, "INSERT INTO Hin (Code, Namae, ZeiFlag, UTanka, STanka) VALUES (?, ?, ?, ?, ?)",
                {code, QStringLiteral("商品%1").arg(i), i % 4 == 0 ? 2 : 1, qlonglong(1234567) * i, qlonglong(800000) * i});
        execSql(db, "INSERT INTO Tka (TorCode, HinCode, Tanka) VALUES (1, ?, ?)", {code, qlonglong(1111100) * i});
    }
    return true;
}

// A slip of fifteen lines to customer 1, typed the way the screen runs.
void fill(SlipEditor& ed, long number)
{
    ed.loadLists();
    ed.clearDisplay();
    ed.clearLines();
    ed.head.Dno = QString::number(number);
    ed.enterNumber();
    ed.head.Month = QStringLiteral("11");
    ed.head.Partner = 1;
    ed.partnerChosen();
    for (int i = 0; i < SlipEditor::LineCount; ++i) {
        ed.scrollTo(std::max(0, i - 5));
        const int row = i - ed.Bar;
        ed.rows[row].fKubun = 0;
        ed.rows[row].fHinCode = QString::number(1001 + i);
        ed.loadProductToLine(row);
        ed.rows[row].fSuu = QString::number(i + 2);
        ed.work(row);
    }
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int slips = argc > 1 ? std::max(1, std::atoi(argv[1])) : 300;
    QTemporaryDir tmp;
    if (!tmp.isValid() || !setUpCompany(tmp.filePath(QStringLiteral("co")))) return 1;
    // The numbers are given ahead, so the consecutive-number notice is expected.
    BenchDialogs silent(false);
    setDialogs(&silent);

    SlipEditor ed(QStringLiteral("Dur"));
    fill(ed, 1);
    std::printf("slip screen, 15 lines, customer taxed per delivery slip\n");
    timeEach("completed field (amounts, line tax, slip tax, totals)", 20000, [&](int i) {
        ed.rows[i % SlipEditor::RowCount].fSuu = QString::number(i % 50 + 1);
        ed.work(i % SlipEditor::RowCount);
    });
    timeEach("slip tax and totals alone", 20000, [&](int) { ed.showTotals(1); });
    timeEach("product code with its price lookup", 5000, [&](int i) {
        ed.rows[2].fHinCode = QString::number(1001 + i % 15);
        ed.loadProductToLine(2);
    });

    std::vector<SlipEditor> editors(slips, SlipEditor(QStringLiteral("Dur")));
    for (int i = 0; i < slips; ++i) fill(editors[i], i + 1);
    timeEach("Register, new 15-line slip", slips, [&](int i) { Register(editors[i], editors[i].mode); });
    execSql(session().MasterDb, "UPDATE Dud SET ThiFlag=0");
    std::vector<SlipEditor> amends(slips, SlipEditor(QStringLiteral("Dur")));
    for (int i = 0; i < slips; ++i) fill(amends[i], i + 1);
    timeEach("Register, amendment of a posted slip", slips, [&](int i) { Register(amends[i], amends[i].mode); });
    std::printf("  rows: %lld heads, %lld lines\n",
                scalar(session().MasterDb, "SELECT count(*) FROM Dur").toLongLong(),
                scalar(session().MasterDb, "SELECT count(*) FROM Dud").toLongLong());
    setDialogs(nullptr);
    CloseStore();
    return 0;
}
