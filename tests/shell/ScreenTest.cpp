#include <gtest/gtest.h>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include "ShellSupport.h"
#include "support/EndRecorder.h"
#include "shell/Nendo_frm.h"
#include "shell/QtDialogs.h"
#include "shell/QtMenuRun.h"
#include "shell/QtScale.h"
#include "shell/QtScreens.h"
#include "shell/TargetYear.h"
#include "shell/main_menu_frm.h"
#include "shell/myHistory_frm.h"

namespace {

bool selected(QPushButton* b) { return b->property("selected").toBool(); }

int selectedRight(main_menu_frm& m)
{
    int found = -1;
    for (int i = 0; i < MenuModel::Rows; ++i)
        if (selected(m.rightButton(i))) {
            if (found >= 0) return -2;   // two highlighted
            found = i;
        }
    return found;
}

// Starts the company in the working directory and shows the menu as the program does.
void start(main_menu_frm& menu)
{
    const StartupResult r = runStartup(menu.model());
    ASSERT_EQ(r.kind, StartupResult::Run);
    menu.applyStartup(r);
    menu.show();
}

// Runs `f` on the modal dialog once it is up.
void onModal(std::function<void(QWidget*)> f)
{
    QTimer::singleShot(0, [f] { f(QApplication::activeModalWidget()); });
}

} // namespace

TEST(MainMenuScreen, KeyboardWalkThroughTheRealForm)
{
    registerScreen("Seikyu_frm", [] {
        auto* w = new QWidget;
        w->setObjectName("Seikyu_frm");
        return w;
    });
    TempCompany co(2026);
    prepare(co, {"INSERT INTO Eig (Code, Namae) VALUES (2, '大阪'), (3, '福岡')"});
    ScriptedDialogs dlg;
    EndRecorder ended;
    main_menu_frm menu;
    start(menu);
    auto* eig = menu.findChild<QLabel*>("Eig");
    EXPECT_TRUE(eig->isVisible());
    EXPECT_EQ(eig->text(), "本社");
    EXPECT_TRUE(selected(menu.leftButton(0)));
    EXPECT_EQ(selectedRight(menu), 0);
    EXPECT_FALSE(menu.rightButton(6)->isVisible());   // six items in the first group

    QTest::keyClick(&menu, Qt::Key_Down);
    EXPECT_EQ(selectedRight(menu), 1);
    QTest::keyClick(&menu, Qt::Key_Space);
    EXPECT_EQ(eig->text(), "大阪");
    EXPECT_EQ(session().EigCode, 2);
    // Tab is not a menu key and moves nothing.
    QTest::keyClick(&menu, Qt::Key_Tab);
    EXPECT_EQ(selectedRight(menu), 1);

    QTest::keyClick(&menu, Qt::Key_Left);
    EXPECT_EQ(selectedRight(menu), -1);
    QTest::keyClick(&menu, Qt::Key_Down);
    EXPECT_TRUE(selected(menu.leftButton(1)));
    EXPECT_FALSE(selected(menu.leftButton(0)));
    EXPECT_TRUE(menu.rightButton(8)->isVisible());
    EXPECT_FALSE(menu.rightButton(9)->isVisible());

    QTest::keyClick(&menu, Qt::Key_Right);
    EXPECT_EQ(selectedRight(menu), 0);
    dlg.askAnswers = {false};
    QTest::keyClick(&menu, Qt::Key_Return);
    EXPECT_EQ(dlg.of("Ask"), QStringList{"台帳処理を実行しますか?"});
    EXPECT_TRUE(screen("Seikyu_frm")->isVisible());
    screen("Seikyu_frm")->close();

    // Esc in the right column, "no": the menu stays.
    dlg.log.clear();
    dlg.askAnswers = {false};
    QTest::keyClick(&menu, Qt::Key_Escape);
    EXPECT_EQ(dlg.log, QStringList{"Ask:終了しますか？"});
    EXPECT_TRUE(menu.isVisible());
    EXPECT_EQ(ended.count, 0);

    // Esc in the left column, "no": the ledger offer, then the end all the same.
    dlg.log.clear();
    dlg.askAnswers = {false, false};
    QTest::keyClick(&menu, Qt::Key_Left);
    QTest::keyClick(&menu, Qt::Key_Escape);
    EXPECT_EQ(dlg.log, QStringList({"Ask:終了しますか？", "Ask:台帳処理を実行しますか?"}));
    EXPECT_FALSE(menu.isVisible());
    EXPECT_EQ(ended.count, 1);
}

