#include <gtest/gtest.h>
#include <functional>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include "ledgers/LedgerBatch.h"
#include "shell/Session.h"
#include "store/Backup.h"
#include "store/BackupFiles.h"
#include "store/Repair.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "support/DamagedFile.h"
#include "support/ScriptedDialogs.h"
#include "support/StoreSnapshot.h"
#include "support/TempCompany.h"

namespace {

// Customers 1..n with names long enough to fill many pages.
QString customers(int n)
{
    return QStringLiteral("WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM c WHERE i<%1) "
                          "INSERT INTO Tor (Code, Namae, Kana) SELECT i, '得意先' || printf('%05d', i) || "
                          "'株式会社東西南北商事本店営業部', 'ﾄｸｲｻｷ' FROM c").arg(n);
}

QStringList damagedCopiesBeside(const QString& file)
{
    const QFileInfo f(file);
    return QDir(f.absolutePath()).entryList({f.fileName() + ".damaged-*"}, QDir::Files);
}

} // namespace

TEST(Repair, ADamagedMasterIsRepairedOnOpeningAndTheOriginalKeptBesideTheRealFile)
{
    struct Case { bool link; const char* object; int leaf; bool lost; } cases[] = {
        // A broken index comes back whole from its table; MASTER.db a link to MASTER/MASTER.db,
        // so the copies live beside the real file.
        {true, "ix_Tor_Kana", 0, false},
        // The master file itself at the root.
        {false, "ix_Tor_Kana", 0, false},
        // A broken page of the table itself loses its rows, and the clerk hears which table.
        {false, "Tor", 3, true},
    };
    for (const Case& c : cases) {
        TempCompany co(2026);
        if (!c.link) ASSERT_TRUE(co.useRootMasterFile());
        ASSERT_EQ(QFileInfo("MASTER.db").isSymLink(), c.link);
        const QString real = c.link ? "MASTER/MASTER.db" : "MASTER.db";
        ASSERT_TRUE(co.execOn(real, {customers(400)}));
        ASSERT_TRUE(damageLeaf(real, c.object, c.leaf));
        const QByteArray damaged = fileHash(real);

        ScriptedDialogs dlg;
        ASSERT_TRUE(OpenStore()) << c.link << c.object << qPrintable(lastStoreFailure().description);
        const QStringList notices = takeStoreNotices();
        ASSERT_EQ(notices.size(), 1);
        EXPECT_TRUE(notices[0].startsWith("データファイル " + real + " が壊れていたため修復しました。")) << qPrintable(notices[0]);
        EXPECT_EQ(notices[0].contains("読み取れなかった行があります：Tor"), c.lost);
        EXPECT_TRUE(dlg.log.isEmpty());   // the shell tells, not the store

        const QStringList copies = damagedCopiesBeside(real);
        ASSERT_EQ(copies.size(), 1) << c.link;
        EXPECT_TRUE(notices[0].contains(copies[0]));
        EXPECT_EQ(fileHash(QFileInfo(real).absolutePath() + "/" + copies[0]), damaged);
        EXPECT_EQ(QFileInfo("MASTER.db").isSymLink(), c.link);

        const qint64 kept = scalar(session().MasterDb, "SELECT count(*) FROM Tor").toLongLong();
        if (!c.lost) EXPECT_EQ(kept, 400);
        else EXPECT_TRUE(kept > 300 && kept < 400) << kept;
        EXPECT_EQ(scalar(session().MasterDb, "PRAGMA integrity_check").toString(), "ok");
        CloseStore();
    }
}

TEST(Repair, AFileThatIsNoDatabaseIsRefusedAndLeftAlone)
{
    TempCompany co(2026);
    QByteArray rubbish(16384, 'x');
    rubbish.replace(0, 8, "VELMORA!");
    { QFile f("MASTER.db"); ASSERT_TRUE(f.open(QIODevice::WriteOnly)); f.write(rubbish); }
    const QStringList before = QDir().entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    EXPECT_FALSE(OpenStore());
    EXPECT_EQ(lastStoreFailure().number, 26);
    EXPECT_TRUE(lastStoreFailure().description.startsWith("データベースのファイルではありません。"));
    EXPECT_EQ(fileHash("MASTER.db"), QCryptographicHash::hash(rubbish, QCryptographicHash::Sha256));
    EXPECT_EQ(QDir().entryList(QDir::AllEntries | QDir::NoDotAndDotDot), before);
    EXPECT_TRUE(takeStoreNotices().isEmpty());
}

