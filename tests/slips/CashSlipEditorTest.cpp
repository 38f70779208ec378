#include "slips/CashFixture.h"
#include "slips/SlipPick.h"
#include "slips/SlipDnoCounters.h"
#include "slips/SlipNumbering.h"

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

TEST_F(CashSlipEditorTest, RowShiftingAndTheSum)
{
    CashSlipEditor ed("Dny");
    startCash(ed, "0", 2);
    row(ed, 0, 1, "1,000");
    row(ed, 1, 3, "2000");
    row(ed, 2, 4, "300");
    EXPECT_EQ(ed.Gakukei, "      3,300");

    ed.insertCashRow(1);
    EXPECT_EQ(rowsOf(ed), (QStringList{"1:1,000", "0:", "3:2000", "4:300", "0:", "0:"}));
    ed.deleteCashRow(0);
    EXPECT_EQ(rowsOf(ed), (QStringList{"0:", "3:2000", "4:300", "0:", "0:", "0:"}));
    EXPECT_EQ(ed.Gakukei, "      2,300");
    ed.blankRow(2);
    EXPECT_EQ(ed.Gakukei, "      2,000");

    // On a full grid the last row is pushed off, and the sum loses it.
    struct Case { int at; QStringList after; const char* sum; } cases[] = {
        {0, {"0:", "1:1", "2:20", "3:300", "4:4000", "5:50000"}, "     54,321"},
        {3, {"1:1", "2:20", "3:300", "0:", "4:4000", "5:50000"}, "     54,321"},
        {5, {"1:1", "2:20", "3:300", "4:4000", "5:50000", "0:"}, "     54,321"},
        {6, {"1:1", "2:20", "3:300", "4:4000", "5:50000", "6:600000"}, "    654,321"},
        {-1, {"1:1", "2:20", "3:300", "4:4000", "5:50000", "6:600000"}, "    654,321"},
    };
    const QStringList full{"1", "20", "300", "4000", "50000", "600000"};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.at);
        for (int i = 0; i < 6; ++i) row(ed, i, i + 1, full[i], "t");
        ed.insertCashRow(c.at);
        EXPECT_EQ(rowsOf(ed), c.after);
        EXPECT_EQ(ed.Gakukei, c.sum);
    }
    EXPECT_TRUE(dlg.of("Tell").isEmpty());
    // Kind, text and amount move together.
    for (int i = 0; i < 6; ++i) row(ed, i, 1, QString::number(i + 1), QString(QChar('a' + i)));
    ed.insertCashRow(2);
    EXPECT_EQ(ed.rows[3].Naiyou, "c");
    EXPECT_EQ(ed.rows[5].Naiyou, "e");
    ed.deleteCashRow(5);
    EXPECT_TRUE(ed.rows[5].isBlank());
    EXPECT_EQ(ed.Gakukei, "         10");
}

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

TEST_F(CashSlipEditorTest, TheUsualKindAndThePayingDestinations)
{
    CashSlipEditor ed("Dny");
    startCash(ed, "0", 2);
    EXPECT_EQ(ed.head.TanCode, 2);     // the customer's staff
    EXPECT_EQ(ed.head.ClassCode, 1);
    EXPECT_TRUE(ed.nouEntries.isEmpty());
    ed.takeUsualKind(0);
    EXPECT_EQ(ed.rows[0].Kubun + 1, 3);   // 振込
    ed.rows[1].Kubun = 0;
    ed.takeUsualKind(1);
    EXPECT_EQ(ed.rows[1].Kubun, 0);       // a chosen kind stays

    ed.head = CashHead();
    ed.head.Partner = 1;
    ed.partnerChosen();
    EXPECT_EQ(ed.nouEntries, (QList<ListEntry>{{"得意先", 0}, {"南店 南口", 6}}));   // 5 is billed through it
    ed.takeUsualKind(2);
    EXPECT_EQ(ed.rows[2].Kubun, -1);      // no usual way of paying

    CashSlipEditor pay("Dsh");
    startCash(pay, "0", 2);
    pay.takeUsualKind(0);
    EXPECT_EQ(pay.rows[0].Kubun + 1, 4);  // 手形
    EXPECT_TRUE(pay.nouEntries.isEmpty());
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
    EXPECT_EQ(GetNextDno("Dny", 1), 8);

    CashSlipEditor shown("Dny");
    shown.loadLists();
    shown.clearHead();
    shown.head.Dno = "7";
    EXPECT_EQ(shown.enterNumber(), CashSlipEditor::NumberOutcome::Edit);
    EXPECT_EQ(shown.head.Year + "/" + shown.head.Month + "/" + shown.head.Day, "2026/5/15");
    EXPECT_EQ(shown.head.Partner, 1);
    EXPECT_EQ(shown.head.NouCode, 6);
    EXPECT_EQ(shown.head.TanCode, 1);
    EXPECT_EQ(shown.head.NNo.trimmed(), "345");
    EXPECT_EQ(rowsOf(shown), (QStringList{"2:12,000", "6:-20", "0:", "0:", "0:", "0:"}));
    EXPECT_EQ(shown.rows[0].Naiyou, "小切手 No.88");
    EXPECT_EQ(shown.rows[1].Naiyou, "");
    EXPECT_EQ(shown.Gakukei, "     11,980");
    EXPECT_EQ(shown.panel.Results[1], "     11,980");   // the destination's own months
    // Enter again on the number in work changes nothing.
    EXPECT_EQ(shown.enterNumber(), CashSlipEditor::NumberOutcome::Unchanged);
    // Another number that is free: a new slip on the last deposit's date, the counter in 0.
    session().CashDate = QDate(2026, 6, 1);
    shown.head.Dno = "0";
    EXPECT_EQ(shown.enterNumber(), CashSlipEditor::NumberOutcome::New);
    EXPECT_EQ(shown.head.Dno.trimmed(), "8");
    EXPECT_EQ(shown.head.Month, "6");
    EXPECT_FALSE(shown.head.Partner.has_value());
    EXPECT_TRUE(shown.rows[0].isBlank());
}

