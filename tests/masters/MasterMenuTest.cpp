#include "masters/MasterFormSupport.h"

#include <QTimer>

#include "entry/Help_frm.h"
#include "masters/Deal_frm.h"
#include "masters/Hin_frm.h"
#include "shell/QtMenuRun.h"
#include "shell/QtScreens.h"

namespace {

class MasterMenuTest : public MasterFormTest {};

// The menu's captions reach the forms with their kind words; a form without classes
// refuses to open.
TEST_F(MasterMenuTest, CaptionsOpenTheForms)
{
    registerAllScreens();
    run("INSERT INTO Tbn (Code, Namae) VALUES (1, '卸')");
    EXPECT_TRUE(MenuRun("仕入先"));
    // Refused before the form was made: no window of it exists, not even one closing.
    for (QWidget* w : QApplication::topLevelWidgets()) EXPECT_EQ(qobject_cast<Deal_frm*>(w), nullptr);
    EXPECT_EQ(dialogs.log, QStringList({"Tell:仕入先分類が登録されていません。"}));

    EXPECT_TRUE(MenuRun("得意先"));
    auto* deal = qobject_cast<Deal_frm*>(screen("Deal_frm"));
    ASSERT_NE(deal, nullptr);
    EXPECT_TRUE(deal->isVisible());
    EXPECT_EQ(deal->MenuKey(), "Tor");
    deal->close();

    struct Case { const char* caption; const char* form; const char* title; } cases[] = {
        {"納入先", "Nou_frm", "納入先マスター"},
        {"商品", "Hin_frm", "商品マスター"},
        {"得意先別単価", "Price_frm", "得意先別単価の設定"},
        {"仕入先別単価", "Price_frm", "仕入先別単価の設定"},
        {"納入先別単価", "PriceNka_frm", "納入先別単価"},
        {"会社", "Kaisya_frm", "会社マスター"},
    };
    for (const Case& c : cases) {
        EXPECT_TRUE(MenuRun(c.caption)) << c.caption;
        QWidget* w = screen(c.form);
        EXPECT_TRUE(w->isVisible()) << c.caption;
        EXPECT_EQ(w->windowTitle(), c.title);   // the kind word reached the form
        w->close();
        flushDeletes();
    }
    EXPECT_EQ(dialogs.log.size(), 1);
}

TEST_F(MasterMenuTest, ProductsHaveTheirOwnLookup)
{
    run("INSERT INTO Hin (Code, Kana, Namae, UTanka) VALUES ('0000000000042', 'ﾉｰﾄ', 'ノート', 1500000), ('B-1', 'ﾍﾟﾝ', 'ペン', 0)");
    auto* f = show(new Hin_frm);
    QTimer::singleShot(0, [] { QTest::keyClick(HelpForm()->kana(), Qt::Key_Return); });
    press(Qt::Key_F6);
    ASSERT_TRUE(QTest::qWaitForWindowActive(f));
    EXPECT_EQ(f->ebox()[0]->text(), "42");
    EXPECT_EQ(f->ebox()[2]->text(), "ノート");
    EXPECT_EQ(f->ebox()[4]->text(), "   150.00");
    EXPECT_EQ(f->mode()->text(), "修正");
}

}  // namespace
