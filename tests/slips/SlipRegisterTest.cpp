#include "slips/SlipFixture.h"
#include "slips/SlipNumbering.h"
#include "slips/SlipRegister.h"

namespace {
struct Row {
    qint64 dno, eda, suu, utanka, ugaku, stanka, sgaku, zei, thi, getudo;
    QString code;
    bool operator==(const Row&) const = default;
};

QList<Row> lineRows(const QString& table = "Dud", const QString& where = "1=1")
{
    QList<Row> out;
    Query q(session().MasterDb,
            QStringLiteral("SELECT Dno, Eda, Suu, UTanka, UGaku, STanka, sGaku, ZeiGaku, ThiFlag, Getudo, HinCode "
                           "FROM %1 WHERE %2 ORDER BY Dno, Eda").arg(table, where));
    while (q.next()) {
        Row r;
        qint64* f[] = {&r.dno, &r.eda, &r.suu, &r.utanka, &r.ugaku, &r.stanka, &r.sgaku, &r.zei, &r.thi, &r.getudo};
        for (int i = 0; i < 10; ++i) *f[i] = q.value(i).toLongLong();
        r.code = q.value(10).toString();
        out << r;
    }
    return out;
}

// The head numbers, in order.
QString heads() { return slipOne("SELECT group_concat(Dno) FROM (SELECT Dno FROM Dur ORDER BY Dno)").toString(); }

void post() { slipRun("UPDATE Dud SET ThiFlag=0 WHERE ThiFlag=-1"); }
}  // namespace

class SlipRegisterTest : public SlipTest {
protected:
    // Slip `number` to customer 2: 2 x 1001 and 1 x 1003, with a blank line between them.
    SlipSaveResult saveTwoLines(const QString& number)
    {
        SlipEditor ed("Dur");
        startSlip(ed, number, 2);
        typeLine(ed, 0, "1001", "2");
        typeLine(ed, 2, "1003");
        ed.head.Tekiyo = "";
        return Register(ed, ed.mode);
    }
    // Opens slip `number` and replaces its lines by 5 x 1002.
    SlipSaveResult amend(long number)
    {
        SlipEditor ed("Dur");
        EXPECT_EQ(load(ed, QString::number(number)), SlipEditor::NumberOutcome::Edit);
        ed.rows[0].fHinCode = "";
        ed.rows[2].fHinCode = "";
        typeLine(ed, 1, "1002", "5");
        return Register(ed, ed.mode);
    }
};

TEST_F(SlipRegisterTest, NewSlipWritesHeadAndGaplessLines)
{
    SlipEditor ed("Dur");
    startSlip(ed, "0", 1, 5);
    ed.head.Tekiyo = "至急 納品のこと";
    ed.head.SNo = "77";
    typeLine(ed, 0, "1001", "2");
    typeLine(ed, 2, "1003");
    ed.head.Day = "20";
    const SlipSaveResult r = Register(ed, ed.mode);
    ASSERT_TRUE(r.saved);
    EXPECT_EQ(r.dno, 1);
    EXPECT_FALSE(r.numberChanged);
    EXPECT_TRUE(dlg.of("Tell").isEmpty());
    EXPECT_EQ(GetNextDno("Dur", 1), 2);

    Query h(session().MasterDb, "SELECT Hizuke, TanCode, TbnCode, TorCode, NouCode, Tekiyo, SNo, Kubun, EigCode FROM Dur");
    ASSERT_TRUE(h.next());
    EXPECT_EQ(h.value(0).toString(), "2026-05-20");
    const std::pair<int, int> cols[] = {{1, 2}, {2, 1}, {3, 1}, {4, 5}, {6, 77}, {7, 0}, {8, 1}};
    for (auto [col, v] : cols) EXPECT_EQ(h.value(col).toInt(), v) << col;
    EXPECT_EQ(h.value(5).toString(), "至急 納品のこと");

    // Destination 5 has no price for 1001: the product's 1,000, per line 5 percent.
    const QList<Row> expect = {
        {1, 1, 2, yen(1000), yen(2000), yen(600), yen(1200), yen(100), -1, 5, "0000000001001"},
        {1, 2, 1, yen(1050), yen(1000), yen(700), yen(700), yen(50), -1, 5, "0000000001003"},
    };
    EXPECT_EQ(lineRows(), expect);
}

TEST_F(SlipRegisterTest, CounterMovesOnlyForward)
{
    slipRun("UPDATE Eig SET DurNo=120");
    struct Case { const char* typed; bool notice; long saved; long counter; } cases[] = {
        {"100", true, 100, 120},    // an old free number leaves the counter alone
        {"0", false, 120, 121},     // 0 brings the counter
        {"900", true, 900, 901},    // far ahead moves it on
    };
    for (const Case& c : cases) {
        dlg.log.clear();
        SlipEditor ed("Dur");
        startSlip(ed, c.typed, 2);
        EXPECT_EQ(dlg.of("Tell").contains("伝票番号が連番でないですが、よろしいですか？"), c.notice) << c.typed;
        typeLine(ed, 0, "1001");
        EXPECT_EQ(Register(ed, ed.mode).dno, c.saved);
        EXPECT_EQ(GetNextDno("Dur", 1), c.counter) << c.typed;
    }
}

