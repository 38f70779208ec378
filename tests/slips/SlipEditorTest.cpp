#include "slips/SlipFixture.h"

namespace {
QString t(const QString& s) { return s.trimmed(); }
}

TEST_F(SlipTest, PricesFollowTheirPrecedenceWithoutChain)
{
    struct Case {
        const char* kind; qint64 partner; std::optional<qint64> nou; const char* code;
        const char* tanka; const char* stanka;
    } cases[] = {
        {"Dur", 1, {}, "1001", "900.00", "600.00"},     // customer price
        {"Dur", 1, 5, "1002", "1,800.00", "1,500.00"},  // destination price before everything
        {"Dur", 1, 5, "1001", "1,000.00", "600.00"},    // destination without a price: Tka not consulted
        {"Dur", 2, {}, "1002", "2,000.00", "1,500.00"}, // no customer price
        {"Dsr", 1, {}, "1001", "550.00", "1,000.00"},   // supplier price; counter price is the selling one
        {"Dsr", 1, {}, "1002", "1,500.00", "2,000.00"}, // no supplier price: the product's cost
    };
    for (const Case& c : cases) {
        SlipEditor ed(c.kind);
        startSlip(ed, "0", c.partner, c.nou);
        ed.rows[0].fKubun = 0;
        ed.rows[0].fHinCode = c.code;
        ASSERT_TRUE(ed.loadProductToLine(0)) << c.code;
        EXPECT_EQ(t(ed.rows[0].fTanka), c.tanka) << c.kind << c.partner << c.code;
        EXPECT_EQ(t(ed.rows[0].fSTanka), c.stanka) << c.kind << c.partner << c.code;
    }
}

TEST_F(SlipTest, DittoCopiesTheLineAboveAndUnknownCodesStay)
{
    SlipEditor ed("Dur");
    startSlip(ed, "0", 2);
    ed.rows[0].fKubun = 0;
    ed.rows[0].fHinCode = "=";   // nothing above line 1: looked up as a code
    EXPECT_FALSE(ed.loadProductToLine(0));
    EXPECT_EQ(ed.rows[0].fHinNamae, "");
    ed.rows[0].fHinCode = "0001001";
    ASSERT_TRUE(ed.loadProductToLine(0));
    EXPECT_EQ(ed.rows[0].fHinCode, "1001");   // display form
    ed.rows[1].fKubun = 0;
    ed.rows[1].fHinCode = " = ";
    ASSERT_TRUE(ed.loadProductToLine(1));
    EXPECT_EQ(ed.rows[1].fHinCode, "1001");
    EXPECT_EQ(ed.rows[1].fHinNamae, "ボールペン");
    ed.rows[2].fHinCode = "9999";
    EXPECT_FALSE(ed.loadProductToLine(2));
    EXPECT_EQ(ed.rows[2].fHinNamae, "");
}

TEST_F(SlipTest, TypedTaxIsKeptPerLineAndWipedForExemptPartners)
{
    for (auto [partner, expect] : {std::pair{1, "77"}, std::pair{4, "0"}}) {
        SlipEditor ed("Dur");
        startSlip(ed, "0", partner);
        typeLine(ed, 0, "1001");
        ed.rows[0].fZei = "77";
        ed.typeLineTax(0);
        EXPECT_EQ(ed.lines[0].ZeiFlag, 4);
        EXPECT_EQ(t(ed.totals.zei), expect) << partner;
    }
}

TEST_F(SlipTest, GrossMarginAndRateBothSides)
{
    SlipEditor sales("Dur");
    startSlip(sales, "0", 1);
    typeLine(sales, 0, "1001", "2");          // 2 x 900, cost 2 x 600
    EXPECT_EQ(t(sales.totals.profit), "600");
    EXPECT_EQ(t(sales.totals.rate), "33.33");
    typeLine(sales, 1, "1003");               // inside tax: its counter amount counts as tax-inclusive
    // net 1800 + 1000, other 1200 + (700 - 50)
    EXPECT_EQ(t(sales.totals.profit), "950");
    EXPECT_EQ(t(sales.totals.rate), "33.93");

    SlipEditor buy("Dsr");
    startSlip(buy, "0", 1);
    typeLine(buy, 0, "1001", "-2");           // a return: 2 x 550 back, selling price 2 x 1000
    EXPECT_EQ(t(buy.totals.net), "-1,100");
    EXPECT_EQ(t(buy.totals.profit), "-900");
    EXPECT_EQ(t(buy.totals.rate), "45.00");   // (-2000 + 1100) / -2000

    SlipEditor loss("Dur");
    startSlip(loss, "0", 1);
    typeLine(loss, 0, "1001", "1", "200");    // sold below its cost of 600: the sign is kept
    EXPECT_EQ(t(loss.totals.profit), "-400");
    EXPECT_EQ(t(loss.totals.rate), "-200.00");

    SlipEditor none("Dur");
    startSlip(none, "0", 1);
    typeLine(none, 0, "1001", "1", "0");      // no net amount
    EXPECT_EQ(none.totals.rate, "***.**");
}

