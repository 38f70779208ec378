#include "ProductsFixture.h"
#include "reports/RepoGeppou.h"
#include "reports/RepoGeppouCopy.h"
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

    static RepoGeppou load(const GeppouRequest& r)
    {
        RepoGeppou g;
        QString error;
        EXPECT_TRUE(g.load(r, &error)) << qPrintable(error);
        return g;
    }
};

// Cells of a grid row: code, name, the given days (1-based columns), quantity, price, amount.
QStringList pick(const SummaryGrid& g, int row, const QList<int>& days)
{
    QStringList out{g.cell(row, 0), g.cell(row, 1)};
    for (int d : days) out << g.cell(row, 1 + d);
    for (int c = 33; c < 36; ++c) out << g.cell(row, c).trimmed();
    return out;
}

} // namespace

TEST_F(Monthly, OneRowForEachCodeAndPriceWithTheDaysSpread)
{
    struct Case {
        bool split;
        QList<QStringList> rows;   // code, name, days 1, 3, 30, 31, quantity, price, amount
    };
    const QList<Case> cases = {
        // Grouped by the first 11 characters: the red pen joins the pen at 120.
        {false,
         {{"49010000001", "ボールペン", "3", "", "", "", "3", "100", "300"},
          {"49010000001", "ボールペン", "7", "", "1", "", "8", "120", "960"},
          {"49020000002", "ノート", "", "4", "", "", "4", "250", "1,000"}}},
        {true,
         {{"4901000000105", "ボールペン", "3", "", "", "", "3", "100", "300"},
          {"4901000000105", "ボールペン", "5", "", "1", "", "6", "120", "720"},
          {"4901000000112", "ボールペン赤", "2", "", "", "", "2", "120", "240"},
          {"4902000000208", "ノート", "", "4", "", "", "4", "250", "1,000"}}},
    };
    for (const Case& c : cases) {
        const RepoGeppou g = load({4, 31, 1, 0, c.split});
        const SummaryGrid grid = g.grid();
        ASSERT_EQ(grid.rows.size(), c.rows.size() + 1) << c.split;
        for (int i = 0; i < c.rows.size(); ++i) EXPECT_EQ(pick(grid, i + 1, {1, 3, 30, 31}), c.rows[i]) << c.split << i;
        const int last = int(grid.rows.size());
        EXPECT_EQ(grid.cell(last, 0), "合計");
        EXPECT_EQ(grid.cell(last, 35).trimmed(), "2,260");
        EXPECT_EQ(grid.cell(last, 33), "");
    }
}

TEST_F(Monthly, DayColumnsFollowThePeriodFromItsStart)
{
    sale(20, QDate(2027, 2, 28), 1, {{kNote, "ノート", 2, 250}});
    sale(21, QDate(2027, 3, 1), 1, {{kNote, "ノート", 6, 250}});
    sale(22, QDate(2026, 4, 21), 2, {{kNote, "ノート", 1, 250}});
    sale(23, QDate(2026, 5, 20), 2, {{kNote, "ノート", 3, 250}});
    struct Case {
        int month, sime;
        qint64 customer;
        QDate from, to;
        QStringList heads;   // captions of day columns 1, 2, 28, 29, 30, 31
        QStringList cells;   // the note's day columns 1, 2, 28, 29, 30, 31
    };
    const QList<Case> cases = {
        // A 28-day February of the next calendar year: March 1st reads past the period, blank.
        {2, 31, 1, QDate(2027, 2, 1), QDate(2027, 2, 28), {"1", "2", "28", "", "", ""}, {"", "", "2", "", "", ""}},
        // Closing on the 20th: the period runs from April 21st.
        {5, 20, 2, QDate(2026, 4, 21), QDate(2026, 5, 20), {"21", "22", "18", "19", "20", ""}, {"1", "", "", "", "3", ""}},
    };
    for (const Case& c : cases) {
        const RepoGeppou g = load({c.month, c.sime, c.customer, 0, true});
        EXPECT_EQ(g.from(), c.from);
        EXPECT_EQ(g.to(), c.to);
        const SummaryGrid grid = g.grid();
        QStringList heads, cells;
        for (int d : {1, 2, 28, 29, 30, 31}) {
            heads << grid.cell(0, 1 + d);
            cells << grid.cell(grid.rowCount() - 2, 1 + d);
        }
        EXPECT_EQ(heads, c.heads) << c.month;
        EXPECT_EQ(cells, c.cells) << c.month;
    }
}

