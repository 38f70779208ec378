#include "masters/MasterFormSupport.h"

#include "masters/Deal_frm.h"

namespace {

class DealFormTest : public MasterFormTest {
protected:
    void SetUp() override
    {
        MasterFormTest::SetUp();
        run("INSERT INTO Tbn (Code, kana, Namae, Ryaku) VALUES (1, 'ｵﾛｼ', '卸', '卸'), (2, 'ｺｳﾘ', '小売', '小売')");
        run("INSERT INTO Sbn (Code, kana, Namae, Ryaku) VALUES (1, 'ﾒｰｶｰ', 'メーカー', 'ﾒｰｶｰ')");
        run("INSERT INTO Tan (Code, Namae) VALUES (1, '山田')");
        run("INSERT INTO Chi (Code, Namae) VALUES (1, '部長')");
        run("INSERT INTO Cku (Code, Namae) VALUES (1, '東地区')");
        run("UPDATE Com SET Bank2 = 'みずほ銀行', koza2 = '1234567'");
        run("INSERT INTO Zip7 (Code, Addr) VALUES (1000001, '東京都千代田区千代田')");
    }
    Deal_frm* open(const QString& menuKey)
    {
        session().MenuKey = menuKey;
        return show(new Deal_frm);
    }
    Deal_frm* f() const { return qobject_cast<Deal_frm*>(form.data()); }
    QLineEdit* box(int i) const { return f()->ebox()[i]; }
    QComboBox* list(int i) const { return f()->cbox()[i]; }
};

TEST_F(DealFormTest, NewCustomerThroughEveryFieldThenAmend)
{
    open("Tor");
    EXPECT_FALSE(box(17)->isVisible());            // the supplier's set is out
    press(Qt::Key_Return);
    EXPECT_EQ(box(0)->text(), "      1");
    EXPECT_EQ(f()->mode()->text(), "新規");
    ASSERT_EQ(focused(), list(0));
    pick(2);
    enter("ﾏﾙｲ");
    enter("丸井商店株式会社");
    EXPECT_EQ(box(3)->text(), "丸井商店株");        // the name cut to the short name's 10 bytes
    press(Qt::Key_Return);
    enter("本店");
    enter("100-0001");
    EXPECT_EQ(box(6)->text(), "東京都千代田区千代田");
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    enter("03-1111-2222");
    press(Qt::Key_Return);
    enter("佐藤");
    pick(1);                                       // position
    press(Qt::Key_Return);                         // honorific keeps "様"
    pick(1);                                       // district
    pick(2);                                       // tax per delivery note
    pick(2);                                       // rounding unit
    pick(3);                                       // rounding up
    pick(3);                                       // paid by transfer
    pick(1);                                       // staff
    enter("3");
    enter("20");
    pick(2);
    enter("10");
    enter("1500000");
    enter("2");
    EXPECT_EQ(f()->BankLabel()->text(), "1234567");
    enter("1");
    ASSERT_EQ(focused(), f()->RecField());
    press(Qt::Key_Return);
    EXPECT_TRUE(dialogs.log.isEmpty()) << qPrintable(dialogs.log.join("\n"));
    EXPECT_EQ(cell("SELECT TbnCode || '|' || Kana || '|' || Namae || '|' || Ryaku || '|' || Tenmei || '|' || Yubin "
                   "|| '|' || Addr1 || '|' || Addr2 || '|' || Tel || '|' || Fax || '|' || Ttantou FROM Tor WHERE Code = 1"),
              "2|ﾏﾙｲ|丸井商店株式会社|丸井商店株|本店|100-0001|東京都千代田区千代田| |03-1111-2222| |佐藤");
    EXPECT_EQ(cell("SELECT ChiCode || KeishoCode || CkuCode || Zeituuchi || HsuType || Hsu || Shicode || TanCode "
                   "|| '|' || RCode || '|' || Sime || '|' || KTuki || '|' || KHi || '|' || UMax || '|' || BankCode "
                   "|| '|' || Seikyu FROM Tor WHERE Code = 1"),
              "11122331|3|20|2|10|15000000000|2|1");
    EXPECT_TRUE(box(2)->text().isEmpty());
    EXPECT_EQ(focused(), box(0));

    // Amend: the row shows in the fields' pictures, with its side labels.
    enter("1");
    EXPECT_EQ(box(14)->text(), "  1,500,000");
    EXPECT_EQ(list(4)->currentText(), "納品書毎");
    EXPECT_EQ(f()->SeikyuLabel()->text(), "丸井商店株");

    // The stored closing day cannot be changed: leaving puts it back.
    f()->bureaucrat().focusItem(21);
    enter("25");
    EXPECT_EQ(box(12)->text(), "20");
    EXPECT_EQ(dialogs.of("Tell"), QStringList({"締日は変更できません｡"}));
    EXPECT_EQ(focused(), list(9));
    // Saved from the box itself, the guard comes before the save.
    f()->bureaucrat().focusItem(21);
    typeText("15");
    press(Qt::Key_F10);
    EXPECT_EQ(dialogs.of("Tell").size(), 2);
    EXPECT_EQ(box(12)->text(), "20");
    f()->bureaucrat().focusItem(4);
    typeText("マルイ");
    press(Qt::Key_F10);
    EXPECT_EQ(cell("SELECT Ryaku || '|' || Sime FROM Tor WHERE Code = 1"), "マルイ|20");
    EXPECT_EQ(count("Tor"), 1);
}

TEST_F(DealFormTest, ChecksBeforeSavingInTheirOrder)
{
    open("Tor");
    press(Qt::Key_Return);
    press(Qt::Key_Return);                          // no class
    enter("ﾃｽﾄ");
    press(Qt::Key_F10);                             // no closing day either: that comes first
    EXPECT_EQ(dialogs.of("Tell"), QStringList({"締日が記入されてません。"}));
    EXPECT_EQ(focused(), box(12));
    typeText("31");
    press(Qt::Key_F10);
    EXPECT_EQ(dialogs.of("Tell").last(), "分類コードが設定されていません。");
    EXPECT_EQ(focused(), list(0));
    EXPECT_EQ(count("Tor"), 0);
    EXPECT_EQ(box(1)->text(), "ﾃｽﾄ");               // nothing typed is lost
    pick(1);
    press(Qt::Key_F10);
    EXPECT_EQ(cell("SELECT Kana || '|' || Sime || '|' || TbnCode FROM Tor WHERE Code = 1"), "ﾃｽﾄ|31|1");
    EXPECT_EQ(dialogs.of("Tell").size(), 2);
}

TEST_F(DealFormTest, SupplierFieldsAndItsClosingDayMayChange)
{
    run("INSERT INTO Sir (Code, SbnCode, Namae, Ryaku, SimeFlag, Sime, Shicode, Shiharai, Shurui) "
        "VALUES (3, 1, '東洋製作所', 'ﾄｳﾖｳ', 2, 20, 3, 3, 0)");
    open("Sir");
    EXPECT_FALSE(box(12)->isVisible());
    enter("3");
    EXPECT_EQ(box(3)->text(), "ﾄｳﾖｳ");
    EXPECT_EQ(list(16)->currentText(), "振  込");
    EXPECT_EQ(list(12)->currentIndex(), -1);        // deposit kind 0 is blank
    EXPECT_EQ(box(17)->text(), "20");
    f()->bureaucrat().focusItem(30);
    enter("25");
    enter("三井銀行");
    press(Qt::Key_F10);
    EXPECT_TRUE(dialogs.log.isEmpty()) << qPrintable(dialogs.log.join("\n"));
    EXPECT_EQ(cell("SELECT Sime || '|' || Bank || '|' || SimeFlag FROM Sir WHERE Code = 3"), "25|三井銀行|2");

    // A new supplier needs no closing day, only a class.
    press(Qt::Key_Return);
    EXPECT_EQ(box(0)->text(), "      4");
    press(Qt::Key_F10);
    EXPECT_EQ(dialogs.of("Tell"), QStringList({"分類コードが設定されていません。"}));
    pick(1);
    press(Qt::Key_F10);
    EXPECT_EQ(cell("SELECT SbnCode || '|' || Sime FROM Sir WHERE Code = 4"), "1|0");
}

TEST_F(DealFormTest, DeletionRefusedForAPartnerOnSlips)
{
    run("INSERT INTO Tor (Code, TbnCode, Namae, Sime) VALUES (1, 1, '甲', 20), (2, 1, '乙', 20)");
    run("INSERT INTO Dur (Dno, EigCode, TorCode) VALUES (10, 1, 1)");
    open("Tor");
    enter("1");
    press(Qt::Key_F2);
    EXPECT_EQ(dialogs.log, QStringList({"Tell:この得意先が伝票に存在するので、削除は出来ません。"}));
    EXPECT_EQ(count("Tor"), 2);
    press(Qt::Key_F1);
    enter("2");
    dialogs.askAnswers = {false};
    press(Qt::Key_F2);
    EXPECT_EQ(count("Tor"), 2);
    press(Qt::Key_F2);
    EXPECT_EQ(dialogs.of("Ask").size(), 2);
    EXPECT_EQ(cell("SELECT group_concat(Code) FROM Tor"), "1");
    EXPECT_TRUE(box(2)->text().isEmpty());
}

TEST_F(DealFormTest, AnotherStationTookTheCode)
{
    run("INSERT INTO Tor (Code, TbnCode, Namae, Sime) VALUES (1, 1, '甲', 20)");
    open("Tor");
    press(Qt::Key_Return);
    ASSERT_EQ(box(0)->text(), "      2");
    pick(1);
    enter("ｼﾝｷ");
    f()->bureaucrat().focusItem(21);
    enter("15");
    {
        OtherStation other(company.file("MASTER.db"));
        ASSERT_TRUE(other.exec("INSERT INTO Tor (Code, TbnCode, Namae, Sime) VALUES (2, 2, '他局', 10)"));
    }
    press(Qt::Key_F10);
    EXPECT_EQ(dialogs.of("Tell"), QStringList({"マスターは、No.3で登録しました。"}));
    EXPECT_EQ(cell("SELECT Namae || '|' || Sime FROM Tor WHERE Code = 2"), "他局|10");
    EXPECT_EQ(cell("SELECT Kana || '|' || Sime FROM Tor WHERE Code = 3"), "ｼﾝｷ|15");
}

}  // namespace
