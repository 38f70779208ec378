#include <functional>
#include <QFile>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include "ProductsFixture.h"
#include "entry/FormDriver.h"
#include "pageout/ExcelFixture.h"
#include "pageout/PrintRegistry.h"
#include "pageout/Vtml.h"
#include "reports/Chouha.h"
#include "reports/Chouha_frm.h"
#include "reports/QtSummaryPrints.h"
#include "support/RecordingSurface.h"

namespace {

const QString kHin = QStringLiteral("0000000000001");

class Cutoff : public SummaryCompany {
protected:
    void SetUp() override
    {
        SummaryCompany::SetUp();
        exec("INSERT INTO Tor (Code, TbnCode, Kana, Namae, Sime) VALUES (5, 1, 'ﾌｸｵｶ', '福岡商会', 31)");
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

    // April's list of `code` in `order`, each row its trimmed cells joined by "|".
    static QStringList listed(const QString& code, int order, MeiTResult expect = MeiTResult::Done,
                              const QDate& to = QDate(2026, 4, 30))
    {
        Chouha c(code);
        QString error;
        EXPECT_EQ(c.run(QDate(2026, 4, 1), to, order, &error), expect) << qPrintable(code + " " + error);
        const SummaryGrid g = c.grid();
        QStringList out;
        for (const QStringList& row : g.rows) {
            QStringList cells;
            for (const QString& cell : row) cells << cell.trimmed();
            out << cells.join('|');
        }
        return out;
    }
};

} // namespace

TEST_F(Cutoff, SumsByPartnerKindCostAndMargin)
{
    const QString total = "|合計|23,000|-5,000|-500|300|17,800|12,300|5,500|";
    const QString c1 = "1|東京商事|10,000||-500||9,500|6,000|3,500|36.84", c2 = "2|大阪物産|10,000|||300|10,300|7,500|2,800|27.18",
                  c3 = "3|京都屋||-2,000|||-2,000|-1,200|-800|40.00", c4 = "4|奈良堂|3,000|-3,000||||||0.00";
    EXPECT_EQ(listed("URI", 1), QStringList({c1, c2, c3, c4, total}));
    // By sales: equal sales stand by code; sales and returns that cancel rate 0.00.
    EXPECT_EQ(listed("URI", 2), QStringList({c1, c2, c4, c3, total}));
    EXPECT_EQ(listed("TAN", 1), QStringList({"1|山田|13,000|-3,000|-500||9,500|6,000|3,500|36.84",
                                             "2|佐藤|10,000|-2,000||300|8,300|6,300|2,000|24.10", total}));
    const QString kai = "|合計|7,000||||7,000||7,000|";
    EXPECT_EQ(listed("KAI", 1), QStringList({"1|丸井商店|5,000||||5,000||5,000|100.00",
                                             "7|大和製作所|2,000||||2,000||2,000|100.00", kai}));
    // The third order lists every customer, with zeros, for suppliers too: supplier 1 takes
    // customer 1's row.
    EXPECT_EQ(listed("KAI", 3), QStringList({"1|東京商事|5,000||||5,000||5,000|100.00", "2|大阪物産||||||||0.00",
                                             "3|京都屋||||||||0.00", "4|奈良堂||||||||0.00", "5|福岡商会||||||||0.00",
                                             "7|大和製作所|2,000||||2,000||2,000|100.00", kai}));
}

TEST_F(Cutoff, AnAmendedPostedSlipCountsAsItStandsNotItsCancelledImage)
{
    // Sales slip 1 (customer 1) amended after a ledger run: 10 at 1,000 with a discount became
    // 8 at 1,000 on the 2nd. Purchase slip 1 went from 100 to 60 at 50.
    cancelPosted("Dur", "Dud", 1);
    sale(1, QDate(2026, 4, 2), 1, {{kHin, "商品", 8, 1000, 0, 600}}, 0, 1);
    cancelPosted("Dsr", "Dsd", 1);
    purchase(1, QDate(2026, 4, 10), 1, {{kHin, "商品", 60, 50}});
    const QStringList uri = listed("URI", 1), kai = listed("KAI", 1);
    EXPECT_EQ(uri.first() + ";" + uri.last(),
              "1|東京商事|8,000||||8,000|4,800|3,200|40.00;|合計|21,000|-5,000||300|16,300|11,100|5,200|");
    EXPECT_EQ(kai.first() + ";" + kai.last(), "1|丸井商店|3,000||||3,000||3,000|100.00;|合計|5,000||||5,000||5,000|");
    // The 1st now holds only the image (and another office's slip): nothing to list.
    listed("URI", 1, MeiTResult::NoSlips, QDate(2026, 4, 1));
}

TEST_F(Cutoff, AFailedRunLeavesMeiTAsItWasAndSaysWhy)
{
    listed("URI", 1);
    std::unique_ptr<OtherStation> other;
    const struct {
        const char* what;
        std::function<void()> spoil, mend;
        QString told;
    } cases[] = {
        {"a table gone", [] { exec("ALTER TABLE Tan RENAME TO Tan2"); }, [] { exec("ALTER TABLE Tan2 RENAME TO Tan"); },
         "エラー：1 no such table: Tan"},
        // Another station keeps the file past the wait: its lock is what the clerk hears of.
        {"another station writing",
         [&] {
             setBusyTimeoutMs(50);
             other = std::make_unique<OtherStation>(QFileInfo("MASTER.db").absoluteFilePath());
             ASSERT_TRUE(other->exec("BEGIN IMMEDIATE"));
         },
         [&] { other.reset(); }, "エラー：5 database is locked"},
    };
    for (const auto& k : cases) {
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
    // The title centred on the 21600-twip page at size 20, the date at the right.
    EXPECT_EQ(page.value(0), "T 9200,0 2026年売上明細表");
    EXPECT_TRUE(page.contains("T 16560,360 2026年5月1日 金曜"));
    // By sales: customer 1 first; the net is the print's own column. Then the page's totals.
    const QStringList texts = out.rec.texts();
    const int first = int(texts.indexOf("     1"));
    ASSERT_GE(first, 0);
    EXPECT_EQ(texts.mid(first, 9), (QStringList{"     1", "東京商事", "     10,000", "           ", "       -500", "           ",
                                                "      9,500", "      6,000", "      3,500"}));
    const int page1 = int(texts.indexOf("頁計："));
    ASSERT_GE(page1, 0);
    EXPECT_EQ(texts.mid(page1 + 1, 7).join('|').remove(' '), "23,000|-5,000|-500|300|17,800|12,300|5,500");
}

TEST_F(Cutoff, PrintCommandWritesTheSheetOfTheChosenOrder)
{
    PrintRequest req;
    req.options = {{"code", "KAI"}, {"from", "20260401"}, {"to", "20260430"}, {"order", "3"}};
    req.xlsx = co.file("cutoff.xlsx");
    QString error;
    ASSERT_TRUE(printCutoff(req, &error)) << qPrintable(error);
    const SheetXml sheet(req.xlsx);
    QStringList cells;
    for (const char* ref : {"B1", "A2", "B2", "C2", "I2", "A7", "G7"}) cells << sheet.cell(ref);
    // Customers first by the third order, supplier 7 last; money in yen as numbers.
    EXPECT_EQ(cells.join('|'), "仕入先名|1|東京商事|5000|5000|7|2000");
    EXPECT_FALSE(sheet.has("A8"));
    // A range without slips is said and writes nothing.
    req.options = {{"code", "URI"}, {"from", "20260601"}, {"to", "20260630"}};
    req.xlsx = co.file("none.xlsx");
    EXPECT_FALSE(printCutoff(req, &error));
    EXPECT_EQ(error, "対象の伝票がありません。");
    EXPECT_FALSE(QFile::exists(req.xlsx));
}

namespace {

class CutoffForm : public Cutoff {
protected:
    QPointer<Chouha_frm> w;
    void SetUp() override
    {
        Cutoff::SetUp();
        session().MenuKey = QStringLiteral("TAN");
        w = new Chouha_frm;
        ASSERT_TRUE(showActive(w));
    }
    void TearDown() override { delete w.data(); }
    QString cell(int row, int col) const { return gridCell(w->List(), row, col); }
};

} // namespace

TEST_F(CutoffForm, ClerkRanksTheStaffBySales)
{
    EXPECT_EQ(w->Title()->text(), "2026年担当者別売上");
    for (const char* t : {"2026", "4", "1", "2026", "4", "30"}) enter(t);
    EXPECT_EQ(w->weekdays()->text(), "水曜");
    ASSERT_EQ(focused(), w->cbox());
    // PageDown switches the list to 売上順; Enter runs it.
    press(Qt::Key_PageDown);
    EXPECT_EQ(w->cbox()->currentText(), "売上順");
    press(Qt::Key_Return);
    QStringList rows;
    for (int r = 0; r < w->List()->rowCount(); ++r) rows << QStringList({cell(r, 1), cell(r, 2), cell(r, 8), cell(r, 9)}).join('|');
    EXPECT_EQ(rows, QStringList({"山田|13,000|3,500|36.84", "佐藤|10,000|2,000|24.10", "合計|23,000|5,500|"}));

    // A month without slips: said, and the grid keeps only its heads.
    for (int i = 0; i < 5; ++i) press(Qt::Key_Up);
    ASSERT_EQ(focused(), w->ebox()[1]);
    enter("6");
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    enter("6");
    press(Qt::Key_Return);
    ASSERT_EQ(focused(), w->cbox());
    press(Qt::Key_Return);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"対象の伝票がありません。"});
    EXPECT_EQ(w->List()->rowCount(), 0);

