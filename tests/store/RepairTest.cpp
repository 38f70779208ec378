#include <gtest/gtest.h>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include "ledgers/LedgerBatch.h"
#include "shell/Session.h"
#include "store/Repair.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "support/DamagedFile.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

namespace {

QByteArray bytesOf(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

// Runs statements on a file through a connection of its own; the first column of the last.
QVariant onFile(const QString& path, const QStringList& statements)
{
    QVariant last;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "repair-test");
        db.setDatabaseName(path);
        db.open();
        for (const QString& sql : statements) last = scalar(db, sql);
        db.close();
    }
    QSqlDatabase::removeDatabase("repair-test");
    return last;
}

// Customers 1..n with names long enough to fill many pages.
void addCustomers(const QString& master, int n)
{
    onFile(master, {QStringLiteral("WITH RECURSIVE c(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM c WHERE i<%1) "
                                   "INSERT INTO Tor (Code, Namae, Kana) SELECT i, '得意先' || printf('%05d', i) || "
                                   "'株式会社東西南北商事本店営業部', 'ﾄｸｲｻｷ' FROM c").arg(n)});
}

QStringList damagedCopiesBeside(const QString& file)
{
    const QFileInfo f(file);
    return QDir(f.absolutePath()).entryList({f.fileName() + ".damaged-*"}, QDir::Files);
}

} // namespace

TEST(Repair, ADamagedMasterIsRepairedOnOpeningAndTheOriginalKeptBesideTheRealFile)
{
    struct Case { const char* layout; const char* object; int leaf; int kept; const char* lost; } cases[] = {
        // A broken index comes back whole from its table; MASTER.db a link to MASTER/MASTER.db,
        // so the copies live beside the real file.
        {"link", "ix_Tor_Kana", 0, 400, ""},
        // The master file itself at the root.
        {"file", "ix_Tor_Kana", 0, 400, ""},
        // A broken page of the table itself loses its rows, and the clerk hears which table.
        {"file", "Tor", 3, -1, "Tor"},
    };
    for (const Case& c : cases) {
        TempCompany co(2026);
        const bool link = QLatin1String(c.layout) == QLatin1String("link");
        if (!link) ASSERT_TRUE(co.useRootMasterFile());
        ASSERT_EQ(QFileInfo("MASTER.db").isSymLink(), link);
        const QString real = QFileInfo("MASTER.db").canonicalFilePath();
        addCustomers(real, 400);
        ASSERT_TRUE(damageLeaf(real, c.object, c.leaf));
        const QByteArray damaged = bytesOf(real);

        ScriptedDialogs dlg;
        ASSERT_TRUE(OpenStore()) << c.layout << c.object << qPrintable(lastStoreFailure().description);
        const QStringList notices = takeStoreNotices();
        ASSERT_EQ(notices.size(), 1);
        EXPECT_TRUE(notices[0].startsWith(link ? "データファイル MASTER/MASTER.db が壊れていたため修復しました。"
                                               : "データファイル MASTER.db が壊れていたため修復しました。"))
            << qPrintable(notices[0]);
        EXPECT_EQ(notices[0].contains("読み取れなかった行があります：Tor"), QLatin1String(c.lost) == "Tor");
        EXPECT_TRUE(dlg.log.isEmpty());   // the shell tells, not the store

        const QStringList copies = damagedCopiesBeside(real);
        ASSERT_EQ(copies.size(), 1) << c.layout;
        EXPECT_TRUE(notices[0].contains(copies[0]));
        EXPECT_EQ(bytesOf(QFileInfo(real).absolutePath() + "/" + copies[0]), damaged);
        EXPECT_EQ(QFileInfo("MASTER.db").isSymLink(), link);
        EXPECT_EQ(QDir().entryList({"*.rebuilt*"}).size() + QDir("MASTER").entryList({"*.rebuilt*"}).size(), 0);

        const qint64 customers = scalar(session().MasterDb, "SELECT count(*) FROM Tor").toLongLong();
        if (c.kept >= 0) EXPECT_EQ(customers, c.kept);
        else EXPECT_TRUE(customers > 300 && customers < 400) << customers;
        EXPECT_EQ(scalar(session().MasterDb, "PRAGMA integrity_check").toString(), "ok");
        EXPECT_EQ(scalar(session().MasterDb, "SELECT Namae FROM Eig WHERE Code=1").toString(), "本社");
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
    EXPECT_EQ(bytesOf("MASTER.db"), rubbish);
    EXPECT_EQ(QDir().entryList(QDir::AllEntries | QDir::NoDotAndDotDot), before);
    EXPECT_TRUE(takeStoreNotices().isEmpty());
}

TEST(Repair, WhatACutOffRepairLeftBehindDoesNotKeepTheStoreFromOpening)
{
    TempCompany co(2026);
    const QString real = "MASTER/MASTER.db";
    addCustomers(real, 200);
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
    const QString real = "MASTER/MASTER.db";
    addCustomers("MASTER.db", 200);
    ASSERT_TRUE(damageLeaf("MASTER.db", "ix_Tor_Kana", 0));
    const QByteArray damaged = bytesOf("MASTER.db");
    setBusyTimeoutMs(100);
    QSqlDatabase other = QSqlDatabase::addDatabase("QSQLITE", "reader");
    other.setDatabaseName("MASTER.db");
    ASSERT_TRUE(other.open());
    ASSERT_EQ(execSql(other, "BEGIN"), ErrorClass::None);
    ASSERT_TRUE(scalar(other, "SELECT count(*) FROM Eig").isValid());

    RepairOutcome r;
    EXPECT_FALSE(repairStoreFile("MASTER.db", &r));
    EXPECT_TRUE(r.reason.startsWith("他の端末が使用中のため修復できません。"));
    execSql(other, "ROLLBACK");
    other.close();
    other = QSqlDatabase();
    QSqlDatabase::removeDatabase("reader");
    EXPECT_EQ(bytesOf("MASTER.db"), damaged);
    EXPECT_TRUE(damagedCopiesBeside(real).isEmpty());
    EXPECT_FALSE(QFile::exists(real + ".rebuilt"));
}

TEST(Repair, DamageMetAfterOpeningIsToldAsDamageWithTheWayToMendIt)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    ASSERT_EQ(execSql(session().MasterDb,
                      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<300) "
                      "INSERT INTO Dud (Dno, Eda, EigCode, Hizuke, TorCode, HinCode, Suu, UGaku, Getudo, ThiFlag) "
                      "SELECT i, 1, 1, '2026-05-01', 1, '0000000000001', 1, 10000, 5, -1 FROM n"),
              ErrorClass::None);
    CloseStore();
    // The slip file is checked only as far as its schema when it opens: the damage shows later.
    ASSERT_TRUE(damageLeaf("2026/SLIP.db", "ix_Dud_ThiFlag", 0));
    ASSERT_TRUE(co.open());
    QString error;
    EXPECT_FALSE(runLedgerProcessing({}, &error));
    EXPECT_TRUE(error.startsWith("エラー：11 ")) << qPrintable(error);
    EXPECT_TRUE(error.endsWith("「データ最適化」で修復してください。")) << qPrintable(error);
}
