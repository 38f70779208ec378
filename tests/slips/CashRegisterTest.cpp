#include <functional>
#include "slips/CashFixture.h"
#include "slips/SlipNumbering.h"
#include "support/StoreSnapshot.h"

class CashRegisterTest : public CashTest {};

TEST_F(CashRegisterTest, ADepositMovedToAnotherClosingMonthLeavesTheOldMonth)
{
    ASSERT_TRUE(deposit(2, "2026/5/15", {4000}).saved);
    CashSlipEditor ed("Dny");
    load(ed, "1");
    ed.head.Day = "25";                  // past the 20th: June's closing
    ASSERT_TRUE(save(ed).saved);
    EXPECT_EQ(tto(2, 0, 5, "NTotal"), 0);
    EXPECT_EQ(tto(2, 0, 6, "Genkin"), 4000);
    EXPECT_EQ(tto(2, 0, 6, "Zenkaigaku"), 0);
    EXPECT_EQ(tto(2, 0, 7, "Zenkaigaku"), -4000);
    EXPECT_EQ(slipOne("SELECT Getudo FROM Dny WHERE Dno=1").toInt(), 6);
}

TEST_F(CashRegisterTest, RowsAreWrittenUpToTheFirstGap)
{
    struct Case {
        const char* name;
        QList<std::pair<int, const char*>> rows;   // kind 1..6 (0 none), amount
        int written;
        qint64 nTotal;
    } cases[] = {
        {"zero amount ends it", {{1, "1000"}, {3, "0"}, {4, "500"}}, 1, 1000},
        {"no kind ends it", {{1, "1000"}, {2, "700"}, {0, "900"}, {4, "500"}}, 2, 1700},
        {"a fraction of a yen rounds as shown", {{1, "1,234.5"}}, 1, 1235},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        CashSlipEditor ed("Dny");
        startCash(ed, "0", 3);
        for (int i = 0; i < c.rows.size(); ++i) row(ed, i, c.rows[i].first, c.rows[i].second);
        const SlipSaveResult r = save(ed);
        ASSERT_TRUE(r.saved);
        EXPECT_EQ(slipOne("SELECT count(*) || ':' || max(Eda) FROM Dny WHERE Dno=?", {qlonglong(r.dno)}).toString(),
                  QString("%1:%1").arg(c.written));
        EXPECT_EQ(tto(3, 0, 5, "NTotal"), c.nTotal);
        ASSERT_TRUE(reverseCashSlip(ed));
    }
    // Each kind lands in the column of its rank.
    CashSlipEditor ed("Dny");
    startCash(ed, "0", 3);
    for (int k = 1; k <= 6; ++k) row(ed, k - 1, k, QString::number(k * 10));
    ASSERT_TRUE(save(ed).saved);
    const char* columns[] = {"Genkin", "Kogite", "Furikomi", "Tegata", "Sousai", "Chousei"};
    for (int k = 0; k < 6; ++k) EXPECT_EQ(tto(3, 0, 5, columns[k]), (k + 1) * 10) << columns[k];
}

TEST_F(CashRegisterTest, ASlipWithoutRowsUsesItsNumberAndMakesThePartnersLedger)
{
    struct Case {
        const char* kind;
        qint64 partner;
        const char* number;        // as typed; "0" takes the counter
        long savedAs, counterAfter;
        const char* ledger;        // the partner's month rows
    } cases[] = {
        {"Dny", 3, "0", 1, 2, "TtoD WHERE TorCode=3 AND NouCode=0"},
        {"Dny", 2, "7", 7, 8, "TtoD WHERE TorCode=2 AND NouCode=0"},
        {"Dsh", 2, "0", 1, 2, "TsiD WHERE SirCode=2"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.ledger);
        CashSlipEditor ed(c.kind);
        startCash(ed, c.number, c.partner);
        const SlipSaveResult r = save(ed);
        ASSERT_TRUE(r.saved);
        EXPECT_EQ(r.dno, c.savedAs);
        EXPECT_EQ(ed.mode, "EDIT");
        EXPECT_EQ(slipOne(QStringLiteral("SELECT count(*) FROM ") + c.kind).toInt(), 0);
        EXPECT_EQ(GetNextDno(c.kind, 1), c.counterAfter);
        EXPECT_EQ(slipOne(QString("SELECT count(*) || ':' || sum(Zenkaigaku + NTotal) FROM ") + c.ledger).toString(), "13:0");
    }
    EXPECT_TRUE(dlg.of("Tell").isEmpty());
}

