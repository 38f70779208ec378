#include <functional>
#include <future>
#include <thread>
#include <gtest/gtest.h>
#include <QThread>
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "store/BackupFiles.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

namespace {

QVariant one(const QString& sql) { return scalar(session().MasterDb, sql); }

// Another station, on a thread of its own, that holds a lock on `file` for `ms` from the
// moment this returns; join the thread afterwards.
std::thread holdLock(const QString& file, const QString& begin, int ms)
{
    std::promise<void> locked;
    std::future<void> held = locked.get_future();
    std::thread t([file, begin, ms, locked = std::move(locked)]() mutable {
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("locker"));
            db.setDatabaseName(file);
            db.open();
            execSql(db, begin);
            locked.set_value();
            QThread::msleep(ms);
            execSql(db, QStringLiteral("ROLLBACK"));
            db.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("locker"));
    });
    held.wait();
    return t;
}

class UnitOfWorkTest : public ::testing::Test {
protected:
    TempCompany co{2026};
    void SetUp() override
    {
        setBusyTimeoutMs(50);
        ASSERT_TRUE(co.open());
    }
    void TearDown() override { setBusyTimeoutMs(30000); }
};

} // namespace

// A unit spans both files: the outer one writes the master, the inner one the slip file.
TEST_F(UnitOfWorkTest, NestedUnitsLandOnlyWithTheOutermost)
{
    struct Case { bool outerCommits, innerCommits; const char* rows; } cases[] = {
        {true, true, "1,2"}, {true, false, "1,"}, {false, true, ","}, {false, false, ","},
    };
    const QSqlDatabase db = session().MasterDb;
    for (const Case& c : cases) {
        execSql(db, "DELETE FROM Tan");
        execSql(db, "DELETE FROM Dur");
        {
            UnitOfWork outer(db);
            ASSERT_TRUE(outer.active());
            EXPECT_EQ(outer.depth(), 1);
            execSql(db, "INSERT INTO Tan (Code, Namae) VALUES (1, 'A')");
            {
                UnitOfWork inner(db);
                ASSERT_TRUE(inner.active());
                EXPECT_EQ(openUnits(db), 2);
                execSql(db, "INSERT INTO Dur (Dno, EigCode) VALUES (2, 1)");
                if (c.innerCommits) EXPECT_TRUE(inner.commit());
            }
            EXPECT_EQ(openUnits(db), 1);
            if (c.outerCommits) EXPECT_TRUE(outer.commit());
        }
        EXPECT_EQ(openUnits(db), 0);
        EXPECT_EQ(one("SELECT IFNULL((SELECT Code FROM Tan), '') || ',' || IFNULL((SELECT Dno FROM Dur), '')").toString(),
                  QString::fromLatin1(c.rows))
            << c.outerCommits << c.innerCommits;
    }
}

TEST_F(UnitOfWorkTest, AUnitEndsWithTheOuterOneThatHeldIt)
{
    const QSqlDatabase db = session().MasterDb;
    UnitOfWork outer(db);
    UnitOfWork inner(db);
    outer.rollback();
    EXPECT_FALSE(inner.active());
    EXPECT_FALSE(inner.commit());
    // The connection is free again: a new unit is the outermost one.
    UnitOfWork next(db);
    EXPECT_EQ(next.depth(), 1);
    EXPECT_FALSE(inner.active());
}

TEST_F(UnitOfWorkTest, ACommitRefusedByAReaderIsRolledBackAndTold)
{
    OwnConnection other(co.file("MASTER.db"));
    // The other station reads inside its transaction: its shared lock keeps our COMMIT out.
    ASSERT_EQ(execSql(other.db(), "BEGIN"), ErrorClass::None);
    ASSERT_TRUE(scalar(other.db(), "SELECT count(*) FROM Eig").isValid());
    const QSqlDatabase db = session().MasterDb;
    {
        UnitOfWork unit(db);
        ASSERT_TRUE(unit.active());
        ASSERT_EQ(execSql(db, "INSERT INTO Tan (Code, Namae) VALUES (7, 'X')"), ErrorClass::None);
        EXPECT_FALSE(unit.commit());
        EXPECT_FALSE(unit.active());
        EXPECT_EQ(unit.errorClass(), ErrorClass::Busy);
        EXPECT_EQ(StoreErrorText(unit.error()), "エラー：5 database is locked");
    }
    execSql(other.db(), "ROLLBACK");
    EXPECT_EQ(one("SELECT count(*) FROM Tan").toInt(), 0);
    // Nothing was left open: the next unit writes and commits.
    UnitOfWork again(db);
    ASSERT_EQ(execSql(db, "INSERT INTO Tan (Code, Namae) VALUES (7, 'X')"), ErrorClass::None);
    EXPECT_TRUE(again.commit());
    EXPECT_EQ(one("SELECT count(*) FROM Tan").toInt(), 1);
}

// Another station's lock is waited for visibly, and the wait goes with the lock or with the
// failure (not left standing over the error box): in a unit of work, when the store is opened,
// and on the connections of their own that the copies of a backup, a compaction or a year-end
// read through, where the notice of the work comes back after the wait.
TEST(LockWait, AWaitForAnotherStationShowsItselfUntilTheLockGoes)
{
    const QString waiting = "Wait:他の端末の処理を待っています。しばらくお待ちください。";
    const QString repairing = "Wait:データベース修復中です。";
    struct Case {
        const char* what;
        const char* file;
        const char* begin;
        int timeoutMs;
        bool open, done;
        std::function<bool()> act;
        QStringList log;
    } cases[] = {
        {"the other station finishes while we wait", "MASTER.db", "BEGIN IMMEDIATE", 5000, true, true,
         [] { return UnitOfWork(session().MasterDb).active(); }, {waiting, "Hide:"}},
        {"it does not, within the time we wait", "MASTER.db", "BEGIN IMMEDIATE", 150, true, false, [] {
             UnitOfWork unit(session().MasterDb);
             // The store's own error: nothing begun, nothing left open.
             EXPECT_EQ(unit.errorClass(), ErrorClass::Busy);
             EXPECT_EQ(StoreErrorText(unit.error()), "エラー：5 database is locked");
             EXPECT_EQ(openUnits(session().MasterDb), 0);
             return unit.active();
         }, {waiting, "Hide:"}},
        // Writing, the other station keeps even the schema from being read.
        {"opening the store", "MASTER.db", "BEGIN EXCLUSIVE", 300, false, false, [] {
             const bool opened = OpenStore();
             EXPECT_EQ(lastStoreFailure().number, 5);
             return opened;
         }, {waiting, "Hide:"}},
        {"a copy", "2026/SLIP.db", "BEGIN EXCLUSIVE", 5000, false, true, [] {
             ShowWait("データベース修復中です。");
             QString error;
             const bool copied = writeCheckedCopy("2026/SLIP.db", "2026/SLIPN.db", &error);
             HideWait();
             return copied;
         }, {repairing, waiting, repairing, "Hide:"}},
    };
    for (const Case& c : cases) {
        TempCompany co(2026);
        if (c.open) ASSERT_TRUE(co.open());
        ScriptedDialogs dlg;
        showLockWaits();
        setBusyTimeoutMs(c.timeoutMs);
        std::thread other = holdLock(co.file(c.file), c.begin, 900);
        EXPECT_EQ(c.act(), c.done) << c.what;
        other.join();
        EXPECT_EQ(dlg.log, c.log) << c.what << ": " << qPrintable(dlg.log.join(" | "));
    }
    setBusyTimeoutMs(30000);
}