    press(Qt::Key_F1);
    EXPECT_EQ(focused(), w->ebox()[0]);
    EXPECT_EQ(w->cbox()->currentIndex(), 0);
}

TEST_F(CutoffForm, F9AndF10StraightAfterTheRangeRunTheListFirst)
{
    CaughtOutputs outputs;
    for (const char* t : {"2026", "4", "1", "2026", "4", "30"}) enter(t);
    ASSERT_EQ(focused(), w->cbox());
    press(Qt::Key_F9);
    ASSERT_TRUE(QTest::qWaitForWindowActive(w));
    EXPECT_EQ(outputs.pages, 1);
    EXPECT_EQ(w->List()->rowCount(), 3);
    EXPECT_EQ(focused(), w->cbox());
    press(Qt::Key_F10);
    ASSERT_EQ(outputs.sheets.size(), 1);
    EXPECT_TRUE(QFileInfo(outputs.sheets[0]).fileName().startsWith("担当者別売上"));
    const SheetXml sheet(outputs.sheets[0]);
    EXPECT_EQ(sheet.cell("B1") + sheet.cell("B2") + sheet.cell("I3"), "担当者名山田2000");
    EXPECT_FALSE(sheet.has("A4"));
    EXPECT_TRUE(dlg.of("Tell").isEmpty()) << qPrintable(dlg.log.join('|'));
}
