#include <functional>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include "ProductsFixture.h"
#include "reports/Chouha.h"
#include "pageout/ExcelFixture.h"
#include "pageout/Vtml.h"
#include "support/RecordingSurface.h"

namespace {

const QString kHin = QStringLiteral("0000000000001");

QStringList trimmed(const QStringList& cells)
{
    QStringList out;
    for (const QString& c : cells) out << c.trimmed();
    return out;
}

class Cutoff : public SummaryCompany {
protected:
    void SetUp() override
    {
        SummaryCompany::SetUp();
        run("INSERT INTO Tor (Code, TbnCode, Kana, Namae, Sime) VALUES (5, 1, 'ﾌｸｵｶ', '福岡商会', 31)");
        // Customer 1 with a discount, 2 with an expense, 3 only returns, 4 sales and returns
        // that cancel. Staff 1 took the slips of 1 and 4, staff 2 those of 2 and 3.
        sale(1, QDate(2026, 4, 1), 1, {{kHin, "商品", 10, 1000, 0, 600}, {kHin, "値引", 1, -500, 2}}, 0, 1);
        sale(2, QDate(2026, 4, 10), 2, {{kHin, "商品", 5, 2000, 0, 1500}, {kHin, "運賃", 1, 300, 3}}, 0, 2);
        sale(3, QDate(2026, 4, 20), 3, {{kHin, "商品", -2, 1000, 1, 600}}, 0, 2);
        sale(4, QDate(2026, 4, 30), 4, {{kHin, "商品", 3, 1000, 0, 700}, {kHin, "商品", -3, 1000, 1, 700}}, 0, 1);
        // Another office and the day after the range stay out.
        sale(1, QDate(2026, 4, 5), 1, {{kHin, "商品", 1, 99999}}, 0, 1, 2);
        sale(5, QDate(2026, 5, 1), 1, {{kHin, "商品", 1, 77777}}, 0, 1);
        purchase(1, QDate(2026, 4, 10), 1, {{kHin, "商品", 100, 50}});
        purchase(2, QDate(2026, 4, 12), 7, {{kHin, "商品", 100, 20}});
    }

    static SummaryGrid runList(const QString& code, int order, MeiTResult expect = MeiTResult::Done,
                               const QDate& to = QDate(2026, 4, 30))
    {
        Chouha c(code);
        QString error;
        EXPECT_EQ(c.run(QDate(2026, 4, 1), to, order, &error), expect) << qPrintable(code + " " + error);
        return c.grid();
    }
};

} // namespace

