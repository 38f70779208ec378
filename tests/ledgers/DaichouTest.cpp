#include <gtest/gtest.h>
#include "LedgerFixture.h"
#include "ledgers/Daichou.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {

LedgerAmounts cash(qint64 yen)
{
    LedgerAmounts a;
    a.Genkin = Money::fromYen(yen);
    return a;
}

bool post(qint64 tor, qint64 nou, const LedgerAmounts& a, const QString& month, short seiFlag = 0)
{
    QString error;
    const bool ok = PostCustomer(tor, nou, a, month, 1, seiFlag, &error);
    EXPECT_TRUE(error.isEmpty()) << error.toStdString();
    return ok;
}

} // namespace

TEST(Daichou, CarryOfOneMonthByRowAndByBatch)
{
    // Zenkaigaku 1000, KTotal 500, Zeigaku 25, NTotal 300: the next month brings in 1225.
    for (bool byBatch : {false, true}) {
        LedgerCompany c;
        session().TaxRateNew = Money::fromYen(5);
        c.addTor(100);
        ASSERT_TRUE(post(100, 0, cash(300), QStringLiteral("4")));
        c.exec("UPDATE TtoD SET Zenkaigaku=? WHERE Getudo=4", {Money::fromYen(1000).toStore()});
        if (byBatch) {
            c.sale(1, QDate(2026, 4, 10), 100, 0, 4, {line(500, 25)});
            c.batch();
        } else {
            c.exec("UPDATE TtoD SET KTotal=?, Zeigaku=? WHERE Getudo=4",
                   {Money::fromYen(500).toStore(), Money::fromYen(25).toStore()});
            ASSERT_TRUE(CarryBalance(QStringLiteral("TTO"), 100, 0, 1));
        }
        SCOPED_TRACE(byBatch ? "batch" : "CarryBalance");
        EXPECT_EQ(c.tto(100, 0, 4, "Zenkaigaku"), 1000);
        EXPECT_EQ(c.tto(100, 0, 5, "Zenkaigaku"), 1225);
        EXPECT_EQ(c.tto(100, 0, 3, "Zenkaigaku"), 1225);
        EXPECT_EQ(c.zan("Tto", TorWhere, {100, 0}), 1225);
        if (byBatch) EXPECT_EQ(c.tto(100, 0, 13, "Zenkaigaku"), 1225);
    }
}

TEST(Daichou, CustomerPostingReachesTheDestinationAndTheCustomerRow)
{
    struct Row { bool destinations; qint64 nou; short seiFlag; qint64 own; qint64 dest; } rows[] = {
        {true, 0, 0, 1000, Missing},
        {true, 1, 1, 1000, 1000},
        {true, 1, 2, Missing, 1000},   // billed by itself: the customer's row is not reached
    };
    for (const Row& r : rows) {
        LedgerCompany c;
        c.addTor(100);
        if (r.destinations) c.addNou(100, 1, r.seiFlag);
        ASSERT_TRUE(post(100, r.nou, cash(1000), QStringLiteral("5"), r.seiFlag));
        SCOPED_TRACE(testing::Message() << r.destinations << " " << r.nou << " " << r.seiFlag);
        EXPECT_EQ(c.tto(100, 0, 5, "NTotal"), r.own);
        EXPECT_EQ(c.tto(100, 1, 5, "NTotal"), r.dest);
        // Every row reached carries the deposit through the year to its balance.
        for (qint64 nou : {qint64(0), qint64(1)}) {
            if ((nou == 0 ? r.own : r.dest) == Missing) continue;
            EXPECT_EQ(c.tto(100, nou, 13, "Zenkaigaku"), -1000);
            EXPECT_EQ(c.zan("Tto", TorWhere, {100, nou}), -1000);
        }
    }
}

TEST(Daichou, ReversedPostingRestoresEveryFigure)
{
    LedgerCompany c;
    c.addTor(100);
    c.addNou(100, 1, 1);
    ASSERT_TRUE(post(100, 1, cash(500), QStringLiteral("6"), 1));
    const QStringList before = c.dump();
    LedgerAmounts a;
    a.Genkin = Money::fromYen(1000);
    a.Furikomi = Money::fromRaw(2000015);   // 200.0015
    a.Chousei = Money::fromYen(-3);
    ASSERT_TRUE(post(100, 1, a, QStringLiteral("7"), 1));
    EXPECT_EQ(c.tto(100, 1, 7, "NTotal"), 1197);
    EXPECT_EQ(c.tto(100, 0, 7, "Furikomi"), 200);
    LedgerAmounts back;
    back.Genkin = -a.Genkin;
    back.Furikomi = -a.Furikomi;
    back.Chousei = -a.Chousei;
    ASSERT_TRUE(post(100, 1, back, QStringLiteral("7"), 1));
    EXPECT_EQ(c.dump(), before);
}

TEST(Daichou, FirstPostingMakesTheHeadFromTheMasters)
{
    LedgerCompany c;
    c.addTor(100);
    c.addNou(100, 3, 1, QStringLiteral("東倉庫"));
    c.addSir(7);
    ASSERT_TRUE(post(100, 3, cash(100), QStringLiteral("13"), 1));
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Tto WHERE TorCode=100 AND NouCode=3 AND TorNamae='得意先100' AND TbnCode=1 "
                      "AND TbnNamae='卸' AND NouNamae='東倉庫' AND SeiFlag=1 AND Nendo=2026 AND Sime=31"), 1);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Tto WHERE TorCode=100 AND NouCode=0 AND NouNamae=' '"), 1);
    EXPECT_EQ(c.tto(100, 3, 13, "Genkin"), 100);
    EXPECT_EQ(c.zan("Tto", TorWhere, {100, 3}), 0);   // row 13 lies behind the year's balance

    QString error;
    ASSERT_TRUE(PostLedger(QStringLiteral("TSI"), 7, 0, cash(300), QStringLiteral("5"), 1, 0, 0, &error));
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Tsi WHERE SirCode=7 AND SirNamae='仕入先7' AND SbnNamae='メーカー' AND Nendo=2026"), 1);
    EXPECT_EQ(c.tsi(7, 5, "NTotal"), 300);
    EXPECT_EQ(c.zan("Tsi", "SirCode=7", {}), -300);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM TsiD WHERE SirCode=7"), 13);
}

TEST(Daichou, PostingJoinsTheCallersUnitOfWork)
{
    LedgerCompany c;
    c.addTor(100);
    {
        UnitOfWork outer(c.db());
        ASSERT_TRUE(outer.active());
        ASSERT_TRUE(post(100, 0, cash(100), QStringLiteral("5")));
        EXPECT_EQ(c.tto(100, 0, 5, "Genkin"), 100);
        outer.rollback();
    }
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Tto"), 0);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM TtoD"), 0);
    QString error;
    EXPECT_FALSE(PostCustomer(100, 0, cash(100), QStringLiteral("RangeOver"), 1, 0, &error));
    EXPECT_TRUE(error.startsWith("対象年度の範囲内ではありません。"));
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Tto"), 0);
}
