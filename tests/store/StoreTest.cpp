#include <gtest/gtest.h>
#include <QFile>
#include <QSqlQuery>
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

TEST(Store, OpensWithoutMarkerAndReachesSlipTablesByPlainName)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    EXPECT_FALSE(session().YearFolderMode);
    EXPECT_EQ(execSql(session().MasterDb, "INSERT INTO Dur (Dno, EigCode, Hizuke) VALUES (7, 1, '2026-05-01')"),
              ErrorClass::None);
    EXPECT_EQ(one("SELECT Dur.Dno FROM Dur JOIN Eig ON Eig.Code = Dur.EigCode").toInt(), 7);
    // The row lives in the slip file, not the master.
    CloseStore();
    EXPECT_FALSE(co.execOn("2026/SLIP.db", {"INSERT INTO Dur (Dno, EigCode) VALUES (7, 1)"}));   // taken
    EXPECT_TRUE(co.execOn("2026/SLIP.db", {"INSERT INTO Dur (Dno, EigCode) VALUES (8, 1)"}));
    EXPECT_FALSE(co.execOn("MASTER.db", {"SELECT * FROM Dur"}));
}

TEST(Store, MarkerSelectsTheYearsMasterAndReopenUsesMasterFolderWithoutIt)
{
    TempCompany co(2001);
    ASSERT_TRUE(co.useRootMasterFile());
    // Year-folder layout: the master of 2001 lives in 2001/.
    ASSERT_TRUE(QFile::rename("MASTER.db", "2001/MASTER.db"));
    { QFile m("NENDO"); ASSERT_TRUE(m.open(QIODevice::WriteOnly)); m.write(" 2001\r\n"); }
    ScriptedDialogs dlg;
    ASSERT_TRUE(OpenStore());
    EXPECT_TRUE(session().YearFolderMode);
    EXPECT_EQ(session().Nendo, 2001);
    EXPECT_TRUE(session().MasterDb.databaseName().endsWith("2001/MASTER.db"));

    // Without the marker the reopening path is MASTER/MASTER.db, not the start-up file.
    QFile::remove("NENDO");
    ASSERT_TRUE(QDir().mkpath("MASTER"));
    ASSERT_TRUE(QFile::copy("2001/MASTER.db", "MASTER/MASTER.db"));
    ASSERT_TRUE(QFile::copy("2001/MASTER.db", "MASTER.db"));
    ASSERT_TRUE(OpenStore());
    EXPECT_FALSE(session().YearFolderMode);
    EXPECT_TRUE(session().MasterDb.databaseName().endsWith("MASTER.db"));
    EXPECT_FALSE(session().MasterDb.databaseName().contains("MASTER/"));
    ASSERT_TRUE(ReopenMaster());
    EXPECT_TRUE(session().MasterDb.databaseName().endsWith("MASTER/MASTER.db"));
    EXPECT_TRUE(dlg.log.isEmpty());
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
    execSql(session().MasterDb, "INSERT INTO Dur (Dno, EigCode) VALUES (2, 1)");
    QSqlQuery q(session().MasterDb);
    ASSERT_TRUE(q.exec("PRAGMA database_list"));
    QStringList files;
    while (q.next()) files << q.value(2).toString();
    q.finish();
    EXPECT_TRUE(files.filter("2027/SLIP.db").size() == 1);
    EXPECT_TRUE(files.filter("2026/SLIP.db").isEmpty());

    // And back: 2026 still has only its own slip.
    session().Nendo = 2026;
    ASSERT_TRUE(OpenSlip() && AttachSlipTables());
    CloseSlip();
    EXPECT_EQ(one("SELECT group_concat(Dno) FROM Dur").toString(), "1");
}

TEST(Store, StaleLinkIsReplacedAndExtraSlipTableIsReached)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.execOn("2026/SLIP.db", {"CREATE TABLE Extra (X INTEGER)", "INSERT INTO Extra VALUES (5)"}));
    // a master object named like a slip table would hide it
    ASSERT_TRUE(co.execOn("MASTER.db", {"CREATE VIEW Dud AS SELECT 99 AS Dno"}));
    ASSERT_TRUE(co.open());
    EXPECT_EQ(one("SELECT X FROM Extra").toInt(), 5);
    EXPECT_EQ(count("Dud"), 0);
    EXPECT_EQ(count("Tor"), 0);   // master tables stay where they are
}

TEST(Store, TableExistsFoldsCaseAndTrims)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    struct Case { const char* name; bool exists; } cases[] = {
        {"dur", true}, {" Dur ", true}, {"zsysfunc", true}, {"", false}, {"Du", false}, {"sqlite_master", false},
    };
    for (const auto& c : cases) EXPECT_EQ(TableExists(session().MasterDb, c.name), c.exists) << c.name;
}

