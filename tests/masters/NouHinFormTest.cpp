#include "masters/MasterFormSupport.h"

#include "masters/Hin_frm.h"
#include "masters/Nou_frm.h"

namespace {

class NouFormTest : public MasterFormTest {
protected:
    void SetUp() override
    {
        MasterFormTest::SetUp();
        run("INSERT INTO Tor (Code, TbnCode, Namae, Sime) VALUES (1, 1, '甲商店', 20), (2, 1, '乙商会', 31)");
        run("INSERT INTO Chi (Code, Namae) VALUES (1, '部長')");
        run("INSERT INTO Cku (Code, Namae) VALUES (1, '東地区')");
        run("INSERT INTO Zip7 (Code, Addr) VALUES (1000001, '東京都千代田区千代田')");
        show(new Nou_frm);
    }
    Nou_frm* f() const { return qobject_cast<Nou_frm*>(form.data()); }
    QLineEdit* box(int i) const { return f()->ebox()[i]; }
};

TEST_F(NouFormTest, NumberedPerCustomerFromOne)
{
    enter("1");
    EXPECT_EQ(f()->TorLabel()->text(), "甲商店");
    ASSERT_EQ(focused(), box(1));
    press(Qt::Key_Return);                          // nothing typed: the customer's next code
    EXPECT_EQ(box(1)->text(), "     1");
    EXPECT_EQ(f()->mode()->text(), "新規");
    enter("ﾐﾅﾐ");
    enter("南倉庫");
    EXPECT_TRUE(box(4)->text().isEmpty());          // no short name is made up for a destination
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    pick(1);
    enter("田中");
    press(Qt::Key_Return);                          // "様"
    enter("100-0001");
    EXPECT_EQ(box(8)->text(), "東京都千代田区千代田");
    for (int i = 0; i < 4; ++i) press(Qt::Key_Return);
    pick(2);                                        // billed itself
    pick(1);
    ASSERT_EQ(focused(), f()->RecField());
    press(Qt::Key_Return);
    EXPECT_EQ(cell("SELECT Kana || '|' || Namae || '|' || Ryaku || '|' || ChiCode || '|' || Ntantou || '|' || KeishoCode "
                   "|| '|' || Yubin || '|' || Addr1 || '|' || SeiFlag || '|' || CkuCode FROM Nou WHERE TorCode = 1 AND Code = 1"),
              "ﾐﾅﾐ|南倉庫| |1|田中|1|100-0001|東京都千代田区千代田|2|1");
    EXPECT_TRUE(f()->TorLabel()->text().isEmpty());
    EXPECT_EQ(focused(), box(0));

    // Another customer's first destination is 1 too; F10 saves and the screen stays.
    enter("2");
    enter("0");
    EXPECT_EQ(box(1)->text(), "     1");
    enter("ｷﾀ");
    typeText("北倉庫");
    press(Qt::Key_F10);
    EXPECT_EQ(cell("SELECT Namae || '|' || SeiFlag FROM Nou WHERE TorCode = 2 AND Code = 1"), "北倉庫|1");
    EXPECT_EQ(box(3)->text(), "北倉庫");
    EXPECT_EQ(f()->mode()->text(), "参照");

    // An existing destination comes up for amendment.
    f()->bureaucrat().focusItem(0);
    enter("1");
    enter("1");
    EXPECT_EQ(box(3)->text(), "南倉庫");
    EXPECT_EQ(f()->mode()->text(), "修正");
    typeText("ﾐﾅﾐｿｳｺ");
    press(Qt::Key_F10);
    EXPECT_EQ(cell("SELECT Kana FROM Nou WHERE TorCode = 1 AND Code = 1"), "ﾐﾅﾐｿｳｺ");
    EXPECT_EQ(count("Nou"), 2);
    EXPECT_TRUE(dialogs.log.isEmpty()) << qPrintable(dialogs.log.join("\n"));
}

TEST_F(NouFormTest, UnknownCustomerClearsTheForm)
{
    enter("9");
    EXPECT_EQ(focused(), box(0));
    EXPECT_TRUE(box(0)->text().isEmpty());
    EXPECT_TRUE(f()->TorLabel()->text().isEmpty());
    press(Qt::Key_F10);
    EXPECT_EQ(count("Nou"), 0);
}

TEST_F(NouFormTest, AnotherStationTookTheCode)
{
    run("INSERT INTO Nou (TorCode, Code, Namae) VALUES (1, 1, '本社')");
    enter("1");
    press(Qt::Key_Return);
    ASSERT_EQ(box(1)->text(), "     2");
    {
        OtherStation other(company.file("MASTER.db"));
        ASSERT_TRUE(other.exec("INSERT INTO Nou (TorCode, Code, Namae) VALUES (1, 2, '他局')"));
    }
    enter("ｼﾝ");
    typeText("新倉庫");
    press(Qt::Key_F10);
    EXPECT_EQ(dialogs.of("Tell"), QStringList({"納入先は、No.3で登録しました。"}));
    EXPECT_EQ(box(1)->text(), "     3");
    EXPECT_EQ(cell("SELECT group_concat(Namae, ',') FROM (SELECT Namae FROM Nou WHERE TorCode = 1 ORDER BY Code)"),
              "本社,他局,新倉庫");
}

TEST_F(NouFormTest, DeletionLooksAtTheYearsSlips)
{
    run("INSERT INTO Nou (TorCode, Code, Namae) VALUES (1, 1, '本社'), (1, 2, '支店')");
    run("INSERT INTO Dur (Dno, EigCode, TorCode, NouCode) VALUES (5, 1, 1, 1)");
    run("INSERT INTO Nka (TorCode, NouCode, HinCode, Tanka) VALUES (1, 2, '0000000000001', 100)");
    enter("1");
    enter("1");
    press(Qt::Key_F2);
    EXPECT_EQ(dialogs.log, QStringList({"Tell:この納入先が伝票に存在するので、削除はできません。"}));
    f()->bureaucrat().focusItem(1);
    enter("2");
    dialogs.askAnswers = {false, true};
    press(Qt::Key_F2);
    EXPECT_EQ(count("Nou"), 2);   // "no" keeps it
    press(Qt::Key_F2);
    EXPECT_EQ(cell("SELECT group_concat(Code) FROM Nou"), "1");
    EXPECT_EQ(count("Nka"), 1);                      // its prices stay behind
}

class HinFormTest : public MasterFormTest {
protected:
    void SetUp() override
    {
        MasterFormTest::SetUp();
        run("INSERT INTO Hbn (Code, kana, Namae, Ryaku) VALUES (1, 'ﾌﾞﾝｸﾞ', '文具', '文具')");
        show(new Hin_frm);
    }
    Hin_frm* f() const { return qobject_cast<Hin_frm*>(form.data()); }
    QLineEdit* box(int i) const { return f()->ebox()[i]; }
};

TEST_F(HinFormTest, DigitsArePaddedAndF10SavesAndClears)
{
    enter("123");
    EXPECT_EQ(f()->mode()->text(), "新規");
    pick(1);
    enter("ｴﾝﾋﾟﾂ");
    enter("鉛筆ＨＢ");
    enter("ｴﾝﾋﾟﾂ");
    enter("120");
    EXPECT_EQ(box(4)->text(), "   120.00");
    enter("80.5");
    pick(2);
    ASSERT_EQ(focused(), f()->RecField());
    press(Qt::Key_Return);
    EXPECT_EQ(cell("SELECT Code || '|' || HbnCode || '|' || Kana || '|' || Namae || '|' || UTanka || '|' || STanka || '|' || ZeiFlag FROM Hin"),
              "0000000000123|1|ｴﾝﾋﾟﾂ|鉛筆ＨＢ|1200000|805000|2");
    EXPECT_TRUE(box(0)->text().isEmpty());

    // Its 13-digit form is the same product, shown stripped.
    enter("0000000000123");
    EXPECT_EQ(f()->mode()->text(), "修正");
    EXPECT_EQ(box(0)->text(), "123");
    EXPECT_EQ(box(5)->text(), "    80.50");
    f()->bureaucrat().focusItem(3);
    typeText("鉛筆");
    press(Qt::Key_F10);
    EXPECT_TRUE(box(2)->text().isEmpty());
    EXPECT_EQ(focused(), box(0));

    // A code with a letter is kept as typed; nothing typed is thirteen zeros.
    enter("A-12");
    EXPECT_EQ(f()->mode()->text(), "新規");
    EXPECT_TRUE(box(2)->text().isEmpty());
    f()->bureaucrat().focusItem(3);
    typeText("定規'); DROP TABLE Hin;--");        // typed text is a value, never a statement
    press(Qt::Key_F10);
    press(Qt::Key_F10);
    EXPECT_EQ(cell("SELECT group_concat(Code || '=' || Namae, ',') FROM (SELECT * FROM Hin ORDER BY Code)"),
              "0000000000000= ,0000000000123=鉛筆,A-12=定規'); DROP TABLE Hin;--");
    EXPECT_TRUE(dialogs.log.isEmpty()) << qPrintable(dialogs.log.join("\n"));
}

TEST_F(HinFormTest, DeleteAsksThenSalesThenPurchases)
{
    run("INSERT INTO Hin (Code, Namae, ZeiFlag) VALUES ('0000000000007', '消しゴム', 1)");
    run("INSERT INTO Dud (Dno, Eda, EigCode, HinCode) VALUES (1, 1, 1, '0000000000007')");
    run("INSERT INTO Dsd (Dno, Eda, EigCode, HinCode) VALUES (1, 1, 1, '0000000000007')");
    enter("7");
    f()->bureaucrat().focusItem(0);                 // F2 does nothing from a list
    dialogs.askAnswers = {false};
    press(Qt::Key_F2);
    EXPECT_EQ(dialogs.log, QStringList({"Ask:このマスターを削除しますか？"}));
    press(Qt::Key_F2);
    EXPECT_EQ(dialogs.of("Tell"), QStringList({"売上伝票に使用していますので削除できません。"}));
    run("DELETE FROM Dud");
    press(Qt::Key_F2);
    EXPECT_EQ(dialogs.of("Tell").last(), "仕入伝票に使用していますので削除できません。");
    EXPECT_EQ(count("Hin"), 1);
    run("DELETE FROM Dsd");
    press(Qt::Key_F2);
    EXPECT_EQ(count("Hin"), 0);
    EXPECT_TRUE(box(0)->text().isEmpty());
    EXPECT_EQ(dialogs.of("Ask").size(), 4);
}

}  // namespace
