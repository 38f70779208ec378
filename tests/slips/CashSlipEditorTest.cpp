#include <functional>
#include "slips/CashFixture.h"

namespace {
// The six rows as "kind:amount", kind 1..6 or 0.
QStringList rowsOf(const CashSlipEditor& ed)
{
    QStringList out;
    for (const CashRow& r : ed.rows) out << QString::number(r.Kubun + 1) + ":" + r.Gaku.trimmed();
    return out;
}
}  // namespace

class CashSlipEditorTest : public CashTest {};

TEST_F(CashSlipEditorTest, AmountsAreShownAndReadAsWholeYen)
{
    struct Case { const char* typed; const char* shown; qint64 yen; } cases[] = {
        {"10000", "    10,000", 10000},
        {"-1,500", "    -1,500", -1500},
        {"99.5", "       100", 100},
        {"123456789", "123,456,789", 123456789},   // wider than the picture: no digit is lost
        {"", "", 0},
        {"abc", "         0", 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(CashSlipEditor::formatGaku(c.typed), c.shown) << c.typed;
        EXPECT_EQ(CashSlipEditor::amountOf(c.typed), Money::fromYen(c.yen)) << c.typed;
    }
}

TEST_F(CashSlipEditorTest, ASavedSlipComesBackAsTyped)
{
    CashSlipEditor ed("Dny");
    startCash(ed, "7", 1, 6);
    EXPECT_EQ(ed.mode, "NEW");
    ed.head.TanCode = 1;
    ed.head.NNo = "345";
    row(ed, 0, 2, "12000", "小切手 No.88");
    row(ed, 1, 6, "-20", "");
    ASSERT_TRUE(save(ed).saved);
    EXPECT_EQ(slipOne("SELECT Nnaiyo FROM Dny WHERE Eda=2").toString(), " ");   // an empty text is one blank

    CashSlipEditor shown("Dny");
    EXPECT_EQ(load(shown, "7"), CashSlipEditor::NumberOutcome::Edit);
    EXPECT_EQ(shown.head.Partner, 1);
    EXPECT_EQ(shown.head.Year + "/" + shown.head.Month + "/" + shown.head.Day, "2026/5/15");
    EXPECT_EQ(shown.head.NouCode, 6);
    EXPECT_EQ(shown.head.TanCode, 1);
    EXPECT_EQ(shown.head.NNo.trimmed(), "345");
    EXPECT_EQ(rowsOf(shown), (QStringList{"2:12,000", "6:-20", "0:", "0:", "0:", "0:"}));
    EXPECT_EQ(shown.rows[0].Naiyou, "小切手 No.88");
    EXPECT_EQ(shown.rows[1].Naiyou, "");
    EXPECT_EQ(shown.Gakukei, "     11,980");
    EXPECT_EQ(shown.panel.Results[1], "     11,980");   // the destination's own months
    // Enter again on the number in work changes nothing; 0 brings the counter to a new slip.
    EXPECT_EQ(shown.enterNumber(), CashSlipEditor::NumberOutcome::Unchanged);
    shown.head.Dno = "0";
    EXPECT_EQ(shown.enterNumber(), CashSlipEditor::NumberOutcome::New);
    EXPECT_EQ(shown.head.Dno.trimmed(), "8");
    EXPECT_FALSE(shown.head.Partner.has_value());
    EXPECT_TRUE(shown.rows[0].isBlank());
}

// Number, date and partner are checked alike on both screens, in this order; the slip screen
// adds the destination, the deposit screen refuses a number below 1.
TEST_F(CashSlipEditorTest, ChecksBeforeSavingInOrder)
{
    SlipEditor sale("Dur");
    startSlip(sale, "0", 1, 5);
    typeLine(sale, 0, "1001");
    CashSlipEditor money("Dny");
    startCash(money, "0", 2);
    struct Case { std::function<void(PartnerHead&)> change; SlipFocus focus; const char* text; bool slipOnly; } cases[] = {
        {[](PartnerHead& h) { h.Dno = " "; }, SlipFocus::Number, "伝票番号が不正です。", false},
        {[](PartnerHead& h) { h.Day = "31"; h.Month = "6"; }, SlipFocus::Year, "日付が不正です。", false},
        {[](PartnerHead& h) { h.Partner = 0; }, SlipFocus::Partner, "得意先が記入されていません。", false},
        {[](PartnerHead& h) { h.NouCode.reset(); }, SlipFocus::Nou, "納入先が記入されていません。", true},
        {[](PartnerHead&) {}, SlipFocus::None, nullptr, false},
    };
    for (const Case& c : cases) {
        SlipEditor s = sale;
        CashSlipEditor m = money;
        c.change(s.head);
        c.change(m.head);
        dlg.log.clear();
        EXPECT_EQ(s.checkSlip(), c.focus) << (c.text ? c.text : "pass");
        if (!c.slipOnly) EXPECT_EQ(m.checkSlip(), c.focus) << (c.text ? c.text : "pass");
        EXPECT_EQ(dlg.of("Tell"), QStringList(!c.text ? 0 : c.slipOnly ? 1 : 2, c.text));
    }
    money.head.Dno = "0";
    EXPECT_EQ(money.checkSlip(), SlipFocus::Number);
    // A customer without destinations passes with none chosen; a supplier is named so.
    startSlip(sale, "0", 2);
    typeLine(sale, 0, "1001");
    EXPECT_EQ(sale.checkSlip(), SlipFocus::None);
    CashSlipEditor pay("Dsh");
    startCash(pay, "0", 1);
    pay.head.Partner.reset();
    EXPECT_EQ(pay.checkSlip(), SlipFocus::Partner);
    EXPECT_EQ(dlg.of("Tell").last(), "仕入先が記入されていません。");
}
