#include "masters/MasterFormSupport.h"

#include <QTimer>

#include "entry/Help_frm.h"
#include "masters/Tan_frm.h"
#include "masters/ms_frm.h"

namespace {

class MsFrmTest : public MasterFormTest {
protected:
    // Opens the form as the menu does: MenuKey first, then the screen.
    void open(const QString& menuKey)
    {
        session().MenuKey = menuKey;
        show(new ms_frm);
        ASSERT_EQ(focused(), box(0));
    }
    void seed(const QString& table, int code, const QString& name)
    {
        run(QStringLiteral("INSERT INTO %1 (Code, kana, Namae, Ryaku) VALUES (?, 'ｶﾅ', ?, 'ﾘｬｸ')").arg(table), {code, name});
    }
    ms_frm* f() const { return qobject_cast<ms_frm*>(form.data()); }
    QLineEdit* box(int i) const { return f()->ebox()[i]; }
};

TEST_F(MsFrmTest, EmptyCodeProposesOneAndRecFieldSavesAndClears)
{
    open("Hbn");
    press(Qt::Key_Return);
    EXPECT_EQ(box(0)->text(), "    1");
    EXPECT_EQ(f()->mode()->text(), "新規");
    ASSERT_EQ(focused(), box(1));
    enter("ｼｮｸﾋﾝ");
    typeText("ABC北海道地区食品");      // 3 + 14 bytes: the short name takes 10 whole bytes
    press(Qt::Key_Tab);
    EXPECT_EQ(box(3)->text(), "ABC北海道");
    press(Qt::Key_Return);
    ASSERT_EQ(focused(), f()->RecField());
    press(Qt::Key_Return);
    EXPECT_EQ(cell("SELECT kana || '|' || Namae || '|' || Ryaku FROM Hbn WHERE Code = 1"), "ｼｮｸﾋﾝ|ABC北海道地区食品|ABC北海道");
    for (int i = 0; i < 4; ++i) EXPECT_TRUE(box(i)->text().isEmpty()) << i;
    EXPECT_EQ(focused(), box(0));
    EXPECT_EQ(f()->mode()->text(), "参照");

    press(Qt::Key_Return);                 // the next proposal is the highest plus one
    EXPECT_EQ(box(0)->text(), "    2");
    EXPECT_TRUE(dialogs.log.isEmpty());
}

TEST_F(MsFrmTest, EnterTwiceOnAFoundCode)
{
    seed("Cku", 1, "北区");
    seed("Cku", 5, "南区");
    open("Cku");
    typeText("5");
    press(Qt::Key_Return);                 // the first shows the row and stays
    EXPECT_EQ(focused(), box(0));
    EXPECT_EQ(box(2)->text(), "南区");
    EXPECT_EQ(f()->mode()->text(), "参照");
    press(Qt::Key_Return);                 // the second moves on
    EXPECT_EQ(focused(), box(1));
    EXPECT_EQ(f()->mode()->text(), "修正");
    press(Qt::Key_Return);
    typeText("南地区");
    press(Qt::Key_F10);
    EXPECT_EQ(cell("SELECT Namae || '|' || Ryaku FROM Cku WHERE Code = 5"), "南地区|ﾘｬｸ");
    EXPECT_EQ(count("Cku"), 2);
    EXPECT_TRUE(dialogs.log.isEmpty());

    typeText("7");                         // a free code opens a new row, keeping the code
    press(Qt::Key_Return);
    EXPECT_EQ(box(0)->text(), "    7");
    EXPECT_EQ(f()->mode()->text(), "新規");
}

TEST_F(MsFrmTest, CodeLimitIs32000)
{
    open("Chi");
    enter("32000");
    EXPECT_TRUE(dialogs.log.isEmpty());
    press(Qt::Key_F1);
    enter("32001");
    EXPECT_EQ(dialogs.of("Tell"), QStringList({"コードに不適切な数値です。\n32000以下にしてください。"}));
    EXPECT_EQ(focused(), box(1));          // the focus stays where the key moved it

    // Past the 16-bit code the save cannot be made; nothing is written.
    press(Qt::Key_F1);
    enter("40000");
    typeText("ｶﾅ");
    press(Qt::Key_F10);
    EXPECT_EQ(count("Chi"), 0);
}

TEST_F(MsFrmTest, DeleteAsksWithTheName)
{
    seed("Sbn", 3, "問屋");
    open("Sbn");
    press(Qt::Key_F2);                     // nothing looked up: nothing to delete
    EXPECT_TRUE(dialogs.log.isEmpty());
    enter("3");
    dialogs.askAnswers = {false};
    press(Qt::Key_F2);
    EXPECT_EQ(count("Sbn"), 1);
    EXPECT_EQ(box(2)->text(), "問屋");
    press(Qt::Key_F2);
    EXPECT_EQ(dialogs.of("Ask"), QStringList({"問屋を削除してよろしいですか？", "問屋を削除してよろしいですか？"}));
    EXPECT_EQ(count("Sbn"), 0);
    EXPECT_TRUE(box(2)->text().isEmpty());
    EXPECT_EQ(focused(), box(0));
}

TEST_F(MsFrmTest, UnitsKeepOnlyCodeAndNameAndSkipTheHiddenFields)
{
    open("Tni");
    EXPECT_FALSE(box(1)->isVisible());
    EXPECT_FALSE(box(3)->isVisible());
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), box(2));
    enter("ケース");
    EXPECT_EQ(focused(), f()->RecField());
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), box(2));
    press(Qt::Key_Tab);
    press(Qt::Key_Return);
    EXPECT_EQ(cell("SELECT Namae FROM Tni WHERE Code = 1"), "ケース");
    EXPECT_TRUE(dialogs.log.isEmpty());
}

