#include <functional>
#include <QTemporaryDir>
#include "pageout/ExcelFixture.h"
#include "pageout/PrintRegistry.h"
#include "pageout/Vtml.h"
#include "reports/LedgerReportCommands.h"
#include "reports/LedgerReportFixture.h"
#include "reports/LedgerReportPrint.h"
#include "reports/ListDaichou.h"
#include "reports/RepoSales.h"
#include "reports/Zandaka.h"
#include "support/RecordingSurface.h"

namespace {

PrintRequest request(const QMap<QString, QString>& options, const QString& xlsx = {})
{
    PrintRequest q;
    q.options = options;
    q.xlsx = xlsx;
    return q;
}

}  // namespace

class LedgerPrint : public PartnerReportTest {
protected:
    QStringList log;   // what the last print drew
    void SetUp() override
    {
        PartnerReportTest::SetUp();
        VtmlSetToday(QDate(2026, 6, 1));
    }
    void TearDown() override { VtmlSetToday(QDate()); }
    void print(const std::function<bool()>& run)
    {
        RecordingOutput out;
        {
            ScopedPageOutput s(&out);
            EXPECT_TRUE(run());
        }
        EXPECT_EQ(out.pages(), 1);
        log = out.rec.log;
    }
    // The texts drawn at one height, left to right as drawn.
    QStringList textsAt(int y) const
    {
        QStringList out;
        for (const QString& l : log)
            if (l.startsWith("T ") && l.section(' ', 1, 1).endsWith(QStringLiteral(",%1").arg(y))) out << l.section(' ', 2).trimmed();
        return out;
    }
};

TEST_F(LedgerPrint, LedgerPrintsOldestFirstWithTheDateOnEveryRowAndMoneyInTheTotals)
{
    ListDaichou v;
    ASSERT_TRUE(v.Init(month("Tdc", 1, 5)));
    print([&] { return printLedgerView(v); });
    EXPECT_TRUE(log.contains("T 480,120 5月度   東京商事"));
    EXPECT_EQ(textsAt(720), QStringList({"前回請求額", "入金金額", "繰越金額", "今回売上額", "返品値引等", "消費税",
                                         "今回税込売上額", "税込売掛残高"}));
    EXPECT_EQ(textsAt(960), QStringList({"0", "3,000", "-3,000", "16,000", "-1,000", "1,500", "16,500", "13,500"}));
    EXPECT_TRUE(log.contains("T 16800,960 13,500"));
    // Oldest first; the same date on two rows is printed on both; money rows end in "*".
    EXPECT_EQ(textsAt(1828), QStringList({"5/10", "売  上", "ボールペン", "10", "1,000.00", "10,000", ""}));
    EXPECT_EQ(textsAt(2116).mid(0, 2), QStringList({"5/12", "返  品"}));
    EXPECT_EQ(textsAt(2404), QStringList({"5/12", "現  金", "5月分", "", "0.00", "3,000", "*"}));
    EXPECT_EQ(textsAt(2692).last(), "*");
    // The deposits stay inside the amount's totals.
    EXPECT_EQ(textsAt(3080), QStringList({"頁計：", "9", "14,000"}));
    EXPECT_EQ(textsAt(3368), QStringList({"累計：", "9", "14,000"}));
    EXPECT_EQ(v.rows.at(0, "Hizuke").toString(), "2026-05-22");   // the screen is newest first again
}

TEST_F(LedgerPrint, DatesModePrintsItsRangeAndNoHeaderAmounts)
{
    ListDaichou v;
    ASSERT_TRUE(v.Init(dates("Tdc", 1, 5, 1, 5, 20)));
    print([&] { return printLedgerView(v); });
    EXPECT_TRUE(log.contains("T 480,120 5月1日 より 5月20日 まで   東京商事"));
    EXPECT_TRUE(textsAt(720).isEmpty());
    EXPECT_EQ(textsAt(2792), QStringList({"頁計：", "9", "12,000"}));
}

