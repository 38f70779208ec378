#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>
#include "ProductsFixture.h"
#include "entry/FormDriver.h"
#include "entry/Help_frm.h"
#include "pageout/ExcelFixture.h"
#include "reports/RepoGeppou_frm.h"

namespace {

class MonthlyForm : public SummaryCompany {
protected:
    QPointer<RepoGeppou_frm> w;

    void SetUp() override
    {
        SummaryCompany::SetUp();
        sale(1, QDate(2026, 4, 2), 1, {{"4901000000105", "ボールペン", 5, 120}, {"4901000000105", "ボールペン", 2, 110}});
        sale(2, QDate(2026, 4, 9), 1, {{"4901000000105", "ボールペン", 1, 120}}, 5);
        w = new RepoGeppou_frm;
        ASSERT_TRUE(showActive(w));
    }
    void TearDown() override { delete w.data(); }

    QString cell(int row, int col) const { return gridCell(w->List(), row, col); }
    QString head(int col) const { return w->List()->horizontalHeaderItem(col)->text(); }
};

} // namespace

TEST_F(MonthlyForm, MissingFieldsAreSaidAndTheMonthIsShownByDay)
{
    // Enter through the empty fields runs 表示 from the last one.
    for (int i = 0; i < 5; ++i) press(Qt::Key_Return);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"月度が記入されていません。"});
    EXPECT_EQ(focused(), w->ebox()[0]);
    enter("4");
    for (int i = 0; i < 4; ++i) press(Qt::Key_Return);
    EXPECT_EQ(dlg.of("Tell").last(), "締日が記入されていません。");
    EXPECT_EQ(focused(), w->ebox()[1]);

    enter("31");
    // F6 takes a customer from the list (in kana order) as if typed.
    QTimer::singleShot(0, [] {
        for (Qt::Key k : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}) QTest::keyClick(HelpForm()->kana(), k);
    });
    press(Qt::Key_F6);
    ASSERT_TRUE(QTest::qWaitForWindowActive(w));
    EXPECT_EQ(w->ebox()[2]->text() + w->sTorNamae()->text(), "1東京商事");
    ASSERT_EQ(focused(), w->ebox()[3]);
    enter("0");
    enter("0");
    EXPECT_EQ(dlg.of("Tell").size(), 2);
    ASSERT_EQ(w->List()->rowCount(), 3);
    EXPECT_EQ(head(2) + "|" + head(31) + "|" + head(32), "1|30|");
    // Two prices of one product, two rows; the 2nd and the 9th of April.
    EXPECT_EQ(cell(0, 0) + "|" + cell(0, 3) + "|" + cell(0, 34), "49010000001|2|110");
    EXPECT_EQ(cell(1, 3) + "|" + cell(1, 10) + "|" + cell(1, 33), "5|1|6");
    EXPECT_EQ(cell(2, 0) + "|" + cell(2, 35), "合計|940");

    // Destination 5 alone; then a customer without sales.
    press(Qt::Key_Up);
    enter("5");
    EXPECT_EQ(w->sNouNamae()->text(), "北倉庫");
    enter("0");
    ASSERT_EQ(w->List()->rowCount(), 2);
    EXPECT_EQ(cell(0, 35), "120");
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    for (const char* t : {"3", "0", "0"}) enter(t);
    EXPECT_EQ(dlg.of("Tell").last(), "対象がありません。");
    EXPECT_EQ(w->List()->rowCount(), 0);

    press(Qt::Key_F1);
    EXPECT_EQ(focused(), w->ebox()[0]);
    EXPECT_EQ(w->ebox()[2]->text() + w->sTorNamae()->text(), "");
}

TEST_F(MonthlyForm, F9PrintsASheetForEachCustomerWithSalesAndF10TheGrid)
{
    sale(3, QDate(2026, 4, 20), 3, {{"4902000000208", "ノート", 4, 250}});
    CaughtOutputs outputs;
    for (const char* t : {"4", "31", "0", "0", "0"}) enter(t);
    ASSERT_EQ(w->List()->rowCount(), 4);
    // Customers 1 and 3 sold in April; 4 closes on the 31st too but gets no sheet.
    press(Qt::Key_F9);
    ASSERT_TRUE(QTest::qWaitForWindowActive(w));
    EXPECT_EQ(outputs.pages, 2);
    press(Qt::Key_F10);
    ASSERT_EQ(outputs.sheets.size(), 1);
    EXPECT_TRUE(QFileInfo(outputs.sheets[0]).fileName().startsWith("販売商品月次控え"));
    const SheetXml sheet(outputs.sheets[0]);
    EXPECT_EQ(sheet.cell("C1") + "|" + sheet.cell("D2") + "|" + sheet.cell("A5") + "|" + sheet.cell("AJ5"), "1|2|合計|1940");

    // A month nobody sold in: no sheet, and nothing said.
    for (int i = 0; i < 4; ++i) press(Qt::Key_Up);
    ASSERT_EQ(focused(), w->ebox()[0]);
    typeText("5");
    press(Qt::Key_F9);
    EXPECT_EQ(outputs.pages, 2);
    EXPECT_TRUE(dlg.of("Tell").isEmpty()) << qPrintable(dlg.log.join('|'));
}
