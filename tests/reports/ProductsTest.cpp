#include "ProductsFixture.h"
#include "reports/RepoNippou.h"

namespace {

QStringList trimmed(const QStringList& cells)
{
    QStringList out;
    for (const QString& c : cells) out << c.trimmed();
    return out;
}

class Products : public SummaryCompany {
protected:
    void SetUp() override
    {
        SummaryCompany::SetUp();
        const QString pen = QStringLiteral("0000000001001"), note = QStringLiteral("0000000001002"),
                      eraser = QStringLiteral("0000000001005");
        // April: the pen at two prices and under two names, a returned note, an eraser sold and
        // taken back, and a code with letters.
        sale(1, QDate(2026, 4, 1), 1, {{pen, "ボールペン", 10, 120}, {note, "ノート", 3, 250}, {eraser, "消しゴム", 2, 80}});
        sale(2, QDate(2026, 4, 15), 2, {{pen, "ボールペン黒", 5, 100}, {"AB-100", "特注品", 1, 5000}});
        sale(3, QDate(2026, 4, 30), 1, {{note, "ノート", -1, 250, 1}, {eraser, "消しゴム", -2, 80, 1}});
        // Just outside the range on both sides.
        sale(4, QDate(2026, 5, 1), 1, {{pen, "ボールペン", 100, 120}});
        sale(5, QDate(2026, 3, 31), 1, {{pen, "ボールペン", 100, 120}});
        purchase(1, QDate(2026, 4, 10), 1, {{pen, "ボールペン", 50, 60}});
        purchase(2, QDate(2026, 4, 11), 7, {{pen, "ボールペン", 20, 65}, {note, "ノート", 10, 150}});
    }
};

} // namespace

TEST_F(Products, SumsTheRangeByProductWithMeanPriceAndTotal)
{
    struct Case {
        const char* mode;
        qint64 partner;
        QList<QStringList> rows;   // trimmed cells, "合計" row last
    };
    const QList<Case> cases = {
        {"Uri", 0,
         {{"1001", "ボールペン", "15", "113.3", "1,700"},
          {"1002", "ノート", "2", "250.0", "500"},
          {"1005", "消しゴム", "", "0.0", ""},
          {"AB-100", "特注品", "1", "5,000.0", "5,000"},
          {"合計", "", "18", "", "7,200"}}},
        {"Uri", 1,
         {{"1001", "ボールペン", "10", "120.0", "1,200"},
          {"1002", "ノート", "2", "250.0", "500"},
          {"1005", "消しゴム", "", "0.0", ""},
          {"合計", "", "12", "", "1,700"}}},
        {"Kai", 0,
         {{"1001", "ボールペン", "70", "61.4", "4,300"},
          {"1002", "ノート", "10", "150.0", "1,500"},
          {"合計", "", "80", "", "5,800"}}},
        {"Kai", 7, {{"1001", "ボールペン", "20", "65.0", "1,300"}, {"1002", "ノート", "10", "150.0", "1,500"}, {"合計", "", "30", "", "2,800"}}},
    };
    for (const Case& c : cases) {
        RepoNippou r(QString::fromLatin1(c.mode));
        QString error;
        ASSERT_TRUE(r.load(QDate(2026, 4, 1), QDate(2026, 4, 30), c.partner, &error)) << qPrintable(error);
        const SummaryGrid g = r.grid();
        ASSERT_EQ(g.rows.size(), c.rows.size()) << c.mode << c.partner;
        for (int i = 0; i < c.rows.size(); ++i) EXPECT_EQ(trimmed(g.rows[i]), c.rows[i]) << c.mode << c.partner << " row " << i;
    }
}

TEST_F(Products, GridCellsStandAtTheWidthOfTheirPicture)
{
    RepoNippou r(QStringLiteral("Uri"));
    ASSERT_TRUE(r.load(QDate(2026, 4, 1), QDate(2026, 4, 30), 0, nullptr));
    const SummaryGrid g = r.grid();
    EXPECT_EQ(g.cell(0, 0), "コード");
    EXPECT_EQ(g.cell(0, 4), "金額");
    EXPECT_EQ(g.cell(1, 2), "       15");      // "#,###,###"
    EXPECT_EQ(g.cell(1, 3), "      113.3");    // "#,###,##0.0"
    EXPECT_EQ(g.cell(1, 4), "    1,700");
    EXPECT_FALSE(g.rightAligned(1));
    EXPECT_TRUE(g.rightAligned(3));
}

TEST_F(Products, ADayRangeAndItsBoundaries)
{
    struct Case {
        QDate from, to;
        int rows;   // product rows, without "合計"
    };
    const QList<Case> cases = {
        {QDate(2026, 4, 30), QDate(2026, 4, 30), 2},   // the last day alone: the returns
        {QDate(2026, 5, 1), QDate(2026, 5, 1), 1},
        {QDate(2026, 3, 31), QDate(2026, 5, 1), 4},
        {QDate(2026, 4, 2), QDate(2026, 4, 14), 0},
        {QDate(2026, 4, 30), QDate(2026, 4, 1), 0},    // start after the end
    };
    for (const Case& c : cases) {
        RepoNippou r(QStringLiteral("Uri"));
        ASSERT_TRUE(r.load(c.from, c.to, 0, nullptr));
        EXPECT_EQ(r.rows().size(), c.rows) << qPrintable(c.from.toString() + " " + c.to.toString());
        // The "合計" row closes even an empty grid.
        EXPECT_EQ(r.grid().rows.size(), c.rows + 1);
    }
}

TEST_F(Products, PeriodAndModeTexts)
{
    RepoNippou uri(QStringLiteral("Uri")), kai(QStringLiteral("Kai"));
    EXPECT_EQ(uri.title(), "商品別売上集計");
    EXPECT_EQ(uri.partnerLabel(), "得意先");
    EXPECT_EQ(kai.title(), "商品別仕入集計");
    EXPECT_EQ(kai.partnerLabel(), "仕入先");
    ASSERT_TRUE(uri.load(QDate(2026, 4, 1), QDate(2026, 4, 30), 0, nullptr));
    EXPECT_EQ(uri.period(), "2026/04/01より2026/04/30まで");
}
