#include <QSqlRecord>
#include "slips/CashFixture.h"
#include "slips/SlipNumbering.h"

class CashRegisterTest : public CashTest {
protected:
    // The saved slip of that number back on a screen, as Enter in the number field shows it.
    static void load(CashSlipEditor& ed, const QString& number)
    {
        ed.loadLists();
        ed.clearHead();
        ed.head.Dno = number;
        ed.enterNumber();
    }
};

TEST_F(CashRegisterTest, AmendingTenThousandToSevenThousandRaisesTheMonthBySevenThousand)
{
    ASSERT_TRUE(deposit(2, "2026/5/10", {500}).saved);   // another deposit of the month
    const qint64 before = tto(2, 0, 5, "Genkin");
    ASSERT_EQ(before, 500);

    CashSlipEditor ed("Dny");
    startCash(ed, "0", 2);
    row(ed, 0, 1, "10000", "5月分");
    const SlipSaveResult first = save(ed);
    ASSERT_TRUE(first.saved);
    EXPECT_EQ(first.dno, 2);
    EXPECT_EQ(tto(2, 0, 5, "Genkin"), before + 10000);

    CashSlipEditor again("Dny");
    load(again, "2");
    ASSERT_EQ(again.mode, "EDIT");
    EXPECT_EQ(again.rows[0].Gaku.trimmed(), "10,000");
    again.rows[0].Gaku = "7000";
    ASSERT_TRUE(save(again).saved);

    EXPECT_EQ(tto(2, 0, 5, "Genkin"), before + 7000);
    EXPECT_EQ(tto(2, 0, 5, "NTotal"), before + 7000);
    EXPECT_EQ(tto(2, 0, 6, "Zenkaigaku"), -(before + 7000));
    EXPECT_EQ(zanTto(2, 0), -(before + 7000));
    EXPECT_EQ(tto(2, 0, 13, "Zenkaigaku"), -(before + 7000));
    EXPECT_EQ(slipOne("SELECT count(*) FROM Dny WHERE Dno<0 OR NGaku<0").toInt(), 0);
    EXPECT_EQ(slipOne("SELECT NGaku FROM Dny WHERE Dno=2").toLongLong(), yen(7000));
    EXPECT_EQ(slipOne("SELECT Nnaiyo FROM Dny WHERE Dno=2").toString(), "5月分");
    EXPECT_EQ(GetNextDno("Dny", 1), 3);   // an amendment leaves the counter
}

TEST_F(CashRegisterTest, ADepositMovedToAnotherClosingMonthLeavesTheOldMonth)
{
    ASSERT_TRUE(deposit(2, "2026/5/15", {4000}).saved);
    EXPECT_EQ(tto(2, 0, 5, "Furikomi") + tto(2, 0, 5, "Genkin"), 4000);

    CashSlipEditor ed("Dny");
    load(ed, "1");
    ed.head.Day = "25";                  // past the 20th: June's closing
    ASSERT_TRUE(save(ed).saved);
    EXPECT_EQ(tto(2, 0, 5, "NTotal"), 0);
    EXPECT_EQ(tto(2, 0, 6, "Genkin"), 4000);
    EXPECT_EQ(tto(2, 0, 7, "Zenkaigaku"), -4000);
    EXPECT_EQ(tto(2, 0, 6, "Zenkaigaku"), 0);
    EXPECT_EQ(slipOne("SELECT Getudo FROM Dny WHERE Dno=1").toInt(), 6);
}

TEST_F(CashRegisterTest, DeletingLowersTheMonthAtOnce)
{
    ASSERT_TRUE(deposit(2, "2026/5/15", {3000, 2000}).saved);
    ASSERT_EQ(tto(2, 0, 5, "NTotal"), 5000);
    CashSlipEditor ed("Dny");
    load(ed, "1");
    ASSERT_TRUE(reverseCashSlip(ed));
    EXPECT_EQ(tto(2, 0, 5, "NTotal"), 0);
    EXPECT_EQ(zanTto(2, 0), 0);
    EXPECT_EQ(slipOne("SELECT count(*) FROM Dny").toInt(), 0);
    // Nothing left under the number: a second delete changes nothing.
    EXPECT_TRUE(reverseCashSlip(ed));
    EXPECT_EQ(tto(2, 0, 5, "NTotal"), 0);
}

