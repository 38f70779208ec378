#include "ProductsFixture.h"
#include <QFile>
#include "pageout/ExcelFixture.h"
#include "pageout/Grd.h"
#include "pageout/PrintRegistry.h"
#include "pageout/Vtml.h"
#include "reports/QtSummaryPrints.h"
#include "support/RecordingSurface.h"
#include "reports/RepoNippou.h"

namespace {

QStringList trimmed(const QStringList& cells)
{
    QStringList out;
    for (const QString& c : cells) out << c.trimmed();
    return out;
}

// The grid filled in memory, as the print command fills it: rows 1.. as text rows.
QList<QStringList> gridRows(RepoNippou& r)
{
    MemoryGridCells cells([](const QString&, double points, const QString& t) { return points * 10 * t.size(); });
    Grd grd(&cells);
    RepoNippou::setUp(grd);
    EXPECT_TRUE(r.fill(grd));
    QList<QStringList> rows;
    for (int i = 1; i < cells.rows(); ++i) {
        QStringList row;
        for (int c = 0; c < cells.cols(); ++c) row << cells.text(i, c);
        rows << row;
    }
    return rows;
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
        const QList<QStringList> rows = gridRows(r);
        ASSERT_EQ(rows.size(), c.rows.size()) << c.mode << c.partner;
        for (int i = 0; i < c.rows.size(); ++i) EXPECT_EQ(trimmed(rows[i]), c.rows[i]) << c.mode << c.partner << " row " << i;
    }
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
        EXPECT_EQ(r.count(), c.rows) << qPrintable(c.from.toString() + " " + c.to.toString());
    }
}

TEST_F(Products, ReadsEveryLineOfTheRangeACancelledImageToo)
{
    // Slip 1 amended after a ledger run to 4 pens: until the next run its negative image
    // stands beside the new lines, and this summary, unlike the monthly copy and the cut-off
    // list, sums them all.
    cancelPosted("Dur", "Dud", 1);
    sale(1, QDate(2026, 4, 1), 1, {{QStringLiteral("0000000001001"), "ボールペン", 4, 120}});
    RepoNippou r(QStringLiteral("Uri"));
    ASSERT_TRUE(r.load(QDate(2026, 4, 1), QDate(2026, 4, 30), 1, nullptr));
    const QList<QStringList> rows = gridRows(r);
    const QList<QStringList> expected = {{"1001", "ボールペン", "-6", "120.0", "-720"},
                                         {"1002", "ノート", "-4", "250.0", "-1,000"},
                                         {"1005", "消しゴム", "-4", "80.0", "-320"},
                                         {"合計", "", "-14", "", "-2,040"}};
    ASSERT_EQ(rows.size(), expected.size());
    for (int i = 0; i < rows.size(); ++i) EXPECT_EQ(trimmed(rows[i]), expected[i]) << i;
}

TEST_F(Products, PrintedOnFanfoldPaperWithTitleAndPeriod)
{
    VtmlSetToday(QDate(2026, 5, 1));
    RepoNippou r(QStringLiteral("Uri"));
    ASSERT_TRUE(r.load(QDate(2026, 4, 1), QDate(2026, 4, 30), 0, nullptr));
    MemoryGridCells cells([](const QString&, double points, const QString& t) { return points * 10 * t.size(); });
    Grd grd(&cells);
    RepoNippou::setUp(grd);
    ASSERT_TRUE(r.fill(grd));
    RecordingOutput out;
    {
        ScopedPageOutput scope(&out);
        ASSERT_TRUE(r.print(grd));
    }
    VtmlSetToday({});
    ASSERT_EQ(out.pages(), 1);
    const QStringList page = out.rec.page(1);
    // Paper "15": the title at 7200, the date at 13000, all moved right by the offset of 720.
    EXPECT_TRUE(page.contains("T 7920,120 商品別売上集計")) << qPrintable(page.join('\n'));
    EXPECT_TRUE(page.contains("T 3120,720 2026/04/01より2026/04/30まで"));
    EXPECT_TRUE(page.contains("T 13720,240 日付2026/05/01"));
    EXPECT_TRUE(page.contains("T 960,1440 コード"));
    EXPECT_TRUE(page.contains("T 960,1680 1001"));
    EXPECT_TRUE(page.contains("T 960,2880 合計"));
    EXPECT_EQ(page.last(), "AREA 16800,14640");
}

TEST_F(Products, PrintCommandWritesTheGridToASpreadsheet)
{
    PrintRequest req;
    req.options = {{"mode", "Uri"}, {"from", "20260401"}, {"to", "20260430"}, {"partner", "1"}};
    req.xlsx = co.file("products.xlsx");
    QString error;
    ASSERT_TRUE(printProducts(req, &error)) << qPrintable(error);
    SheetXml sheet(req.xlsx);
    ASSERT_TRUE(sheet.ok);
    EXPECT_EQ(sheet.cell("A1"), "コード");
    EXPECT_EQ(sheet.cell("A2"), "1001");
    EXPECT_EQ(sheet.cell("B2"), "ボールペン");
    EXPECT_EQ(sheet.cell("C2"), "10");
    EXPECT_EQ(sheet.cell("E2"), "1200");
    EXPECT_EQ(sheet.cell("A5"), "合計");
    EXPECT_EQ(sheet.cell("E5"), "1700");
    EXPECT_FALSE(sheet.has("A6"));

    // What a script gets wrong is said and writes nothing.
    struct Bad {
        QMap<QString, QString> options;
        QString error;
    };
    const QList<Bad> bad = {
        {{{"mode", "Uri"}, {"from", "20260431"}, {"to", "20260430"}}, "--from は YYYYMMDD の日付で指定してください。"},
        {{{"mode", "uri"}, {"from", "20260401"}, {"to", "20260430"}}, "--mode は Uri|Kai のどれかです。"},
        {{{"mode", "Uri"}, {"from", "20260401"}, {"to", "20260430"}, {"partner", "x"}}, "--partner は数字で指定してください。"},
        {{{"mode", "Uri"}, {"from", "20260430"}, {"to", "20260401"}}, "対象がありません。"},
    };
    for (const Bad& b : bad) {
        PrintRequest r;
        r.options = b.options;
        r.xlsx = co.file("bad.xlsx");
        EXPECT_FALSE(printProducts(r, &error));
        EXPECT_EQ(error, b.error);
        EXPECT_FALSE(QFile::exists(r.xlsx));
    }
}