TEST_F(CashSlipEditorTest, ChecksBeforeSaving)
{
    struct Case { const char* number; const char* day; std::optional<qint64> partner; const char* told; SlipFocus focus; } cases[] = {
        {"", "15", 2, "伝票番号が不正です。", SlipFocus::Number},
        {"1", "31", 2, "日付が不正です。", SlipFocus::Year},   // 31 June
        {"1", "15", {}, "得意先が記入されていません。", SlipFocus::Partner},
        {"1", "15", 2, nullptr, SlipFocus::None},
    };
    for (const Case& c : cases) {
        CashSlipEditor ed("Dny");
        ed.head.Dno = c.number;
        ed.head.Year = "2026";
        ed.head.Month = "6";
        ed.head.Day = c.day;
        ed.head.Partner = c.partner;
        dlg.log.clear();
        EXPECT_EQ(ed.checkSlip(), c.focus) << c.told;
        EXPECT_EQ(dlg.of("Tell"), c.told ? QStringList{c.told} : QStringList());
    }
    // A date outside the year is refused before anything is written.
    CashSlipEditor ed("Dsh");
    startCash(ed, "0", 1);
    ed.head.Year = "2027";
    ed.head.Month = "4";
    row(ed, 0, 1, "100");
    dlg.log.clear();
    EXPECT_FALSE(save(ed).saved);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"対象年度の範囲内ではありません。"});
    EXPECT_EQ(slipOne("SELECT count(*) FROM Dsh").toInt(), 0);
}

TEST_F(CashSlipEditorTest, ThePickListOfAPartnersSlips)
{
    slipRun("INSERT INTO Eig (Code, Namae, DnyNo) VALUES (2, '大阪', 1)");
    const char* ins = "INSERT INTO Dny (Dno, Eda, EigCode, Hizuke, TorCode, Kubun, NGaku, Getudo) VALUES (?, ?, ?, ?, ?, 1, 0, 5)";
    slipRun(ins, {3, 1, 1, "2026-05-15", 2});
    slipRun(ins, {3, 2, 1, "2026-05-15", 2});
    slipRun(ins, {4, 1, 1, "2026-06-01", 2});
    slipRun(ins, {5, 1, 1, "2026-04-30", 2});
    slipRun(ins, {6, 1, 2, "2026-07-01", 2});   // another office
    slipRun(ins, {7, 1, 1, "2026-07-01", 3});   // another customer
    QStringList shown;
    for (const SlipListRow& r : slipListRows("Dny", 2, 1)) shown << r.number.trimmed() + " " + r.date;
    EXPECT_EQ(shown, (QStringList{"4 2026 年 6 月 1 日 月曜", "3 2026 年 5 月 15 日 金曜", "5 2026 年 4 月 30 日 木曜"}));
    EXPECT_TRUE(slipListRows("Dsh", 2, 1).isEmpty());
}

TEST_F(CashSlipEditorTest, TheCountersOfTheFirstOffice)
{
    slipRun("UPDATE Eig SET DsrNo=10, DurNo=20, DshNo=30, DnyNo=40, SeikyuNo=50 WHERE Code=1");
    slipRun("INSERT INTO Eig (Code, Namae, DurNo) VALUES (2, '大阪', 700)");
    session().EigCode = 2;   // the session's office does not matter
    SlipCounters c = slipCounterFields();
    ASSERT_TRUE(readSlipCounters(c));
    QStringList shown;
    for (const SlipCounter& f : c) shown << f.caption + "=" + QString::number(f.value);
    EXPECT_EQ(shown, (QStringList{"仕入伝票No.=10", "売上伝票No.=20", "支払伝票No.=30", "入金伝票No.=40", "請求書No.=50"}));
    c[1].value = 5;   // lowering is allowed here
    ASSERT_TRUE(writeSlipCounters(c));
    EXPECT_EQ(GetNextDno("Dur", 1), 5);
    EXPECT_EQ(GetNextDno("Dur", 2), 700);

    slipRun("DELETE FROM Eig WHERE Code=1");
    EXPECT_FALSE(readSlipCounters(c));
    EXPECT_FALSE(writeSlipCounters(c));
    EXPECT_EQ(dlg.of("Tell"), QStringList{"Eigマスターのエラーです。"});
}
