#include <gtest/gtest.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include "shell/QtMenuRun.h"
#include "shell/Session.h"
#include "store/Optimize.h"
#include "store/Store.h"
#include "support/DamagedFile.h"
#include "support/EndRecorder.h"
#include "support/ScriptedDialogs.h"
#include "support/StoreFileHelpers.h"
#include "support/StoreSnapshot.h"
#include "support/TempCompany.h"

namespace {

const QString kMaster = QStringLiteral("MASTER/MASTER.db");
const QString kSlip = QStringLiteral("2026/SLIP.db");

// A year's slip file that has grown and shrunk again: lines written and most deleted.
void grownAndShrunk(TempCompany& co)
{
    QStringList fill{"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<3000) "
                     "INSERT INTO Dud (Dno, Eda, EigCode, HinNamae, Getudo) SELECT i, 1, 1, printf('%0300d', i), 5 FROM n",
                     "DELETE FROM Dud WHERE Dno>10"};
    ASSERT_TRUE(co.execOn(kSlip, fill));
}

} // namespace

TEST(Optimize, BothFilesCompactedThePreviousKeptAndTheirNamesNeverMissing)
{
    TempCompany co(2026);
    grownAndShrunk(co);
    const QStringList master = storeFileRows(kMaster);
    const QStringList slip = storeFileRows(kSlip);
    const qint64 grown = QFileInfo(kSlip).size();
    QStringList missing;
    ScopedFileHook watch([&](const QString& step, const QString&) {
        for (const QString& f : {kMaster, kSlip})
            if (!QFileInfo(f).isFile()) missing << step + ": " + f;
        return true;
    });
    QString error;
    ASSERT_TRUE(compactStore(false, 2026, &error)) << error.toStdString();
    EXPECT_EQ(missing, QStringList{});
    EXPECT_LT(QFileInfo(kSlip).size(), grown / 4);
    EXPECT_EQ(QFileInfo("2026/SLIP.bak").size(), grown);
    EXPECT_EQ(snapshotDifference(slip, storeFileRows(kSlip)), "");
    EXPECT_EQ(snapshotDifference(slip, storeFileRows("2026/SLIP.bak")), "");
    EXPECT_EQ(snapshotDifference(master, storeFileRows(kMaster)), "");
    EXPECT_EQ(QDir("MASTER").entryList(QDir::Files), QStringList({"MASTER.bak", "MASTER.db"}));
    EXPECT_EQ(QDir("2026").entryList(QDir::Files), QStringList({"SLIP.bak", "SLIP.db"}));
    // The root link still reaches the compacted file.
    ASSERT_TRUE(co.open());
    EXPECT_EQ(scalar(session().MasterDb, "SELECT count(*) FROM Dud").toInt(), 10);

    // Once more: one generation only, the .bak now the file of the first compaction.
    CloseStore();
    const QByteArray first = fileHash(kSlip);
    ASSERT_TRUE(compactStore(false, 2026, &error));
    EXPECT_EQ(fileHash("2026/SLIP.bak"), first);
}

TEST(Optimize, AFailedCopyLeavesBothFilesAsTheyWere)
{
    TempCompany co(2026);
    grownAndShrunk(co);
    const QByteArray master = fileHash(kMaster);
    const QByteArray slip = fileHash(kSlip);
    struct Case { const char* step; const char* file; } cases[] = {
        {"copy", "MASTERN.db"}, {"check", "MASTERN.db"}, {"copy", "SLIPN.db"}, {"check", "SLIPN.db"}, {"keep", "MASTER.bak"},
    };
    for (const auto& c : cases) {
        ScopedFileHook hook([&](const QString& step, const QString& path) { return step != c.step || !path.endsWith(c.file); });
        QString error;
        EXPECT_FALSE(compactStore(false, 2026, &error)) << c.step << c.file;
        EXPECT_TRUE(error.startsWith("エラー：")) << error.toStdString();
        EXPECT_EQ(fileHash(kMaster), master) << c.step << c.file;
        EXPECT_EQ(fileHash(kSlip), slip) << c.step << c.file;
        EXPECT_EQ(QDir("MASTER").entryList(QDir::Files), QStringList{"MASTER.db"});
        EXPECT_EQ(QDir("2026").entryList(QDir::Files), QStringList{"SLIP.db"});
    }
}