TEST(Store, AttachTableMakesOldLinksAndRefusesAnExistingName)
{
    TempCompany co(2026);
    ASSERT_TRUE(QDir().mkpath("2025"));
    ASSERT_TRUE(QFile::copy("2026/SLIP.db", "2025/SLIP.db"));
    ASSERT_TRUE(co.open());
    ScriptedDialogs dlg;
    QSqlDatabase db = session().MasterDb;
    const QString old = QDir::current().absoluteFilePath("2025/SLIP.db");
    ASSERT_TRUE(AttachTable(db, "ThiOld", "Thi", old));
    ASSERT_TRUE(AttachTable(db, "TtoDOld", "TtoD", ";DATABASE=" + old));
    EXPECT_TRUE(TableExists(db, "thiold"));
    EXPECT_EQ(count("TtoDOld"), 0);
    EXPECT_TRUE(dlg.log.isEmpty());

    EXPECT_FALSE(AttachTable(db, "ThiOld", "ThiD", old));
    EXPECT_FALSE(AttachTable(db, "Dur", "Dur", old));          // an existing table name
    EXPECT_FALSE(AttachTable(db, "X;DROP", "Thi", old));       // never pasted into SQL
    EXPECT_EQ(dlg.of("Tell"), QStringList(3, "アタッチに失敗しました。"));
    EXPECT_TRUE(TableExists(db, "ThiOld"));

    EXPECT_TRUE(DropTable(db, "thiold"));
    EXPECT_FALSE(TableExists(db, "ThiOld"));
    EXPECT_TRUE(TableExists(db, "Thi"));
}

TEST(Store, ErrorsAreClassifiedFromRealFailures)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    QSqlDatabase db = session().MasterDb;
    // a key refusing a second row
    EXPECT_EQ(execSql(db, "INSERT INTO Tor (Code, Namae) VALUES (1, 'A')"), ErrorClass::None);
    EXPECT_EQ(execSql(db, "INSERT INTO Tor (Code, Namae) VALUES (1, 'B')"), ErrorClass::Duplicate);
    EXPECT_EQ(one("SELECT Namae FROM Tor WHERE Code=1").toString(), "A");
    EXPECT_EQ(execSql(db, "SELECT * FROM NoSuchTable"), ErrorClass::Other);

    // a file locked by a second station
    setBusyTimeoutMs(50);
    StoreFailure f;
    ASSERT_TRUE(openStoreFile("station1", "MASTER.db", &f));
    QSqlDatabase other = QSqlDatabase::addDatabase("QSQLITE", "station2");
    other.setDatabaseName("MASTER.db");
    ASSERT_TRUE(other.open());
    ASSERT_EQ(execSql(other, "BEGIN EXCLUSIVE"), ErrorClass::None);
    {
        QSqlDatabase mine = QSqlDatabase::database("station1", false);
        EXPECT_EQ(execSql(mine, "INSERT INTO Tor (Code) VALUES (2)"), ErrorClass::Busy);
        UnitOfWork blocked(mine);
        EXPECT_FALSE(blocked.active());
        mine.close();
    }
    QSqlDatabase::removeDatabase("station1");
    execSql(other, "ROLLBACK");
    other.close();
    other = QSqlDatabase();
    QSqlDatabase::removeDatabase("station2");
    setBusyTimeoutMs(30000);
}

TEST(Store, DamagedOrMissingFileGivesOneMessageAndNoNewFile)
{
    TempCompany co(0);   // an empty folder
    ScriptedDialogs dlg;
    EXPECT_FALSE(OpenStore());
    EXPECT_FALSE(QFile::exists("MASTER.db"));
    ASSERT_EQ(dlg.of("Box").size(), 1);
    EXPECT_TRUE(dlg.of("Box")[0].startsWith("エラー|エラー番号 14"));
    EXPECT_TRUE(dlg.of("Box")[0].contains(" でエラーが発生しました。 "));

    { QFile f("MASTER.db"); ASSERT_TRUE(f.open(QIODevice::WriteOnly)); f.write(QByteArray(8192, 'x')); }
    EXPECT_FALSE(OpenStore());       // returns: no endless repair loop
    ASSERT_EQ(dlg.of("Box").size(), 2);
    EXPECT_TRUE(dlg.of("Box")[1].startsWith("エラー|エラー番号 26"));

    session().Nendo = 2030;
    EXPECT_FALSE(OpenSlip());
    EXPECT_FALSE(QFile::exists("2030/SLIP.db"));
    EXPECT_EQ(dlg.of("Box").size(), 3);
}

TEST(Store, UnitOfWorkSpansBothFiles)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    QSqlDatabase db = session().MasterDb;
    {
        UnitOfWork unit(db);
        ASSERT_TRUE(unit.active());
        execSql(db, "INSERT INTO Dur (Dno, EigCode) VALUES (1, 1)");
        execSql(db, "UPDATE Eig SET DurNo = 2 WHERE Code = 1");
    }   // not committed
    EXPECT_EQ(count("Dur"), 0);
    EXPECT_EQ(one("SELECT DurNo FROM Eig").toInt(), 1);
    {
        UnitOfWork unit(db);
        execSql(db, "INSERT INTO Dur (Dno, EigCode) VALUES (1, 1)");
        execSql(db, "UPDATE Eig SET DurNo = 2 WHERE Code = 1");
        EXPECT_TRUE(unit.commit());
    }
    EXPECT_EQ(count("Dur"), 1);
    EXPECT_EQ(one("SELECT DurNo FROM Eig").toInt(), 2);
}
