#include <functional>
#include "ledgers/Daichou.h"
#include "ledgers/LedgerBatch.h"
#include "entry/Recordset.h"
#include "masters/DealRules.h"
#include "masters/HinRules.h"
#include "slips/SlipFixture.h"
#include "slips/SlipRegister.h"
#include "support/StoreSnapshot.h"

// A disk that fills up in the middle of a save or a run: the clerk hears SQLite's own words
// and the store is exactly as it was before.
namespace {

// The file may not grow any more, and the last pages of `tables` are filled to the brim with
// rows of office 99 (which no screen shows), so the next row of these tables needs a page.
void fillUp(const QString& schema, const QStringList& tables)
{
    const QSqlDatabase db = session().MasterDb;
    const int pages = scalar(db, QStringLiteral("PRAGMA %1.page_count").arg(schema)).toInt();
    scalar(db, QStringLiteral("PRAGMA %1.max_page_count = %2").arg(schema).arg(pages));
    static const QMap<QString, QString> rows = {
        {"Dur", "INSERT INTO Dur (Dno, EigCode) SELECT i, 99 FROM n"},
        {"Dud", "INSERT INTO Dud (Dno, Eda, EigCode) SELECT i, 1, 99 FROM n"},
        {"Tto", "INSERT INTO Tto (TorCode, NouCode, EigCode) SELECT i, 0, 99 FROM n"},
        {"TtoD", "INSERT INTO TtoD (TorCode, NouCode, EigCode, Getudo) SELECT i, 0, 99, 1 FROM n"},
        {"Hin", "INSERT INTO Hin (Code) SELECT printf('9%012d', i) FROM n"},
        {"Tor", "INSERT INTO Tor (Code) SELECT i FROM n"},
    };
    for (const QString& t : tables) {
        qint64 next = 1000000;
        for (int size = 256; size >= 1;) {
            QSqlError e;
            const QString sql = QStringLiteral("WITH RECURSIVE n(i) AS (SELECT ? UNION ALL SELECT i+1 FROM n WHERE i<?) ")
                                + rows.value(t);
            if (execSql(db, sql, {next, next + size - 1}, &e) == ErrorClass::None) {
                next += size;
                continue;
            }
            ASSERT_EQ(sqliteCode(e), 13) << qPrintable(t) << qPrintable(e.text());
            size /= 4;
        }
    }
}

const QString kFull = QStringLiteral("エラー：13 database or disk is full");

} // namespace

class FullDiskTest : public SlipTest {};

TEST_F(FullDiskTest, EverySaveAndRunSaysSoAndLeavesTheStoreAsItWas)
{
    // A posted slip and a waiting one, so the run has lines to post and ledgers to carry.
    SlipEditor first("Dur");
    startSlip(first, "0", 3);
    typeLine(first, 0, "1001", "2");
    ASSERT_TRUE(Register(first, first.mode).saved);

    struct Case {
        const char* what;
        QString schema;
        QStringList tables;
        std::function<QString()> act;   // what the clerk was told
    } cases[] = {
        {"slip save", "slip", {"Dur", "Dud"}, [&] {
             SlipEditor ed("Dur");
             startSlip(ed, "0", 2);
             typeLine(ed, 0, "1001", "3");
             typeLine(ed, 1, "1002", "1");
             EXPECT_FALSE(Register(ed, ed.mode).saved);
             return dlg.of("Tell").value(0);
         }},
        {"deposit posting", "slip", {"Tto", "TtoD"}, [&] {
             LedgerAmounts a;
             a.Genkin = Money::fromYen(5000);
             a.NTotal = a.Genkin;
             QString error;
             EXPECT_FALSE(PostCustomer(2, 0, a, "5", 1, 0, &error));
             return error;
         }},
        {"master save", "main", {"Hin"}, [&] {
             QSqlError e;
             EXPECT_EQ(registerHin(session().MasterDb, "0000000009999", {{"Namae", "新商品"}, {"HbnCode", 1}}, &e),
                       ErrorClass::Other);
             return StoreErrorText(e);
         }},
        {"customer save", "main", {"Tor"}, [&] {
             Recordset rs;
             rs.open(session().MasterDb, "Tor");
             const DealSaveOutcome out = registerDeal(rs, *dealKind("Tor"), "NEW", 50,
                                                      {{"Namae", "新規商事"}, {"TbnCode", 1}, {"Sime", 20}});
             EXPECT_FALSE(out.saved);
             return dlg.of("Tell").value(0);
         }},
        {"ledger run", "slip", {}, [&] {
             QString error;
             EXPECT_FALSE(runLedgerProcessing({}, &error));
             return error;
         }},
    };
    for (const Case& c : cases) {
        dlg.log.clear();
        fillUp(c.schema, c.tables);
        const QStringList before = companySnapshot();
        EXPECT_EQ(c.act(), kFull) << c.what;
        EXPECT_EQ(snapshotDifference(before, companySnapshot()), "") << c.what;
        EXPECT_EQ(openUnits(session().MasterDb), 0) << c.what;
        // The disk has room again: the same work goes through.
        scalar(session().MasterDb, QStringLiteral("PRAGMA %1.max_page_count = 1000000").arg(c.schema));
    }
    EXPECT_EQ(slipOne("SELECT count(*) FROM Dud WHERE ThiFlag=-1 AND EigCode=1").toInt(), 1);
    QString error;
    EXPECT_TRUE(runLedgerProcessing({}, &error)) << qPrintable(error);
}
