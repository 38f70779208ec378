#include <gtest/gtest.h>
#include "LedgerFixture.h"
#include "ledgers/LedgerBatch.h"
#include "shell/Session.h"

TEST(LedgerBatch, MonthTaxIsTheRoundedTaxOfTheMonthSumWhateverTheRuns)
{
    // 1015 + 1016 = 2031 at 10 %: 203.1 on the month, while the lines alone would give 101 + 101.
    // The second run adds only the new amount but taxes the whole month again.
    struct Row { int hsu; qint64 tax; } rows[] = {{1, 203}, {2, 203}, {3, 204}};
    for (const Row& r : rows) {
        SCOPED_TRACE(r.hsu);
        LedgerCompany c;
        c.addTor(100, 1, 1, r.hsu);
        c.sale(1, QDate(2026, 5, 10), 100, 0, 5, {line(1015, 101)});
        c.batch();
        c.sale(2, QDate(2026, 5, 12), 100, 0, 5, {line(1016, 101)});
        c.batch();
        EXPECT_EQ(c.tto(100, 0, 5, {"Gaku", "KTotal", "Zeigaku", "Zenkaigaku"}), QString("2031/2031/%1/0").arg(r.tax));
        for (int m : {6, 13}) EXPECT_EQ(c.tto(100, 0, m, "Zenkaigaku"), 2031 + r.tax) << m;
        EXPECT_EQ(c.zan("Tto", TorWhere, {100, 0}), 2031 + r.tax);
        EXPECT_EQ(c.thi(A, 5, "UGaku"), 2031);
    }
}

TEST(LedgerBatch, CashSaleIsReceivedAtOnce)
{
    LedgerCompany c;
    c.addTor(100);
    c.sale(1, QDate(2026, 6, 1), 100, 0, 6, {line(1000, 100)}, 1);
    c.batch();
    EXPECT_EQ(c.tto(100, 0, 6, {"Gaku", "Genkin", "Zeigaku"}), "1000/1100/100");
    EXPECT_EQ(c.zan("Tto", TorWhere, {100, 0}), 0);
}

TEST(LedgerBatch, DestinationSlipsRaiseTheirRowAndTheCustomersRow)
{
    LedgerCompany c;
    c.addTor(100);
    c.addNou(100, 1, 1, QStringLiteral("東倉庫"));
    c.addNou(100, 2, 2, QStringLiteral("西店"));
    c.sale(1, QDate(2026, 5, 10), 100, 1, 5, {line(1015, 101)});
    c.sale(2, QDate(2026, 5, 11), 100, 2, 5, {line(1015, 101)});
    c.batch();
    for (int nou : {1, 2}) {
        EXPECT_EQ(c.tto(100, nou, 5, {"Gaku", "Zeigaku"}), "1015/101") << nou;
        EXPECT_EQ(c.zan("Tto", TorWhere, {100, nou}), 1116) << nou;
    }
    // The customer's row adds the destinations up; its tax is theirs, rounded per destination.
    EXPECT_EQ(c.tto(100, 0, 5, {"Gaku", "Zeigaku"}), "2030/202");
    EXPECT_EQ(c.zan("Tto", TorWhere, {100, 0}), 2232);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Tto WHERE TorCode=100 AND NouCode=2 AND NouNamae='西店' AND SeiFlag=2"), 1);
}

TEST(LedgerBatch, LineOfMonth13StaysOnRow13)
{
    LedgerCompany c;
    c.addTor(100);
    c.sale(1, QDate(2026, 5, 10), 100, 0, 5, {line(500, 50)});
    c.sale(2, QDate(2027, 3, 25), 100, 0, 13, {line(1000, 100)});
    c.batch();
    EXPECT_EQ(c.tto(100, 0, 13, {"Gaku", "Zeigaku"}), "1000/100");
    EXPECT_EQ(c.zan("Tto", TorWhere, {100, 0}), 550);
}

TEST(LedgerBatch, NegatedLinesAndTheirReplacementNetOut)
{
    LedgerCompany c;
    c.usual();
    session().TaxRateNew = Money::fromYen(5);
    c.sale(1, QDate(2026, 5, 10), 100, 0, 5, {line(1000, 50, 1, 10)});
    c.purchase(1, QDate(2026, 5, 10), 7, 5, {line(1000, 50, 1, 20)});
    c.batch();
    EXPECT_EQ(c.tsi(7, 5, "Zeigaku"), 50);

    c.negate("Dur", "Dud", 1);
    c.sale(1, QDate(2026, 5, 10), 100, 0, 5, {line(1200, 60, 1, 12)});
    c.negate("Dsr", "Dsd", 1);
    c.purchase(1, QDate(2026, 5, 10), 7, 5, {line(1100, 55, 1, 22)});
    c.batch();
    EXPECT_EQ(c.tto(100, 0, 5, {"Gaku", "Zeigaku"}), "1200/60");
    EXPECT_EQ(c.thi(A, 5, {"USuu", "SSuu", "TSuu"}), "12/22/10");
    // The supplier's run is taxed on its net delta of 100.
    EXPECT_EQ(c.tsi(7, 5, {"Gaku", "Zeigaku"}), "1100/55");
    EXPECT_EQ(c.count("SELECT (SELECT COUNT(*) FROM Dur WHERE Dno<0) + (SELECT COUNT(*) FROM Dud WHERE Dno<0) + "
                      "(SELECT COUNT(*) FROM Dsr WHERE Dno<0) + (SELECT COUNT(*) FROM Dsd WHERE Dno<0)"), 0);
}

