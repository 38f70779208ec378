#include "masters/MasterFormSupport.h"

#include <QTableWidget>

#include "masters/Kaisya_frm.h"
#include "masters/PriceNka_frm.h"
#include "masters/Price_frm.h"

namespace {

class PriceFormTest : public MasterFormTest {
protected:
    void SetUp() override
    {
        MasterFormTest::SetUp();
        run("INSERT INTO Tor (Code, TbnCode, Namae, Sime) VALUES (1, 1, '甲商店', 20)");
        run("INSERT INTO Sir (Code, SbnCode, Namae) VALUES (4, 1, '東洋製作所')");
        run("INSERT INTO Nou (TorCode, Code, Namae) VALUES (1, 2, '南倉庫'), (1, 3, '北倉庫')");
        run("INSERT INTO Hin (Code, Namae) VALUES ('0000000000001', '鉛筆'), ('0000000000002', '消しゴム'), ('0000000000003', '定規')");
        // A price whose product is gone stays in the table, unseen.
        run("INSERT INTO Tka (TorCode, HinCode, Tanka) VALUES (1, '0000000000003', 10000)");
        run("DELETE FROM Hin WHERE Code = '0000000000003'");
    }
    PriceForm* f() const { return qobject_cast<PriceForm*>(form.data()); }
    QLineEdit* box(int i) const { return f()->ebox()[i]; }
    QStringList grid() const
    {
        QStringList rows;
        QTableWidget* t = f()->List();
        for (int r = 0; r < t->rowCount(); ++r)
            rows << t->item(r, 0)->text() + "|" + t->item(r, 1)->text() + "|" + t->item(r, 2)->text();
        return rows;
    }
    void doubleClickRow(int row)
    {
        QTableWidget* t = f()->List();
        // After the grid has laid its rows out. A double click is a click and then the second press.
        QApplication::processEvents();
        const QRect r = t->visualItemRect(t->item(row, 1));
        QTest::mouseClick(t->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
        QTest::mouseDClick(t->viewport(), Qt::LeftButton, Qt::NoModifier, r.center());
    }
};

TEST_F(PriceFormTest, CustomerPricesRunBackToTheProduct)
{
    session().MenuKey = "Tka";
    show(new Price_frm);
    enter("1");
    EXPECT_EQ(f()->sTorNamae()->text(), "甲商店");
    EXPECT_TRUE(grid().isEmpty());
    enter("2");
    EXPECT_EQ(box(1)->text(), "2");
    EXPECT_EQ(f()->sHinNamae()->text(), "消しゴム");
    enter("55.5");
    ASSERT_EQ(focused(), f()->RecField());
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), box(1));
    EXPECT_TRUE(box(1)->text().isEmpty());
    EXPECT_TRUE(f()->sHinNamae()->text().isEmpty());
    EXPECT_EQ(grid(), QStringList({"2|消しゴム|    55.50"}));
    enter("1");
    enter("0");                                     // 0 is a price
    press(Qt::Key_Return);
    enter("2");
    enter("60");
    press(Qt::Key_Return);                          // overwritten without a question
    EXPECT_EQ(grid(), QStringList({"1|鉛筆|     0.00", "2|消しゴム|    60.00"}));
    EXPECT_EQ(cell("SELECT group_concat(HinCode || '=' || Tanka, ',') FROM (SELECT * FROM Tka ORDER BY HinCode)"),
              "0000000000001=0,0000000000002=600000,0000000000003=10000");
    enter("9");                                     // no such product: kept, but out of the list
    EXPECT_EQ(f()->sHinNamae()->text(), "NoMatch");
    enter("5");
    press(Qt::Key_Return);
    EXPECT_EQ(count("Tka"), 4);
    EXPECT_EQ(grid().size(), 2);
    EXPECT_TRUE(dialogs.log.isEmpty()) << qPrintable(dialogs.log.join("\n"));

    dialogs.askAnswers = {false, true};
    doubleClickRow(1);
    EXPECT_EQ(dialogs.of("Ask").size(), 1);
    EXPECT_EQ(count("Tka"), 4);
    doubleClickRow(1);
    EXPECT_EQ(dialogs.of("Ask"), QStringList({"削除しますか？", "削除しますか？"}));
    EXPECT_EQ(grid(), QStringList({"1|鉛筆|     0.00"}));
    EXPECT_EQ(cell("SELECT COUNT(*) FROM Tka WHERE HinCode = '0000000000002'"), "0");

    press(Qt::Key_F1);
    EXPECT_TRUE(grid().isEmpty());
    EXPECT_TRUE(f()->sTorNamae()->text().isEmpty());
}

TEST_F(PriceFormTest, SupplierAndDestinationPrices)
{
    session().MenuKey = "Ska";
    show(new Price_frm);
    enter("4");
    EXPECT_EQ(f()->sTorNamae()->text(), "東洋製作所");
    enter("1");
    enter("30");
    press(Qt::Key_Return);
    EXPECT_EQ(cell("SELECT SirCode || '|' || HinCode || '|' || Tanka FROM Ska"), "4|0000000000001|300000");
    delete form.data();

    run("INSERT INTO Nka (TorCode, NouCode, HinCode, Tanka) VALUES (1, 3, '0000000000001', 10000)");   // another destination's
    show(new PriceNka_frm);
    enter("1");
    enter("2");
    EXPECT_EQ(f()->sNouNamae()->text(), "南倉庫");
    enter("2");
    enter("45");
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), box(2));
    EXPECT_EQ(grid(), QStringList({"2|消しゴム|    45.00"}));
    EXPECT_EQ(cell("SELECT TorCode || '|' || NouCode || '|' || HinCode || '|' || Tanka FROM Nka WHERE NouCode = 2"), "1|2|0000000000002|450000");
    EXPECT_EQ(count("Tka"), 1);
}

