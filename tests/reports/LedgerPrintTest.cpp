#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include "pageout/PrintRegistry.h"
#include "pageout/Vtml.h"
#include "reports/LedgerReportCommands.h"
#include "reports/LedgerReportFixture.h"
#include "reports/LedgerReportPrint.h"
#include "reports/ListDaichou.h"
#include "reports/RepoSales.h"
#include "reports/Zandaka.h"
#include "shell/Session.h"
#include "support/RecordingSurface.h"

namespace {

LedgerRange customerMay(qint64 partner = 1)
{
    LedgerRange r;
    r.partner = partner;
    r.month = 5;
    return r;
}

// The texts drawn at one height, left to right as drawn.
QStringList textsAt(const RecordingSurface& s, int y)
{
    QStringList out;
    const QString mark = QStringLiteral(",%1 ").arg(y);
    for (const QString& l : s.only("T "))
        if (l.section(' ', 1, 1).endsWith(mark.trimmed())) out << l.section(' ', 2).trimmed();
    return out;
}

PrintRequest request(const QMap<QString, QString>& options, const QString& xlsx = {})
{
    PrintRequest q;
    q.options = options;
    q.xlsx = xlsx;
    return q;
}

// One part of the written workbook, as text.
QString xlsxPart(const QString& file, const QString& part)
{
    QProcess p;
    p.start(QStringLiteral("unzip"), {QStringLiteral("-p"), file, part});
    p.waitForFinished();
    return QString::fromUtf8(p.readAllStandardOutput());
}

}  // namespace

class LedgerPrint : public PartnerReportTest {
protected:
    RecordingOutput out;
    void SetUp() override
    {
        PartnerReportTest::SetUp();
        VtmlSetToday(QDate(2026, 6, 1));
    }
    void TearDown() override
    {
        VtmlSetToday(QDate());
        PartnerReportTest::TearDown();
    }
};

TEST_F(LedgerPrint, LedgerPrintsOldestFirstWithTheDateOnEveryRowAndMoneyInTheTotals)
{
    ListDaichou v;
    ASSERT_TRUE(v.Init(customerMay()));
    {
        ScopedPageOutput s(&out);
        ASSERT_TRUE(printLedgerView(v));
    }
    const RecordingSurface& p = out.rec;
    EXPECT_EQ(out.pages(), 1);
    EXPECT_TRUE(p.log.contains("T 480,120 5月度   東京商事"));
    EXPECT_EQ(textsAt(p, 720), QStringList({"前回請求額", "入金金額", "繰越金額", "今回売上額", "返品値引等", "消費税",
                                            "今回税込売上額", "税込売掛残高"}));
    EXPECT_EQ(textsAt(p, 960), QStringList({"0", "3,000", "-3,000", "16,000", "-1,000", "1,500", "16,500", "13,500"}));
    EXPECT_TRUE(p.log.contains("T 16800,960 13,500"));
    // Oldest first; the same date on two rows is printed on both; money rows end in "*".
    EXPECT_EQ(textsAt(p, 1828), QStringList({"5/10", "売  上", "ボールペン", "10", "1,000.00", "10,000", ""}));
    EXPECT_EQ(textsAt(p, 2116).mid(0, 2), QStringList({"5/12", "返  品"}));
    EXPECT_EQ(textsAt(p, 2404), QStringList({"5/12", "現  金", "5月分", "", "0.00", "3,000", "*"}));
    EXPECT_EQ(textsAt(p, 2692).last(), "*");
    // The deposits stay inside the amount's totals.
    EXPECT_EQ(textsAt(p, 3080), QStringList({"頁計：", "9", "14,000"}));
    EXPECT_EQ(textsAt(p, 3368), QStringList({"累計：", "9", "14,000"}));
    // The screen reads newest first again.
    EXPECT_EQ(v.rows.at(0, "Hizuke").toString(), "2026-05-22");
}