TEST_F(SlipRegisterTest, AmendingAnUnpostedSlipReplacesItsRows)
{
    ASSERT_TRUE(saveTwoLines("0").saved);
    const SlipSaveResult r = amend(1);
    ASSERT_TRUE(r.saved);
    EXPECT_EQ(r.dno, 1);
    EXPECT_EQ(heads(), "1");
    // The blanked lines are gone; per delivery slip the tax sits on the one outside-tax line.
    const QList<Row> expect = {{1, 1, 5, yen(2000), yen(10000), yen(1500), yen(7500), yen(500), -1, 5, "0000000001002"}};
    EXPECT_EQ(lineRows(), expect);
}

TEST_F(SlipRegisterTest, AmendingAPostedSlipLeavesItsNegativeImage)
{
    ASSERT_TRUE(saveTwoLines("0").saved);
    post();
    const QList<Row> before = lineRows();
    ASSERT_TRUE(amend(1).saved);

    EXPECT_EQ(heads(), "-1,1");
    const QList<Row> negative = lineRows("Dud", "Dno<0");
    ASSERT_EQ(negative.size(), 2);
    for (int i = 0; i < 2; ++i) {
        const Row& o = before[i];
        // Only quantity, price, amount and tax turn; sGaku and STanka keep their sign.
        const Row n = {-1, o.eda, -o.suu, -o.utanka, -o.ugaku, o.stanka, o.sgaku, -o.zei, -1, o.getudo, o.code};
        EXPECT_EQ(negative[i], n) << i;
    }
    EXPECT_EQ(lineRows("Dud", "Dno>0 AND ThiFlag=-1").size(), 1);

    // A second amendment before the ledger run deletes the new rows plainly.
    ASSERT_TRUE(amend(1).saved);
    EXPECT_EQ(heads(), "-1,1");
    EXPECT_EQ(lineRows("Dud", "Dno<0"), negative);
    EXPECT_EQ(lineRows("Dud", "Dno>0").size(), 1);
}

TEST_F(SlipRegisterTest, DeletingRemovesOrCancels)
{
    ASSERT_TRUE(saveTwoLines("0").saved);
    ASSERT_TRUE(saveTwoLines("0").saved);
    slipRun("UPDATE Dud SET ThiFlag=0 WHERE Dno=2");
    for (long n : {1L, 2L, 50L}) {
        SlipEditor ed("Dur");
        startSlip(ed, QString::number(n), 2);
        EXPECT_TRUE(cancelOldSlip(ed)) << n;
    }
    EXPECT_EQ(heads(), "-2");
    EXPECT_EQ(lineRows("Dud", "Dno<>-2").size(), 0);
    EXPECT_EQ(lineRows("Dud", "Dno=-2 AND ThiFlag=-1").size(), 2);

    // Outside the target year nothing is done.
    ASSERT_TRUE(saveTwoLines("0").saved);
    SlipEditor ed("Dur");
    load(ed, "3");
    ed.head.Year = "2025";
    EXPECT_FALSE(cancelOldSlip(ed));
    EXPECT_EQ(dlg.of("Tell").last(), "対象年度の範囲内ではありません。");
    EXPECT_EQ(heads(), "-2,3");
}

TEST_F(SlipRegisterTest, AFailureHalfWayLeavesTheStoreAsItWas)
{
    ASSERT_TRUE(saveTwoLines("0").saved);
    post();
    const QList<Row> before = lineRows();
    slipRun("CREATE TEMP TRIGGER fail_second_line BEFORE INSERT ON slip.Dud WHEN NEW.Eda = 2 "
            "BEGIN SELECT RAISE(ABORT, 'injected'); END");

    // A new slip of two lines and an amendment of the posted one both fail on their second line.
    SlipEditor fresh("Dur");
    startSlip(fresh, "0", 2);
    typeLine(fresh, 0, "1001");
    typeLine(fresh, 1, "1002");
    EXPECT_FALSE(Register(fresh, fresh.mode).saved);

    SlipEditor ed("Dur");
    load(ed, "1");
    EXPECT_FALSE(Register(ed, ed.mode).saved);

    const QStringList told = dlg.of("Tell");
    ASSERT_EQ(told.size(), 2);
    EXPECT_TRUE(told[0].startsWith("エラー：")) << qPrintable(told[0]);
    EXPECT_EQ(heads(), "1");
    EXPECT_EQ(lineRows(), before);
    EXPECT_EQ(GetNextDno("Dur", 1), 2);
}
