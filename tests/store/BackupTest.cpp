#include <gtest/gtest.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include "demo/DemoCompany.h"
#include "shell/QtMenuRun.h"
#include "shell/QtScreens.h"
#include "shell/Session.h"
#include "store/Backup.h"
#include "store/Backup_frm.h"
#include "store/NewCompany.h"
#include "store/Store.h"
#include "support/EndRecorder.h"
#include "support/ScriptedDialogs.h"
#include "support/StoreFileHelpers.h"
#include "support/StoreSnapshot.h"
#include "support/TempCompany.h"

namespace {

const QDate kTuesday(2001, 1, 2);

void sql(const QString& statement, const QVariantList& binds = {})
{
    QSqlError e;
    EXPECT_EQ(execSql(session().MasterDb, statement, binds, &e), ErrorClass::None) << e.text().toStdString();
}

// A copy that reads back damaged, as a dying disk would leave it.
void spoil(const QString& path)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadWrite));
    f.write(QByteArray(4096, 'x'));
}

QString linkTarget(const QString& path)
{
    char buf[256] = {0};
    const ssize_t n = ::readlink(QFile::encodeName(path).constData(), buf, sizeof buf - 1);
    return n > 0 ? QString::fromLocal8Bit(buf, n) : QString();
}

} // namespace

TEST(Backup, NamesCarryTheYearAndTheWeekdayCountedFromSunday)
{
    struct Case { QDate day; int weekday; } cases[] = {
        {QDate(2026, 11, 22), 1}, {QDate(2026, 11, 23), 2}, {kTuesday, 3}, {QDate(2026, 11, 28), 7},
    };
    for (const auto& c : cases) EXPECT_EQ(backupWeekday(c.day), c.weekday) << c.day.toString().toStdString();
    EXPECT_EQ(backupFileName("MAST", 2001, kTuesday), "MAST20013.db");
    EXPECT_EQ(backupFileName("SLIP", 2001, kTuesday), "SLIP20013.db");
}

TEST(Backup, TheFolderComesFromTheOptionsOrTheDefault)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    EXPECT_EQ(backupFolder(), QDir::homePath() + "/VelmoraBackup/" + QDir::current().dirName());
    struct Case { const char* row; QString folder; } cases[] = {
        {"bk", "bk"}, {" bk/ ", "bk/"}, {" ", ""},   // a blank row: the company's own folder
    };
    for (const auto& c : cases) {
        sql("INSERT OR REPLACE INTO UserOP (Code, contents) VALUES (5, ?)", {QString(c.row)});
        EXPECT_EQ(backupFolder(), c.folder) << c.row;
    }
    // With and without the trailing separator, of either system, the same files.
    for (const QString& folder : {QString("bk"), QString("bk/"), QString("bk\\")}) {
        BackupResult r;
        ASSERT_TRUE(backupStore(folder, false, 2026, kTuesday, &r)) << r.error.toStdString();
        EXPECT_EQ(r.masterCopy, "bk/MAST20263.db");
        EXPECT_EQ(r.slipCopy, "bk/SLIP20263.db");
    }
    EXPECT_EQ(QDir("bk").entryList(QDir::Files), QStringList({"MAST20263.db", "SLIP20263.db"}));
}

TEST(Backup, CopiesAreConsistentWhileAnotherStationIsWriting)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    sql("INSERT INTO Dur (Dno, EigCode, Hizuke) VALUES (1, 1, '2026-05-01')");
    {
        OwnConnection other("2026/SLIP.db");
        ASSERT_EQ(execSql(other.db(), "BEGIN IMMEDIATE"), ErrorClass::None);
        ASSERT_EQ(execSql(other.db(), "INSERT INTO Dur (Dno, EigCode) VALUES (2, 1)"), ErrorClass::None);
        BackupResult r;
        ASSERT_TRUE(backupStore("bk", false, 2026, kTuesday, &r)) << r.error.toStdString();
        execSql(other.db(), "ROLLBACK");
    }
    EXPECT_EQ(inFile("bk/SLIP20263.db", "SELECT group_concat(Dno) FROM Dur"), "1");
    EXPECT_EQ(inFile("bk/MAST20263.db", "SELECT SKai FROM Com"), "20260401");
}

