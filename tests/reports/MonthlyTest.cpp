#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>
#include "ProductsFixture.h"
#include "entry/FormDriver.h"
#include "entry/Help_frm.h"
#include "pageout/ExcelFixture.h"
#include "reports/RepoGeppou.h"
#include "reports/RepoGeppouCopy.h"
#include "reports/RepoGeppou_frm.h"
#include "support/RecordingSurface.h"

namespace {

const QString kPen = QStringLiteral("4901000000105");
const QString kPenRed = QStringLiteral("4901000000112");   // the pen's first 11 characters
const QString kNote = QStringLiteral("4902000000208");

class Monthly : public SummaryCompany {
protected:
    void SetUp() override
    {
        SummaryCompany::SetUp();
        sale(10, QDate(2026, 4, 1), 1, {{kPen, "ボールペン", 5, 120}, {kPenRed, "ボールペン赤", 2, 120}, {kPen, "ボールペン", 3, 100}});
        sale(11, QDate(2026, 4, 3), 1, {{kNote, "ノート", 4, 250}}, 5);
        sale(12, QDate(2026, 4, 30), 1, {{kPen, "ボールペン", 1, 120}});
        sale(13, QDate(2026, 5, 1), 1, {{kPen, "ボールペン", 9, 120}});
        // A posted slip cancelled: its negative image waits for the next ledger run.
        sale(-14, QDate(2026, 4, 2), 1, {{kPen, "ボールペン", -5, 120}});
        sale(15, QDate(2026, 4, 5), 2, {{kPen, "ボールペン", 1, 120}});
    }

    static SummaryGrid grid(const GeppouRequest& r)
    {
        RepoGeppou g;
        QString error;
        EXPECT_TRUE(g.load(r, &error)) << qPrintable(error);
        return g.grid();
    }
    // The grid's rows (heads first when asked): code, name, the given days, quantity, price, amount.
    static QStringList rows(const SummaryGrid& g, const QList<int>& days, bool heads = false)
    {
        QStringList out;
        for (int row = heads ? 0 : 1; row < g.rowCount(); ++row) {
            QStringList cells{g.cell(row, 0), g.cell(row, 1)};
            for (int d : days) cells << g.cell(row, 1 + d);
            for (int c = 33; c < 36; ++c) cells << g.cell(row, c).trimmed();
            out << cells.join('|');
        }
        return out;
    }
};

} // namespace

TEST_F(Monthly, OneRowForEachCodeAndPriceWithTheDaysSpread)
{
    // Grouped by the first 11 characters: the red pen joins the pen at 120. Days 1, 3, 30, 31.
    EXPECT_EQ(rows(grid({4, 31, 1, 0, false}), {1, 3, 30, 31}),
              QStringList({"49010000001|ボールペン|3||||3|100|300", "49010000001|ボールペン|7||1||8|120|960",
                           "49020000002|ノート||4|||4|250|1,000", "合計||||||||2,260"}));
    EXPECT_EQ(rows(grid({4, 31, 1, 0, true}), {1, 3, 30, 31}),
              QStringList({"4901000000105|ボールペン|3||||3|100|300", "4901000000105|ボールペン|5||1||6|120|720",
                           "4901000000112|ボールペン赤|2||||2|120|240", "4902000000208|ノート||4|||4|250|1,000",
                           "合計||||||||2,260"}));
}

TEST_F(Monthly, DayColumnsFollowThePeriodFromItsStart)
{
    sale(20, QDate(2027, 2, 28), 1, {{kNote, "ノート", 2, 250}});
    sale(21, QDate(2027, 3, 1), 1, {{kNote, "ノート", 6, 250}});
    sale(22, QDate(2026, 4, 21), 2, {{kNote, "ノート", 1, 250}});
    sale(23, QDate(2026, 5, 20), 2, {{kNote, "ノート", 3, 250}});
    // A 28-day February of the next calendar year: March 1st reads past the period, blank.
    EXPECT_EQ(rows(grid({2, 31, 1, 0, true}), {1, 2, 28, 29, 30, 31}, true).mid(0, 2),
              QStringList({"コード|商 品 名|1|2|28||||数量|単価|金額", "4902000000208|ノート|||2||||2|250|500"}));
    // Closing on the 20th: the period runs from April 21st.
    EXPECT_EQ(rows(grid({5, 20, 2, 0, true}), {1, 2, 28, 29, 30, 31}, true).mid(0, 2),
              QStringList({"コード|商 品 名|21|22|18|19|20||数量|単価|金額", "4902000000208|ノート|1||||3||4|250|1,000"}));
}

TEST_F(Monthly, PeriodsOfAClosingMonth)
{
    const struct {
        int month, sime;
        bool ok;
        QDate from, to;
    } cases[] = {
        {3, 31, true, QDate(2027, 3, 1), QDate(2027, 3, 31)},    // before April: the next calendar year
        {1, 20, true, QDate(2026, 12, 21), QDate(2027, 1, 20)},
        {3, 30, false, {}, {}},   // February has no 31st: no period
        {13, 31, false, {}, {}},
        {4, 0, false, {}, {}},
    };
    for (const auto& c : cases) {
        QDate from, to;
        EXPECT_EQ(RepoGeppou::period(c.month, c.sime, &from, &to), c.ok) << c.month << "/" << c.sime;
        EXPECT_EQ(from, c.from);
        EXPECT_EQ(to, c.to);
    }
    // No period reads no lines.
    EXPECT_EQ(grid({13, 31, 0, 0, false}).rows.size(), 0);
}