TEST_F(CashRegisterTest, RowsAreWrittenUpToTheFirstGap)
{
    struct Case {
        const char* name;
        QList<std::pair<int, const char*>> rows;   // kind 1..6 (0 none), amount
        int written;
        qint64 nTotal;
    } cases[] = {
        {"kinds by rank", {{1, "100"}, {2, "200"}, {3, "300"}, {4, "400"}, {5, "500"}, {6, "-50"}}, 6, 1450},
        {"zero amount ends it", {{1, "1000"}, {3, "0"}, {4, "500"}}, 1, 1000},
        {"no kind ends it", {{1, "1000"}, {2, "700"}, {0, "900"}, {4, "500"}}, 2, 1700},
        {"a fraction of a yen rounds as shown", {{1, "1,234.5"}}, 1, 1235},
    };
    long number = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        CashSlipEditor ed("Dny");
        startCash(ed, "0", 3);
        for (int i = 0; i < c.rows.size(); ++i) row(ed, i, c.rows[i].first, c.rows[i].second);
        const SlipSaveResult r = save(ed);
        ASSERT_TRUE(r.saved);
        number = r.dno;
        EXPECT_EQ(slipOne("SELECT count(*) FROM Dny WHERE Dno=?", {qlonglong(number)}).toInt(), c.written);
        EXPECT_EQ(slipOne("SELECT max(Eda) FROM Dny WHERE Dno=?", {qlonglong(number)}).toInt(), c.written);
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
        const char* name;
        const char* kind;
        qint64 partner;
        const char* number;        // as typed; "0" takes the counter
        bool takenMeanwhile;       // another station saves the same number first
        long savedAs;
        long counterAfter;
        const char* head;          // the partner's ledger head
    } cases[] = {
        {"deposit at the counter", "Dny", 3, "0", false, 1, 2, "FROM Tto WHERE TorCode=3 AND NouCode=0 AND EigCode=1"},
        {"number typed ahead", "Dny", 2, "7", false, 7, 8, "FROM Tto WHERE TorCode=2 AND NouCode=0 AND EigCode=1"},
        {"payment", "Dsh", 2, "0", false, 1, 2, "FROM Tsi WHERE SirCode=2 AND EigCode=1"},
        {"number taken meanwhile", "Dsh", 1, "0", true, 3, 4, "FROM Tsi WHERE SirCode=1 AND EigCode=1"},
    };
    SecondStation other(co);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        dlg.log.clear();
        const QString table = c.kind;
        const int rowsBefore = slipOne("SELECT count(*) FROM " + table).toInt();
        CashSlipEditor ed(c.kind);
        startCash(ed, c.number, c.partner);
        ASSERT_EQ(ed.mode, "NEW");
        EXPECT_EQ(slipOne(QStringLiteral("SELECT count(*) ") + c.head).toInt(), 0);
        int rowsOfOthers = 0;
        if (c.takenMeanwhile) {
            CashSlipEditor theirs(c.kind);
            startCash(theirs, c.number, 2);
            row(theirs, 0, 1, "800");
            ASSERT_TRUE(other.as([&] { return save(theirs); }).saved);
            rowsOfOthers = 1;
        }
        const SlipSaveResult r = save(ed);
        ASSERT_TRUE(r.saved);
        EXPECT_EQ(r.dno, c.savedAs);
        EXPECT_EQ(ed.mode, "EDIT");
        EXPECT_EQ(slipOne("SELECT count(*) FROM " + table).toInt(), rowsBefore + rowsOfOthers);
        EXPECT_EQ(GetNextDno(c.kind, 1), c.counterAfter);
        EXPECT_EQ(slipOne(QStringLiteral("SELECT Zan ") + c.head).toLongLong(), 0);
        const QString months = QString(c.head).replace("FROM Tto ", "FROM TtoD ").replace("FROM Tsi ", "FROM TsiD ");
        EXPECT_EQ(slipOne("SELECT count(*) " + months).toInt(), 13);
        EXPECT_EQ(slipOne("SELECT count(*) " + months + " AND (NTotal<>0 OR Genkin<>0 OR Zenkaigaku<>0)").toInt(), 0);
        const QStringList told = c.takenMeanwhile
                                     ? QStringList{"伝票は、No." + QString::number(c.savedAs) + "で保存されました。"}
                                     : QStringList{};
        EXPECT_EQ(dlg.of("Tell"), told);
    }
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
    struct Case { qint64 sir; int month; } cases[] = {{1, 5}, {2, 6}};
    for (const Case& c : cases) {
        CashSlipEditor ed("Dsh");
        startCash(ed, "0", c.sir);
        ed.head.Day = "22";
        row(ed, 0, 4, "8800", "手形");
        ASSERT_TRUE(save(ed).saved);
        EXPECT_EQ(tsi(c.sir, c.month, "Tegata"), 8800) << c.sir;
        EXPECT_EQ(slipOne("SELECT Getudo FROM Dsh WHERE SirCode=?", {c.sir}).toInt(), c.month);
        EXPECT_EQ(slipOne("SELECT Zan FROM Tsi WHERE SirCode=?", {c.sir}).toLongLong(), yen(-8800));
    }
    EXPECT_EQ(slipOne("SELECT Snaiyo FROM Dsh WHERE Dno=1").toString(), "手形");
    EXPECT_EQ(GetNextDno("Dsh", 1), 3);
}

