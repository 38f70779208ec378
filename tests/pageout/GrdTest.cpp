#include <gtest/gtest.h>
#include <QDate>
#include <QFont>
#include <QTableWidget>
#include "entry/Convert.h"
#include "pageout/Grd.h"
#include "pageout/PageFixture.h"
#include "pageout/QtGrd.h"
#include "pageout/ReportForm.h"
#include "pageout/ReportRows.h"

namespace {

// The recording surface's rule: at size p a half-width character is p*10 twips, others p*20.
double measure(const QString&, double points, const QString& text)
{
    double w = 0;
    for (QChar c : text) w += c.unicode() < 0x80 ? points * 10 : points * 20;
    return w;
}

// The product summary: code without zeros, name, quantity, unit price, amount.
struct Summary : ReportForm {
    ReportRows* rows = nullptr;
    int alphaCalls = 0;
    QVariant alpha(short& n) override
    {
        ++alphaCalls;
        if (n == 0) {
            QString code = rows->value(QStringLiteral("HinCode")).toString();
            return ZeroStrip(code);
        }
        const Money gaku = variantMoney(rows->value(QStringLiteral("tUGaku")));
        const qint64 suu = rows->value(QStringLiteral("tSuu")).toLongLong();
        return suu == 0 ? 0.0 : gaku / double(suu);
    }
    QVariant SumOP(int index) override { return index * 1000; }
};

QList<GrdColumn> summaryColumns()
{
    return {grdColumn("コード", "@0", "S", "13"), grdColumn("名称", "aHinNamae", "S", "30"), grdColumn("数量", "tSuu", "N", "#,###,###", 1),
            grdColumn("単価", "@1", "N", "#,###,##0.0"), grdColumn("金額", "tUGaku", "N", "#,###,###", 1)};
}

// Products 1 to n: the code in 13 digits, 商品n, a quantity of n and 1000 x n yen, so a unit
// price of 1000; in memory unless other cells are given.
struct SummaryGrid {
    MemoryGridCells memory{measure};
    GridCells& cells;
    Grd grd;
    Summary form;
    std::unique_ptr<ReportRows> rows;