TEST_F(CashRegisterTest, WhichLedgerRowsADepositReaches)
{
    struct Case {
        qint64 tor;
        std::optional<qint64> nou;
        const char* date;
        int month;
        qint64 own, dest;   // NTotal of the month on the customer's row and on destination 6; -1 no row
    } cases[] = {
        {1, 6, "2026/5/15", 5, -1, 3000},    // billed on its own: the customer's row is not reached
        {1, 0, "2026/6/15", 6, 3000, 0},     // "得意先" in the list: the customer itself
        {2, {}, "2026/5/15", 5, 3000, -1},   // no destinations at all
    };
    // Offered: "得意先" and 6; destination 5 is billed through the customer.
    CashSlipEditor ed("Dny");
    startCash(ed, "0", 1);
    ASSERT_EQ(ed.nouEntries.size(), 2);
    EXPECT_EQ(ed.nouEntries[1].text, "南店 南口");
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.tor << "/" << c.nou.value_or(-1));
        const SlipSaveResult r = deposit(c.tor, c.date, {3000}, c.nou);
        ASSERT_TRUE(r.saved);
        EXPECT_EQ(tto(c.tor, 0, c.month, "NTotal"), c.own);
        EXPECT_EQ(tto(c.tor, 6, c.month, "NTotal"), c.dest);
        EXPECT_EQ(slipOne("SELECT NouCode FROM Dny WHERE Dno=?", {qlonglong(r.dno)}).toLongLong(), c.nou.value_or(0));
    }
}

TEST_F(CashRegisterTest, APaymentTakesTheClosingDayByTheSupplierFlag)
{
    // 22 May: the company closes on the 25th (May), supplier 2 on its own 20th (June).
    struct Case { qint64 sir; int month; const char* caption; } cases[] = {{1, 5, "6 月25日締"}, {2, 6, "6 月20日締"}};
    for (const Case& c : cases) {
        CashSlipEditor ed("Dsh");
        startCash(ed, "0", c.sir);
        ed.head.Day = "22";
        row(ed, 0, 4, "8800", "手形");
        ASSERT_TRUE(save(ed).saved);
        EXPECT_EQ(tsi(c.sir, c.month, "Tegata"), 8800) << c.sir;
        EXPECT_EQ(slipOne("SELECT Zan FROM Tsi WHERE SirCode=?", {c.sir}).toLongLong(), yen(-8800));
        startCash(ed, "0", c.sir);
        EXPECT_EQ(ed.panel.Captions[2], c.caption);
    }
    EXPECT_EQ(slipOne("SELECT Snaiyo FROM Dsh WHERE Dno=1").toString(), "手形");
}

TEST_F(CashRegisterTest, ThePanelBeforeAndAfterTheFirstSave)
{
    CashSlipEditor ed("Dny");
    startCash(ed, "0", 2);
    EXPECT_EQ(ed.panel.Zandaka, "          -");
    EXPECT_EQ(ed.panel.Captions[0], "4 月");
    row(ed, 0, 3, "10000");
    ASSERT_TRUE(save(ed).saved);
    slipRun("UPDATE TtoD SET KTotal=?, Zeigaku=? WHERE TorCode=2 AND Getudo=5", {yen(20000), yen(1000)});
    slipRun("UPDATE TtoD SET Zenkaigaku=? WHERE TorCode=2 AND Getudo=4", {yen(1500)});

    startCash(ed, "0", 2);
    EXPECT_EQ(ed.panel.Kurikoshi, "      1,500");
    EXPECT_EQ(ed.panel.Refers[1], "     21,000");   // May: sales with their tax
    EXPECT_EQ(ed.panel.Results[1], "     10,000");
    EXPECT_EQ(ed.panel.Refers[0], "          0");
    EXPECT_EQ(ed.panel.Results[11], "          0");   // March closes the year
    EXPECT_EQ(ed.panel.Zandaka, "    -10,000");        // Zan as the ledger holds it
    EXPECT_EQ(ed.panel.Captions[0], "4 月20日締");
    EXPECT_EQ(ed.panel.Captions[9], "1 月20日締");
}