TEST_F(Cutoff, SumsByPartnerKindCostAndMargin)
{
    struct Case {
        const char* code;
        int order;
        QList<QStringList> rows;   // trimmed cells; the "合計" row last
    };
    const QList<Case> cases = {
        {"URI", 1,
         {{"1", "東京商事", "10,000", "", "-500", "", "9,500", "6,000", "3,500", "36.84"},
          {"2", "大阪物産", "10,000", "", "", "300", "10,300", "7,500", "2,800", "27.18"},
          {"3", "京都屋", "", "-2,000", "", "", "-2,000", "-1,200", "-800", "40.00"},
          {"4", "奈良堂", "3,000", "-3,000", "", "", "", "", "", "0.00"},
          {"", "合計", "23,000", "-5,000", "-500", "300", "17,800", "12,300", "5,500", ""}}},
        // By sales: equal sales stand by code.
        {"URI", 2,
         {{"1", "東京商事", "10,000", "", "-500", "", "9,500", "6,000", "3,500", "36.84"},
          {"2", "大阪物産", "10,000", "", "", "300", "10,300", "7,500", "2,800", "27.18"},
          {"4", "奈良堂", "3,000", "-3,000", "", "", "", "", "", "0.00"},
          {"3", "京都屋", "", "-2,000", "", "", "-2,000", "-1,200", "-800", "40.00"},
          {"", "合計", "23,000", "-5,000", "-500", "300", "17,800", "12,300", "5,500", ""}}},
        {"TAN", 1,
         {{"1", "山田", "13,000", "-3,000", "-500", "", "9,500", "6,000", "3,500", "36.84"},
          {"2", "佐藤", "10,000", "-2,000", "", "300", "8,300", "6,300", "2,000", "24.10"},
          {"", "合計", "23,000", "-5,000", "-500", "300", "17,800", "12,300", "5,500", ""}}},
        {"KAI", 1,
         {{"1", "丸井商店", "5,000", "", "", "", "5,000", "", "5,000", "100.00"},
          {"7", "大和製作所", "2,000", "", "", "", "2,000", "", "2,000", "100.00"},
          {"", "合計", "7,000", "", "", "", "7,000", "", "7,000", ""}}},
        // The third order reads customers for suppliers too: supplier 1 takes customer 1's row.
        {"KAI", 3,
         {{"1", "東京商事", "5,000", "", "", "", "5,000", "", "5,000", "100.00"},
          {"2", "大阪物産", "", "", "", "", "", "", "", "0.00"},
          {"3", "京都屋", "", "", "", "", "", "", "", "0.00"},
          {"4", "奈良堂", "", "", "", "", "", "", "", "0.00"},
          {"5", "福岡商会", "", "", "", "", "", "", "", "0.00"},
          {"7", "大和製作所", "2,000", "", "", "", "2,000", "", "2,000", "100.00"},
          {"", "合計", "7,000", "", "", "", "7,000", "", "7,000", ""}}},
    };
    for (const Case& c : cases) {
        const SummaryGrid g = runList(QString::fromLatin1(c.code), c.order);
        ASSERT_EQ(g.rows.size(), c.rows.size()) << c.code << c.order;
        for (int i = 0; i < c.rows.size(); ++i)
            EXPECT_EQ(trimmed(g.rows[i]), c.rows[i]) << c.code << c.order << " row " << i;
    }
}

TEST_F(Cutoff, AnAmendedPostedSlipCountsAsItStandsNotItsCancelledImage)
{
    // Sales slip 1 (customer 1, staff 1) amended after a ledger run: 10 at 1,000 with a
    // discount became 8 at 1,000 on the 2nd. Purchase slip 1 went from 100 to 60 at 50.
    cancelPosted("Dur", "Dud", 1);
    sale(1, QDate(2026, 4, 2), 1, {{kHin, "商品", 8, 1000, 0, 600}}, 0, 1);
    cancelPosted("Dsr", "Dsd", 1);
    purchase(1, QDate(2026, 4, 10), 1, {{kHin, "商品", 60, 50}});
    struct Case {
        const char* code;
        int row;                // the amended partner's row, from 0
        QStringList partner;    // its trimmed cells
        QStringList total;      // the "合計" row
    };
    const QList<Case> cases = {
        {"URI", 0,
         {"1", "東京商事", "8,000", "", "", "", "8,000", "4,800", "3,200", "40.00"},
         {"", "合計", "21,000", "-5,000", "", "300", "16,300", "11,100", "5,200", ""}},
        {"TAN", 0,
         {"1", "山田", "11,000", "-3,000", "", "", "8,000", "4,800", "3,200", "40.00"},
         {"", "合計", "21,000", "-5,000", "", "300", "16,300", "11,100", "5,200", ""}},
        {"KAI", 0,
         {"1", "丸井商店", "3,000", "", "", "", "3,000", "", "3,000", "100.00"},
         {"", "合計", "5,000", "", "", "", "5,000", "", "5,000", ""}},
    };
    for (const Case& c : cases) {
        const SummaryGrid g = runList(QString::fromLatin1(c.code), 1);
        ASSERT_GE(g.rows.size(), 2) << c.code;
        EXPECT_EQ(trimmed(g.rows[c.row]), c.partner) << c.code;
        EXPECT_EQ(trimmed(g.rows.last()), c.total) << c.code;
    }
    // The 1st now holds only the image (and another office's slip): nothing to list.
    runList("URI", 1, MeiTResult::NoSlips, QDate(2026, 4, 1));
}