TEST_F(Monthly, WhoseLinesCount)
{
    struct Case {
        qint64 customer, dest;
        int rows;          // without "合計"
        QString amount;    // the total
    };
    const QList<Case> cases = {
        {1, 0, 3, "2,260"},   // the cancelled image stays out
        {0, 0, 3, "2,380"},   // every customer
        {1, 5, 1, "1,000"},   // the slips for destination 5 only
        {1, 6, 0, ""},
        {3, 0, 0, ""},        // a customer without sales
    };
    for (const Case& c : cases) {
        const SummaryGrid grid = load({4, 31, c.customer, c.dest, false}).grid();
        EXPECT_EQ(grid.rows.size(), c.rows ? c.rows + 1 : 0) << c.customer << "/" << c.dest;
        if (c.rows) {
            EXPECT_EQ(grid.rows.last().last().trimmed(), c.amount);
        }
    }
}

TEST_F(Monthly, ADayWhoseLinesCancelShowsZeroNotBlank)
{
    sale(30, QDate(2026, 4, 7), 3, {{kNote, "ノート", 2, 250}, {kNote, "ノート", -2, 250, 1}});
    const SummaryGrid grid = load({4, 31, 3, 0, false}).grid();
    ASSERT_EQ(grid.rows.size(), 2);
    EXPECT_EQ(grid.cell(1, 1 + 7), "0");
    EXPECT_EQ(grid.cell(1, 1 + 6), "");
}

TEST_F(Monthly, PeriodsOfAClosingMonth)
{
    struct Case {
        int month, sime;
        bool ok;
        QDate from, to;
    };
    const QList<Case> cases = {
        {4, 31, true, QDate(2026, 4, 1), QDate(2026, 4, 30)},
        {3, 31, true, QDate(2027, 3, 1), QDate(2027, 3, 31)},    // before April: the next calendar year
        {1, 20, true, QDate(2026, 12, 21), QDate(2027, 1, 20)},
        {3, 30, false, {}, {}},   // February has no 31st: no period
        {13, 31, false, {}, {}},
        {4, 0, false, {}, {}},
    };
    for (const Case& c : cases) {
        QDate from, to;
        EXPECT_EQ(RepoGeppou::period(c.month, c.sime, &from, &to), c.ok) << c.month << "/" << c.sime;
        EXPECT_EQ(from, c.from);
        EXPECT_EQ(to, c.to);
    }
    // No period reads no lines.
    EXPECT_TRUE(load({13, 31, 0, 0, false}).rows().isEmpty());
}

TEST_F(Monthly, SheetsOfAPrintForAllCustomers)
{
    using Sheets = QList<QPair<qint64, qint64>>;
    struct Case {
        GeppouRequest r;
        Sheets sheets;
    };
    const QList<Case> cases = {
        {{4, 31, 2, 0, false}, {{2, 0}}},
        {{4, 31, 1, 5, false}, {{1, 5}}},
        {{4, 31, 0, 0, false}, {{1, 0}, {3, 0}, {4, 0}}},        // those closing on the 31st
        {{4, 31, 0, -1, false}, {{1, 5}, {1, 6}, {3, 0}, {4, 0}}},   // by destination, where there are any
        {{4, 20, 0, 0, false}, {{2, 0}}},
        {{4, 15, 0, 0, false}, {}},
    };
    for (const Case& c : cases) {
        QString error;
        EXPECT_EQ(RepoGeppou::sheets(c.r, &error), c.sheets) << c.r.customer << "/" << c.r.dest << "/" << c.r.sime;
        EXPECT_TRUE(error.isEmpty());
    }
}