TEST_F(LedgerPrint, DatesModeAndDestinationsPrintTheirOwnHeads)
{
    LedgerRange r = customerMay();
    r.byMonth = false;
    r.startMonth = 5;
    r.startDay = 1;
    r.endMonth = 5;
    r.endDay = 20;
    ListDaichou v;
    ASSERT_TRUE(v.Init(r));
    {
        ScopedPageOutput s(&out);
        ASSERT_TRUE(printLedgerView(v));
    }
    EXPECT_TRUE(out.rec.log.contains("T 480,120 5月1日 より 5月20日 まで   東京商事"));
    EXPECT_TRUE(textsAt(out.rec, 720).isEmpty());
    EXPECT_EQ(textsAt(out.rec, 2792), QStringList({"頁計：", "9", "12,000"}));

    RecordingOutput supplier;
    r = customerMay();
    r.view = "Sdc";
    ASSERT_TRUE(v.Init(r));
    {
        ScopedPageOutput s(&supplier);
        ASSERT_TRUE(printLedgerView(v));
    }
    EXPECT_TRUE(supplier.rec.log.contains("T 9900,0 仕入先元帳"));
    EXPECT_EQ(textsAt(supplier.rec, 720).at(0), "前回未払額");
    EXPECT_EQ(textsAt(supplier.rec, 1828).mid(0, 2), QStringList({"5/8", "仕  入"}));
}

TEST_F(LedgerPrint, DetailedBalancesPrintTheDataAsItStands)
{
    Zandaka z("UzaDtl");
    ASSERT_TRUE(z.read(5, 0));
    {
        ScopedPageOutput s(&out);
        ASSERT_TRUE(printPartnerList(z));
    }
    const RecordingSurface& p = out.rec;
    EXPECT_TRUE(p.log.contains("T 2880,120 売 掛 残 高 一 覧 表"));
    EXPECT_TRUE(p.log.contains("T 7680,120 2026年度 5月   日締分"));
    // Row 1-6 keeps its own deposit and balance on paper, and its customer's name alone.
    EXPECT_EQ(textsAt(p, 1684), QStringList({"1", "東京商事", "0", "2,000", "-2,000", "6,000", "0", "600", "6,600", "4,600"}));
    EXPECT_EQ(textsAt(p, 2648), QStringList({"頁計：", "5,500", "8,000", "-2,500", "33,500", "-2,000", "3,150", "34,650",
                                             "32,150"}));
}

TEST_F(LedgerPrint, SalesListAddsItsOwnParts)
{
    books->exec("UPDATE TtoD SET KTotal=? WHERE TorCode=2 AND NouCode=0 AND Getudo=5", {yen(1400)});
    RepoSales s("Uza");
    ASSERT_TRUE(s.read(5, 20));
    {
        ScopedPageOutput so(&out);
        ASSERT_TRUE(printPartnerList(s));
    }
    EXPECT_TRUE(out.rec.log.contains("T 2880,120 売 上 一 覧 表"));
    EXPECT_EQ(textsAt(out.rec, 1108), QStringList({"2", "大阪物産", "1,500", "0", "150", "1,650"}));
}