TEST_F(Cutoff, MeiTHoldsTheRunAfterwards)
{
    runList("URI", 3);
    EXPECT_EQ(one("SELECT COUNT(*) FROM MeiT").toInt(), 5);
    EXPECT_EQ(one("SELECT UGaku || '/' || HGaku || '/' || NGaku || '/' || KGaku || '/' || SGaku || '/' || Arari "
                  "FROM MeiT WHERE Code=1").toString(),
              "100000000/0/-5000000/0/60000000/35000000");
    // The next run empties it first.
    runList("TAN", 1);
    EXPECT_EQ(one("SELECT GROUP_CONCAT(Code || ':' || Namae) FROM MeiT").toString(), "1:山田,2:佐藤");
}

TEST_F(Cutoff, ARangeWithoutSlips)
{
    // Nothing in the range: no rows but the heads, and MeiT holds only what the order put in.
    for (int order : {1, 3}) {
        Chouha c("URI");
        EXPECT_EQ(c.run(QDate(2026, 6, 1), QDate(2026, 6, 30), order, nullptr), MeiTResult::NoSlips);
        EXPECT_EQ(c.grid().rowCount(), 1);
        EXPECT_EQ(one("SELECT COUNT(*) FROM MeiT").toInt(), order == 3 ? 5 : 0);
    }
}

TEST_F(Cutoff, AFailedRunLeavesMeiTAsItWasAndSaysWhy)
{
    runList("URI", 1);
    struct Case { const char* what; std::function<void()> spoil, mend; QString told; } cases[] = {
        {"a table gone", [] { run("ALTER TABLE Tan RENAME TO Tan2"); }, [] { run("ALTER TABLE Tan2 RENAME TO Tan"); },
         "エラー：1 no such table: Tan"},
        // Another station keeps the file past the wait: its lock is what the clerk hears of.
        {"another station writing",
         [] {
             setBusyTimeoutMs(50);
             QSqlDatabase other = QSqlDatabase::addDatabase("QSQLITE", "other-station");
             other.setDatabaseName(QFileInfo("MASTER.db").absoluteFilePath());
             ASSERT_TRUE(other.open());
             ASSERT_EQ(execSql(other, "BEGIN IMMEDIATE"), ErrorClass::None);
         },
         [] {
             execSql(QSqlDatabase::database("other-station", false), "ROLLBACK");
             QSqlDatabase::database("other-station", false).close();
             QSqlDatabase::removeDatabase("other-station");
         },
         "エラー：5 database is locked"},
    };
    for (const Case& k : cases) {
        k.spoil();
        Chouha c("TAN");
        QString error;
        EXPECT_EQ(c.run(QDate(2026, 4, 1), QDate(2026, 4, 30), 1, &error), MeiTResult::Failed) << k.what;
        k.mend();
        EXPECT_TRUE(error.startsWith(k.told)) << k.what << ": " << qPrintable(error);
        EXPECT_EQ(one("SELECT GROUP_CONCAT(Code) FROM MeiT").toString(), "1,2,3,4") << k.what;
        EXPECT_TRUE(c.rows().isEmpty()) << k.what;
    }
}

TEST_F(Cutoff, PrintedListWithPageAndRunningTotals)
{
    VtmlSetToday(QDate(2026, 5, 1));
    Chouha c("URI");
    ASSERT_EQ(c.run(QDate(2026, 4, 1), QDate(2026, 4, 30), 2, nullptr), MeiTResult::Done);
    RecordingOutput out;
    {
        ScopedPageOutput scope(&out);
        ASSERT_TRUE(c.print());
    }
    VtmlSetToday({});
    ASSERT_EQ(out.pages(), 1);
    const QStringList page = out.rec.only("T ");
    // The title centred on the 21600-twip page at size 20, the page and the date at the right.
    EXPECT_EQ(page.value(0), "T 9200,0 2026年売上明細表");
    EXPECT_TRUE(page.contains("T 16800,120 1ページ ")) << qPrintable(page.join('\n'));
    EXPECT_TRUE(page.contains("T 16560,360 2026年5月1日 金曜"));
    // Heads flush right over their columns: code 720 wide, name 3600, amounts 1320, gaps 480 then 120.
    EXPECT_TRUE(page.contains("T 6360,720 売上"));
    EXPECT_TRUE(page.contains("T 13320,720 売上額"));
    const QStringList texts = out.rec.texts();
    // By sales: customer 1 first; the net is the print's own column.
    const int first = int(texts.indexOf("     1"));
    ASSERT_GE(first, 0);
    EXPECT_EQ(texts.mid(first, 9), (QStringList{"     1", "東京商事", "     10,000", "           ", "       -500", "           ",
                                                "      9,500", "      6,000", "      3,500"}));
    // The totals of the page and the run.
    const int page1 = int(texts.indexOf("頁計："));
    ASSERT_GE(page1, 0);
    EXPECT_EQ(texts.mid(page1 + 1, 7), (QStringList{"     23,000", "     -5,000", "       -500", "        300", "     17,800",
                                                    "     12,300", "      5,500"}));
    EXPECT_TRUE(texts.contains("累計："));
}

