#include <gtest/gtest.h>
#include <QFileInfo>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include "YearEndFixture.h"
#include "entry/FormDriver.h"
#include "ledgers/NenjiKosin_frm.h"
#include "ledgers/TipsMenu_frm.h"
#include "ledgers/YearEnd.h"
#include "shell/QtMenuRun.h"
#include "shell/QtScreens.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "support/EndRecorder.h"
#include "support/ScriptedDialogs.h"

namespace {

const QString kDone = QStringLiteral("年次更新は無事に終了しました。\n一旦ベルモーラを終了します。");

// The form as the menu's "年次更新" opens it.
QPointer<NenjiKosin_frm> openFromMenu()
{
    flushDeletes();   // the form a previous run closed
    registerScreen("NenjiKosin_frm", [] { return new NenjiKosin_frm; });
    EXPECT_TRUE(MenuRun("年次更新"));
    QPointer<NenjiKosin_frm> f = dynamic_cast<NenjiKosin_frm*>(screen("NenjiKosin_frm"));
    if (f) {
        EXPECT_TRUE(showActive(f));
    }
    return f;
}

} // namespace

TEST(YearEndForm, EscLeavesWithNothingDoneAndTheKeysRunItToTheEnd)
{
    ClosingYear co;
    ScriptedDialogs dlg;
    EndRecorder ended;
    QPointer<NenjiKosin_frm> f = openFromMenu();
    ASSERT_TRUE(f);
    EXPECT_EQ(f->title()->text(), "2026年度より 2027年度への、年次更新を行います");
    EXPECT_EQ(focused(), f->cancelButton());   // a stray Enter does not start it
    press(Qt::Key_Escape);
    flushDeletes();
    EXPECT_TRUE(f.isNull());
    EXPECT_FALSE(QFileInfo::exists("2027"));
    EXPECT_TRUE(dlg.log.isEmpty());

    f = openFromMenu();
    ASSERT_TRUE(f);
    press(Qt::Key_Right);
    EXPECT_EQ(focused(), f->executeButton());
    press(Qt::Key_Return);
    EXPECT_EQ(dlg.log, QStringList{"Tell:" + kDone});
    EXPECT_EQ(ended.count, 1);
    EXPECT_TRUE(QFileInfo("2027/SLIP.db").isFile());
    EXPECT_EQ(session().Nendo, 2027);
}

TEST(YearEndForm, AFailureIsToldAndTheSessionGoesOnInTheOldYear)
{
    ClosingYear co;
    ScriptedDialogs dlg;
    EndRecorder ended;
    ScopedYearEndHook failing(failingAt(YearEndStep::CarryLedgers));
    QPointer<NenjiKosin_frm> f = openFromMenu();
    ASSERT_TRUE(f);
    QTest::mouseClick(f->executeButton(), Qt::LeftButton);
    EXPECT_EQ(dlg.log, QStringList{"Tell:エラー：書き込みに失敗しました。"});
    EXPECT_EQ(ended.count, 0);
    ASSERT_TRUE(f);
    EXPECT_TRUE(f->isVisible());
    EXPECT_FALSE(QFileInfo::exists("2027"));
    // The store is open again on the old year, slips attached.
    EXPECT_EQ(session().Nendo, 2026);
    EXPECT_EQ(scalar(session().MasterDb, "SELECT count(*) FROM Dur").toInt(), 4);
    f->close();
}

TEST(YearEndForm, ARepeatedRunRebuildsThroughTheRecoveryMenu)
{
    ClosingYear co;
    ASSERT_TRUE(ExecuteUpdate().ok);
    ASSERT_TRUE(co.reopen());
    co.sale(1, QDate(2027, 4, 15), 100, 0, 4, {line(900, 0, 1, 4)});
    co.batch();
    session().Nendo = 2026;   // the target year changed back to the closed year
    registerScreen("TipsMenu_frm", [] { return new TipsMenu_frm; });
    ScriptedDialogs dlg;
    EndRecorder ended;
    QPointer<NenjiKosin_frm> f = openFromMenu();
    ASSERT_TRUE(f);
    QTest::mouseClick(f->executeButton(), Qt::LeftButton);
    EXPECT_TRUE(screen("TipsMenu_frm")->isVisible());
    EXPECT_EQ(dlg.of("Tell"), QStringList{kDone});
    EXPECT_EQ(ended.count, 1);
    screen("TipsMenu_frm")->close();
}
