#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTableWidget>
#include "ProductsFixture.h"
#include "entry/FormDriver.h"
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

    QString cell(int row, int col) const
    {
        const QTableWidgetItem* i = w->List()->item(row, col);
        return i ? i->text().trimmed() : QString();
    }
    QString head(int col) const { return w->List()->horizontalHeaderItem(col)->text(); }
};

} // namespace

TEST_F(MonthlyForm, MissingFieldsAreSaidAndTheMonthIsShownByDay)
{
    EXPECT_EQ(w->List()->columnCount(), 36);
    EXPECT_EQ(head(1), "商 品 名");
    EXPECT_EQ(w->message()->text(), "ESC：戻る　Ｆ９：印刷　Ｆ１０：エクセル\n"
                                    "得意先コードに０を入れて印刷すればそれぞれの得意先で印刷されます。");
    // Enter through the empty fields runs 表示 from the last one.
    for (int i = 0; i < 5; ++i) press(Qt::Key_Return);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"月度が記入されていません。"});
    EXPECT_EQ(focused(), w->ebox()[0]);
    enter("4");
    for (int i = 0; i < 4; ++i) press(Qt::Key_Return);
    EXPECT_EQ(dlg.of("Tell").last(), "締日が記入されていません。");
    EXPECT_EQ(focused(), w->ebox()[1]);

    enter("31");
    enter("1");
    EXPECT_EQ(w->sTorNamae()->text(), "東京商事");
    enter("0");
    enter("0");
    EXPECT_EQ(dlg.of("Tell").size(), 2);
    ASSERT_EQ(w->List()->rowCount(), 3);
    EXPECT_EQ(head(2), "1");
    EXPECT_EQ(head(31), "30");
    EXPECT_EQ(head(32), "");
    // Two prices of one product, two rows; the 2nd and the 9th of April.
    EXPECT_EQ(cell(0, 0), "49010000001");
    EXPECT_EQ(cell(0, 3), "2");
    EXPECT_EQ(cell(0, 34), "110");
    EXPECT_EQ(cell(1, 3), "5");
    EXPECT_EQ(cell(1, 10), "1");
    EXPECT_EQ(cell(1, 33), "6");
    EXPECT_EQ(cell(2, 0), "合計");
    EXPECT_EQ(cell(2, 35), "940");

    // Destination 5 alone; then a customer without sales.
    press(Qt::Key_Up);
    enter("5");
    EXPECT_EQ(w->sNouNamae()->text(), "北倉庫");
    enter("0");
    ASSERT_EQ(w->List()->rowCount(), 2);
    EXPECT_EQ(cell(0, 35), "120");
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    enter("3");
    enter("0");
    enter("0");
    EXPECT_EQ(dlg.of("Tell").last(), "対象がありません。");
    EXPECT_EQ(w->List()->rowCount(), 0);

    press(Qt::Key_F1);
    EXPECT_EQ(focused(), w->ebox()[0]);
    EXPECT_EQ(w->ebox()[2]->text(), "");
    EXPECT_EQ(w->sTorNamae()->text(), "");
}
