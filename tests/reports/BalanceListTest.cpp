#include <memory>
#include "reports/LedgerReportFixture.h"
#include "reports/RepoSales.h"
#include "reports/Zandaka.h"
#include "shell/Session.h"

namespace {

// Each screen row "code|name|figures", then the line "合計".
QStringList listed(PartnerMonthList& l, int month, int sime)
{
    if (!l.read(month, sime)) return {"failed"};
    QStringList out;
    for (int r = 0; r < l.rowCount; ++r) out << l.screenRow(r).join('|');
    return out << "合計|" + l.totals().join('|');
}

}  // namespace

class PartnerList : public PartnerReportTest {};

TEST_F(PartnerList, RowsAndTotalsByListMonthAndClosingDay)
{
    struct Case {
        bool sales;
        const char* code;
        int month, sime;
        QStringList rows;
    };
    const QList<Case> cases = {
        // A destination billed on its own stands beside its customer.
        {false, "Uza", 5, 0,
         {"1|東京商事|0|3,000|-3,000|16,000|-1,000|1,500|13,500", "1-6|東京商事 南支店|0|2,000|-2,000|6,000|0|600|4,600",
          "2|大阪物産|0|0|0|1,500|0|150|1,650", "3|京都屋|5,500|3,000|2,500|0|0|0|2,500",
          "合計|5,500|8,000|-2,500|23,500|-1,000|2,250|22,250"}},
        // Every destination with movement; their rows show no balance and add nothing to the sums.
        {false, "UzaDtl", 5, 0,
         {"1|東京商事|0|3,000|-3,000|16,000|-1,000|1,500|13,500", "1-5|東京商事 北倉庫|0|0|0|10,000|-1,000|900|9,900",
          "1-6|東京商事 南支店|0|0|0|6,000|0|600|6,600", "2|大阪物産|0|0|0|1,500|0|150|1,650",
          "3|京都屋|5,500|3,000|2,500|0|0|0|2,500", "合計|5,500|6,000|-500|17,500|-1,000|1,650|17,650"}},
        // Customers with only a balance brought forward stand on their own rows.
        {false, "UzaDtl", 6, 0,
         {"1|東京商事|13,500|0|13,500|0|0|0|13,500", "2|大阪物産|1,650|0|1,650|4,000|0|400|6,050",
          "3|京都屋|2,500|0|2,500|0|0|0|2,500", "合計|17,650|0|17,650|4,000|0|400|22,050"}},
        // Month 13 is the row carried out of the year.
        {false, "Uza", 13, 0,
         {"1|東京商事|13,500|0|13,500|0|0|0|13,500", "1-6|東京商事 南支店|4,600|0|4,600|0|0|0|4,600",
          "2|大阪物産|6,050|0|6,050|0|0|0|6,050", "3|京都屋|2,500|0|2,500|0|0|0|2,500", "合計|26,650|0|26,650|0|0|0|26,650"}},
        // A closing day keeps the customers of that day only.
        {false, "Uza", 5, 20, {"2|大阪物産|0|0|0|1,500|0|150|1,650", "合計|0|0|0|1,500|0|150|1,650"}},
        {false, "Kza", 5, 0, {"1|丸井商店|0|1,000|-1,000|1,000|0|100|100", "合計|0|1,000|-1,000|1,000|0|100|100"}},
        // The month's own movement; customer 3 only paid in May: listed, with zeros.
        {true, "Uza", 5, 0,
         {"1|東京商事|16,000|-1,000|1,500|16,500", "1-6|東京商事 南支店|6,000|0|600|6,600", "2|大阪物産|1,500|0|150|1,650",
          "3|京都屋|0|0|0|0", "合計|23,500|-1,000|2,250|24,750"}},
        {true, "Kza", 5, 0, {"1|丸井商店|1,000|0|100|1,100", "合計|1,000|0|100|1,100"}},
        // Any other code lists the customers.
        {true, "UzaDtl", 6, 20, {"2|大阪物産|4,000|0|400|4,400", "合計|4,000|0|400|4,400"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(QStringLiteral("%1 %2 month %3 closing %4").arg(c.sales).arg(c.code).arg(c.month).arg(c.sime).toStdString());
        std::unique_ptr<PartnerMonthList> l;
        if (c.sales) l = std::make_unique<RepoSales>(c.code);
        else l = std::make_unique<Zandaka>(c.code);
        EXPECT_EQ(listed(*l, c.month, c.sime), c.rows);
    }
    EXPECT_TRUE(dlg.log.isEmpty());
}

TEST_F(PartnerList, TitleAndPeriodFollowTheEraAndTheClosingDay)
{
    Zandaka z("Kza");
    ASSERT_TRUE(z.read(5, 31));
    EXPECT_EQ(z.title() + "/" + z.periodText(), "2026年度買掛残高一覧/2026年度 5月 末日締分");
    session().Hiz = 1;
    RepoSales s("Uza");
    ASSERT_TRUE(s.read(5, 20));
    EXPECT_EQ(s.title() + "/" + s.periodText(), "平成 38年度 売上一覧表/平成 38年度 5月 20日締分");
}

TEST_F(PartnerList, FieldChecksSayWhatIsWrong)
{
    const QString month = "月度の範囲は１から１３です。", sime = "締日の範囲は１から３１です。";
    const struct {
        const char* text;
        bool month;
        QString message;
        int value;
    } cases[] = {{"", true, month, 0}, {"0", true, month, 0}, {"14", true, month, 0}, {"1a", true, month, 0},
                 {"13", true, "", 13}, {" 5", true, "", 5},   {"", false, "", 0},      {"31", false, "", 31},
                 {"32", false, sime, 0}, {"-1", false, sime, 0}};
    for (const auto& c : cases) {
        int v = -7;
        EXPECT_EQ(c.month ? PartnerMonthList::checkMonth(c.text, &v) : PartnerMonthList::checkSime(c.text, &v), c.message) << c.text;
        EXPECT_EQ(v, c.message.isEmpty() ? c.value : -7) << c.text;
    }
}

TEST_F(PartnerList, NoRowsIsSaidAndClearsTheSums)
{
    Zandaka z("Kza");
    ASSERT_TRUE(z.read(5, 0));
    // Nothing bought or paid before May.
    EXPECT_EQ(listed(z, 4, 0), QStringList{"合計|0|0|0|0|0|0|0"});
    EXPECT_EQ(z.barMax, 0);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"対象がありません。"});
}