class KaisyaFormTest : public MasterFormTest {
protected:
    void SetUp() override
    {
        MasterFormTest::SetUp();
        run("INSERT INTO UserOP (Code, contents) VALUES (725, '20191001'), (726, '10')");
        run("UPDATE Com SET Zeiritu = 80000, koza1 = '7654321'");
        Session& s = session();
        s.TaxChangeDate = QDate(2019, 10, 1);
        s.Zeiritu = Money::fromYen(8);
        s.TaxRateNew = Money::fromYen(10);
        s.sTuki = 4;
        s.Sime = 31;
        show(new Kaisya_frm);
    }
    Kaisya_frm* f() const { return qobject_cast<Kaisya_frm*>(form.data()); }
    QLineEdit* item(int i) const { return f()->item(i); }
};

TEST_F(KaisyaFormTest, OpensWithTheRowAndSavesAndCloses)
{
    EXPECT_EQ(item(0)->text(), "株式会社ヴェルモラ商事");
    EXPECT_EQ(item(9)->text(), "20260401");
    EXPECT_EQ(f()->start()->text(), "04");
    EXPECT_EQ(f()->fin()->text(), "03");
    EXPECT_EQ(item(22)->text() + "/" + item(23)->text() + "/" + item(24)->text(), "2019/10/ 1");
    EXPECT_EQ(item(25)->text(), " 8.00");

    item(0)->clear();                               // the name is required
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), item(0));
    enter("新ヴェルモラ");
    EXPECT_EQ(focused(), item(1));
    press(Qt::Key_F1);                              // cannot be cleared
    EXPECT_EQ(item(0)->text(), "新ヴェルモラ");
    press(Qt::Key_F2);
    EXPECT_EQ(dialogs.log, QStringList({"Tell:会社は削除できません｡"}));
    EXPECT_EQ(count("Com"), 1);

    f()->bureaucrat().focusItem(11);
    typeText("20");
    f()->bureaucrat().focusItem(9);
    enter("20260421");
    EXPECT_EQ(f()->start()->text(), "05");
    EXPECT_EQ(item(10)->text(), "20270420");
    EXPECT_EQ(f()->fin()->text(), "04");
    f()->bureaucrat().focusItem(22);
    enter("2026");
    enter("2");
    enter("30");                                    // the display corrects itself
    EXPECT_EQ(item(23)->text() + "/" + item(24)->text(), " 2/28");
    EXPECT_EQ(f()->weekday()->text(), "土曜");
    enter("10");
    enter("12");

    QPointer<Kaisya_frm> k = f();
    press(Qt::Key_F10);
    flushDeletes();
    EXPECT_TRUE(k.isNull());                        // saved and closed
    EXPECT_EQ(cell("SELECT Kaisya || '|' || SKai || '|' || EKai || '|' || sTuki || '|' || Sime || '|' || Zeiritu || '|' || koza1 FROM Com"),
              "新ヴェルモラ|20260421|20270420|5|20|100000|7654321");
    EXPECT_EQ(cell("SELECT contents FROM UserOP WHERE Code = 725"), "20260228");
    EXPECT_EQ(cell("SELECT contents FROM UserOP WHERE Code = 726"), "12.00");
    EXPECT_EQ(count("UserOP"), 2);
    const Session& s = session();
    EXPECT_EQ(s.TaxChangeDate, QDate(2026, 2, 28));
    EXPECT_EQ(s.Zeiritu, Money::fromYen(10));
    EXPECT_EQ(s.TaxRateNew, Money::fromYen(12));
    EXPECT_EQ(s.sTuki, 4);                          // until the next start
    EXPECT_EQ(s.Sime, 31);
    EXPECT_EQ(dialogs.log.size(), 1);
}

TEST_F(KaisyaFormTest, StartOfAnotherYearOrWithSlashesIsRefused)
{
    struct Case { QString text, message; } cases[] = {
        {"20250401", "ここで、対象年度は変更できません。"},
        {"2026/04/01", "開始会計期間の年度設定が間違ってます。"},
    };
    for (const Case& c : cases) {
        dialogs.log.clear();
        f()->bureaucrat().focusItem(9);
        enter(c.text);
        EXPECT_EQ(dialogs.log, QStringList({"Tell:" + c.message}));
        EXPECT_EQ(item(9)->selectedText(), item(9)->text());
        EXPECT_EQ(item(10)->text(), "20270331");    // nothing follows from it
        EXPECT_EQ(f()->start()->text(), "04");
    }
    EXPECT_EQ(cell("SELECT SKai FROM Com"), "20260401");

    // F10 straight from the box, without leaving it, meets the same checks and writes nothing.
    for (const Case& c : cases) {
        dialogs.log.clear();
        f()->bureaucrat().focusItem(9);
        item(9)->setText(c.text);
        QTest::keyClick(item(9), Qt::Key_F10);
        EXPECT_EQ(dialogs.log, QStringList({"Tell:" + c.message}));
        EXPECT_TRUE(f()->isVisible());
    }
    EXPECT_EQ(cell("SELECT SKai || EKai FROM Com"), "2026040120270331");
    // A good date typed and saved at once brings its months and end date with it.
    item(9)->setText("20260501");
    QTest::keyClick(item(9), Qt::Key_F10);
    EXPECT_EQ(cell("SELECT SKai || EKai || '|' || sTuki FROM Com"), "2026050120270430|5");
}

}  // namespace
