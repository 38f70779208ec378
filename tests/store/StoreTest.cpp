#include <gtest/gtest.h>
#include <QFile>
#include "shell/Session.h"
#include "store/NewCompany.h"
#include "store/Schema.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

namespace {
QVariant one(const QString& sql, const QVariantList& b = {}) { return scalar(session().MasterDb, sql, b); }
int count(const QString& table) { return one("SELECT count(*) FROM " + table).toInt(); }
}

// The slip tables are reached by their plain names, an extra one too, past a stale link of the
// name in the master (a master object named like a slip table would hide it); the rows live in
// the slip file and the master tables stay where they are.
TEST(Store, OpensWithoutMarkerAndReachesSlipTablesByPlainName)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.execOn("2026/SLIP.db", {"CREATE TABLE Extra (X INTEGER)", "INSERT INTO Extra VALUES (5)"}));
    ASSERT_TRUE(co.execOn("MASTER.db", {"CREATE VIEW Dud AS SELECT 99 AS Dno"}));
    ASSERT_TRUE(co.open());
    EXPECT_FALSE(session().YearFolderMode);
    EXPECT_EQ(one("SELECT X FROM Extra").toInt(), 5);
    EXPECT_EQ(count("Dud"), 0);
    EXPECT_EQ(count("Tor"), 0);
    EXPECT_EQ(execSql(session().MasterDb, "INSERT INTO Dur (Dno, EigCode, Hizuke) VALUES (7, 1, '2026-05-01')"),
              ErrorClass::None);
    EXPECT_EQ(one("SELECT Dur.Dno FROM Dur JOIN Eig ON Eig.Code = Dur.EigCode").toInt(), 7);
    CloseStore();
    EXPECT_FALSE(co.execOn("2026/SLIP.db", {"INSERT INTO Dur (Dno, EigCode) VALUES (7, 1)"}));   // taken
    EXPECT_TRUE(co.execOn("2026/SLIP.db", {"INSERT INTO Dur (Dno, EigCode) VALUES (8, 1)"}));
    EXPECT_FALSE(co.execOn("MASTER.db", {"SELECT * FROM Dur"}));
}

TEST(Store, YearChangeLeavesNoLinkToTheOldYear)
{
    TempCompany co(2026);
    ASSERT_TRUE(QDir().mkpath("2027"));
    ASSERT_TRUE(QFile::copy("2026/SLIP.db", "2027/SLIP.db"));
    ASSERT_TRUE(co.open());
    execSql(session().MasterDb, "INSERT INTO Dur (Dno, EigCode) VALUES (1, 1)");

    session().Nendo = 2027;
    ASSERT_TRUE(OpenSlip());
    ASSERT_TRUE(AttachSlipTables());
    CloseSlip();
    EXPECT_EQ(count("Dur"), 0);
    const QString files = one("SELECT group_concat(file, '|') FROM pragma_database_list").toString();
    EXPECT_EQ(files.count("2027/SLIP.db"), 1) << qPrintable(files);
    EXPECT_FALSE(files.contains("2026/SLIP.db")) << qPrintable(files);
}

TEST(Store, TableExistsAndAttachTableMakesOldLinksAndRefusesAnExistingName)
{
    TempCompany co(2026);
    ASSERT_TRUE(QDir().mkpath("2025"));
    ASSERT_TRUE(QFile::copy("2026/SLIP.db", "2025/SLIP.db"));
    ASSERT_TRUE(co.open());
    ScriptedDialogs dlg;
    QSqlDatabase db = session().MasterDb;
    const QString old = QDir::current().absoluteFilePath("2025/SLIP.db");
    // Names are found trimmed and whatever their case, the engine's own not at all.
    struct Case { const char* name; bool exists; } cases[] = {
        {"dur", true}, {" Dur ", true}, {"zsysfunc", true}, {"", false}, {"Du", false}, {"sqlite_master", false},
    };
    for (const auto& c : cases) EXPECT_EQ(TableExists(db, c.name), c.exists) << c.name;
    ASSERT_TRUE(AttachTable(db, "ThiOld", "Thi", old));
    ASSERT_TRUE(AttachTable(db, "TtoDOld", "TtoD", ";DATABASE=" + old));
    EXPECT_EQ(count("TtoDOld"), 0);

    for (const auto& [link, source] : {std::pair{"ThiOld", "ThiD"},
                                       std::pair{"Dur", "Dur"},        // an existing table name
                                       std::pair{"X;DROP", "Thi"}}) {  // never pasted into SQL
        EXPECT_FALSE(AttachTable(db, link, source, old)) << link;
        EXPECT_EQ(lastStoreFailure().description, "アタッチに失敗しました。");
    }
    EXPECT_TRUE(dlg.log.isEmpty());   // the caller tells
    EXPECT_TRUE(DropTable(db, "thiold"));
    EXPECT_FALSE(TableExists(db, "ThiOld"));
    EXPECT_TRUE(TableExists(db, "Thi"));
}

TEST(Store, MissingFileIsReportedAndNeverMade)
{
    TempCompany co(0);   // an empty folder
    ScriptedDialogs dlg;
    EXPECT_FALSE(OpenStore());
    EXPECT_FALSE(QFile::exists("MASTER.db"));
    EXPECT_EQ(lastStoreFailure().number, 14);
    EXPECT_TRUE(storeFailureText(lastStoreFailure()).startsWith("エラー番号 14SQLite でエラーが発生しました。 \n"));

    session().Nendo = 2030;
    EXPECT_FALSE(OpenSlip());
    EXPECT_FALSE(QFile::exists("2030/SLIP.db"));
    EXPECT_EQ(lastStoreFailure().number, 14);
    EXPECT_TRUE(dlg.log.isEmpty());   // the store shows nothing; the shell does
}
