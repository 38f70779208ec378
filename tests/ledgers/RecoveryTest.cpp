#include <gtest/gtest.h>
#include "LedgerFixture.h"
#include "ledgers/Daichou.h"
#include "ledgers/Recovery.h"
#include "shell/Session.h"

namespace {

const QString B = QStringLiteral("0000000000002");

bool rebuild(RebuildKind kind, int from, int to)
{
    QString error;
    const bool ok = rebuildLedgers(kind, from, to, {}, &error);
    EXPECT_TRUE(error.isEmpty()) << error.toStdString();
    return ok;
}

// A deposit row and its posting, as the deposit screen saves them.
void deposit(LedgerCompany& c, int dno, qint64 tor, int getudo, int kubun, qint64 yen)
{
    c.exec("INSERT INTO Dny (Dno, Eda, EigCode, Hizuke, TorCode, NouCode, Kubun, NGaku, Getudo) VALUES (?, 1, 1, '2026-06-01', ?, 0, ?, ?, ?)",
           {dno, tor, kubun, Money::fromYen(yen).toStore(), getudo});
    LedgerAmounts a;
    (kubun == 1 ? a.Genkin : a.Furikomi) = Money::fromYen(yen);
    EXPECT_TRUE(PostCustomer(tor, 0, a, QString::number(getudo), 1, 0));
}

void payment(LedgerCompany& c, int dno, qint64 sir, int getudo, qint64 yen)
{
    c.exec("INSERT INTO Dsh (Dno, Eda, EigCode, Hizuke, SirCode, Kubun, sGaku, Getudo) VALUES (?, 1, 1, '2026-06-01', ?, 4, ?, ?)",
           {dno, sir, Money::fromYen(yen).toStore(), getudo});
    LedgerAmounts a;
    a.Tegata = Money::fromYen(yen);
    EXPECT_TRUE(PostLedger(QStringLiteral("TSI"), sir, 0, a, QString::number(getudo), 1, 0, 0));
}

} // namespace

TEST(Recovery, MonthRangeWrapsAroundTheYear)
{
    struct Row { int from, to; QList<int> months; } rows[] = {
        {4, 4, {4}}, {11, 2, {11, 12, 1, 2}}, {3, 2, {3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 1, 2}},
        {0, 4, {}}, {4, 13, {}},
    };
    for (const Row& r : rows) EXPECT_EQ(rebuildMonths(r.from, r.to), r.months) << r.from << "-" << r.to;
}

TEST(Recovery, RebuildOfCreditSalesGivesWhatTheBatchWrote)
{
    LedgerCompany c;
    c.addTor(100, 1, 1, 1);
    c.addTor(101, 1, 1, 2);
    c.addSir(7, 1, 1, 3);
    c.addHin(A);
    c.addHin(B);
    c.sale(1, QDate(2026, 4, 3), 100, 0, 4, {line(1015, 101, 1, 3), line(-120, -12, 1, -1, B, 1)});
    c.sale(2, QDate(2026, 4, 28), 100, 0, 5, {line(2033, 203, 1, 5, B)});
    c.sale(3, QDate(2026, 9, 9), 101, 0, 9, {line(777, 77, 1, 2), line(-50, -5, 1, 1, A, 2)});
    c.sale(4, QDate(2027, 2, 1), 101, 0, 2, {line(3001, 300, 1, 7, B)});
    c.purchase(1, QDate(2026, 4, 1), 7, 4, {line(5003, 500, 1, 40), line(999, 99, 1, 30, B)});
    c.purchase(2, QDate(2026, 10, 1), 7, 10, {line(1234, 123, 1, 10, B)});
    c.batch();
    // An amendment on top, so the slips hold posted and replaced lines.
    c.negate("Dur", "Dud", 3);
    c.sale(3, QDate(2026, 9, 9), 101, 0, 9, {line(800, 80, 1, 2)});
    c.batch();
    deposit(c, 1, 100, 5, 1, 1000);
    deposit(c, 2, 101, 9, 3, 500);
    payment(c, 1, 7, 6, 3000);
    const QStringList after = c.dump();

    // As an interrupted run would leave them: the finished part counted twice, balances stale.
    for (const char* t : {"TtoD", "TsiD"})
        c.exec(QStringLiteral("UPDATE %1 SET Gaku=Gaku*2, HGaku=HGaku*2, NGaku=NGaku*2, Zeigaku=Zeigaku*2, KTotal=KTotal*2, "
                              "Genkin=Genkin*2, Furikomi=Furikomi*2, Tegata=Tegata*2, NTotal=NTotal*2, "
                              "Zenkaigaku=Zenkaigaku+7 WHERE Getudo<>4").arg(QString::fromLatin1(t)));
    // Amounts only: a month's own stock is not derived again by a rebuild.
    c.exec("UPDATE ThiD SET SGaku=SGaku*2, UGaku=UGaku*2, UHGaku=UHGaku*2, STotal=0, UTotal=0");
    c.exec("UPDATE Tto SET Zan=0");
    c.exec("UPDATE Tsi SET Zan=0");
    ASSERT_NE(c.dump(), after);

    ASSERT_TRUE(rebuild(RebuildKind::ALL, 4, 3));
    EXPECT_EQ(c.dump(), after);
}

