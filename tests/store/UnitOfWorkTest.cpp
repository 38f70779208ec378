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

// Another station on the same files, with a connection of its own.
class OtherStation {
public:
    explicit OtherStation(const TempCompany& co)
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
        db.setDatabaseName(co.file(QStringLiteral("MASTER.db")));
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=50"));
        db.open();
    }
    ~OtherStation()
    {
        QSqlDatabase::database(name_, false).close();
        QSqlDatabase::removeDatabase(name_);
    }
    QSqlDatabase db() const { return QSqlDatabase::database(name_, false); }
private:
    QString name_ = QStringLiteral("other-station");
};

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

TEST_F(UnitOfWorkTest, NestedUnitsLandOnlyWithTheOutermost)
{
    struct Case { bool outerCommits, innerCommits; const char* rows; } cases[] = {
        {true, true, "1,2"},
        {true, false, "1"},
        {false, true, ""},
        {false, false, ""},
    };
    const QSqlDatabase db = session().MasterDb;
    for (const Case& c : cases) {
        execSql(db, "DELETE FROM Tan");
        {
            UnitOfWork outer(db);
            ASSERT_TRUE(outer.active());
            EXPECT_EQ(outer.depth(), 1);
            execSql(db, "INSERT INTO Tan (Code, Namae) VALUES (1, 'A')");
            {
                UnitOfWork inner(db);
                ASSERT_TRUE(inner.active());
                EXPECT_EQ(inner.depth(), 2);
                EXPECT_EQ(openUnits(db), 2);
                execSql(db, "INSERT INTO Tan (Code, Namae) VALUES (2, 'B')");
                if (c.innerCommits) {
                    EXPECT_TRUE(inner.commit());
                }
            }
            EXPECT_EQ(openUnits(db), 1);
            if (c.outerCommits) {
                EXPECT_TRUE(outer.commit());
            }
        }
        EXPECT_EQ(openUnits(db), 0);
        EXPECT_EQ(one("SELECT IFNULL(group_concat(Code), '') FROM (SELECT Code FROM Tan ORDER BY Code)").toString(),
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

TEST_F(UnitOfWorkTest, ALockedFileGivesTheStoresOwnError)
{
    OtherStation other(co);
    ASSERT_EQ(execSql(other.db(), "BEGIN IMMEDIATE"), ErrorClass::None);
    {
        UnitOfWork unit(session().MasterDb);
        EXPECT_FALSE(unit.active());
        EXPECT_EQ(unit.errorClass(), ErrorClass::Busy);
        EXPECT_EQ(sqliteCode(unit.error()), 5);
        EXPECT_EQ(StoreErrorText(unit.error()), "エラー：5 database is locked");
        EXPECT_EQ(openUnits(session().MasterDb), 0);
    }
    execSql(other.db(), "ROLLBACK");
}

TEST_F(UnitOfWorkTest, ACommitRefusedByAReaderIsRolledBackAndTold)
{
    OtherStation other(co);
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

TEST_F(UnitOfWorkTest, AWaitForAnotherStationShowsItselfUntilTheLockGoes)
{
    const QString waiting = "Wait:他の端末の処理を待っています。しばらくお待ちください。";
    struct Case { int holdMs, timeoutMs; bool begins; } cases[] = {
        {900, 5000, true},    // the other station finishes while we wait
        {900, 150, false},    // it does not, within the time we wait
    };
    for (const Case& c : cases) {
        ScriptedDialogs dlg;
        showLockWaits();
        setBusyTimeoutMs(c.timeoutMs);
        std::thread other = holdLock(co.file(QStringLiteral("MASTER.db")), QStringLiteral("BEGIN IMMEDIATE"), c.holdMs);
        {
            UnitOfWork unit(session().MasterDb);
            EXPECT_EQ(unit.active(), c.begins) << c.timeoutMs;
            if (!c.begins) {
                EXPECT_EQ(sqliteCode(unit.error()), 5);
            }
        }
        other.join();
        EXPECT_EQ(dlg.log, (QStringList{waiting, "Hide:"})) << c.timeoutMs;
    }
}

TEST(LockWait, OpeningAFileAnotherStationHoldsShowsTheWaitAndTakesItAway)
{
    TempCompany co(2026);
    ScriptedDialogs dlg;
    showLockWaits();
    setBusyTimeoutMs(600);
    // The other station writes the file: not even its schema can be read meanwhile.
    OtherStation other(co);
    ASSERT_EQ(execSql(other.db(), "BEGIN EXCLUSIVE"), ErrorClass::None);
    EXPECT_FALSE(OpenStore());
    EXPECT_EQ(lastStoreFailure().number, 5);
    // Gone with the failure, not left standing over the error box.
    EXPECT_EQ(dlg.log, (QStringList{"Wait:他の端末の処理を待っています。しばらくお待ちください。", "Hide:"}));
    execSql(other.db(), "ROLLBACK");
}

// The copies of a backup, a compaction or a year-end read the files through connections of
// their own: a wait there shows itself too, over the notice of the work, which comes back.
TEST(LockWait, ACopyWaitingForAnotherStationSaysSoAndTheWorksNoticeComesBack)
{
    TempCompany co(2026);
    ScriptedDialogs dlg;
    showLockWaits();
    setBusyTimeoutMs(5000);
    std::thread other = holdLock(co.file(QStringLiteral("2026/SLIP.db")), QStringLiteral("BEGIN EXCLUSIVE"), 900);
    ShowWait("データベース修復中です。");
    QString error;
    const bool copied = writeCheckedCopy("2026/SLIP.db", "2026/SLIPN.db", &error);
    HideWait();
    other.join();
    EXPECT_TRUE(copied) << error.toStdString();
    EXPECT_EQ(dlg.log, (QStringList{"Wait:データベース修復中です。", "Wait:他の端末の処理を待っています。しばらくお待ちください。",
                                    "Wait:データベース修復中です。", "Hide:"}));
}
