#include <gtest/gtest.h>
#include <QApplication>
#include <QPointer>
#include "LedgerFixture.h"
#include "ledgers/AfterWork.h"
#include "ledgers/AfterWork_frm.h"
#include "ledgers/TipsMenu_frm.h"
#include "shell/QtMenuRun.h"
#include "shell/QtScreens.h"
#include "support/EndRecorder.h"
#include "support/ScriptedDialogs.h"

namespace {

// Customer 100 and supplier 7, each with one marked slip of May.
void marked(LedgerCompany& c)
{
    c.usual();
    c.sale(1, QDate(2026, 5, 10), 100, 0, 5, {line(1000, 100), line(250, 25)});
    c.purchase(1, QDate(2026, 5, 12), 7, 5, {line(600, 60)});
}

qint64 stillMarked(const LedgerCompany& c)
{
    return c.count("SELECT (SELECT COUNT(*) FROM Dud WHERE ThiFlag<>0) + (SELECT COUNT(*) FROM Dsd WHERE ThiFlag<>0)");
}

class RecordingView : public AfterWorkView {
public:
    QStringList calls;
    RecordingView() { prev_ = setAfterWorkView(this); }
    ~RecordingView() override { setAfterWorkView(prev_); }
    void runStarted() override { calls << "started"; }
    void showProgress(const QString& t) override { calls << t; }
    void runFinished() override { calls << "finished"; }
private:
    AfterWorkView* prev_ = nullptr;
};

AfterWork_frm* registerProgressForm()
{
    registerScreen("AfterWork_frm", [] { return new AfterWork_frm; });
    return static_cast<AfterWork_frm*>(screen("AfterWork_frm"));
}

} // namespace

TEST(AfterWork, RunsTheBatchWithItsProgressOnTheViewOnlyFromAScreen)
{
    LedgerCompany c;
    marked(c);
    ScriptedDialogs dlg;
    RecordingView view;
    EXPECT_TRUE(ActionAfterWork(true));
    EXPECT_EQ(view.calls.value(0), "started");
    EXPECT_TRUE(view.calls.contains("得意先台帳：Step 9 5"));
    EXPECT_EQ(view.calls.last(), "finished");
    EXPECT_TRUE(dlg.log.isEmpty());
    EXPECT_EQ(c.tto(100, 0, 5, "Gaku"), 1250);
    EXPECT_EQ(c.tsi(7, 5, "Gaku"), 600);

    view.calls.clear();
    EXPECT_TRUE(ActionAfterWork(false));
    EXPECT_TRUE(view.calls.isEmpty());
}

TEST(AfterWork, FailureIsToldAndTheFormAndPointerGo)
{
    LedgerCompany c;
    marked(c);
    c.exec("CREATE TRIGGER slip.StopSupplier BEFORE INSERT ON TsiD BEGIN SELECT RAISE(ABORT, 'stopped'); END");
    ScriptedDialogs dlg;
    AfterWork_frm* form = registerProgressForm();
    form->show();
    EXPECT_FALSE(ActionAfterWork(true));
    ASSERT_EQ(dlg.of("Tell").size(), 1);
    EXPECT_TRUE(dlg.of("Tell").first().startsWith("エラー：")) << dlg.of("Tell").first().toStdString();
    EXPECT_EQ(stillMarked(c), 3);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(AfterWork, MenuOfferExitAndRecoveryMenuRunTheBatch)
{
    LedgerCompany c;
    marked(c);
    ScriptedDialogs dlg;
    AfterWork_frm* form = registerProgressForm();
    for (const bool yes : {false, true}) {
        dlg.askAnswers = {yes};
        OfferLedgerProcessing();
        EXPECT_EQ(dlg.log, QStringList{"Ask:台帳処理を実行しますか?"});
        EXPECT_EQ(stillMarked(c), yes ? 0 : 3);
        dlg.log.clear();
    }
    EXPECT_EQ(c.tto(100, 0, 5, "Gaku"), 1250);
    EXPECT_FALSE(form->isVisible());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);

    // Every regular exit posts what was entered since, without a further question.
    c.sale(2, QDate(2026, 5, 20), 100, 0, 5, {line(300, 30)});
    EndRecorder ended;
    EXPECT_TRUE(DoEndingAction());
    EXPECT_EQ(dlg.log, QStringList{"Ask:終了しますか？"});
    EXPECT_EQ(ended.count, 1);
    EXPECT_EQ(c.tto(100, 0, 5, "Gaku"), 1550);

    // The recovery menu reads the ledgers: the batch is offered first.
    c.sale(3, QDate(2026, 5, 21), 100, 0, 5, {line(50, 5)});
    registerScreen("TipsMenu_frm", [] { return new TipsMenu_frm; });
    dlg.log.clear();
    EXPECT_TRUE(MenuRun("データ復旧"));
    EXPECT_EQ(dlg.log, QStringList{"Ask:台帳処理を実行しますか?"});
    EXPECT_EQ(c.tto(100, 0, 5, "Gaku"), 1600);
    QPointer<QWidget> tips = screen("TipsMenu_frm");
    ASSERT_TRUE(tips);
    EXPECT_TRUE(tips->isVisible());
    tips->close();
}