TEST_F(LedgerPrint, HeadlessRequestsAreCheckedAndWriteTheSheet)
{
    struct Case {
        QMap<QString, QString> options;
        bool (*run)(const PrintRequest&, QString*);
        QString error;
    };
    const QList<Case> refused = {
        {{{"view", "Jdc"}, {"month", "5"}}, runLedgerPrint, "--view には Tdc（得意先元帳）か Sdc（仕入先元帳）を指定してください。"},
        {{{"view", "Tdc"}}, runLedgerPrint, "--month か、--from と --to のどちらかを指定してください。"},
        {{{"view", "Tdc"}, {"month", "5"}, {"from", "0501"}}, runLedgerPrint,
         "--month か、--from と --to のどちらかを指定してください。"},
        {{{"view", "Tdc"}, {"from", "0501"}}, runLedgerPrint, "--month か、--from と --to のどちらかを指定してください。"},
        {{{"view", "Tdc"}, {"month", "14"}}, runLedgerPrint, "範囲は１から１３です。"},
        {{{"view", "Tdc"}, {"from", "0501"}, {"to", "5/31"}}, runLedgerPrint, "--from と --to は月日を4桁（MMDD）で指定してください。"},
        {{{"view", "Tdc"}, {"from", "1301"}, {"to", "0531"}}, runLedgerPrint, "範囲は１から１２です。"},
        {{{"view", "Tdc"}, {"from", "0501"}, {"to", "0532"}}, runLedgerPrint, "範囲は１から３１です。"},
        {{{"view", "Tdc"}, {"month", "5"}, {"partner", "A1"}}, runLedgerPrint, "--partner にはコード（数字）を指定してください。"},
        {{{"view", "Sdc"}, {"month", "5"}, {"partner", "1"}, {"dest", "5"}}, runLedgerPrint,
         "--dest は得意先元帳（Tdc）で --partner と共に指定してください。"},
        {{{"list", "UzaDtl"}, {"month", "5"}}, runSalesPrint, "--list には Uza か Kza を指定してください。"},
        {{{"list", "Tza"}, {"month", "5"}}, runBalancePrint, "--list には Uza、UzaDtl か Kza を指定してください。"},
        {{{"list", "Uza"}, {"month", "0"}}, runBalancePrint, "月度の範囲は１から１３です。"},
        {{{"list", "Uza"}, {"month", "5"}, {"sime", "32"}}, runBalancePrint, "締日の範囲は１から３１です。"},
    };
    for (const Case& c : refused) {
        QString error;
        EXPECT_FALSE(c.run(request(c.options), &error));
        EXPECT_EQ(error, c.error);
    }
    EXPECT_TRUE(out.rec.log.isEmpty());

    // Nothing to list is told by the report itself.
    QString error;
    EXPECT_FALSE(runBalancePrint(request({{"list", "Kza"}, {"month", "4"}}), &error));
    EXPECT_EQ(error, "");
    EXPECT_EQ(dlg.of("Tell"), QStringList{"対象がありません。"});

    {
        ScopedPageOutput s(&out);
        ASSERT_TRUE(runLedgerPrint(request({{"view", "Tdc"}, {"month", "5"}, {"partner", "1"}, {"dest", "6"}}), &error));
    }
    EXPECT_TRUE(out.rec.log.contains("T 480,120 5月度   東京商事 南店"));

    QTemporaryDir dir;
    const QString file = dir.filePath("元帳.xlsx");
    ASSERT_TRUE(runLedgerPrint(request({{"view", "Tdc"}, {"from", "0501"}, {"to", "0531"}, {"partner", "1"}}, file), &error))
        << error.toStdString();
    const QString strings = xlsxPart(file, "xl/sharedStrings.xml");
    const QString sheet = xlsxPart(file, "xl/worksheets/sheet1.xml");
    for (const char* s : {"日  付", "売上金額", "返品", "現金", "0000000001001", "南支店分"})
        EXPECT_TRUE(strings.contains(QString::fromUtf8(s))) << s;
    // Row 5 is the last deposit, oldest first: its amount in the last column.
    EXPECT_TRUE(sheet.contains("<c r=\"I5\"") && sheet.contains("<v>2000</v>")) << sheet.toStdString();
    EXPECT_FALSE(sheet.contains("r=\"A6\""));

    const QString list = dir.filePath("残高.xlsx");
    ASSERT_TRUE(runBalancePrint(request({{"list", "UzaDtl"}, {"month", "5"}}, list), &error)) << error.toStdString();
    EXPECT_TRUE(xlsxPart(list, "xl/sharedStrings.xml").contains("東京商事 北倉庫"));
    EXPECT_TRUE(xlsxPart(list, "xl/worksheets/sheet1.xml").contains("r=\"I6\""));
}
