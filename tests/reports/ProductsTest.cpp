#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include "ProductsFixture.h"
#include "entry/Dates.h"
#include "entry/FormDriver.h"
#include "pageout/ExcelFixture.h"
#include "pageout/Grd.h"
#include "pageout/PrintRegistry.h"
#include "pageout/Vtml.h"
#include "reports/QtSummaryPrints.h"
#include "reports/RepoNippou.h"
#include "reports/RepoNippou_frm.h"
#include "support/RecordingSurface.h"

namespace {

const QString pen = QStringLiteral("0000000001001"), note = QStringLiteral("0000000001002");

double measured(const QString&, double points, const QString& t) { return points * 10 * t.size(); }

class Products : public SummaryCompany {
protected:
    void SetUp() override
    {
        SummaryCompany::SetUp();
        const QString eraser = QStringLiteral("0000000001005");
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
    // April's grid as the print command fills it, each row its trimmed cells joined by "|"; its
    // print drawn on `out` when given.
    QStringList april(const char* mode, qint64 partner, RecordingOutput* out = nullptr)
    {
        RepoNippou r(QString::fromLatin1(mode));
        QString error;
        EXPECT_TRUE(r.load(QDate(2026, 4, 1), QDate(2026, 4, 30), partner, &error)) << qPrintable(error);
        MemoryGridCells cells(measured);
        Grd grd(&cells);
        RepoNippou::setUp(grd);
        EXPECT_TRUE(r.fill(grd));
        if (out) {
            ScopedPageOutput scope(out);
            EXPECT_TRUE(r.print(grd));
        }
        QStringList rows;
        for (int i = 1; i < cells.rows(); ++i) {
            QStringList row;
            for (int c = 0; c < cells.cols(); ++c) row << cells.text(i, c).trimmed();
            rows << row.join('|');
        }
        return rows;
    }
};

} // namespace

TEST_F(Products, SumsTheRangeByProductWithMeanPriceAndTotal)
{
    EXPECT_EQ(april("Uri", 0), QStringList({"1001|ボールペン|15|113.3|1,700", "1002|ノート|2|250.0|500", "1005|消しゴム||0.0|",
                                            "AB-100|特注品|1|5,000.0|5,000", "合計||18||7,200"}));
    EXPECT_EQ(april("Uri", 1), QStringList({"1001|ボールペン|10|120.0|1,200", "1002|ノート|2|250.0|500", "1005|消しゴム||0.0|",
                                            "合計||12||1,700"}));
    EXPECT_EQ(april("Kai", 0), QStringList({"1001|ボールペン|70|61.4|4,300", "1002|ノート|10|150.0|1,500", "合計||80||5,800"}));
}

TEST_F(Products, ADayRangeAndItsBoundaries)
{
    const struct {
        QDate from, to;
        int rows;   // product rows, without "合計"
    } cases[] = {
        {QDate(2026, 4, 30), QDate(2026, 4, 30), 2},   // the last day alone: the returns
        {QDate(2026, 5, 1), QDate(2026, 5, 1), 1},
        {QDate(2026, 3, 31), QDate(2026, 5, 1), 4},
        {QDate(2026, 4, 2), QDate(2026, 4, 14), 0},
        {QDate(2026, 4, 30), QDate(2026, 4, 1), 0},    // start after the end
    };
    for (const auto& c : cases) {
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
    sale(1, QDate(2026, 4, 1), 1, {{pen, "ボールペン", 4, 120}});
    EXPECT_EQ(april("Uri", 1), QStringList({"1001|ボールペン|-6|120.0|-720", "1002|ノート|-4|250.0|-1,000",
                                            "1005|消しゴム|-4|80.0|-320", "合計||-14||-2,040"}));
}

TEST_F(Products, PrintedOnFanfoldPaperWithTitleAndPeriod)
{
    VtmlSetToday(QDate(2026, 5, 1));
    RecordingOutput out;
    april("Uri", 0, &out);
    VtmlSetToday({});
    ASSERT_EQ(out.pages(), 1);
    const QStringList page = out.rec.page(1);
    // Paper "15": the title at 7200, the date at 13000, all moved right by the offset of 720.
    for (const char* drawn : {"T 7920,120 商品別売上集計", "T 3120,720 2026/04/01より2026/04/30まで", "T 13720,240 日付2026/05/01",
                              "T 960,1680 1001", "T 960,2880 合計"})
        EXPECT_TRUE(page.contains(drawn)) << drawn;
    EXPECT_EQ(page.last(), "AREA 16800,14640");
}

TEST_F(Products, PrintCommandWritesTheGridToASpreadsheet)
{
    PrintRequest req;
    req.options = {{"mode", "Uri"}, {"from", "20260401"}, {"to", "20260430"}, {"partner", "1"}};
    req.xlsx = co.file("products.xlsx");
    QString error;
    ASSERT_TRUE(printProducts(req, &error)) << qPrintable(error);
    const SheetXml sheet(req.xlsx);
    QStringList cells;
    for (const char* ref : {"A1", "A2", "B2", "C2", "E2", "A5", "E5"}) cells << sheet.cell(ref);
    EXPECT_EQ(cells.join('|'), "コード|1001|ボールペン|10|1200|合計|1700");
    EXPECT_FALSE(sheet.has("A6"));

    // What a script gets wrong is said and writes nothing.
    const struct {
        QMap<QString, QString> options;
        QString error;
    } bad[] = {
        {{{"mode", "Uri"}, {"from", "20260431"}, {"to", "20260430"}}, "--from は YYYYMMDD の日付で指定してください。"},
        {{{"mode", "uri"}, {"from", "20260401"}, {"to", "20260430"}}, "--mode は Uri|Kai のどれかです。"},
        {{{"mode", "Uri"}, {"from", "20260401"}, {"to", "20260430"}, {"partner", "x"}}, "--partner は数字で指定してください。"},
        {{{"mode", "Uri"}, {"from", "20260430"}, {"to", "20260401"}}, "対象がありません。"},
    };
    for (const auto& b : bad) {
        req.options = b.options;
        req.xlsx = co.file("bad.xlsx");
        EXPECT_FALSE(printProducts(req, &error));
        EXPECT_EQ(error, b.error);
        EXPECT_FALSE(QFile::exists(req.xlsx));
    }
}

namespace {

class ProductsForm : public Products {
protected:
    QPointer<RepoNippou_frm> w;
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
    ASSERT_EQ(w->List()->rowCount(), 4);
    EXPECT_EQ(cell(0, 0) + "|" + cell(0, 4), "1001|1,200");
    EXPECT_EQ(cell(3, 0) + "|" + cell(3, 2) + "|" + cell(3, 4), "合計|12|1,700");

    // All partners: the partner field emptied and the list run again from it.
    CaughtOutputs outputs;
    enter("");
    ASSERT_EQ(w->List()->rowCount(), 5);
    EXPECT_EQ(cell(0, 2) + "|" + cell(0, 3), "15|113.3");
    press(Qt::Key_F9);
    ASSERT_TRUE(QTest::qWaitForWindowActive(w));
    EXPECT_EQ(outputs.pages, 1);
    press(Qt::Key_F10);
    ASSERT_EQ(outputs.sheets.size(), 1);
    EXPECT_TRUE(QFileInfo(outputs.sheets[0]).fileName().startsWith("商品別売上集計"));
    const SheetXml sheet(outputs.sheets[0]);
    EXPECT_EQ(sheet.cell("B2") + sheet.cell("C2") + sheet.cell("A6"), "ボールペン15合計");
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
    ASSERT_EQ(w->List()->rowCount(), 3);
    EXPECT_EQ(cell(0, 1) + "|" + cell(0, 4), "ボールペン|1,300");
}