TEST_F(Cutoff, SpreadsheetHoldsTheHeadsAndARowForEachPartner)
{
    Chouha c("KAI");
    ASSERT_EQ(c.run(QDate(2026, 4, 1), QDate(2026, 4, 30), 3, nullptr), MeiTResult::Done);
    const QString file = co.file("cutoff.xlsx");
    QString error;
    ASSERT_TRUE(c.exportTo(file, &error)) << qPrintable(error);
    SheetXml sheet(file);
    ASSERT_TRUE(sheet.ok);
    QStringList heads;
    for (const char* ref : {"A1", "B1", "C1", "D1", "E1", "F1", "G1", "H1", "I1"}) heads << sheet.cell(ref);
    EXPECT_EQ(heads, (QStringList{"コード", "仕入先名", "仕入", "返品", "値引", "経費", "税抜合計", "売上合計", "粗利"}));
    EXPECT_FALSE(sheet.has("J1"));
    // Customers first by the third order, supplier 7 last; money in yen as numbers.
    EXPECT_EQ(sheet.cell("A2"), "1");
    EXPECT_EQ(sheet.cell("B2"), "東京商事");
    EXPECT_EQ(sheet.cell("C2"), "5000");
    EXPECT_EQ(sheet.cell("I2"), "5000");
    EXPECT_EQ(sheet.cell("A7"), "7");
    EXPECT_EQ(sheet.cell("G7"), "2000");
    EXPECT_FALSE(sheet.has("A8"));
}

TEST_F(Cutoff, PrintCommandMakesThePdfOfTheStaffList)
{
    const QString velmora = QCoreApplication::applicationDirPath() + QStringLiteral("/velmora");
    ASSERT_TRUE(QFile::exists(velmora));
    const QString pdf = co.file("staff.pdf");
    QProcess p;
    p.setWorkingDirectory(co.path());
    p.start(velmora, {"print", "cutoff", "--code", "TAN", "--from", "20260401", "--to", "20260430", "--order", "2",
                      "--pdf", pdf});
    ASSERT_TRUE(p.waitForFinished(60000));
    EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    QProcess text;
    text.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    ASSERT_TRUE(text.waitForFinished(30000));
    const QString out = QString::fromUtf8(text.readAllStandardOutput());
    EXPECT_TRUE(out.contains("担当者別売上")) << qPrintable(out);
    // 山田 first by sales, with the margin; 佐藤 after.
    EXPECT_LT(out.indexOf("山田"), out.indexOf("佐藤"));
    EXPECT_TRUE(out.contains("13,000"));
    EXPECT_TRUE(out.contains("3,500"));

    // A range without slips: said on standard error, exit 1, no file.
    const QString none = co.file("none.pdf");
    p.start(velmora, {"print", "cutoff", "--code", "URI", "--from", "20260601", "--to", "20260630", "--pdf", none});
    ASSERT_TRUE(p.waitForFinished(60000));
    EXPECT_EQ(p.exitCode(), 1);
    EXPECT_TRUE(QString::fromUtf8(p.readAllStandardError()).contains("対象の伝票がありません。"));
    EXPECT_FALSE(QFile::exists(none));
}