TEST(Recovery, RebuildDiffersFromTheBatchWhereItShould)
{
    // The rebuild adds the tax of tax-inclusive lines and taxes credit slips only.
    struct Row { const char* what; SlipLine l; int headKubun; qint64 batchTax, rebuildTax; } rows[] = {
        {"tax-inclusive line", line(1000, 100, 2), 0, 0, 100},
        {"cash slip", line(1000, 100), 1, 100, 0},
    };
    for (const Row& r : rows) {
        LedgerCompany c;
        c.addTor(100);
        c.sale(1, QDate(2026, 5, 10), 100, 0, 5, {r.l}, r.headKubun);
        c.batch();
        EXPECT_EQ(c.tto(100, 0, 5, "Zeigaku"), r.batchTax) << r.what;
        ASSERT_TRUE(rebuild(RebuildKind::TTO, 5, 5));
        EXPECT_EQ(c.tto(100, 0, 5, {"Gaku", "Zeigaku"}), QString("1000/%1").arg(r.rebuildTax)) << r.what;
        EXPECT_EQ(c.zan("Tto", "TorCode=100 AND NouCode=0", {}), 1000 + r.rebuildTax - (r.headKubun ? 1100 : 0)) << r.what;
    }
}

TEST(Recovery, DestinationsRollUpWithTheirTaxAdded)
{
    LedgerCompany c;
    c.addTor(100);
    c.addNou(100, 1, 1);
    c.addNou(100, 2, 1);
    c.sale(1, QDate(2026, 5, 10), 100, 0, 5, {line(1015, 101)});
    c.sale(2, QDate(2026, 5, 11), 100, 1, 5, {line(1015, 101)});
    c.sale(3, QDate(2026, 5, 12), 100, 2, 5, {line(1015, 101)});
    c.batch();
    // The batch sets the customer's tax to its destinations' tax; the rebuild adds them to its own.
    EXPECT_EQ(c.tto(100, 0, 5, "Zeigaku"), 202);
    ASSERT_TRUE(rebuild(RebuildKind::TTO, 5, 5));
    EXPECT_EQ(c.tto(100, 0, 5, {"Gaku", "Zeigaku"}), "3045/303");
    EXPECT_EQ(c.tto(100, 1, 5, "Zeigaku"), 101);
    EXPECT_EQ(c.zan("Tto", "TorCode=100 AND NouCode=0", {}), 3348);
}

TEST(Recovery, ProductRebuildClearsSalesMarksAndMakesNoHeads)
{
    LedgerCompany c;
    c.addTor(100);
    c.addSir(7);
    c.sale(1, QDate(2026, 5, 10), 100, 0, 5, {line(1000, 100)});
    c.purchase(1, QDate(2026, 5, 10), 7, 5, {line(500, 50)});
    ASSERT_TRUE(rebuild(RebuildKind::TTO, 5, 5));
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Dud WHERE ThiFlag=-1"), 1);
    ASSERT_TRUE(rebuild(RebuildKind::THI, 5, 5));
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Dud WHERE ThiFlag=-1"), 0);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Dsd WHERE ThiFlag=-1"), 1);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM ThiD"), 0);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM TtoD"), 0);   // nor does the customer rebuild
}

TEST(Recovery, RepairNullsAndMasterNames)
{
    LedgerCompany c;
    c.addTor(100);
    c.addTor(101, 1, 1, 1, 9);   // class 9 does not exist
    c.addNou(100, 1, 1, QStringLiteral("旧倉庫"));
    c.addHin(A);
    c.sale(1, QDate(2026, 5, 10), 100, 1, 5, {line(1000, 100)});
    c.sale(2, QDate(2026, 5, 10), 101, 0, 5, {line(1000, 100)});
    c.batch();

    c.exec("UPDATE TtoD SET Genkin=NULL, KTotal=NULL WHERE Getudo=5");
    c.exec("UPDATE ThiD SET TSuu=NULL WHERE Getudo=6");
    ASSERT_TRUE(RepairNulls());
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM TtoD WHERE Genkin IS NULL"), 0);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM TtoD WHERE KTotal IS NULL"), 3);   // not among them
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM ThiD WHERE TSuu IS NULL"), 0);

    c.exec("UPDATE Tor SET Namae='新名', Sime=20");
    c.exec("UPDATE Tor SET TbnCode=2 WHERE Code=100");
    c.exec("UPDATE Nou SET Namae=''");
    c.exec("UPDATE Hin SET Namae='新商品'");
    ASSERT_TRUE(refreshMasterNames(MasterNames::Customers, {}, nullptr));
    ASSERT_TRUE(refreshMasterNames(MasterNames::Products, {}, nullptr));
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Tto WHERE TorCode=100 AND TorNamae='新名' AND TbnNamae='小売' AND Sime=20"), 2);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Tto WHERE TorCode=100 AND NouCode=1 AND NouNamae=' '"), 1);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Tto WHERE TorCode=101 AND TorNamae='得意先101'"), 1);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Thi WHERE HinNamae='新商品'"), 1);
}