TEST(Repair, WhatACutOffRepairLeftBehindDoesNotKeepTheStoreFromOpening)
{
    TempCompany co(2026);
    const QString real = "MASTER/MASTER.db";
    ASSERT_TRUE(co.execOn(real, {customers(200)}));
    ASSERT_TRUE(damageLeaf(real, "ix_Tor_Kana", 0));
    // The process ended between the copy and putting it in place: the damaged file is where
    // it was, a half-written rebuilt copy and its journal lie beside it.
    ASSERT_TRUE(QFile::copy(real, real + ".damaged-20260101-000000"));
    { QFile f(real + ".rebuilt"); ASSERT_TRUE(f.open(QIODevice::WriteOnly)); f.write(QByteArray(5000, '\0')); }
    { QFile f(real + ".rebuilt-journal"); ASSERT_TRUE(f.open(QIODevice::WriteOnly)); f.write("x"); }
    ASSERT_TRUE(OpenStore()) << qPrintable(lastStoreFailure().description);
    EXPECT_EQ(scalar(session().MasterDb, "SELECT count(*) FROM Tor").toInt(), 200);
    EXPECT_FALSE(QFile::exists(real + ".rebuilt"));
    EXPECT_FALSE(QFile::exists(real + ".rebuilt-journal"));
    EXPECT_EQ(damagedCopiesBeside(real).size(), 2);
}

TEST(Repair, AStationReadingTheFileKeepsTheRepairOutAndNothingChanges)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.execOn("MASTER.db", {customers(200)}));
    ASSERT_TRUE(damageLeaf("MASTER.db", "ix_Tor_Kana", 0));
    const QByteArray damaged = fileHash("MASTER.db");
    setBusyTimeoutMs(100);
    {
        OwnConnection other("MASTER.db");
        ASSERT_EQ(execSql(other.db(), "BEGIN"), ErrorClass::None);
        ASSERT_TRUE(scalar(other.db(), "SELECT count(*) FROM Eig").isValid());
        RepairOutcome r;
        EXPECT_FALSE(repairStoreFile("MASTER.db", &r));
        EXPECT_TRUE(r.reason.startsWith("他の端末が使用中のため修復できません。"));
        execSql(other.db(), "ROLLBACK");
    }
    setBusyTimeoutMs(30000);
    EXPECT_EQ(fileHash("MASTER.db"), damaged);
    EXPECT_TRUE(damagedCopiesBeside("MASTER/MASTER.db").isEmpty());
    EXPECT_FALSE(QFile::exists("MASTER/MASTER.db.rebuilt"));
}

// Damage met after opening (the slip file is checked only as far as its schema then) is told
// as damage, with the way to mend it, by a backup and by the ledger run alike.
TEST(Repair, DamageMetAfterOpeningIsToldAsDamageWithTheWayToMendIt)
{
    struct Case {
        const char* what;
        const char* object;
        int leaf;
        std::function<QString()> act;
    } cases[] = {
        {"backup", "Dud", 2, [] {
             BackupResult r;
             EXPECT_FALSE(backupStore("bk", false, 2026, QDate(2001, 1, 2), &r));
             return r.error;
         }},
        {"ledger run", "ix_Dud_ThiFlag", 0, [] {
             QString error;
             EXPECT_FALSE(runLedgerProcessing({}, &error));
             return error;
         }},
    };
    for (const Case& c : cases) {
        TempCompany co(2026);
        ASSERT_TRUE(co.execOn("2026/SLIP.db", {"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<300) "
                                               "INSERT INTO Dud (Dno, Eda, EigCode, Hizuke, TorCode, HinCode, HinNamae, Suu, "
                                               "UGaku, Getudo, ThiFlag) SELECT i, 1, 1, '2026-05-01', 1, '0000000000001', "
                                               "printf('%0100d', i), 1, 10000, 5, -1 FROM n"}));
        ASSERT_TRUE(damageLeaf("2026/SLIP.db", c.object, c.leaf));
        ASSERT_TRUE(co.open());
        const QString error = c.act();
        EXPECT_TRUE(error.startsWith("エラー：11 ")) << c.what << qPrintable(error);
        EXPECT_TRUE(error.endsWith("「データ最適化」で修復してください。")) << c.what << qPrintable(error);
        EXPECT_TRUE(QDir("bk").entryList(QDir::Files).isEmpty()) << c.what;
    }
}