TEST(LedgerBatch, SupplierTaxIsRoundedPerRun)
{
    // 5 % cut off: 10 and 10 in two runs give 0 + 0, in one run 1.
    for (int runs : {1, 2}) {
        LedgerCompany c;
        session().TaxRateNew = Money::fromYen(5);
        c.addSir(7, 1, 1, 1);
        c.purchase(1, QDate(2026, 7, 1), 7, 7, {line(10)});
        if (runs == 2) c.batch();
        c.purchase(2, QDate(2026, 7, 2), 7, 7, {line(10)});
        c.batch();
        EXPECT_EQ(c.tsi(7, 7, {"Gaku", "Zeigaku"}), runs == 1 ? "20/1" : "20/0") << runs;
    }
}

TEST(LedgerBatch, SupplierTaxByModeAndSettlement)
{
    LedgerCompany c;
    c.addSir(7, 1, 1, 1);       // per invoice
    c.addSir(8, 2, 1, 1);       // per slip: the lines' own tax
    c.purchase(1, QDate(2026, 7, 1), 7, 7, {line(1000, 99), line(300, 30, 2)});
    c.purchase(2, QDate(2026, 7, 1), 7, 7, {line(500, 50)}, 1);   // cash: no invoice tax
    c.purchase(3, QDate(2026, 7, 1), 8, 7, {line(1000, 77), line(100, 9, 4)});
    c.purchase(4, QDate(2026, 7, 1), 99, 7, {line(400, 40)});     // not in Sir
    c.batch();
    EXPECT_EQ(c.tsi(7, 7, {"Gaku", "Zeigaku", "Genkin"}), "1800/130/550");   // 100 on the invoice, 30 of 別計算
    EXPECT_EQ(c.tsi(8, 7, "Zeigaku"), 86);
    EXPECT_EQ(c.tsi(99, 7, {"Gaku", "Zeigaku"}), "400/0");
    EXPECT_EQ(c.zan("Tsi", "SirCode=99", {}), Missing);
    EXPECT_EQ(c.zan("Tsi", "SirCode=7 AND EigCode=1", {}), 1800 + 130 - 550);
}

TEST(LedgerBatch, OtherTaxModesArePostedToo)
{
    // Modes 2 and 3 add the lines' stored tax (cash slips and 別計算 included); mode 4 has none.
    struct Row { int mode; qint64 tax; } rows[] = {{2, 77 + 9 + 33}, {3, 77 + 9 + 33}, {4, 0}};
    for (const Row& r : rows) {
        LedgerCompany c;
        c.addTor(200, r.mode);
        c.sale(1, QDate(2026, 8, 3), 200, 0, 8, {line(1000, 77), line(100, 9, 4), line(210, 10, 2)});
        c.sale(2, QDate(2026, 8, 4), 200, 0, 8, {line(330, 33)}, 1);
        c.batch();
        SCOPED_TRACE(r.mode);
        EXPECT_EQ(c.tto(200, 0, 8, {"Gaku", "Zeigaku", "Genkin"}), QString("1640/%1/363").arg(r.tax));
        EXPECT_EQ(c.zan("Tto", TorWhere, {200, 0}), 1640 + r.tax - 363);
    }
}

TEST(LedgerBatch, OldAndNewRateOfOneMonthAddUp)
{
    LedgerCompany c;
    session().TaxChangeDate = QDate(2026, 9, 30);
    c.usual();
    c.sale(1, QDate(2026, 9, 25), 100, 0, 10, {line(1000, 80)});
    c.sale(2, QDate(2026, 10, 5), 100, 0, 10, {line(1000, 100)});
    c.purchase(1, QDate(2026, 9, 30), 7, 10, {line(1000, 80)});
    c.purchase(2, QDate(2026, 10, 1), 7, 10, {line(1000, 100)});
    c.batch();
    EXPECT_EQ(c.tto(100, 0, 10, "Zeigaku"), 180);
    EXPECT_EQ(c.tsi(7, 10, "Zeigaku"), 180);
}