TEST(Optimize, TheMenuAsksFirstThenCompactsAndEnds)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    ScriptedDialogs dlg;
    EndRecorder ended;
    dlg.askAnswers = {false};
    EXPECT_TRUE(MenuRun("データ最適化"));
    EXPECT_EQ(dlg.log, QStringList{"Ask:実行しますか？"});
    EXPECT_FALSE(QFileInfo::exists("2026/SLIP.bak"));

    // A failure is told; the files stay and the session goes on with them.
    {
        ScopedFileHook hook([](const QString& step, const QString&) { return step != "check"; });
        dlg.log.clear();
        EXPECT_TRUE(MenuRun("データ最適化"));
        ASSERT_EQ(dlg.log.size(), 4);
        EXPECT_EQ(dlg.log.mid(1, 2), QStringList({"Wait:データベース修復中です。", "Hide:"}));
        EXPECT_TRUE(dlg.log[3].startsWith("Tell:エラー：書き込みに失敗しました。")) << dlg.log[3].toStdString();
        EXPECT_EQ(ended.count, 0);
        EXPECT_EQ(scalar(session().MasterDb, "SELECT count(*) FROM Dur").toInt(), 0);
    }
    dlg.log.clear();
    EXPECT_TRUE(MenuRun("データ最適化"));
    EXPECT_EQ(dlg.log, QStringList({"Ask:実行しますか？", "Wait:データベース修復中です。", "Hide:", "Tell:ベルモーラを終了します。"}));
    EXPECT_EQ(ended.count, 1);
    EXPECT_TRUE(QFileInfo("2026/SLIP.bak").isFile() && QFileInfo("MASTER/MASTER.bak").isFile());
}

// A page gone bad while the company worked: the compaction repairs the file first (or it
// could not read it through), and the clerk hears where the damaged original is before the
// program ends.
TEST(Optimize, ADamagedPageIsRepairedFirstAndTheClerkToldBeforeTheEnd)
{
    struct Case { const char* file; const char* object; } cases[] = {
        {"2026/SLIP.db", "ix_Dud_ThiFlag"},
        {"MASTER/MASTER.db", "ix_Tor_Kana"},
    };
    for (const Case& c : cases) {
        TempCompany co(2026);
        grownAndShrunk(co);
        ASSERT_TRUE(co.execOn(kMaster, {"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<300) "
                                        "INSERT INTO Tor (Code, Namae, Kana) SELECT i, printf('得意先%05d', i), "
                                        "printf('ﾄｸｲｻｷ%05d', i) FROM n"}));
        ASSERT_TRUE(co.open());
        ASSERT_TRUE(damageLeaf(c.file, c.object, 0)) << c.file;
        ScriptedDialogs dlg;
        EndRecorder ended;
        EXPECT_TRUE(MenuRun("データ最適化"));
        ASSERT_EQ(dlg.log.size(), 5) << c.file << ": " << dlg.log.join('\n').toStdString();
        EXPECT_TRUE(dlg.log[3].startsWith(QString("Tell:データファイル %1 が壊れていたため修復しました。").arg(c.file)))
            << dlg.log[3].toStdString();
        EXPECT_EQ(dlg.log[4], "Tell:ベルモーラを終了します。");
        EXPECT_EQ(ended.count, 1);
        QString error;
        EXPECT_TRUE(fileIsSound(c.file, &error)) << c.file << error.toStdString();
        EXPECT_EQ(QDir(QFileInfo(c.file).path()).entryList({"*.damaged-*"}, QDir::Files).size(), 1) << c.file;
        EXPECT_EQ(storeFileRows(kSlip).filter(QRegularExpression("^Dud\\|")).size(), 10);
        EXPECT_EQ(storeFileRows(kMaster).filter(QRegularExpression("^Tor\\|")).size(), 300);
    }
}

// A file kept elsewhere behind a link (the master folder linking back to the root file, a
// year's slip file on another disk): the real file is compacted beside itself and the link
// stays a link, so every path still reaches one and the same file.
TEST(Optimize, ALinkedFileIsCompactedWhereItLivesAndStaysLinked)
{
    struct Case { const char* link; const char* real; const char* target; } cases[] = {
        {"MASTER/MASTER.db", "MASTER.db", "../MASTER.db"},
        {"2026/SLIP.db", "disk/SLIP2026.db", "../disk/SLIP2026.db"},
    };
    for (const auto& c : cases) {
        TempCompany co(2026);
        grownAndShrunk(co);
        if (QString(c.link) == kMaster) {
            ASSERT_TRUE(co.useRootMasterFile());
        }
        ASSERT_TRUE(QDir().mkpath(QFileInfo(c.real).path()) && QDir().mkpath(QFileInfo(c.link).path()));
        if (QFileInfo(c.link).isFile()) {
            ASSERT_TRUE(QFile::rename(c.link, c.real));
        }
        ASSERT_EQ(::symlink(c.target, c.link), 0) << c.link;
        const QStringList rows = storeFileRows(c.real);
        QString error;
        ASSERT_TRUE(compactStore(false, 2026, &error)) << c.link << " " << error.toStdString();
        EXPECT_TRUE(QFileInfo(c.link).isSymLink()) << c.link;
        EXPECT_EQ(QFileInfo(c.link).canonicalFilePath(), QFileInfo(c.real).canonicalFilePath()) << c.link;
        const QString bak = QFileInfo(c.real).path() + (QString(c.link) == kMaster ? "/MASTER.bak" : "/SLIP.bak");
        EXPECT_TRUE(QFileInfo(bak).isFile()) << bak.toStdString();
        EXPECT_EQ(snapshotDifference(rows, storeFileRows(c.real)), "") << c.link;
    }
}
