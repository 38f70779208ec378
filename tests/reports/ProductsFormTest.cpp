#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include "ProductsFixture.h"
#include "entry/Dates.h"
#include "entry/FormDriver.h"
#include "pageout/ExcelFixture.h"
#include "reports/RepoNippou_frm.h"

namespace {

class ProductsForm : public SummaryCompany {
protected:
    QPointer<RepoNippou_frm> w;
    void SetUp() override
    {
        SummaryCompany::SetUp();
        sale(1, QDate(2026, 4, 1), 1, {{"0000000001001", "ボールペン", 10, 120}, {"0000000001002", "ノート", 3, 250}});
        sale(2, QDate(2026, 4, 30), 2, {{"0000000001001", "ボールペン", 5, 100}});
        purchase(1, QDate(2026, 4, 10), 7, {{"0000000001001", "ボールペン", 50, 60}});
    }
    void TearDown() override { delete w.data(); }
    void open(const char* key)
    {
        session().MenuKey = QString::fromLatin1(key);
        w = new RepoNippou_frm;
        ASSERT_TRUE(showActive(w));
        ASSERT_EQ(boxes(), cleared());
    }
    QString cell(int row, int col) const { return gridCell(w->List(), row, col); }
    QStringList boxes() const
    {
        QStringList out;
        for (QLineEdit* b : w->ebox()) out << b->text();
        return out;
    }
    // Both dates today, no partner.
    static QStringList cleared()
    {
        const DateBoxes b = DateToBoxes(QDate::currentDate());
        const QStringList today{b.year.trimmed(), b.month.trimmed(), b.day.trimmed()};
        return today + today + QStringList{""};
    }
};

} // namespace

TEST_F(ProductsForm, ClerkTypesARangeAndAPartnerAndTheGridFills)
{
    open("Uri");
    EXPECT_EQ(w->Title()->text(), "商品別売上集計");
    for (const char* t : {"2026", "4", "1", "2026", "4", "30"}) enter(t);
    EXPECT_EQ(w->weekDayS()->text() + w->weekDayE()->text(), "水曜木曜");
    // Up goes back a field, Enter comes again.
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), w->ebox()[5]);
    press(Qt::Key_Return);
    ASSERT_EQ(focused(), w->ebox()[6]);
    // Enter on the partner runs the list.
    enter("1");
    EXPECT_EQ(w->sTorNamae()->text(), "東京商事");
    ASSERT_EQ(w->List()->rowCount(), 3);
    EXPECT_EQ(cell(0, 0) + "|" + cell(0, 4), "1001|1,200");
    EXPECT_EQ(cell(2, 0) + "|" + cell(2, 2) + "|" + cell(2, 4), "合計|13|1,950");

    // All partners: the partner field emptied and the list run again from it.
    CaughtOutputs outputs;
    enter("");
    ASSERT_EQ(w->List()->rowCount(), 3);
    EXPECT_EQ(cell(0, 2) + "|" + cell(0, 3), "15|113.3");
    press(Qt::Key_F9);
    ASSERT_TRUE(QTest::qWaitForWindowActive(w));
    EXPECT_EQ(outputs.pages, 1);
    press(Qt::Key_F10);
    ASSERT_EQ(outputs.sheets.size(), 1);
    EXPECT_TRUE(QFileInfo(outputs.sheets[0]).fileName().startsWith("商品別売上集計"));
    const SheetXml sheet(outputs.sheets[0]);
    EXPECT_EQ(sheet.cell("B2") + sheet.cell("C2") + sheet.cell("A4"), "ボールペン15合計");
    EXPECT_TRUE(dlg.of("Tell").isEmpty()) << qPrintable(dlg.log.join('|'));

    // F1 clears the form and goes to the first field; Esc closes.
    press(Qt::Key_F1);
    EXPECT_EQ(focused(), w->ebox()[0]);
    EXPECT_EQ(boxes(), cleared());
    EXPECT_EQ(w->List()->rowCount(), 0);
    press(Qt::Key_Escape);
    flushDeletes();
    EXPECT_TRUE(w.isNull());
}

TEST_F(ProductsForm, NothingInTheRangeSaysSoAndClearsTheForm)
{
    open("Kai");
    EXPECT_EQ(w->Title()->text() + w->partnerCaption()->text(), "商品別仕入集計仕入先");
    // The start after the end.
    for (const char* t : {"2026", "4", "30", "2026", "4", "1", "7"}) enter(t);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"対象がありません。"});
    EXPECT_EQ(boxes(), cleared());
    EXPECT_EQ(w->sTorNamae()->text(), "");
    EXPECT_EQ(w->List()->rowCount(), 0);
    EXPECT_EQ(focused(), w->ebox()[0]);

    // The purchases of supplier 7 in April.
    for (const char* t : {"2026", "4", "1", "2026", "4", "30", "7"}) enter(t);
    EXPECT_EQ(w->sTorNamae()->text(), "大和製作所");
    ASSERT_EQ(w->List()->rowCount(), 2);
    EXPECT_EQ(cell(0, 1) + "|" + cell(0, 4), "ボールペン|3,000");
}