TEST_F(PartnerList, OnlyTheCurrentOfficeIsListed)
{
    sale(20, QDate(2026, 5, 3), 2, 0, 5, {{2, 500}});
    exec("UPDATE Dud SET EigCode=2 WHERE Dno=20");
    exec("UPDATE Dur SET EigCode=2 WHERE Dno=20");
    session().EigCode = 2;
    ledgerRun();
    Zandaka z("Uza");
    EXPECT_EQ(listed(z, 5, 0), QStringList({"2|大阪物産|0|0|0|1,000|0|100|1,100", "合計|0|0|0|1,000|0|100|1,100"}));
    session().EigCode = 1;
    EXPECT_EQ(listed(z, 5, 20).first(), "2|大阪物産|0|0|0|1,500|0|150|1,650");
}

TEST_F(PartnerList, SheetsHoldTheRowsAsNumbers)
{
    Zandaka z("UzaDtl");
    ASSERT_TRUE(z.read(5, 0));
    const ReportSheet s = z.sheet();
    ASSERT_EQ(s.rows.size(), 6);
    // The code alone; the name with its destination; the data's own deposit, the screen's total.
    EXPECT_EQ(s.rows[3], QVariantList({1LL, "東京商事 南支店", 0.0, 2000.0, -2000.0, 6000.0, 0.0, 600.0, 6600.0}));
    // The sales list keeps the code as the screen shows it.
    RepoSales u("Uza");
    ASSERT_TRUE(u.read(5, 0));
    EXPECT_EQ(u.sheet().rows[2], QVariantList({"1-6", "東京商事 南支店", 6000.0, 0.0, 600.0, 6600.0}));
}