    explicit SummaryGrid(int products, const QList<GrdColumn>& columns = summaryColumns(), GridCells* on = nullptr)
        : cells(on ? *on : memory), grd(&cells)
    {
        QList<QVariantList> data;
        for (int i = 1; i <= products; ++i)
            data << QVariantList{QStringLiteral("%1").arg(i, 13, 10, QLatin1Char('0')), QStringLiteral("商品%1").arg(i), i,
                                 moneyVariant(Money::fromYen(1000 * i))};
        rows = listRows({"HinCode", "aHinNamae", "tSuu", "tUGaku"}, data);
        form.rows = rows.get();
        grd.GrdInit(short(columns.size()));
        for (const GrdColumn& c : columns) grd.GrdAddColumn(c);
        grd.GrdSetHeaders();
    }
    bool fill() { return grd.GrdFill(rows.get(), &form); }
};

TEST(Grd, FortyRowsAndTheirTotalOnPaper15MakeTwoPages)
{
    PageRun run;
    VtmlSetToday(QDate(2026, 5, 3));
    SummaryGrid g(40);
    ASSERT_TRUE(g.fill());
    EXPECT_EQ(g.cells.rows(), 42);
    EXPECT_EQ(g.cells.text(41, 0), "合計");
    EXPECT_EQ(g.cells.text(41, 2), "      820");
    EXPECT_EQ(g.cells.text(41, 4), "  820,000");
    EXPECT_EQ(g.cells.text(3, 3), "    1,000.0");

    g.grd.paper = QStringLiteral("15");
    ScopedPageOutput scope(&run.out);
    ASSERT_TRUE(g.grd.GrdPrint(QStringLiteral("商品別売上集計"), QStringLiteral("2026/04/01より2026/04/30まで"), 0));
    ASSERT_EQ(run.rec().ended, 2);
    const QStringList p1 = run.rec().page(1);
    // Columns from x 240 behind the 720 offset: 960, 2380, 5500, 6520, 7740; 35 rows a page.
    for (const char* e : {"T 7920,120 商品別売上集計", "T 13720,240 日付2026/05/03", "T 13720,480 ページ 1", "T 960,1440 コード",
                          "T 960,1680 1", "T 6520,1680     1,000.0", "T 960,13380 40", "T 7740,13380    40,000"})
        EXPECT_TRUE(p1.contains(QString::fromUtf8(e))) << e;
    // A PDF has no paper of its own: the paper's page comes last, after the text.
    EXPECT_EQ(p1.last(), "AREA 16800,14640");
    const QStringList p2 = run.rec().page(2);
    for (const char* e : {"T 13720,480 ページ 2", "T 960,1680 合計", "T 5500,1680       820", "T 7740,1680   820,000"})
        EXPECT_TRUE(p2.contains(QString::fromUtf8(e))) << e;
}

// The paper's page on a PDF is the forty rows' test, in the preview the preview's test.
TEST(Grd, ThePapersPageIsAddedForThePreviewAndAPdfButNotForAPrinter)
{
    struct Case {
        QString paper;
        bool preview, ownPaper;
        int pages;
        QString area;
    } cases[] = {
        {"B4y", false, true, 2, ""},
        {"B5y", false, false, 2, "AREA 14640,10560"},
        {"X9", false, false, 1, ""},   // an unknown paper: every row on one page
    };
    for (const Case& c : cases) {
        PageRun run;
        session().PreviewMode = c.preview;
        run.rec().ownPaper = c.ownPaper;
        SummaryGrid g(36);   // 37 rows with the total: more than the 35 or 27 of a page
        ASSERT_TRUE(g.fill());
        g.grd.paper = c.paper;
        ScopedPageOutput scope(&run.out);
        EXPECT_TRUE(g.grd.GrdPrint("t", "s", 0));
        EXPECT_EQ(run.rec().ended, c.pages) << c.paper.toStdString();
        EXPECT_EQ(run.rec().only("AREA"), c.area.isEmpty() ? QStringList() : QStringList(QList<QString>(c.pages, c.area)))
            << c.paper.toStdString();
        session().PreviewMode = false;
    }
}

TEST(Grd, ComputedTotalsAskAlphaTwiceAndSumOpFillsTheLastRow)
{
    GrdColumn op = grdColumn("率", "tSuu", "N", "##,##0");
    op.SumOp = 1;
    SummaryGrid g(2, {grdColumn("コード", "HinCode", "S", "5"), grdColumn("単価", "@1", "N", "###,##0.00", 1), op});
    ASSERT_TRUE(g.fill());
    EXPECT_EQ(g.form.alphaCalls, 4);
    EXPECT_EQ(g.grd.sum(1), Money::fromYen(2000));
    EXPECT_EQ(g.cells.text(3, 1), "  2,000.00");
    EXPECT_EQ(g.cells.text(3, 2), " 2,000");
}

TEST(Grd, AGridWithOnlyItsHeadingIsAMessageAndNoPage)
{
    PageRun run;
    SummaryGrid g(0, {grdColumn("コード", "HinCode", "S", "5"), grdColumn("名称", "aHinNamae", "S", "30")});
    ASSERT_TRUE(g.fill());
    EXPECT_EQ(g.cells.rows(), 1);   // nothing summed: no total row either
    ScopedPageOutput scope(&run.out);
    EXPECT_FALSE(g.grd.GrdPrint("t", "s", 0));
    EXPECT_EQ(run.told(), QStringList{"エラー：印刷する行がありません。"});
    EXPECT_TRUE(run.rec().log.isEmpty());
}

// A fill that stops part way leaves no half list to print or export: the heading only, and
// the sums of no row.
TEST(Grd, AFillThatStopsLeavesTheHeadingOnly)
{
    struct Case {
        const char* what;
        int readable;
        QString missing;   // a column the rows do not have
        QString message;
    } cases[] = {
        {"the store fails on the fourth row", 3, "", "エラー：11 データベースのファイルが壊れています。"},
        {"a column not in the rows", 10, "Tanka", "エラー：3265 項目「Tanka」が一覧のデータにありません。"},
    };
    for (const Case& c : cases) {
        PageRun run;
        SummaryGrid g(10);
        if (!c.missing.isEmpty()) {
            g.grd.GrdAddColumn(grdColumn("単価", c.missing.toUtf8().constData(), "N", "#,##0"));
            g.grd.GrdSetHeaders();
        }
        FailingRows rows(std::move(g.rows), c.readable);
        g.form.rows = &rows;
        EXPECT_FALSE(g.grd.GrdFill(&rows, &g.form)) << c.what;
        EXPECT_EQ(run.told(), QStringList{c.message}) << c.what;
        EXPECT_EQ(g.cells.rows(), 1) << c.what;
        EXPECT_EQ(g.cells.text(0, 1), "名称") << c.what;
        EXPECT_EQ(g.grd.sum(4), Money()) << c.what;
        ScopedPageOutput scope(&run.out);
        EXPECT_FALSE(g.grd.GrdPrint("t", "s", 0)) << c.what;
        EXPECT_EQ(run.rec().ended, 0) << c.what;
    }
}

// On a screen's table row zero is the heading, and the columns are as wide as the paper's:
// measured in the forms' fixed-pitch Gothic, where a blank and a digit are half an em,
// whatever the screen substitutes for the name (the program maps it to a proportional Gothic
// for its screens).
TEST(Grd, AScreenTableHasTheHeadingAboveAndColumnsMeasuredInThePapersFont)
{
    QTableWidget table;
    QtGridCells cells(&table);
    QFont::insertSubstitution(QStringLiteral("ＭＳ ゴシック"), QStringLiteral("IPAexGothic"));
    SummaryGrid g(1, {grdColumn("コード", "@0", "S", "13"), grdColumn("名称", "aHinNamae", "S", "30"), grdColumn("金額", "tUGaku", "N", "#,###,##0", 1)},
                  &cells);
    QFont::removeSubstitutions(QStringLiteral("ＭＳ ゴシック"));
    ASSERT_TRUE(g.fill());
    EXPECT_EQ(table.horizontalHeaderItem(0)->text(), "コード");
    ASSERT_EQ(table.rowCount(), 2);
    EXPECT_EQ(table.item(0, 0)->text(), "1");
    EXPECT_EQ(table.item(1, 0)->text(), "合計");
    EXPECT_EQ(table.item(1, 2)->text(), "    1,000");
    EXPECT_TRUE(table.item(0, 2)->textAlignment() & Qt::AlignRight);
    // At 10 points: 30 blanks of 100 twips, 9 characters of 100, and the gap of 120.
    EXPECT_NEAR(cells.columnWidth(1), 3120, 15);
    EXPECT_NEAR(cells.columnWidth(2), 1020, 15);
}

}  // namespace
