#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTableWidget>
#include <QFileInfo>
#include "ProductsFixture.h"
#include "pageout/ExcelFixture.h"
#include "entry/FormDriver.h"
#include "reports/Chouha_frm.h"

namespace {

class CutoffForm : public SummaryCompany {
protected:
    QPointer<Chouha_frm> w;

    void SetUp() override
    {
        SummaryCompany::SetUp();
        const QString hin = QStringLiteral("0000000000001");
        sale(1, QDate(2026, 4, 1), 1, {{hin, "商品", 10, 1000, 0, 600}}, 0, 1);
        sale(2, QDate(2026, 4, 2), 2, {{hin, "商品", 20, 1000, 0, 700}}, 0, 2);
        session().MenuKey = QStringLiteral("TAN");
        w = new Chouha_frm;
        ASSERT_TRUE(showActive(w));
    }
    void TearDown() override { delete w.data(); }

    QString cell(int row, int col) const { return gridCell(w->List(), row, col); }
};

} // namespace

TEST_F(CutoffForm, ClerkRanksTheStaffBySales)
{
    EXPECT_EQ(w->Title()->text(), "2026年担当者別売上");
    for (const char* t : {"2026", "4", "1", "2026", "4", "30"}) enter(t);
    EXPECT_EQ(w->weekdays()->text(), "水曜");
    ASSERT_EQ(focused(), w->cbox());
    // PageDown switches the list to 売上順; Enter runs it.
    press(Qt::Key_PageDown);
    EXPECT_EQ(w->cbox()->currentText(), "売上順");
    press(Qt::Key_Return);
    ASSERT_EQ(w->List()->rowCount(), 3);
    const auto row = [&](int r) { return QStringList({cell(r, 1), cell(r, 2), cell(r, 8), cell(r, 9)}).join('|'); };
    EXPECT_EQ(row(0), "佐藤|20,000|6,000|30.00");
    EXPECT_EQ(row(1), "山田|10,000|4,000|40.00");
    EXPECT_EQ(row(2), "合計|30,000|10,000|");

    // A month without slips: said, and the grid keeps only its heads.
    for (int i = 0; i < 5; ++i) press(Qt::Key_Up);
    ASSERT_EQ(focused(), w->ebox()[1]);
    enter("5");
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    enter("5");
    press(Qt::Key_Return);
    ASSERT_EQ(focused(), w->cbox());
    press(Qt::Key_Return);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"対象の伝票がありません。"});
    EXPECT_EQ(w->List()->rowCount(), 0);

    press(Qt::Key_F1);
    EXPECT_EQ(focused(), w->ebox()[0]);
    EXPECT_EQ(w->cbox()->currentIndex(), 0);
}

TEST_F(CutoffForm, F9AndF10StraightAfterTheRangeRunTheListFirst)
{
    CaughtOutputs outputs;
    for (const char* t : {"2026", "4", "1", "2026", "4", "30"}) enter(t);
    ASSERT_EQ(focused(), w->cbox());
    press(Qt::Key_F9);
    ASSERT_TRUE(QTest::qWaitForWindowActive(w));
    EXPECT_EQ(outputs.pages, 1);
    EXPECT_EQ(w->List()->rowCount(), 3);
    EXPECT_EQ(focused(), w->cbox());
    press(Qt::Key_F10);
    ASSERT_EQ(outputs.sheets.size(), 1);
    EXPECT_TRUE(QFileInfo(outputs.sheets[0]).fileName().startsWith("担当者別売上"));
    const SheetXml sheet(outputs.sheets[0]);
    EXPECT_EQ(sheet.cell("B1") + sheet.cell("B2") + sheet.cell("I3"), "担当者名山田6000");
    EXPECT_FALSE(sheet.has("A4"));
    EXPECT_TRUE(dlg.of("Tell").isEmpty()) << qPrintable(dlg.log.join('|'));
}
