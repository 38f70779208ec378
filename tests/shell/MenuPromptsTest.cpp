#include <gtest/gtest.h>
#include "ShellSupport.h"
#include "shell/MenuPrompts.h"

TEST(MenuPrompts, ScaleTextIsFilteredAndHeldInRange)
{
    const QList<QPair<QString, QString>> cases = {
        {"0.7", "0.7"}, {"2", "2"}, {"0.69", "0.7"}, {"2.01", "2"},
        {"1.25", "1.25"}, {" 1.5倍", "1.5"}, {"abc", "0.7"}, {"-1", "0.7"},
    };
    for (auto [typed, stored] : cases) EXPECT_EQ(ClampScaleText(typed), stored) << typed.toStdString();
}

TEST(MenuPrompts, ScaleIsStoredForTheNextStartOnly)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    session().ScreenScale = Money::fromYen(1);
    execSql(session().MasterDb, "DELETE FROM zSysFunc WHERE Code=1");
    ScriptedDialogs dlg;
    dlg.requestAnswers = {"3"};
    ScalePrompt();
    EXPECT_EQ(dlg.of("Request"), QStringList{"画面スケールを入力します。(標準=1)"});
    EXPECT_EQ(masterValue("SELECT contents FROM zSysFunc WHERE Code=1").toString(), "2");
    EXPECT_EQ(session().ScreenScale, Money::fromYen(1));
    dlg.requestAnswers = {"0.5"};
    ScalePrompt();
    EXPECT_EQ(masterValue("SELECT group_concat(contents) FROM zSysFunc WHERE Code=1").toString(), "0.7");
}

TEST(MenuPrompts, MemoKeepsThirtySixCharactersAndIgnoresEmptyInput)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    ScriptedDialogs dlg;
    const QString forty = QStringLiteral("あいうえおかきくけこさしすせそたちつてとなにぬねのはひふへほまみむめもやゆよらりる").left(40);
    dlg.requestAnswers = {forty, "", "月末締め"};
    MemoPrompt();   // no row yet: added
    EXPECT_EQ(masterValue("SELECT Tekiyo FROM Tek").toString(), forty.left(36));
    MemoPrompt();   // empty: the store stays
    EXPECT_EQ(masterValue("SELECT Tekiyo FROM Tek").toString(), forty.left(36));
    MemoPrompt();
    EXPECT_EQ(masterValue("SELECT Tekiyo FROM Tek").toString(), "月末締め");
    EXPECT_EQ(masterValue("SELECT count(*) FROM Tek").toInt(), 1);
}

TEST(MenuPrompts, PasswordIsStoredOnlyAfterYes)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    session().Password = "";
    ScriptedDialogs dlg;
    dlg.requestAnswers = {"kagi", "other"};
    dlg.askAnswers = {true, false};
    PasswordPrompt();
    EXPECT_EQ(dlg.of("Ask"), QStringList{"kagiで更新します。"});
    EXPECT_EQ(masterValue("SELECT contents FROM zSysFunc WHERE Code=123").toString(), "kagi");
    PasswordPrompt();
    EXPECT_EQ(masterValue("SELECT contents FROM zSysFunc WHERE Code=123").toString(), "kagi");
    EXPECT_EQ(session().Password, "");
}

TEST(MenuPrompts, SpaceWalksTheOfficesByCode)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    session().EigCode = 1;
    EXPECT_FALSE(ChangeOffice());   // one office: nothing happens
    EXPECT_EQ(session().EigCode, 1);
    execSql(session().MasterDb, "INSERT INTO Eig (Code, Namae) VALUES (7, '大阪'), (3, '名古屋')");
    const QList<QPair<short, QString>> walk = {{3, "名古屋"}, {7, "大阪"}, {1, "本社"}, {3, "名古屋"}};
    for (auto [code, name] : walk) {
        EXPECT_TRUE(ChangeOffice());
        EXPECT_EQ(session().EigCode, code);
        EXPECT_EQ(session().EigNamae, name);
    }
    session().EigCode = 5;   // a code that went away: the next one after it
    ChangeOffice();
    EXPECT_EQ(session().EigCode, 7);
}

TEST(MenuPrompts, BackupAtExitFollowsOptionFifteen)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    EXPECT_FALSE(BackupAtExit());
    execSql(session().MasterDb, "INSERT INTO UserOP (Code, contents) VALUES (15, '0')");
    EXPECT_FALSE(BackupAtExit());
    execSql(session().MasterDb, "UPDATE UserOP SET contents='1' WHERE Code=15");
    EXPECT_TRUE(BackupAtExit());
}