TEST(MainMenuScreen, ClicksAndTheHiddenHistory)
{
    registerScreen("myHistory_frm", [] { return new myHistory_frm; });
    TempCompany co(2026);
    ScriptedDialogs dlg;
    EndRecorder ended;
    main_menu_frm menu;
    start(menu);
    EXPECT_FALSE(menu.findChild<QLabel*>("Eig")->isVisible());   // one office: no name

    QTest::mouseClick(menu.leftButton(6), Qt::LeftButton);
    EXPECT_TRUE(selected(menu.leftButton(6)));
    EXPECT_EQ(selectedRight(menu), -1);
    dlg.requestAnswers = {"ok"};
    QTest::mouseClick(menu.rightButton(1), Qt::LeftButton);   // 摘要
    EXPECT_EQ(dlg.of("Request"), QStringList({"パスワードを入力してください。", "摘要を入力します。"}));
    EXPECT_EQ(masterValue("SELECT Tekiyo FROM Tek").toString(), "ok");
    EXPECT_EQ(selectedRight(menu), 1);

    auto* image = menu.findChild<QToolButton*>("ImageBtn");
    QTest::mouseClick(image, Qt::LeftButton);
    EXPECT_FALSE(screen("myHistory_frm")->isVisible());   // a plain click shows nothing
    QTest::mousePress(image, Qt::LeftButton, Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier);
    auto* history = static_cast<myHistory_frm*>(screen("myHistory_frm"));
    ASSERT_TRUE(history->isVisible());
    history->list()->setCurrentRow(1);
    EXPECT_EQ(history->text()->toPlainText(), historyNotes()[1].text);
    history->close();

    // "Yes" to the exit question: leaving the event loop closes the menu, with no second offer.
    dlg.log.clear();
    dlg.askAnswers = {true};
    QTest::keyClick(&menu, Qt::Key_Escape);
    menu.close();
    EXPECT_EQ(dlg.log, QStringList{"Ask:終了しますか？"});
    EXPECT_EQ(ended.count, 1);
}