TEST_F(CashRegisterTest, ThePanelBeforeAndAfterTheFirstSave)
{
    CashSlipEditor ed("Dny");
    startCash(ed, "0", 2);
    EXPECT_EQ(ed.panel.Zandaka, "          -");
    EXPECT_EQ(ed.panel.Captions[0], "4 月");
    EXPECT_TRUE(ed.panel.Results[1].isEmpty());
    row(ed, 0, 3, "10000");
    ASSERT_TRUE(save(ed).saved);
    slipRun("UPDATE TtoD SET KTotal=?, Zeigaku=? WHERE TorCode=2 AND Getudo=5", {yen(20000), yen(1000)});
    slipRun("UPDATE TtoD SET Zenkaigaku=? WHERE TorCode=2 AND Getudo=4", {yen(1500)});

    CashSlipEditor shown("Dny");
    startCash(shown, "0", 2);
    EXPECT_EQ(shown.panel.Kurikoshi, "      1,500");
    EXPECT_EQ(shown.panel.Refers[1], "     21,000");   // May: sales with their tax
    EXPECT_EQ(shown.panel.Results[1], "     10,000");
    EXPECT_EQ(shown.panel.Refers[0], "          0");
    EXPECT_EQ(shown.panel.Results[11], "          0");   // March closes the year
    EXPECT_EQ(shown.panel.Zandaka, "    -10,000");        // Zan as the ledger holds it
    EXPECT_EQ(shown.panel.Captions[0], "4 月20日締");
    EXPECT_EQ(shown.panel.Captions[9], "1 月20日締");

    // Suppliers: their own closing day only when flagged, else the company's.
    for (auto [sir, caption] : {std::pair{1, "6 月25日締"}, std::pair{2, "6 月20日締"}}) {
        CashSlipEditor pay("Dsh");
        startCash(pay, "0", sir);
        row(pay, 0, 1, "100");
        ASSERT_TRUE(save(pay).saved);
        startCash(pay, "0", sir);
        EXPECT_EQ(pay.panel.Captions[2], caption);
    }
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
        EXPECT_EQ(ed.panel.Zandaka, "          -");
        ASSERT_TRUE(saveCarryOver(ed, "120,000"));
        EXPECT_EQ(slipOne(QStringLiteral("SELECT Zan ") + c.where).toLongLong(), yen(120000));
        EXPECT_EQ(ed.panel.Kurikoshi, "    120,000");
        EXPECT_EQ(ed.panel.Zandaka, "    120,000");
    }
    EXPECT_EQ(tto(3, 0, 4, "Zenkaigaku"), 120000);
    EXPECT_EQ(tto(3, 0, 13, "Zenkaigaku"), 120000);
    EXPECT_EQ(tto(1, 0, 4, "Zenkaigaku"), -1);   // the destination billed on its own keeps it
    EXPECT_EQ(dlg.of("Tell"), QStringList(3, "繰越しを登録しました。"));

    // A deposit afterwards is carried from the typed opening.
    ASSERT_TRUE(deposit(3, "2026/5/15", {20000}).saved);
    EXPECT_EQ(zanTto(3, 0), 100000);
}