TEST_F(LedgerPrint, ListsPrintTheDataAsItStandsAndAddTheirParts)
{
    Zandaka z("UzaDtl");
    ASSERT_TRUE(z.read(5, 0));
    print([&] { return printPartnerList(z); });
    EXPECT_TRUE(log.contains("T 2880,120 売 掛 残 高 一 覧 表"));
    EXPECT_TRUE(log.contains("T 7680,120 2026年度 5月   日締分"));
    // Row 1-6 keeps its own deposit and balance on paper, and its customer's name alone.
    EXPECT_EQ(textsAt(1684), QStringList({"1", "東京商事", "0", "2,000", "-2,000", "6,000", "0", "600", "6,600", "4,600"}));
    EXPECT_EQ(textsAt(2648), QStringList({"頁計：", "5,500", "8,000", "-2,500", "33,500", "-2,000", "3,150", "34,650", "32,150"}));

    // The sales list prints the sum of the parts where its screen takes KTotal.
    exec("UPDATE TtoD SET KTotal=? WHERE TorCode=2 AND NouCode=0 AND Getudo=5", {yen(1400)});
    RepoSales s("Uza");
    ASSERT_TRUE(s.read(5, 20));
    EXPECT_EQ(s.screenRow(0).join('|') + "/" + s.totals().join('|'), "2|大阪物産|1,500|0|150|1,550/1,500|0|150|1,550");
    print([&] { return printPartnerList(s); });
    EXPECT_TRUE(log.contains("T 2880,120 売 上 一 覧 表"));
    EXPECT_EQ(textsAt(1108), QStringList({"2", "大阪物産", "1,500", "0", "150", "1,650"}));
}

TEST_F(LedgerPrint, HeadlessRequestsAreCheckedAndWriteTheSheet)
{
    const QString range = "--month か、--from と --to のどちらかを指定してください。";
    const struct {
        QMap<QString, QString> options;
        bool (*run)(const PrintRequest&, QString*);
        QString error;
    } refused[] = {
        {{{"view", "Jdc"}, {"month", "5"}}, runLedgerPrint, "--view には Tdc（得意先元帳）か Sdc（仕入先元帳）を指定してください。"},
        {{{"view", "Tdc"}}, runLedgerPrint, range},
        {{{"view", "Tdc"}, {"month", "5"}, {"from", "0501"}}, runLedgerPrint, range},
        {{{"view", "Tdc"}, {"from", "0501"}}, runLedgerPrint, range},
        {{{"view", "Tdc"}, {"from", "0501"}, {"to", "5/31"}}, runLedgerPrint, "--from と --to は月日を4桁（MMDD）で指定してください。"},
        {{{"view", "Tdc"}, {"month", "5"}, {"partner", "A1"}}, runLedgerPrint, "--partner にはコード（数字）を指定してください。"},
        {{{"view", "Sdc"}, {"month", "5"}, {"partner", "1"}, {"dest", "5"}}, runLedgerPrint,
         "--dest は得意先元帳（Tdc）で --partner と共に指定してください。"},
        {{{"list", "UzaDtl"}, {"month", "5"}}, runSalesPrint, "--list には Uza か Kza を指定してください。"},
        {{{"list", "Tza"}, {"month", "5"}}, runBalancePrint, "--list には Uza、UzaDtl か Kza を指定してください。"},
        {{{"list", "Uza"}, {"month", "5"}, {"sime", "32"}}, runBalancePrint, "締日の範囲は１から３１です。"},
    };
    for (const auto& c : refused)
        for (const bool checkOnly : {true, false}) {
            PrintRequest q = request(c.options);
            q.checkOnly = checkOnly;
            QString error;
            EXPECT_FALSE(c.run(q, &error));
            EXPECT_EQ(error, c.error);
        }
    // Nothing to list is told by the report itself.
    QString error;
    EXPECT_FALSE(runBalancePrint(request({{"list", "Kza"}, {"month", "4"}}), &error));
    EXPECT_EQ(error, "");
    EXPECT_EQ(dlg.of("Tell"), QStringList{"対象がありません。"});

    print([&] { return runLedgerPrint(request({{"view", "Tdc"}, {"month", "5"}, {"partner", "1"}, {"dest", "6"}}), &error); });
    EXPECT_TRUE(log.contains("T 480,120 5月度   東京商事 南店"));

    QTemporaryDir dir;
    const QString file = dir.filePath("元帳.xlsx");
    ASSERT_TRUE(runLedgerPrint(request({{"view", "Tdc"}, {"from", "0501"}, {"to", "0531"}, {"partner", "1"}}, file), &error))
        << error.toStdString();
    // Oldest first: row 5 is the last deposit, its amount in the last column.
    const SheetXml sheet(file);
    EXPECT_EQ(sheet.cell("A1") + sheet.cell("D2") + sheet.cell("B4") + sheet.cell("I5"), "日  付ボールペン現金2000");
    EXPECT_FALSE(sheet.has("A6"));
}