TEST_F(CashRegisterTest, ACarriedBalanceReachesZanOfAPartnerWithoutAHead)
{
    struct Case { const char* kind; qint64 partner; std::optional<qint64> nou; const char* where; } cases[] = {
        {"Dny", 3, {}, "FROM Tto WHERE TorCode=3 AND NouCode=0"},
        {"Dny", 1, 6, "FROM Tto WHERE TorCode=1 AND NouCode=6"},
        {"Dsh", 2, {}, "FROM Tsi WHERE SirCode=2"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.where);
        CashSlipEditor ed(c.kind);
        startCash(ed, "0", c.partner, c.nou);
        ASSERT_TRUE(saveCarryOver(ed, "120,000"));
        EXPECT_EQ(slipOne(QStringLiteral("SELECT Zan ") + c.where).toLongLong(), yen(120000));
        EXPECT_EQ(ed.panel.Zandaka, "    120,000");
    }
    EXPECT_EQ(tto(3, 0, 13, "Zenkaigaku"), 120000);
    EXPECT_EQ(tto(1, 0, 4, "Zenkaigaku"), -1);   // the destination billed on its own keeps it
    // A deposit afterwards is carried from the typed opening.
    ASSERT_TRUE(deposit(3, "2026/5/15", {20000}).saved);
    EXPECT_EQ(zanTto(3, 0), 100000);
}

TEST_F(CashRegisterTest, AStoreFailureAfterTheRowsLeavesEverythingAsItWas)
{
    ASSERT_TRUE(deposit(2, "2026/5/15", {3000}).saved);
    const QStringList before = companySnapshot();
    // The rows are in; the ledger refuses.
    slipRun("CREATE TEMP TRIGGER fail_posting BEFORE UPDATE OF Genkin ON slip.TtoD "
            "BEGIN SELECT RAISE(ABORT, 'injected'); END");

    CashSlipEditor fresh("Dny");
    startCash(fresh, "0", 2);
    row(fresh, 0, 1, "5000");
    EXPECT_FALSE(save(fresh).saved);

    CashSlipEditor amend("Dny");
    load(amend, "1");
    amend.rows[0].Gaku = "9000";
    EXPECT_FALSE(save(amend).saved);
    EXPECT_FALSE(reverseCashSlip(amend));

    const QStringList told = dlg.of("Tell");
    ASSERT_EQ(told.size(), 3);
    for (const QString& t : told) EXPECT_TRUE(t.startsWith("エラー：")) << qPrintable(t);
    EXPECT_EQ(snapshotDifference(before, companySnapshot()), "");
    EXPECT_EQ(fresh.mode, "NEW");   // the typed slip stays to be saved again
}

// Both screens meet a number another station took meanwhile; the messages differ by one word,
// and the slip's counter moved on before its rows while the deposit's follows the number it got.
TEST_F(CashRegisterTest, TwoStationsSavingTheSameNewNumberEndWithTwoSlips)
{
    SecondStation other(co);
    SlipEditor slipMine("Dur"), slipTheirs("Dur");
    startSlip(slipMine, "0", 2);
    startSlip(slipTheirs, "0", 3);
    typeLine(slipMine, 0, "1001");
    typeLine(slipTheirs, 0, "1002");
    CashSlipEditor cashMine("Dny"), cashTheirs("Dny");
    startCash(cashMine, "0", 2);
    startCash(cashTheirs, "0", 3);
    row(cashMine, 0, 1, "1000");
    row(cashTheirs, 0, 1, "2000");
    struct Case {
        const char* kind;
        std::function<SlipSaveResult()> mine, theirs;
        const char* told;
        long counter;
    } cases[] = {
        {"Dur", [&] { return Register(slipMine, slipMine.mode); }, [&] { return Register(slipTheirs, slipTheirs.mode); },
         "伝票は、No.2で登録されました。", 2},
        {"Dny", [&] { return save(cashMine); }, [&] { return save(cashTheirs); }, "伝票は、No.2で保存されました。", 3},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.kind);
        dlg.log.clear();
        ASSERT_EQ(other.as(c.theirs).dno, 1);
        EXPECT_TRUE(dlg.of("Tell").isEmpty());
        const SlipSaveResult r = c.mine();
        EXPECT_EQ(r.dno, 2);
        EXPECT_TRUE(r.numberChanged);
        EXPECT_EQ(dlg.of("Tell"), QStringList{c.told});
        EXPECT_EQ(slipOne(QString("SELECT group_concat(Dno || ':' || TorCode) FROM (SELECT DISTINCT Dno, TorCode FROM %1 "
                                  "ORDER BY Dno)").arg(c.kind)).toString(), "1:3,2:2");
        EXPECT_EQ(GetNextDno(c.kind, 1), c.counter);
    }
    EXPECT_EQ(cashMine.number(), 2);
    EXPECT_EQ(tto(2, 0, 5, "NTotal"), 1000);
    EXPECT_EQ(tto(3, 0, 5, "NTotal"), 2000);
}