TEST_F(Monthly, PrintedCopyASheetForEachCustomerWithSales)
{
    run("INSERT INTO TtoD (TorCode, NouCode, EigCode, Getudo, Nendo, KTotal, Zeigaku) VALUES (1, 0, 1, 4, 2026, ?, ?)",
        {yenOf(2260), yenOf(226)});
    struct Case {
        qint64 dest;
        QString addressee;
        int rows;   // product lines on the sheet
    };
    // Customers 1, 3 and 4 close on the 31st; only 1 sold, and by destination only to 5.
    const QList<Case> cases = {{0, "東京商事 様 ", 3}, {-1, "東京商事 様 北倉庫 分", 1}};
    for (const Case& c : cases) {
        RecordingOutput out;
        int sheets = 0;
        QString error;
        {
            ScopedPageOutput scope(&out);
            ASSERT_TRUE(MonthlyCopy::printAll({4, 31, 0, c.dest, false}, &sheets, &error)) << qPrintable(error);
        }
        EXPECT_EQ(sheets, 1);
        ASSERT_EQ(out.pages(), 1);
        const QStringList page = out.rec.page(1);
        EXPECT_TRUE(page.contains("T 2880,120 販売商品月次控"));
        EXPECT_TRUE(page.contains("T 5600,120 " + c.addressee)) << qPrintable(page.join('\n'));
        const QStringList texts = out.rec.texts();
        // The month from the ledger, whatever the destination.
        EXPECT_TRUE(texts.contains("当月売上　2,260"));
        EXPECT_TRUE(texts.contains("消費税額　226"));
        EXPECT_TRUE(texts.contains("税込売上額　2,486"));
        // The day heads over April's 30 days, three characters a day.
        EXPECT_TRUE(texts.contains(MonthlyCopy::dayHeader(QDate(2026, 4, 1), QDate(2026, 4, 30))));
        EXPECT_EQ(MonthlyCopy::dayHeader(QDate(2026, 4, 1), QDate(2026, 4, 30)).left(9), "  1  2  3");
        EXPECT_EQ(texts.count("金額"), 1);
        EXPECT_FALSE(texts.contains("頁計："));
        int lines = 0;
        for (const QString& t : texts) lines += t.size() == 93 ? 1 : 0;
        EXPECT_EQ(lines, c.rows);
    }
}

TEST_F(Monthly, PrintedLineOfAProductAtOnePrice)
{
    RecordingOutput out;
    bool printed = false;
    QString error;
    {
        ScopedPageOutput scope(&out);
        MonthlyCopy copy;
        ASSERT_TRUE(copy.PrintMonthlyCopy({4, 31, 0, 0, false}, 1, 0, &printed, &error));
    }
    ASSERT_TRUE(printed);
    const QStringList texts = out.rec.texts();
    // The pen at 120: 7 on the 1st, 1 on the 30th; 8 for 960, 120 each.
    const int at = int(texts.indexOf(QStringLiteral("  7") + QString(28 * 3, ' ') + QStringLiteral("  1   ")));
    ASSERT_GE(at, 2) << qPrintable(texts.join('|'));
    EXPECT_EQ(texts.mid(at - 2, 6), (QStringList{"49010000001", "ボールペン", texts[at], "     8", "   120", "    960"}));
    // No ledger row: no sales line at the top. No sales: no sheet.
    EXPECT_FALSE(texts.join('|').contains("当月売上"));
    RecordingOutput none;
    {
        ScopedPageOutput scope(&none);
        MonthlyCopy copy;
        ASSERT_TRUE(copy.PrintMonthlyCopy({4, 31, 0, 0, false}, 3, 0, &printed, &error));
    }
    EXPECT_FALSE(printed);
    EXPECT_EQ(none.pages(), 0);
}
