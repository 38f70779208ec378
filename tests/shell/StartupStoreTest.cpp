#include <gtest/gtest.h>
#include <QFile>
#include "shell/ShellSupport.h"
#include "support/DamagedFile.h"

namespace {

const QString kPrompt = QStringLiteral("パスワードを入力してください。");

// A bad sector in the customers' reading index of the master file, 300 customers in it.
void damageMasterIndex(TempCompany& co)
{
    prepare(co, {"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<300) "
                 "INSERT INTO Tor (Code, Namae, Kana) SELECT i, '得意先' || i, 'ﾄｸｲｻｷ' FROM n"});
    ASSERT_TRUE(damageLeaf(co.file("MASTER/MASTER.db"), "ix_Tor_Kana", 0));
}

} // namespace

// The store shows nothing itself: what opening met, the start-up shows, and then it goes on or
// stops as the store allows.
TEST(StartupStore, TheShellTellsWhatOpeningTheStoreMet)
{
    struct Case {
        const char* what;
        std::function<void(TempCompany&)> spoil;
        StartupResult::Kind kind;
        QString first;   // the first thing the clerk sees
    } cases[] = {
        {"a repaired master", damageMasterIndex, StartupResult::Run,
         "Tell:データファイル MASTER/MASTER.db が壊れていたため修復しました。\n壊れたファイルは MASTER/MASTER.db.damaged-"},
        {"a master that is no database",
         [](TempCompany& co) {
             QFile f(co.file("MASTER/MASTER.db"));
             ASSERT_TRUE(f.open(QIODevice::WriteOnly));
             f.write(QByteArray(8192, 'x'));
         },
         StartupResult::StopAfterMessage, "Box:エラー|エラー番号 26SQLite でエラーが発生しました。 \nデータベースのファイルではありません。"},
        {"no slip file for the year", [](TempCompany& co) { ASSERT_TRUE(QFile::remove(co.file("2026/SLIP.db"))); },
         StartupResult::StopAfterMessage, "Hook:splash"},
    };
    for (const Case& c : cases) {
        TempCompany co(2026);
        c.spoil(co);
        ScriptedDialogs dlg;
        MenuModel menu;
        const StartupResult r = runStartup(menu, loggingHooks(dlg));
        EXPECT_EQ(r.kind, c.kind) << c.what;
        ASSERT_FALSE(dlg.log.isEmpty()) << c.what;
        EXPECT_TRUE(dlg.log.first().startsWith(c.first)) << c.what << qPrintable(dlg.log.first());
        if (c.kind == StartupResult::Run) {
            EXPECT_TRUE(dlg.log.contains("Request:" + kPrompt));
            EXPECT_EQ(masterValue("SELECT count(*) FROM Tor").toInt(), 300);
        } else {
            EXPECT_FALSE(session().MasterDb.isOpen()) << c.what;
        }
        if (QLatin1String(c.what) == QLatin1String("no slip file for the year")) {
            EXPECT_TRUE(dlg.log.value(1).startsWith("Box:エラー|エラー番号 14")) << qPrintable(dlg.log.value(1));
        }
        CloseStore();
    }
}
