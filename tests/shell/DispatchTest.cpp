#include <gtest/gtest.h>
#include <QWidget>
#include "ShellSupport.h"
#include "shell/QtMenuRun.h"
#include "shell/QtScreens.h"

namespace {

// Stands in for a screen of a later issue; remembers the key it was opened with.
QWidget* fakeScreen(const QString& name)
{
    auto* w = new QWidget;
    w->setObjectName(name);
    w->setProperty("openedWith", session().MenuKey);
    return w;
}

} // namespace

TEST(Dispatch, KnownCaptionOpensItsScreenWithTheKey)
{
    registerScreen("Slip_frm", [] { return fakeScreen("Slip_frm"); });
    registerScreen("Zandaka_frm", [] { return fakeScreen("Zandaka_frm"); });
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    ScriptedDialogs dlg;

    EXPECT_TRUE(MenuRun("売上伝票処理"));
    QWidget* slip = screen("Slip_frm");
    EXPECT_TRUE(slip->isVisible());
    EXPECT_EQ(slip->property("openedWith").toString(), "Dur");
    EXPECT_EQ(session().SlipCaller, "Menu");
    EXPECT_TRUE(dlg.log.isEmpty());   // no ledger offer for slips

    session().SlipCaller.clear();
    dlg.askAnswers = {false};
    EXPECT_TRUE(MenuRun("売掛残高一覧"));
    EXPECT_EQ(dlg.log, QStringList{"Ask:台帳処理を実行しますか?"});
    EXPECT_TRUE(screen("Zandaka_frm")->isVisible());
    EXPECT_EQ(session().MenuKey, "Uza");
    slip->close();
    screen("Zandaka_frm")->close();
}

TEST(Dispatch, UnknownCaptionsAndMissingScreensDoNothing)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    ScriptedDialogs dlg;
    session().MenuKey = "before";
    EXPECT_FALSE(MenuRun("存在しない機能"));
    EXPECT_FALSE(MenuRun("得意先元帳"));   // known, offered, but no screen yet: not even the offer
    EXPECT_TRUE(dlg.log.isEmpty());
    EXPECT_EQ(session().MenuKey, "before");
}

TEST(Dispatch, BuiltInItems)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.open());
    ScriptedDialogs dlg;
    dlg.requestAnswers = {"5"};
    EXPECT_TRUE(MenuRun("画面スケール"));   // the memo item is clicked in the menu screen's test
    EXPECT_EQ(masterValue("SELECT contents FROM zSysFunc WHERE Code=1").toString(), "2");
    EXPECT_TRUE(session().MasterDb.isOpen());
}