TEST_F(CashRegisterTest, AStoreFailureAfterTheRowsLeavesEverythingAsItWas)
{
    ASSERT_TRUE(deposit(2, "2026/5/15", {3000}).saved);
    const QStringList tables = {"Dny", "Tto", "TtoD", "Eig"};
    QList<QStringList> before;
    for (const QString& t : tables) before << dump(t);
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
    for (int i = 0; i < tables.size(); ++i) EXPECT_EQ(dump(tables[i]), before[i]) << qPrintable(tables[i]);
    EXPECT_EQ(fresh.mode, "NEW");   // the typed slip stays to be saved again
}

TEST_F(CashRegisterTest, TwoStationsSavingTheSameNewNumberEndWithTwoSlips)
{
    SecondStation other(co);
    CashSlipEditor mine("Dny"), theirs("Dny");
    startCash(mine, "0", 2);
    startCash(theirs, "0", 3);
    ASSERT_EQ(mine.number(), 1);
    ASSERT_EQ(theirs.number(), 1);
    row(mine, 0, 1, "1000");
    row(theirs, 0, 1, "2000");

    const SlipSaveResult first = other.as([&] { return save(theirs); });
    ASSERT_TRUE(first.saved);
    EXPECT_TRUE(dlg.of("Tell").isEmpty());
    const SlipSaveResult second = save(mine);
    ASSERT_TRUE(second.saved);
    EXPECT_EQ(second.dno, 2);
    EXPECT_EQ(mine.number(), 2);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"伝票は、No.2で保存されました。"});
    EXPECT_EQ(slipOne("SELECT TorCode FROM Dny WHERE Dno=1").toInt(), 3);
    EXPECT_EQ(slipOne("SELECT TorCode FROM Dny WHERE Dno=2").toInt(), 2);
    EXPECT_EQ(tto(2, 0, 5, "NTotal"), 1000);
    EXPECT_EQ(tto(3, 0, 5, "NTotal"), 2000);
    EXPECT_EQ(GetNextDno("Dny", 1), 3);
}

TEST_F(CashRegisterTest, ALockedStoreIsWaitedForThenToldAndNothingWritten)
{
    slipRun("PRAGMA busy_timeout = 150");
    SecondStation other(co);
    ASSERT_EQ(execSql(other.db(), "BEGIN IMMEDIATE"), ErrorClass::None);
    CashSlipEditor ed("Dny");
    startCash(ed, "0", 2);
    row(ed, 0, 1, "1000");
    EXPECT_FALSE(save(ed).saved);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"エラー：5 database is locked"});
    execSql(other.db(), "ROLLBACK");
    EXPECT_EQ(slipOne("SELECT count(*) FROM Dny").toInt(), 0);
    EXPECT_EQ(tto(2, 0, 5, "NTotal"), -1);
    EXPECT_TRUE(save(ed).saved);
    EXPECT_EQ(tto(2, 0, 5, "NTotal"), 1000);
}
