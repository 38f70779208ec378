#include "reports/LedgerReportFixture.h"
#include "reports/Zandaka.h"
#include "shell/Session.h"

namespace {

QStringList listed(const PartnerMonthList& l)
{
    QStringList out;
    for (int r = 0; r < l.rowCount; ++r) out << l.screenRow(r).join('|');
    return out;
}

}  // namespace

class BalanceList : public PartnerReportTest {};

TEST_F(BalanceList, RowsAndTotalsByListAndMonth)
{
    struct Case {
        const char* code;
        int month;
        int sime;
        QStringList rows;
        QString totals;
    };
    const QList<Case> cases = {
        // A destination billed on its own stands beside its customer.
        {"Uza", 5, 0,
         {"1|東京商事|0|3,000|-3,000|16,000|-1,000|1,500|13,500", "1-6|東京商事 南支店|0|2,000|-2,000|6,000|0|600|4,600",
          "2|大阪物産|0|0|0|1,500|0|150|1,650", "3|京都屋|5,500|3,000|2,500|0|0|0|2,500"},
         "5,500|8,000|-2,500|23,500|-1,000|2,250|22,250"},
        // Every destination with movement; their rows show no balance and add nothing to the sums.
        {"UzaDtl", 5, 0,
         {"1|東京商事|0|3,000|-3,000|16,000|-1,000|1,500|13,500", "1-5|東京商事 北倉庫|0|0|0|10,000|-1,000|900|9,900",
          "1-6|東京商事 南支店|0|0|0|6,000|0|600|6,600", "2|大阪物産|0|0|0|1,500|0|150|1,650",
          "3|京都屋|5,500|3,000|2,500|0|0|0|2,500"},
         "5,500|6,000|-500|17,500|-1,000|1,650|17,650"},
        // Customers with only a balance brought forward stand on their own rows.
        {"UzaDtl", 6, 0,
         {"1|東京商事|13,500|0|13,500|0|0|0|13,500", "2|大阪物産|1,650|0|1,650|4,000|0|400|6,050",
          "3|京都屋|2,500|0|2,500|0|0|0|2,500"},
         "17,650|0|17,650|4,000|0|400|22,050"},
        // Month 13 is the row carried out of the year.
        {"Uza", 13, 0,
         {"1|東京商事|13,500|0|13,500|0|0|0|13,500", "1-6|東京商事 南支店|4,600|0|4,600|0|0|0|4,600",
          "2|大阪物産|6,050|0|6,050|0|0|0|6,050", "3|京都屋|2,500|0|2,500|0|0|0|2,500"},
         "26,650|0|26,650|0|0|0|26,650"},
        // A closing day keeps the customers of that day only.
        {"Uza", 5, 20, {"2|大阪物産|0|0|0|1,500|0|150|1,650"}, "0|0|0|1,500|0|150|1,650"},
        {"Uza", 5, 31,
         {"1|東京商事|0|3,000|-3,000|16,000|-1,000|1,500|13,500", "1-6|東京商事 南支店|0|2,000|-2,000|6,000|0|600|4,600",
          "3|京都屋|5,500|3,000|2,500|0|0|0|2,500"},
         "5,500|8,000|-2,500|22,000|-1,000|2,100|20,600"},
        {"Kza", 5, 0, {"1|丸井商店|0|1,000|-1,000|1,000|0|100|100"}, "0|1,000|-1,000|1,000|0|100|100"},
        {"Kza", 6, 31, {"1|丸井商店|100|0|100|0|0|0|100"}, "100|0|100|0|0|0|100"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(QStringLiteral("%1 month %2 closing %3").arg(c.code).arg(c.month).arg(c.sime).toStdString());
        Zandaka z(c.code);
        ASSERT_TRUE(z.read(c.month, c.sime));
        EXPECT_EQ(listed(z), c.rows);
        EXPECT_EQ(z.totals().join('|'), c.totals);
    }
    EXPECT_TRUE(dlg.log.isEmpty());
}

TEST_F(BalanceList, TitlesHeadsAndPeriodFollowTheListAndTheEra)
{
    Zandaka z("Kza");
    ASSERT_TRUE(z.read(5, 31));
    EXPECT_EQ(z.title(), "2026年度買掛残高一覧");
    EXPECT_EQ(z.heads().mid(1, 4), QStringList({"仕入先名称", "前回未払額", "支払金額", "繰越金額"}));
    EXPECT_EQ(z.periodText(), "2026年度 5月 末日締分");
    session().Hiz = 1;
    Zandaka u("Uza");
    ASSERT_TRUE(u.read(5, 20));
    EXPECT_EQ(u.title(), "平成 38年度 売掛残高一覧");
    EXPECT_EQ(u.periodText(), "平成 38年度 5月 20日締分");
    ASSERT_TRUE(u.read(5, 0));
    EXPECT_EQ(u.periodText(), "平成 38年度 5月   日締分");
}

TEST_F(BalanceList, FieldChecksSayWhatIsWrong)
{
    struct Case {
        const char* text;
        bool month;
        QString message;
        int value;
    };
    const QList<Case> cases = {
        {"", true, "月度の範囲は１から１３です。", 0},   {"0", true, "月度の範囲は１から１３です。", 0},
        {"14", true, "月度の範囲は１から１３です。", 0}, {"1a", true, "月度の範囲は１から１３です。", 0},
        {"13", true, "", 13},                            {" 5", true, "", 5},
        {"", false, "", 0},                              {"0", false, "", 0},
        {"31", false, "", 31},                           {"32", false, "締日の範囲は１から３１です。", 0},
        {"-1", false, "締日の範囲は１から３１です。", 0},
    };
    for (const Case& c : cases) {
        int v = -7;
        const QString m = c.month ? PartnerMonthList::checkMonth(c.text, &v) : PartnerMonthList::checkSime(c.text, &v);
        EXPECT_EQ(m, c.message) << c.text;
        if (c.message.isEmpty()) {
            EXPECT_EQ(v, c.value) << c.text;
        }
    }
}

TEST_F(BalanceList, NoRowsIsSaidAndClearsTheSums)
{
    Zandaka z("Kza");
    ASSERT_TRUE(z.read(5, 0));
    // Nothing bought or paid before May.
    ASSERT_TRUE(z.read(4, 0));
    EXPECT_EQ(z.rowCount, 0);
    EXPECT_EQ(z.barMax, 0);
    EXPECT_EQ(z.totals().join('|'), "0|0|0|0|0|0|0");
    EXPECT_EQ(dlg.of("Tell"), QStringList{"対象がありません。"});
}

TEST_F(BalanceList, OnlyTheCurrentOfficeIsListed)
{
    books->sale(20, QDate(2026, 5, 3), 2, 0, 5, {{2, 500}});
    books->exec("UPDATE Dud SET EigCode=2 WHERE Dno=20");
    books->exec("UPDATE Dur SET EigCode=2 WHERE Dno=20");
    session().EigCode = 2;
    books->batch();
    Zandaka z("Uza");
    ASSERT_TRUE(z.read(5, 0));
    EXPECT_EQ(listed(z), QStringList{"2|大阪物産|0|0|0|1,000|0|100|1,100"});
    session().EigCode = 1;
    ASSERT_TRUE(z.read(5, 20));
    EXPECT_EQ(listed(z), QStringList{"2|大阪物産|0|0|0|1,500|0|150|1,650"});
}

TEST_F(BalanceList, PrintDeclaresItsColumnsAndComputedCells)
{
    Zandaka z("UzaDtl");
    ASSERT_TRUE(z.read(5, 0));
    const ReportDocument d = z.printDocument();
    QStringList names, gaps, totals;
    for (const VtmlField& f : d.fields) {
        names << f.Name;
        gaps << QString::number(f.Gap);
        totals << QString::number(f.Total != 0);
        EXPECT_EQ(f.FontSize, 12);
    }
    EXPECT_EQ(names.join(' '), "Tto.TorCode TorNamae Zenkaigaku NTotal @0 Gaku @1 Zeigaku @3 @2");
    EXPECT_EQ(gaps.join(' '), "120 120 240 240 720 360 240 960 720 720");
    EXPECT_EQ(totals.join(' '), "0 0 1 1 1 1 1 1 1 1");
    EXPECT_EQ(d.lines.at(3), "<FREE>2880,120,売 掛 残 高 一 覧 表");
    EXPECT_EQ(d.lines.at(6), "<FREE>7680,120,2026年度 5月   日締分");
    // The print has no special case for destination rows: row 1-5 keeps its own figures.
    struct Cell {
        int row, n;
        qint64 yen;
    };
    for (const Cell& c : {Cell{1, 0, 0}, Cell{1, 1, -1000}, Cell{1, 2, 9900}, Cell{1, 3, 9900}, Cell{4, 0, 2500},
                          Cell{4, 2, 2500}, Cell{0, 3, 16500}})
        EXPECT_EQ(z.alphaValue(c.n, c.row), Money::fromYen(c.yen)) << c.row << " " << c.n;
}

TEST_F(BalanceList, SheetHoldsTheScreenRowsAsNumbers)
{
    Zandaka z("UzaDtl");
    ASSERT_TRUE(z.read(5, 0));
    const ReportSheet s = z.sheet();
    ASSERT_EQ(s.rows.size(), 6);
    EXPECT_EQ(s.rows[0].at(1).toString(), "得意先");
    EXPECT_EQ(s.rows[0].at(8).toString(), "税込売掛残高");
    // The code alone; the name with its destination; the data's own balance, the screen's total.
    EXPECT_EQ(s.rows[2], QVariantList({1LL, "東京商事 北倉庫", 0.0, 0.0, 0.0, 10000.0, -1000.0, 900.0, 9900.0}));
    EXPECT_EQ(s.rows[5], QVariantList({3LL, "京都屋", 5500.0, 3000.0, 2500.0, 0.0, 0.0, 0.0, 2500.0}));
    EXPECT_EQ(z.sheetName(), "売掛残高一覧");
    Zandaka k("Kza");
    ASSERT_TRUE(k.read(5, 0));
    EXPECT_EQ(k.sheet().rows[0].at(2).toString(), "前回未払額");
}