TEST(Dialogs, ConfirmRequestAndAlertOnScreen)
{
    QtDialogs dialogs;
    // Enter at once takes the first option.
    onModal([](QWidget* d) {
        QTest::keyClick(d->findChild<QRadioButton*>("Option0"), Qt::Key_Return);
    });
    EXPECT_TRUE(dialogs.Ask("終了しますか？", "はい", "いいえ"));
    onModal([](QWidget* d) {
        QTest::keyClick(d->findChild<QRadioButton*>("Option0"), Qt::Key_Down);
        QTest::keyClick(d->findChild<QRadioButton*>("Option1"), Qt::Key_Return);
    });
    EXPECT_FALSE(dialogs.Ask("削除しますか？", "削除", "取消"));
    onModal([](QWidget* d) {
        auto* o0 = d->findChild<QRadioButton*>("Option0");
        QTest::keyClick(o0, Qt::Key_Up);   // wraps to the second
        QTest::keyClick(d->findChild<QRadioButton*>("Option1"), Qt::Key_Up);
        QTest::keyClick(o0, Qt::Key_Return);
    });
    EXPECT_TRUE(dialogs.Ask("?", "はい", "いいえ"));

    // Request: the default is selected, so typing replaces it; Esc does not cancel.
    onModal([](QWidget* d) {
        auto* box = d->findChild<QLineEdit*>("ebox");
        EXPECT_EQ(box->selectedText(), "1");
        QTest::keyClick(d, Qt::Key_Escape);
        EXPECT_TRUE(d->isVisible());
        QTest::keyClicks(box, "1.5");
        QTest::keyClick(box, Qt::Key_Backtab);
        EXPECT_TRUE(d->isVisible());
        QTest::keyClick(box, Qt::Key_Tab);
    });
    EXPECT_EQ(dialogs.Request("画面スケールを入力します。(標準=1)", "1"), "1.5");

    onModal([](QWidget* d) { QTest::keyClick(d->findChild<QPushButton*>("OK"), Qt::Key_Space); });
    dialogs.Tell("パスワードが異なります。");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(TargetYear, ListOffersYearsFrom2000UpToTheLatestFolderAndEmptyItOnlyCloses)
{
    TempCompany co(1999);
    ScriptedDialogs dlg;
    MenuModel model;
    ASSERT_EQ(runStartup(model).kind, StartupResult::Run);
    QPointer<Nendo_frm> f = new Nendo_frm;
    f->show();
    EXPECT_EQ(f->list()->count(), 0);
    QTest::mouseClick(f->findChild<QPushButton*>("SetBtn"), Qt::LeftButton);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(f.isNull());
    EXPECT_EQ(session().Nendo, 1999);
    EXPECT_TRUE(session().MasterDb.isOpen());

    // Past 2020 too: the year a year-end update closed stays in the list.
    for (const char* y : {"2018", "2019", "2031"}) {
        QDir().mkpath(y);
        QFile::copy("1999/SLIP.db", QString(y) + "/SLIP.db");
    }
    QDir().mkpath("2017");   // a folder without a slip file
    QDir().mkpath("2031.new");
    EXPECT_EQ(AvailableYears(), QList<int>({2018, 2019, 2031}));
    Nendo_frm list;
    ASSERT_EQ(list.list()->count(), 3);
    EXPECT_EQ(list.list()->currentText(), "2018");
}

TEST(TargetYear, SetReopensTheYearAndKeepsTheSessionValues)
{
    TempCompany co(2019);
    ASSERT_TRUE(co.useRootMasterFile());
    QDir().mkpath("2018");
    QFile::copy("2019/SLIP.db", "2018/SLIP.db");
    ASSERT_TRUE(co.execOn("2018/SLIP.db", {"INSERT INTO Dur (Dno, EigCode, Hizuke) VALUES (18, 1, '2018-05-01')"}));
    ScriptedDialogs dlg;
    MenuModel model;
    ASSERT_EQ(runStartup(model).kind, StartupResult::Run);
    // No MASTER folder yet: the reopening fails with the store's error box, the open year stays.
    EXPECT_EQ(ChangeTargetYear(2018), YearChange::Restored);
    EXPECT_EQ(dlg.of("Box").size(), 1);
    EXPECT_EQ(session().Nendo, 2019);
    EXPECT_EQ(masterValue("SELECT count(*) FROM Dur").toInt(), 0);

    // Without the marker the reopening reads MASTER/MASTER.db.
    QDir().mkpath("MASTER");
    QFile::copy("MASTER.db", "MASTER/MASTER.db");
    session().Zeiritu = Money::fromYen(8);
    session().Hiz = 1;
    auto* f = new Nendo_frm;
    f->show();
    QTest::keyClick(f->list(), Qt::Key_Return);   // Enter in the list presses "設定"
    EXPECT_EQ(session().Nendo, 2018);
    EXPECT_TRUE(session().MasterDb.databaseName().endsWith("MASTER/MASTER.db"));
    EXPECT_EQ(masterValue("SELECT Dno FROM Dur").toInt(), 18);
    EXPECT_EQ(session().Zeiritu, Money::fromYen(8));
    EXPECT_EQ(session().Hiz, 1);
    EXPECT_EQ(dlg.of("Box").size(), 1);
}

TEST(Scaling, FontsAndPlacedControlsFollowTheScaleOnce)
{
    TempCompany co(0);
    session().ScreenScale = Money::fromRaw(15000);
    QWidget form;
    form.setFont(QFont("ＭＳ ゴシック", 10));
    auto* placed = new QLineEdit(&form);
    placed->setGeometry(10, 20, 100, 30);
    auto* big = new QLabel("見出し", &form);
    QFont bf = big->font();
    bf.setPointSize(20);
    big->setFont(bf);
    scaleForm(&form);
    EXPECT_EQ(form.font().pointSizeF(), 15.0);
    EXPECT_EQ(placed->geometry(), QRect(15, 30, 150, 45));
    EXPECT_EQ(big->font().pointSizeF(), 30.0);
    scaleForm(&form);   // a second pass changes nothing
    EXPECT_EQ(placed->geometry(), QRect(15, 30, 150, 45));

    // A style sheet stops the fonts from following the form: each is scaled itself.
    QWidget styled;
    styled.setStyleSheet("QLabel { color: navy; }");
    auto* caption = new QLabel("対象年度", &styled);
    styled.ensurePolished();
    caption->ensurePolished();
    const qreal before = caption->font().pointSizeF();
    scaleForm(&styled);
    styled.show();
    EXPECT_DOUBLE_EQ(caption->font().pointSizeF(), before * 1.5);

    session().ScreenScale = Money();   // 0 counts as 1
    QWidget plain;
    plain.setFont(QFont("ＭＳ ゴシック", 10));
    scaleForm(&plain);
    EXPECT_EQ(plain.font().pointSizeF(), 10.0);
    EXPECT_EQ(session().ScreenScale, Money::fromYen(1));
}

// The forms pad codes and figures with blanks: the fixed-pitch names must stay fixed-pitch.
TEST(Scaling, JapaneseFontsResolveToFixedPitchIpaAndProportionalIpaex)
{
    installJapaneseFonts();
    EXPECT_EQ(QFontInfo(QFont("ＭＳ ゴシック")).family(), "IPAGothic");
    EXPECT_EQ(QFontInfo(QFont("ＭＳ 明朝")).family(), "IPAMincho");
    EXPECT_EQ(QFontInfo(QFont("ＭＳ Ｐゴシック")).family(), "IPAexGothic");
    const QFontMetricsF m(QFont("ＭＳ ゴシック", 10));
    EXPECT_DOUBLE_EQ(m.horizontalAdvance(QStringLiteral("          ")), m.horizontalAdvance(QStringLiteral("1,000,000,")));
}