TEST_F(Monthly, WhoseLinesCount)
{
    const struct {
        qint64 customer, dest;
        QString total;   // the "合計" row, empty without rows
    } cases[] = {
        {1, 0, "合計||||2,260"},   // the cancelled image stays out
        {0, 0, "合計||||2,380"},   // every customer
        {1, 5, "合計||||1,000"},   // the slips for destination 5 only
        {1, 6, ""},
        {3, 0, ""},                // a customer without sales
    };
    for (const auto& c : cases) {
        const QStringList r = rows(grid({4, 31, c.customer, c.dest, false}), {});
        EXPECT_EQ(r.isEmpty() ? QString() : r.last(), c.total) << c.customer << "/" << c.dest;
    }
    // A day whose lines cancel shows 0, not blank; the row's own sums stay blank.
    sale(30, QDate(2026, 4, 7), 3, {{kNote, "ノート", 2, 250}, {kNote, "ノート", -2, 250, 1}});
    EXPECT_EQ(rows(grid({4, 31, 3, 0, false}), {6, 7}).first(), "49020000002|ノート||0||250|");
}

TEST_F(Monthly, PrintedCopyASheetForEachCustomerWithSales)
{
    const QString days = MonthlyCopy::dayHeader(QDate(2026, 4, 1), QDate(2026, 4, 30));
    EXPECT_EQ(days.left(9), "  1  2  3");
    exec("INSERT INTO TtoD (TorCode, NouCode, EigCode, Getudo, Nendo, KTotal, Zeigaku) VALUES (1, 0, 1, 4, 2026, ?, ?)",
        {yen(2260), yen(226)});
    // Customers 1, 3 and 4 close on the 31st (2 on the 20th); only 1 sold, and by destination
    // only to 5.
    const struct {
        qint64 customer, dest;
        QString addressee;
        int rows;   // product lines on the sheet
    } cases[] = {{0, 0, "東京商事 様 ", 3}, {0, -1, "東京商事 様 北倉庫 分", 1}, {1, 5, "東京商事 様 北倉庫 分", 1}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.addressee.toStdString());
        RecordingOutput out;
        int sheets = 0;
        QString error;
        {
            ScopedPageOutput scope(&out);
            ASSERT_TRUE(MonthlyCopy::printAll({4, 31, c.customer, c.dest, false}, &sheets, &error)) << qPrintable(error);
        }
        EXPECT_EQ(sheets, 1);
        ASSERT_EQ(out.pages(), 1);
        const QStringList page = out.rec.page(1);
        EXPECT_TRUE(page.contains("T 2880,120 販売商品月次控"));
        EXPECT_TRUE(page.contains("T 5600,120 " + c.addressee)) << qPrintable(page.join('\n'));
        const QStringList texts = out.rec.texts();
        // The month from the ledger, whatever the destination.
        EXPECT_TRUE(texts.contains("当月売上　2,260") && texts.contains("消費税額　226") && texts.contains("税込売上額　2,486"));
        EXPECT_TRUE(texts.contains(days));
        EXPECT_EQ(texts.count("金額"), 1);
        EXPECT_FALSE(texts.contains("頁計："));
        EXPECT_EQ(texts.filter(QRegularExpression("^.{93}$")).size(), c.rows);
        if (c.customer == 0 && c.dest == 0) {
            // The pen at 120: 7 on the 1st, 1 on the 30th; 8 for 960, 120 each.
            const int at = int(texts.indexOf(QStringLiteral("  7") + QString(28 * 3, ' ') + QStringLiteral("  1   ")));
            ASSERT_GE(at, 2) << qPrintable(texts.join('|'));
            EXPECT_EQ(texts.mid(at - 2, 6), (QStringList{"49010000001", "ボールペン", texts[at], "     8", "   120", "    960"}));
        }
    }
}

namespace {

class MonthlyForm : public Monthly {
protected:
    QPointer<RepoGeppou_frm> w;
    void SetUp() override
    {
        Monthly::SetUp();
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
    ASSERT_EQ(w->List()->rowCount(), 4);
    EXPECT_EQ(head(2) + "|" + head(31) + "|" + head(32), "1|30|");
    // Two prices of one product, two rows; the 1st and the 30th of April.
    EXPECT_EQ(cell(0, 0) + "|" + cell(0, 2) + "|" + cell(0, 34), "49010000001|3|100");
    EXPECT_EQ(cell(1, 2) + "|" + cell(1, 31) + "|" + cell(1, 33), "7|1|8");
    EXPECT_EQ(cell(3, 0) + "|" + cell(3, 35), "合計|2,260");

    // Destination 5 alone; then a customer without sales.
    press(Qt::Key_Up);
    enter("5");
    EXPECT_EQ(w->sNouNamae()->text(), "北倉庫");
    enter("0");
    ASSERT_EQ(w->List()->rowCount(), 2);
    EXPECT_EQ(cell(0, 35), "1,000");
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
    sale(3, QDate(2026, 4, 20), 3, {{kNote, "ノート", 4, 250}});
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
    EXPECT_EQ(sheet.cell("C1") + "|" + sheet.cell("C2") + "|" + sheet.cell("A5") + "|" + sheet.cell("AJ5"), "1|3|合計|3380");

    // A month nobody sold in: no sheet, and nothing said.
    for (int i = 0; i < 4; ++i) press(Qt::Key_Up);
    ASSERT_EQ(focused(), w->ebox()[0]);
    typeText("6");
    press(Qt::Key_F9);
    EXPECT_EQ(outputs.pages, 2);
    EXPECT_TRUE(dlg.of("Tell").isEmpty()) << qPrintable(dlg.log.join('|'));
}