TEST_F(MsFrmTest, SaveWithAnEmptyCodeIsANewRowZero)
{
    open("Hbn");
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    box(0)->clear();
    press(Qt::Key_F10);
    EXPECT_EQ(count("Hbn"), 1);
    EXPECT_EQ(cell("SELECT Code FROM Hbn"), "0");
}

TEST_F(MsFrmTest, F6ChoosesFromTheList)
{
    seed("Hbn", 1, "野菜");
    seed("Hbn", 2, "果物");
    open("Hbn");
    QTimer::singleShot(0, [] {
        QTest::keyClick(HelpForm()->kana(), Qt::Key_Down);
        QTest::keyClick(HelpForm()->kana(), Qt::Key_Return);
    });
    press(Qt::Key_F6);
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    EXPECT_EQ(box(2)->text(), "果物");
    EXPECT_EQ(focused(), box(0));
    EXPECT_EQ(f()->bureaucrat().CurCode, 2);
    press(Qt::Key_Escape);                 // Esc closes; the form goes with it
    flushDeletes();
    EXPECT_TRUE(form.isNull());
}

TEST_F(MsFrmTest, StaffFormHasALevel)
{
    session().MenuKey = "Hbn";
    show(new Tan_frm);
    press(Qt::Key_Return);
    enter("ﾔﾏﾀﾞ");
    typeText("山田太郎");
    for (int i = 0; i < 4; ++i) press(Qt::Key_Return);   // level left empty
    EXPECT_EQ(cell("SELECT Namae || '|' || Ryaku || '|' || TanLevel FROM Tan WHERE Code = 1"), "山田太郎|山田太郎|0");

    run("UPDATE Tan SET TanLevel = 5 WHERE Code = 1");
    enter("1");
    EXPECT_EQ(box(4)->text(), "  5");

    OtherStation other(company.file("MASTER.db"));
    ASSERT_TRUE(other.exec("INSERT INTO Tan (Code, Namae) VALUES (2, '他局')"));
    press(Qt::Key_F1);
    box(0)->setText("2");                  // typed over a code the form has not seen yet
    press(Qt::Key_Tab, Qt::ShiftModifier);
    press(Qt::Key_F10);
    EXPECT_EQ(dialogs.of("Tell"), QStringList({"担当者は、No.3で登録しました。"}));
}

}  // namespace
