#include <gtest/gtest.h>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include "YearEndFixture.h"
#include "ledgers/StoreCommands.h"
#include "shell/InstanceLock.h"
#include "shell/Session.h"
#include "shell/TargetYear.h"
#include "store/Backup.h"
#include "store/BackupFiles.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "support/DamagedFile.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"
#include "support/StoreFileHelpers.h"
#include "support/StoreSnapshot.h"

namespace {

// What a command wrote; the store is closed and the company free afterwards.
struct CommandRun {
    QStringList out, err;
    int rc = -1;
    explicit CommandRun(const QStringList& args)
    {
        CloseStore();
        CommandConsole c{[this](const QString& s) { out << s; }, [this](const QString& s) { err << s; },
                         [](QString*) { return false; }};
        rc = runStoreCommand(args, c);
        EXPECT_FALSE(session().MasterDb.isOpen());
        EXPECT_FALSE(processInstanceLock().held());
    }
};

} // namespace

// A new company, without the marker: year-end, backup and compaction, each from its own start.
TEST(YearEndCommands, YearEndBackupAndCompactionWithoutAScreen)
{
    ClosingYear co;
    const CommandRun yearend({"yearend"});
    EXPECT_EQ(yearend.rc, 0);
    EXPECT_TRUE(yearend.err.isEmpty()) << yearend.err.join('\n').toStdString();
    EXPECT_EQ(yearend.out.last(), "年次更新は無事に終了しました。2026年度 → 2027年度");
    EXPECT_EQ(inFile("MASTER/MASTER.db", "SELECT SKai FROM Com"), "20270401");

    // The start-up of the next command is on the new year.
    const CommandRun backup({"backup", "--to", "bk"});
    EXPECT_EQ(backup.rc, 0) << backup.err.join('\n').toStdString();
    const QDate today = QDate::currentDate();
    EXPECT_EQ(inFile("bk/" + backupFileName("MAST", 2027, today), "SELECT SKai FROM Com"), "20270401");
    EXPECT_EQ(inFile("bk/" + backupFileName("SLIP", 2027, today), "SELECT group_concat(Dno) FROM Dur"), "2");

    const QStringList rows = storeFileRows("2027/SLIP.db");
    const CommandRun optimize({"optimize"});
    EXPECT_EQ(optimize.rc, 0) << optimize.err.join('\n').toStdString();
    EXPECT_EQ(optimize.out.last(), "最適化しました: MASTER/MASTER.db, 2027/SLIP.db（元のファイルは .bak に残しました）");
    EXPECT_EQ(snapshotDifference(rows, storeFileRows("2027/SLIP.db")), "");
    EXPECT_EQ(snapshotDifference(rows, storeFileRows("2027/SLIP.bak")), "");
    EXPECT_TRUE(QFileInfo("MASTER/MASTER.bak").isFile());

    // Reopened, the closed year is still there to change to.
    ScriptedDialogs dlg;
    ASSERT_TRUE(co.reopen());
    EXPECT_EQ(session().Nendo, 2027);
    EXPECT_EQ(ChangeTargetYear(2026), YearChange::Changed);
    EXPECT_EQ(scalar(session().MasterDb, "SELECT count(*) FROM Dur").toInt(), 4);
    EXPECT_TRUE(dlg.log.isEmpty());
}

TEST(YearEndCommands, RefusalsAndFailuresChangeNothing)
{
    ClosingYear co;
    QFile notAFolder("bk");
    ASSERT_TRUE(notAFolder.open(QIODevice::WriteOnly));
    notAFolder.close();
    CloseStore();
    const QStringList before = companySnapshot();
    const QString usage = "使い方:";
    struct Row { QStringList args; int rc; QString err; } rows[] = {
        {{"yearend", "--office", "大阪"}, 2, "--office には営業所コード（数字）を指定してください。"},
        {{"yearend", "now"}, 2, usage},
        {{"backup", "--to"}, 2, usage},
        {{"optimize", "--to", "x"}, 2, usage},
        {{"yearend", "--office", "9"}, 2, "営業所 9 は登録されていません。"},
        {{"backup", "--to", "bk"}, 1, backupFailureText()},   // a file where the folder should be
    };
    for (const Row& r : rows) {
        const CommandRun run(r.args);
        EXPECT_EQ(run.rc, r.rc) << r.args.join(' ').toStdString();
        ASSERT_FALSE(run.err.isEmpty());
        EXPECT_TRUE(run.err.first().startsWith(r.err)) << run.err.first().toStdString();
        EXPECT_TRUE(run.out.isEmpty());
    }
    EXPECT_EQ(snapshotDifference(before, companySnapshot()), "");
}

TEST(YearEndCommands, APlainRootMasterIsToldTheLayoutItNeeds)
{
    ClosingYear co;
    CloseStore();
    QFile::remove("MASTER.db");
    ASSERT_TRUE(QFile::rename("MASTER/MASTER.db", "MASTER.db"));
    ASSERT_TRUE(QDir("MASTER").removeRecursively());
    const QStringList before = companySnapshot();
    const QString needed = "MASTER/MASTER.db がありません。";
    for (const char* command : {"yearend", "backup", "optimize"}) {
        const CommandRun run({command});
        EXPECT_EQ(run.rc, 1) << command;
        EXPECT_TRUE(run.err.join('\n').contains(needed)) << run.err.join('\n').toStdString();
    }
    // The year change says the same in the store's error box, and the year stays open.
    ScriptedDialogs dlg;
    ASSERT_TRUE(co.reopen());
    EXPECT_EQ(ChangeTargetYear(2026), YearChange::Restored);
    ASSERT_EQ(dlg.of("Box").size(), 1);
    EXPECT_TRUE(dlg.of("Box")[0].contains(needed));
    EXPECT_TRUE(session().MasterDb.isOpen());
    CloseStore();
    EXPECT_EQ(snapshotDifference(before, companySnapshot()), "");
}

TEST(YearEndCommands, OptimizeRepairsADamagedSlipFileAndSaysWhereTheOriginalIs)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.execOn("2026/SLIP.db", {"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<200) "
                                           "INSERT INTO Dud (Dno, Eda, EigCode, Getudo, ThiFlag) SELECT i, 1, 1, 5, -1 FROM n"}));
    ASSERT_TRUE(damageLeaf("2026/SLIP.db", "ix_Dud_ThiFlag", 0));
    const CommandRun optimize({"optimize"});
    EXPECT_EQ(optimize.rc, 0) << optimize.err.join('\n').toStdString();
    ASSERT_EQ(optimize.err.size(), 1) << optimize.err.join('\n').toStdString();
    EXPECT_TRUE(optimize.err[0].startsWith("データファイル 2026/SLIP.db が壊れていたため修復しました。"));
    EXPECT_EQ(optimize.out.last(), "最適化しました: MASTER/MASTER.db, 2026/SLIP.db（元のファイルは .bak に残しました）");
    EXPECT_EQ(inFile("2026/SLIP.db", "PRAGMA integrity_check"), "ok");
    EXPECT_EQ(inFile("2026/SLIP.db", "SELECT count(*) FROM Dud"), "200");
}