TEST(Backup, AFailedCopyLeavesLastWeeksGenerationWhole)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    ASSERT_TRUE(backupStore("bk", false, 2026, kTuesday, nullptr));
    const QByteArray master = fileHash("bk/MAST20263.db");
    const QByteArray slip = fileHash("bk/SLIP20263.db");
    sql("INSERT INTO Dur (Dno, EigCode) VALUES (5, 1)");
    sql("UPDATE Com SET Kaisya='改名'");
    struct Case { const char* step; const char* file; bool spoilIt; } cases[] = {
        {"copy", "MAST20263.db.new", false},
        {"check", "MAST20263.db.new", true},
        {"copy", "SLIP20263.db.new", false},
        {"check", "SLIP20263.db.new", true},
        {"place", "SLIP20263.db", false},   // the master copy has taken its place already
    };
    for (const auto& c : cases) {
        ScopedFileHook hook([&](const QString& step, const QString& path) {
            if (step != c.step || !path.endsWith(c.file)) return true;
            if (c.spoilIt) spoil(path);
            return c.spoilIt;   // a spoilt copy goes on, to be caught by reading it back
        });
        BackupResult r;
        EXPECT_FALSE(backupStore("bk", false, 2026, kTuesday, &r)) << c.step << c.file;
        EXPECT_TRUE(r.error.startsWith("エラー：")) << r.error.toStdString();
        EXPECT_EQ(fileHash("bk/MAST20263.db"), master) << c.step << c.file;
        EXPECT_EQ(fileHash("bk/SLIP20263.db"), slip) << c.step << c.file;
        EXPECT_EQ(QDir("bk").entryList(QDir::Files), QStringList({"MAST20263.db", "SLIP20263.db"}));
    }
    ASSERT_TRUE(backupStore("bk", false, 2026, kTuesday, nullptr));
    EXPECT_EQ(inFile("bk/MAST20263.db", "SELECT Kaisya FROM Com"), "改名");
}

// Esc leaves the screen. Return copies, says so and ends the program; where the copy cannot be
// made it says that, and ends all the same. The regular exit copies without a word when
// option 15 asks for it.
TEST(BackupForm, StartCopiesSaysSoAndEndsAndEscLeaves)
{
    registerScreen("Backup_frm", [] { return new Backup_frm; });
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    sql("INSERT INTO UserOP (Code, contents) VALUES (5, 'bk'), (15, '1')");
    { QFile f("bk"); ASSERT_TRUE(f.open(QIODevice::WriteOnly)); }   // a file where the folder should be
    ScriptedDialogs dlg;
    EndRecorder ended;
    QPointer<Backup_frm> f = new Backup_frm;
    f->show();
    QTest::keyClick(f->startButton(), Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(f.isNull());
    EXPECT_TRUE(dlg.log.isEmpty());
    EXPECT_EQ(ended.count, 0);
    f = new Backup_frm;
    f->show();
    QTest::keyClick(f->startButton(), Qt::Key_Return);
    EXPECT_EQ(dlg.log, QStringList{"Tell:バックアップ機器の電源が入っていないか,\nパスの設定が異なります。"});
    EXPECT_EQ(ended.count, 1);

    ASSERT_TRUE(QFile::remove("bk") && co.open());
    dlg.log.clear();
    f = new Backup_frm;
    f->show();
    QTest::keyClick(f->startButton(), Qt::Key_Return);
    EXPECT_EQ(dlg.log, QStringList{"Tell:完了しました。システムを一旦終了します。"});
    EXPECT_EQ(ended.count, 2);
    const QDate today = QDate::currentDate();
    EXPECT_EQ(inFile("bk/" + backupFileName("MAST", 2026, today), "SELECT SKai FROM Com"), "20260401");
    EXPECT_TRUE(QFileInfo("bk/" + backupFileName("SLIP", 2026, today)).isFile());
    EXPECT_FALSE(session().MasterDb.isOpen());

    ASSERT_TRUE(QDir("bk").removeRecursively() && co.open());
    dlg.log.clear();
    EXPECT_TRUE(DoEndingAction());
    EXPECT_EQ(dlg.of("Tell"), QStringList{});   // no closing message at the exit
    EXPECT_EQ(ended.count, 3);
    EXPECT_EQ(QDir("bk").entryList(QDir::Files).size(), 2);
}


TEST(CompanyLayout, NewAndDemoCompaniesKeepTheMasterInItsFolderWithARelativeLink)
{
    QTemporaryDir tmp;
    NewCompanyOptions o;
    o.year = 2026;
    DemoOptions d;
    d.slips = 20;
    d.year = 2026;
    ASSERT_TRUE(createCompany(tmp.filePath("new"), o, nullptr));
    ASSERT_TRUE(createDemoCompany(tmp.filePath("demo"), d, nullptr));
    for (const char* name : {"new", "demo"}) {
        const QString root = tmp.filePath(name);
        EXPECT_EQ(linkTarget(root + "/MASTER.db"), "MASTER/MASTER.db") << name;
        EXPECT_TRUE(QFileInfo(root + "/MASTER/MASTER.db").isFile() && !QFileInfo(root + "/MASTER/MASTER.db").isSymLink());
    }
}
