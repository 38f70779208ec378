#include <gtest/gtest.h>
#include <functional>
#include "pageout/PageFixture.h"
#include "pageout/ReportForm.h"
#include "pageout/ReportRows.h"

namespace {

// A code column 6 blanks wide (600 twips at size 10) and an amount column "#,###,##0"
// (900 twips) that is summed; the rows start at y 1000, 240 apart, two to a page.
const QList<VtmlField> kFields = {makeField("コード", "Code", "S", "6", 100), makeField("金額", "Gaku", "N", "#,###,##0", 0, 1)};
const QStringList kLines = {"<AREA>10000,14000", "<SIZE>10", "<LOCATE>0,1000", "<DTPOS>", "<ZOUBUN>240", "<DTCNT>2"};

QVariant yen(qint64 y) { return moneyVariant(Money::fromYen(y)); }

// A document of kFields over rows held by the run.
struct Report : PageRun {
    std::unique_ptr<ReportRows> rows;
    bool printRows(std::unique_ptr<ReportRows> r, const QList<VtmlField>& fields = kFields,
                   const QStringList& lines = kLines, ReportForm* form = nullptr, const std::function<void()>& setup = {})
    {
        rows = std::move(r);
        return PageRun::print(rows.get(), fields, lines, form, setup);
    }
    bool print(const QList<QVariantList>& data, const QList<VtmlField>& fields = kFields,
               const QStringList& lines = kLines, ReportForm* form = nullptr, const std::function<void()>& setup = {})
    {
        return printRows(listRows({"Code", "Gaku"}, data), fields, lines, form, setup);
    }
};

// Exactly RowsPerPage rows: one page with every cell in place. One more: a second page from the
// top with its page total and the running total. None: the heading and zero totals, and
// DataEnded never set.
TEST(Pb, RowsPerPageOneMoreAndNone)
{
    Report r;
    ASSERT_TRUE(r.print({{"A1", yen(1234)}, {"A2", yen(2000)}}));
    EXPECT_EQ(r.pages(), 1);
    EXPECT_EQ(r.drawn(1), (QStringList{
        "T 0,1000 コード", "T 1200,1000 金額", "L 0,1240 10000,1240",
        "T 0,1340 A1", "T 700,1340     1,234",
        "T 0,1580 A2", "T 700,1580     2,000",
        "L 0,1820 10000,1820",
        "T 0,1920 頁計：", "T 700,1920     3,234",
        "T 0,2160 累計：", "T 700,2160     3,234",
        "L 0,2400 10000,2400"}));
    EXPECT_TRUE(PbDataEnded());
    EXPECT_EQ(VtmlPageNo(), 2);

    Report more;
    ASSERT_TRUE(more.print({{"A1", yen(1234)}, {"A2", yen(2000)}, {"A3", yen(5)}}));
    ASSERT_EQ(more.pages(), 2);
    EXPECT_EQ(more.texts(2), (QStringList{"コード", "金額", "A3", "        5", "頁計：", "        5", "累計：", "    3,239"}));
    EXPECT_EQ(more.drawn(2).at(4), "T 700,1340         5");

    Report none;
    ASSERT_TRUE(none.print({}));
    EXPECT_EQ(none.pages(), 1);
    EXPECT_EQ(none.texts(1), (QStringList{"コード", "金額", "頁計：", "        0", "累計：", "        0"}));
    EXPECT_FALSE(PbDataEnded());
    EXPECT_EQ(VtmlPageNo(), 2);
}

TEST(Pb, NumberTextIsFixedWidthNullIsZeroAndWideNumbersLoseTheirLeft)
{
    struct Case {
        QVariant value;
        QString format;
        QString text;
    } cases[] = {
        {QVariant(), "#,###,##0", "        0"},
        {QVariant(), "###,###", "       "},
        {yen(123456789), "#,##0", "6,789"},
        {QVariant(qint64(-1500)), "##,##0", "-1,500"},
        {QVariant(QStringLiteral("1,200")), "##,##0", " 1,200"},
        {moneyVariant(Money::fromRaw(12345)), "#,##0.0", "    1.2"},
    };
    for (const Case& c : cases) {
        Report r;
        ASSERT_TRUE(r.print({{"X", c.value}}, {makeField("額", "Gaku", "N", c.format)}, kLines));
        EXPECT_EQ(r.texts(1).at(1), c.text) << c.format.toStdString();
    }
}

TEST(Pb, TotalsAreExactMoneyAndACarriedBalanceStartsTheRunningTotal)
{
    Report r;
    QList<QVariantList> data;
    for (int i = 0; i < 7; ++i) data << QVariantList{QStringLiteral("R"), moneyVariant(Money::fromRaw(1001))};
    ASSERT_TRUE(r.print(data, kFields, {"<DTCNT>50"}, nullptr,
                        [] { PbSetRunningTotal(1, Money::fromYen(100000)); }));
    // 7 x 0.1001 yen on top of the balance brought forward, to the ten-thousandth.
    EXPECT_EQ(PbRunningTotal(1), Money::fromYen(100000) + Money::fromRaw(7007));
    EXPECT_EQ(PbPageTotal(1), Money());
    EXPECT_TRUE(r.texts(1).contains("  100,001"));
}

TEST(Pb, ComputedCellsAndDigitCells)
{
    // alpha(0): the name with an honorific; alpha(1): a numeric text that is summed.
    struct Form : ReportForm {
        ReportRows* rows = nullptr;
        QList<short> asked;
        QVariant alpha(short& n) override
        {
            asked << n;
            if (n == 0) return rows->value(QStringLiteral("Code")).toString() + QStringLiteral("様");
            return QStringLiteral("1,200円");
        }
    } form;
    VtmlField digits = makeField("番号", "Gaku", "P", "00000");
    digits.Pitch = 50;
    const QList<VtmlField> fields = {makeField("名", "@0", "S", "4", 0), makeField("額", "@1", "N", "##,##0", 0, 1), digits};
    Report r;
    ASSERT_TRUE(r.print({{"山田", 123}}, fields, kLines, &form, [&] { form.rows = r.rows.get(); }));
    // 名 is 400 wide, 額 600: the digit cells start at 1000, one blank (100) and 50 apart, on
    // the row counted from the data's top (the heading row is not counted). A text that is no
    // number stands as it is, and is summed by its digits.
    EXPECT_EQ(r.drawn(1).mid(4, 7), (QStringList{"T 0,1340 山田様", "T 400,1340 1,200円", "T 1000,1000 0",
                                                 "T 1150,1000 0", "T 1300,1000 1", "T 1450,1000 2", "T 1600,1000 3"}));
    EXPECT_EQ(PbRunningTotal(1), Money::fromYen(1200));
    EXPECT_EQ(form.asked, (QList<short>{0, 1}));
}

// A placed cell stands at its own x, its rows counted from the data's top (the heading not
// counted); the next column follows the running position (the code 290 and the placed cell 420
// wide, both at 14 points), not the placed one. The tallest cell (336 high) sets the advance of
// the rows; the heading is drawn in the last field's 10.
TEST(Pb, PlacedCellsAndTheTallestCellOfARow)
{
    VtmlField big = makeField("コード", "Code", "S", "2", 10);
    big.FontSize = 14;
    VtmlField placed = makeField("額", "Gaku", "N", "###", 0);
    placed.X = 5000;
    placed.Y = 30;
    VtmlField after = makeField("後", "Code", "S", "2");
    after.FontSize = 10;
    Report r;
    ASSERT_TRUE(r.print({{"A", yen(7)}, {"B", yen(8)}}, {big, placed, after}));
    EXPECT_EQ(r.drawn(1).mid(4, 6), (QStringList{"T 0,1340 A", "T 5000,1030   7", "T 710,1340 A",
                                                 "T 0,1676 B", "T 5000,1366   8", "T 710,1676 B"}));
}

TEST(Pb, NoHeadRuleNoTotalsAndDataEndedOnTheLastPageOnly)
{
    struct Form : ReportForm {
        QList<bool> ended;
        void NoTotalAction() override
        {
            ended << PbDataEnded();
            if (PbDataEnded()) {
                PbSetX(100);
                PbSetY(9000);
                PbText(QStringLiteral("以上"));
            }
        }
    } form;
    Report r;
    ASSERT_TRUE(r.print({{"A", yen(1)}, {"B", yen(2)}, {"C", yen(3)}}, kFields, kLines, &form, [] {
        PbSetNoHeadRule(true);
        PbSetNoTotals(true);
    }));
    EXPECT_EQ(form.ended, (QList<bool>{false, true}));
    EXPECT_TRUE(r.rec().only("L ").isEmpty());
    EXPECT_EQ(r.texts(2), (QStringList{"コード", "金額", "C", "        3", "以上"}));
    EXPECT_EQ(r.drawn(2).last(), "T 100,9000 以上");
}

TEST(Pb, FreetopOnTheFirstPageAndPageNumbersOnEach)
{
    Report r;
    QStringList lines = kLines;
    lines << "<FREETOP>0,0,初頁だけ" << "<LOCATE>5000,0" << "<PAGE>";
    ASSERT_TRUE(r.print({{"A", yen(1)}, {"B", yen(2)}, {"C", yen(3)}, {"D", yen(4)}, {"E", yen(5)}},
                        kFields, lines));
    ASSERT_EQ(r.pages(), 3);
    EXPECT_EQ(r.texts(1).mid(0, 2), (QStringList{"初頁だけ", "1ページ "}));
    EXPECT_EQ(r.texts(2).at(0), "2ページ ");
    EXPECT_EQ(r.texts(3).at(0), "3ページ ");
}

TEST(Pb, GroupsCloseWithSubtotalsAndTheLastWithTheGrandTotal)
{
    Report r;
    ASSERT_TRUE(r.print({{"A", yen(1)}, {"A", yen(2)}, {"B", yen(4)}}, kFields, {"<DTCNT>50"}, nullptr,
                        [] { PbSetGroupField(QStringLiteral("Code")); }));
    EXPECT_EQ(r.texts(1), (QStringList{"コード", "金額", "A", "        1", "A", "        2",
                                       "小計：", "        3", "B", "        4",
                                       "頁計：", "        4", "累計：", "        7",
                                       "小計：", "        0", "総計：", "        7"}));
    EXPECT_EQ(PbRunningTotal(1), Money());
}

// A mistake of the report stops the document with its message, and nothing of it comes out.
TEST(Pb, AMistakeOfTheReportStopsTheDocumentWithNothingHalf)
{
    struct Case {
        const char* what;
        QList<VtmlField> fields;
        QStringList lines;
        std::function<void()> setup;
        QString message;
    } cases[] = {
        {"a column not in the rows", {makeField("額", "Kingaku", "N", "###")}, kLines, {},
         "エラー：3265 項目「Kingaku」が帳票のデータにありません。"},
        {"a computed field without a report form", {makeField("額", "@2", "S", "3")}, kLines, {},
         "エラー：項目「@2」の値を返す帳票がありません。"},
        {"a group column not in the rows", kFields, kLines, [] { PbSetGroupField(QStringLiteral("Bumon")); },
         "エラー：3265 項目「Bumon」が帳票のデータにありません。"},
        // Without the form that answers them the document would lack its closing figures or background.
        {"NoTotals without a report form", kFields, kLines, [] { PbSetNoTotals(true); },
         "エラー：頁の終わりを描く帳票がありません。"},
        {"BKGRD without a report form", kFields, QStringList(kLines) << "<BKGRD>", {},
         "エラー：背景を描く帳票がありません。「<BKGRD>」"},
    };
    for (const Case& c : cases) {
        Report r;
        EXPECT_FALSE(r.print({{"A", yen(1)}}, c.fields, c.lines, nullptr, c.setup)) << c.what;
        EXPECT_EQ(r.told(), QStringList{c.message}) << c.what;
        EXPECT_EQ(r.pages(), 0) << c.what;
    }

    // A cell that runs past the 16-bit range on the fifth row: the page of four rows that
    // were drawn is dropped with it.
    VtmlField low = makeField("額", "Gaku", "N", "###");
    low.Y = 30000;
    Report r;
    QList<QVariantList> data;
    for (int i = 0; i < 6; ++i) data << QVariantList{QStringLiteral("A"), yen(i)};
    EXPECT_FALSE(r.print(data, {low}, {"<LOCATE>0,2000", "<DTPOS>", "<ZOUBUN>240", "<DTCNT>10"}));
    EXPECT_EQ(r.pages(), 0);
    EXPECT_EQ(r.rec().log.last(), "DROP");
    EXPECT_TRUE(r.told().value(0).startsWith("エラー：6 "));
}

TEST(Pb, RowsOfAStatementGiveMoneyColumnsAsMoneyAndAFailedStatementStops)
{
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("pb_rows"));
    db.setDatabaseName(QStringLiteral(":memory:"));
    ASSERT_TRUE(db.open());
    QSqlQuery q(db);
    ASSERT_TRUE(q.exec(QStringLiteral("CREATE TABLE Dud (Code TEXT, UGaku INTEGER, Suu INTEGER)")));
    ASSERT_TRUE(q.exec(QStringLiteral("INSERT INTO Dud VALUES ('A', 12340000, 3), ('B', NULL, NULL)")));
    Report r;
    ASSERT_TRUE(r.printRows(queryRows(db, QStringLiteral("SELECT Code, UGaku AS Gaku, Suu FROM Dud WHERE Code>=? ORDER BY Code"),
                                      {QStringLiteral("A")}, {QStringLiteral("gaku")}),
                            QList<VtmlField>(kFields) << makeField("数", "Suu", "N", "##0", 0, 1)));
    EXPECT_EQ(r.texts(1).mid(3, 6), (QStringList{"A", "    1,234", "  3", "B", "        0", "  0"}));
    EXPECT_EQ(PbRunningTotal(1), Money::fromRaw(12340000));
    EXPECT_EQ(PbRunningTotal(2), Money::fromYen(3));

    Report failed;
    EXPECT_FALSE(failed.printRows(queryRows(db, QStringLiteral("SELECT Nothing FROM Dud")), {kFields[0]}));
    EXPECT_TRUE(failed.told().value(0).startsWith("エラー：")) << failed.told().value(0).toStdString();
    EXPECT_TRUE(failed.told().value(0).contains("Nothing"));
    EXPECT_EQ(failed.pages(), 0);
    q = QSqlQuery();
    db.close();
    db = QSqlDatabase();
    QSqlDatabase::removeDatabase(QStringLiteral("pb_rows"));
}

}  // namespace