TEST_F(SlipTest, QuantityTimesFractionalPriceAsksFixOrIgnore)
{
    SlipEditor ed("Dur");
    startSlip(ed, "0", 2);
    typeLine(ed, 0, "1001");
    typeLine(ed, 1, "1005", "3");
    EXPECT_EQ(t(ed.rows[1].fGaku), "100");    // 99.99 rounded on the line
    typeLine(ed, 2, "1002");
    ed.rows[2].fGaku = "1,999";               // a second mismatch is never asked about

    dlg.askAnswers = {true};                  // "修正"
    EXPECT_EQ(ed.checkSlip(), SlipFocus::FirstRowKind);
    dlg.askAnswers = {false};                 // "無視"
    EXPECT_EQ(ed.checkSlip(), SlipFocus::None);
    EXPECT_EQ(dlg.of("Ask"), QStringList(2, "2行で金額が個数×単価でありません。"));

    // Amounts typed beside a "*" quantity belong to the clerk.
    ed.rows[1].fSuu = "3*";
    ed.rows[1].fGaku = "120";
    ed.rows[2].fGaku = "2,000";
    ed.work(1);
    EXPECT_EQ(t(ed.rows[1].fGaku), "120");
    EXPECT_EQ(ed.checkSlip(), SlipFocus::None);
    EXPECT_EQ(dlg.of("Ask").size(), 2);
}

TEST_F(SlipTest, PartnerCopiesItsSettingsAndTheNoticeWordsDiffer)
{
    SlipEditor ed("Dur");
    startSlip(ed, "0", 1);
    EXPECT_EQ(ed.Getudo, "5");
    // Customer 2 closes on the 20th: the 25th belongs to the next month.
    ed.head.Partner = 2;
    ed.head.Day = "25";
    EXPECT_TRUE(ed.partnerChosen());
    EXPECT_EQ(ed.Getudo, "6");
    // Exempt is undefined while typing and named only on a displayed slip.
    ed.head.Partner = 4;
    ed.partnerChosen();
    EXPECT_EQ(ed.zeiNotice, "未定義");
    EXPECT_EQ(SlipEditor::zeiNoticeText(4, true), "免税");
    // A date outside the target year is refused.
    ed.head.Year = "2027";
    ed.head.Month = "4";
    ed.head.Day = "1";
    EXPECT_FALSE(ed.partnerChosen());
    EXPECT_EQ(dlg.of("Tell").last(), "対象年度の範囲内ではありません。");
    // The customer list shows the shop name.
    ed.head.Partner.reset();
    ed.head.ClassCode = 1;
    ed.classLeft();
    ASSERT_EQ(ed.partnerEntries.size(), 2);
    EXPECT_EQ(ed.partnerEntries[1].text, "東京商事･本店");
}

TEST_F(SlipTest, FifteenLinesDeleteClosesUp)
{
    SlipEditor ed("Dur");
    startSlip(ed, "0", 2);
    for (int i = 0; i < SlipEditor::LineCount; ++i) {
        ed.scrollTo(std::max(0, i - 5));
        typeLine(ed, i - ed.Bar, i % 2 ? "1002" : "1001");
    }
    EXPECT_EQ(t(ed.totals.net), "22,000");       // 8 x 1000 + 7 x 2000

    ed.scrollTo(0);
    ed.deleteLine(1);                             // line 2 goes, the rest close up
    EXPECT_EQ(ed.lines[1].HinCode, "1001");
    EXPECT_TRUE(ed.lines[14].isEmpty());
    EXPECT_EQ(t(ed.totals.net), "20,000");
    ASSERT_TRUE(ed.insertLine(0));
    EXPECT_TRUE(ed.lines[0].isEmpty());
    EXPECT_EQ(ed.lines[1].HinCode, "1001");
}

