#include "reports/LedgerReportFixture.h"
#include "reports/RepoSales.h"
#include "shell/Session.h"

class SalesList : public PartnerReportTest {};

TEST_F(SalesList, MonthsMovementByPartnerWithItsSums)
{
    struct Case {
        const char* code;
        int month;
        QStringList rows;
        QString totals;
    };
    const QList<Case> cases = {
        // Customer 3 only paid in May: listed, with zeros.
        {"Uza", 5,
         {"1|東京商事|16,000|-1,000|1,500|16,500", "1-6|東京商事 南支店|6,000|0|600|6,600", "2|大阪物産|1,500|0|150|1,650",
          "3|京都屋|0|0|0|0"},
         "23,500|-1,000|2,250|24,750"},
        {"Uza", 13,
         {"1|東京商事|0|0|0|0", "1-6|東京商事 南支店|0|0|0|0", "2|大阪物産|0|0|0|0", "3|京都屋|0|0|0|0"}, "0|0|0|0"},
        {"Kza", 5, {"1|丸井商店|1,000|0|100|1,100"}, "1,000|0|100|1,100"},
        // Any other code lists the customers.
        {"UzaDtl", 6, {"1|東京商事|0|0|0|0", "1-6|東京商事 南支店|0|0|0|0", "2|大阪物産|4,000|0|400|4,400", "3|京都屋|0|0|0|0"},
         "4,000|0|400|4,400"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(QStringLiteral("%1 month %2").arg(c.code).arg(c.month).toStdString());
        RepoSales s(c.code);
        ASSERT_TRUE(s.read(c.month, 0));
        QStringList rows;
        for (int r = 0; r < s.rowCount; ++r) rows << s.screenRow(r).join('|');
        EXPECT_EQ(rows, c.rows);
        EXPECT_EQ(s.totals().join('|'), c.totals);
    }
}

TEST_F(SalesList, ScreenTakesKTotalWhereThePrintAddsItsParts)
{
    // A month row whose KTotal disagrees with its parts.
    books->exec("UPDATE TtoD SET KTotal=? WHERE TorCode=2 AND NouCode=0 AND Getudo=5", {yen(1400)});
    RepoSales s("Uza");
    ASSERT_TRUE(s.read(5, 20));
    ASSERT_EQ(s.rowCount, 1);
    EXPECT_EQ(s.screenRow(0).last(), "1,550");
    EXPECT_EQ(s.totals().last(), "1,550");
    EXPECT_EQ(s.alphaValue(2, 0), Money::fromYen(1650));
    EXPECT_EQ(s.alphaValue(1, 0), Money());
}

TEST_F(SalesList, TitlesPrintAndSheetFollowTheList)
{
    RepoSales k("Kza");
    ASSERT_TRUE(k.read(5, 0));
    EXPECT_EQ(k.title(), "2026年度仕入一覧表");
    EXPECT_EQ(k.heads(), QStringList({"コード", "仕入先名称", "仕入金額", "返品値引等", "消費税額", "税込買上額"}));
    const ReportDocument d = k.printDocument();
    QStringList names;
    for (const VtmlField& f : d.fields) names << f.Caption + "=" + f.Name;
    EXPECT_EQ(names.join(' '),
              " ｺｰﾄﾞ=Tsi.SirCode 仕 入 先 名 称=SirNamae 今回仕入金額=Gaku 返品値引等=@1 消 費 税=Zeigaku 今回税込仕入額=@2");
    EXPECT_EQ(d.lines.at(3), "<FREE>2880,120,仕 入 一 覧 表");
    const ReportSheet sheet = k.sheet();
    EXPECT_EQ(sheet.rows[0], QVariantList({"コード", "仕入先", "今回仕入金額", "返品値引等", "消費税額", "税込買上額"}));
    EXPECT_EQ(sheet.rows[1], QVariantList({"1", "丸井商店", 1000.0, 0.0, 100.0, 1100.0}));
    EXPECT_EQ(k.sheetName(), "仕入一覧表");

    RepoSales u("Uza");
    ASSERT_TRUE(u.read(5, 0));
    EXPECT_EQ(u.sheet().rows[2].at(0).toString(), "1-6");
    EXPECT_EQ(u.sheet().rows[0].at(5).toString(), "税込売上額");
}