TEST(LedgerBatch, ProductMonthIsTheDatesMonthCustomerMonthTheClosingMonth)
{
    LedgerCompany c(1);   // fiscal year January to December
    c.usual();
    c.sale(1, QDate(2026, 3, 25), 100, 0, 4, {line(1000, 100, 1, 5)});
    c.batch();
    EXPECT_EQ(c.thi(A, 3, "USuu"), 5);
    EXPECT_EQ(c.thi(A, 4, "USuu"), 0);
    EXPECT_EQ(c.tto(100, 0, 4, "Gaku"), 1000);
    EXPECT_EQ(c.tto(100, 0, 3, "Gaku"), 0);
    EXPECT_EQ(c.thi(A, 12, "TSuu"), -5);
    EXPECT_EQ(c.zan("Thi", "HinCode=?", {A}), -5);
}

TEST(LedgerBatch, ProductStockFollowsTheFiscalYearFromApril)
{
    LedgerCompany c;
    c.usual();
    const QString gone = QStringLiteral("0000000000099");
    c.purchase(1, QDate(2026, 4, 2), 7, 4, {line(1000, 100, 1, 100)});
    c.sale(1, QDate(2026, 4, 20), 100, 0, 4, {line(700, 70, 1, 30)});
    c.sale(2, QDate(2027, 2, 10), 100, 0, 2, {line(200, 20, 1, 10), line(50, 5, 1, 1, gone)});
    const QStringList texts = c.batch();

    EXPECT_EQ(c.thi(A, 4, {"SSuu", "STotal", "UTotal"}), "100/1000/1000");   // UTotal grows by the purchases
    struct Stock { int month; qint64 suu; } stock[] = {{4, 70}, {1, 70}, {2, 60}, {3, 60}};
    for (const Stock& s : stock) EXPECT_EQ(c.thi(A, s.month, "TSuu"), s.suu) << s.month;
    EXPECT_EQ(c.zan("Thi", "HinCode=?", {A}), 60);
    // A code gone from the product master gets its month rows but no head.
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM ThiD WHERE HinCode=?", {gone}), 13);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Thi WHERE HinCode=?", {gone}), 0);

    // April is posted before February: its chain runs to March, then February's.
    QStringList chain;
    for (const QString& t : texts)
        if (t.startsWith(QStringLiteral("商品台帳：Step 8 "))) chain << t.mid(12);
    EXPECT_EQ(chain.join(QLatin1Char(',')), QStringLiteral("5,6,7,8,9,10,11,12,1,2,3,3"));
}

TEST(LedgerBatch, FailureInTheLastPhaseLeavesTheStoreAsItWas)
{
    LedgerCompany c;
    c.usual();
    c.addNou(100, 1, 1);
    c.sale(1, QDate(2026, 5, 10), 100, 0, 5, {line(1000, 100)});
    c.purchase(1, QDate(2026, 5, 10), 7, 5, {line(500, 50)});
    c.batch();
    c.negate("Dur", "Dud", 1);
    c.sale(1, QDate(2026, 5, 10), 100, 1, 5, {line(1300, 130)});
    c.sale(2, QDate(2026, 6, 10), 100, 0, 6, {line(100, 10)}, 1);
    c.purchase(2, QDate(2026, 6, 10), 7, 6, {line(800, 80)});
    c.exec("CREATE TRIGGER slip.StopSupplier BEFORE INSERT ON TsiD BEGIN SELECT RAISE(ABORT, 'stopped'); END");
    const QStringList before = c.dump();

    QStringList texts;
    QString error;
    EXPECT_FALSE(runLedgerProcessing([&](const QString& t) { texts << t; }, &error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("エラー："))) << error.toStdString();
    EXPECT_TRUE(error.contains(QStringLiteral("stopped"))) << error.toStdString();
    EXPECT_TRUE(texts.contains(QStringLiteral("仕入伝票処理中")));   // it did get that far
    EXPECT_EQ(c.dump(), before);

    c.exec("DROP TRIGGER slip.StopSupplier");
    c.batch();
    EXPECT_EQ(c.tto(100, 1, 5, "Gaku"), 1300);
    EXPECT_EQ(c.tsi(7, 6, "Gaku"), 800);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Dud WHERE ThiFlag<>0 OR Dno<0"), 0);
}

TEST(LedgerBatch, SalesOfAnotherOfficeMissTheCustomerLedgerButLoseTheirMark)
{
    LedgerCompany c;
    c.usual();
    c.sale(1, QDate(2026, 5, 10), 100, 0, 5, {line(1000, 100)}, 0, 2);
    c.purchase(1, QDate(2026, 5, 10), 7, 5, {line(500, 50)}, 0, 2);
    c.batch();
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM TtoD"), 0);
    EXPECT_EQ(c.thi(A, 5, "USuu", 2), 1);
    EXPECT_EQ(c.tsi(7, 5, "Gaku", 2), 500);
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Dud WHERE ThiFlag<>0"), 0);
}
