#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTableWidget>
#include <QFileInfo>
#include "ProductsFixture.h"
#include "ProductsOutputs.h"
#include "pageout/ExcelFixture.h"
#include "entry/FormDriver.h"
#include "entry/Dates.h"
#include "reports/RepoNippou_frm.h"

namespace {

struct NippouForm {
    QPointer<RepoNippou_frm> w;
    explicit NippouForm(const char* key)
    {
        session().MenuKey = QString::fromLatin1(key);
        w = new RepoNippou_frm;
        EXPECT_TRUE(showActive(w));
    }
    ~NippouForm() { delete w.data(); }
    QString cell(int row, int col) const { return gridCell(w->List(), row, col); }
    QStringList boxes() const
    {
        QStringList out;
        for (QLineEdit* b : w->ebox()) out << b->text();
        return out;
    }
};

class ProductsForm : public SummaryCompany {
protected:
    void SetUp() override
    {
        SummaryCompany::SetUp();
        sale(1, QDate(2026, 4, 1), 1, {{"0000000001001", "ボールペン", 10, 120}, {"0000000001002", "ノート", 3, 250}});
        sale(2, QDate(2026, 4, 30), 2, {{"0000000001001", "ボールペン", 5, 100}});
        purchase(1, QDate(2026, 4, 10), 7, {{"0000000001001", "ボールペン", 50, 60}});
    }
};

const QDate kToday = QDate::currentDate();

QStringList todayBoxes()
{
    const DateBoxes b = DateToBoxes(kToday);
    return {b.year.trimmed(), b.month.trimmed(), b.day.trimmed()};
}

} // namespace

TEST_F(ProductsForm, ClerkTypesARangeAndAPartnerAndTheGridFills)
{
    NippouForm f("Uri");
    EXPECT_EQ(f.w->windowTitle(), "商品別集計");
    EXPECT_EQ(f.w->Title()->text(), "商品別売上集計");
    EXPECT_EQ(f.w->partnerCaption()->text(), "得意先");
    EXPECT_EQ(f.boxes(), todayBoxes() + todayBoxes() + QStringList{""});
    EXPECT_EQ(f.w->message()->text(), "ESC：戻る　Ｆ９：印刷　Ｆ１０：エクセル");
    ASSERT_EQ(focused(), f.w->ebox()[0]);

    for (const char* t : {"2026", "4", "1", "2026", "4", "30"}) enter(t);
    EXPECT_EQ(f.w->weekDayS()->text(), "水曜");
    EXPECT_EQ(f.w->weekDayE()->text(), "木曜");
    // Up goes back a field, Enter comes again.
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), f.w->ebox()[5]);
    press(Qt::Key_Return);
    ASSERT_EQ(focused(), f.w->ebox()[6]);
    // Enter on the partner runs the list.
    enter("1");
    EXPECT_EQ(f.w->sTorNamae()->text(), "東京商事");
    ASSERT_EQ(f.w->List()->rowCount(), 3);
    EXPECT_EQ(f.cell(0, 0), "1001");
    EXPECT_EQ(f.cell(0, 4), "1,200");
    EXPECT_EQ(f.cell(2, 0), "合計");
    EXPECT_EQ(f.cell(2, 2), "13");
    EXPECT_EQ(f.cell(2, 4), "1,950");
    EXPECT_TRUE(dlg.log.isEmpty()) << qPrintable(dlg.log.join('|'));

    // All partners: the partner field emptied and the list run again from it.
    typeText("");
    press(Qt::Key_Return);
    ASSERT_EQ(f.w->List()->rowCount(), 3);
    EXPECT_EQ(f.cell(0, 2), "15");
    EXPECT_EQ(f.cell(0, 3), "113.3");

    // F1 clears the form and goes to the first field.
    press(Qt::Key_F1);
    EXPECT_EQ(focused(), f.w->ebox()[0]);
    EXPECT_EQ(f.boxes(), todayBoxes() + todayBoxes() + QStringList{""});
    EXPECT_EQ(f.w->List()->rowCount(), 0);
    EXPECT_EQ(f.w->List()->columnCount(), 5);

    press(Qt::Key_Escape);
    flushDeletes();
    EXPECT_TRUE(f.w.isNull());
}

TEST_F(ProductsForm, NothingInTheRangeSaysSoAndClearsTheForm)
{
    NippouForm f("Kai");
    EXPECT_EQ(f.w->windowTitle(), "商品別集計");
    EXPECT_EQ(f.w->Title()->text(), "商品別仕入集計");
    EXPECT_EQ(f.w->partnerCaption()->text(), "仕入先");
    // The start after the end.
    for (const char* t : {"2026", "4", "30", "2026", "4", "1", "7"}) enter(t);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"対象がありません。"});
    EXPECT_EQ(f.boxes(), todayBoxes() + todayBoxes() + QStringList{""});
    EXPECT_EQ(f.w->sTorNamae()->text(), "");
    EXPECT_EQ(f.w->List()->rowCount(), 0);
    EXPECT_EQ(focused(), f.w->ebox()[0]);

    // The purchases of supplier 7 in April.
    for (const char* t : {"2026", "4", "1", "2026", "4", "30", "7"}) enter(t);
    EXPECT_EQ(f.w->sTorNamae()->text(), "大和製作所");
    ASSERT_EQ(f.w->List()->rowCount(), 2);
    EXPECT_EQ(f.cell(0, 1), "ボールペン");
    EXPECT_EQ(f.cell(0, 4), "3,000");
}

TEST_F(ProductsForm, F9PreviewsTheGridAndF10WritesItsSheet)
{
    ClerkOutputs outputs;
    NippouForm f("Uri");
    for (const char* t : {"2026", "4", "1", "2026", "4", "30", ""}) enter(t);
    ASSERT_EQ(f.w->List()->rowCount(), 3);
    press(Qt::Key_F9);
    ASSERT_TRUE(QTest::qWaitForWindowActive(f.w));
    EXPECT_EQ(outputs.pages.size(), 1);
    press(Qt::Key_F10);
    ASSERT_EQ(outputs.sheets.size(), 1);
    EXPECT_TRUE(QFileInfo(outputs.sheets[0]).fileName().startsWith("商品別売上集計"));
    SheetXml sheet(outputs.sheets[0]);
    EXPECT_EQ(sheet.cell("B2"), "ボールペン");
    EXPECT_EQ(sheet.cell("C2"), "15");
    EXPECT_EQ(sheet.cell("A4"), "合計");
    EXPECT_TRUE(dlg.of("Tell").isEmpty()) << qPrintable(dlg.log.join('|'));
}
