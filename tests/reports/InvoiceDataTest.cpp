#include <QDir>
#include <QTemporaryDir>
#include "reports/InvoiceData.h"
#include "reports/InvoiceFixture.h"
#include "reports/SeikyuRules.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "demo/DemoCompany.h"

TEST(InvoiceData, MeanUnitPriceIsCutTowardsMinusInfinity)
{
    const struct {
        qint64 yen, suu, mean;
    } cases[] = {{550, 5, 110}, {310, 3, 103}, {-310, 3, -104}, {310, -3, -104}, {-300, -3, 100},
                 {50, 0, 0}, {0, 0, 0}, {1, 2, 0}, {-1, 2, -1}};
    for (const auto& c : cases)
        EXPECT_EQ(meanUnitPrice(Money::fromYen(c.yen), c.suu), c.mean) << c.yen << "/" << c.suu;
    // A fraction of a yen in the amount counts too.
    EXPECT_EQ(meanUnitPrice(Money::fromRaw(-1), 1), -1);
}

TEST(InvoiceData, RangeAndDayChecksInTheirOrder)
{
    const char *month = "範囲は１から１２です。", *day = "範囲は１から３１です。";
    const struct {
        const char *month, *sime;
        SeikyuRefusal refusal;
        const char* message;
    } cases[] = {{"", "31", SeikyuRefusal::Month, month}, {"13", "", SeikyuRefusal::Month, month},
                 {" 0", "10", SeikyuRefusal::Month, month}, {"12", "32", SeikyuRefusal::Sime, day},
                 {"1", "", SeikyuRefusal::Sime, day},      {" 1", " 1", SeikyuRefusal::None, ""},
                 {"12", "31", SeikyuRefusal::None, ""}};
    for (const auto& c : cases) {
        const SeikyuCheck r = checkSeikyu(QString::fromUtf8(c.month), QString::fromUtf8(c.sime));
        EXPECT_EQ(r.refusal, c.refusal) << c.month << "/" << c.sime;
        EXPECT_EQ(r.message, QString::fromUtf8(c.message));
    }
}

TEST(InvoiceData, PeriodYearAndDayFollowTheFiscalYear)
{
    InvoiceCompany co;   // fiscal 2026 from April
    const struct {
        short month;
        int year;
    } years[] = {{4, 2026}, {12, 2026}, {1, 2027}, {3, 2027}};
    for (const auto& y : years) EXPECT_EQ(invoicePeriodYear(y.month), y.year) << y.month;
    session().sTuki = 1;
    EXPECT_EQ(invoicePeriodYear(1), 2026);
    EXPECT_EQ(invoiceDayText(31) + "|" + invoiceDayText(30) + "|" + invoiceDayText(5), "末|30|5");
}

TEST(InvoiceData, CustomersOfTheDayOrOfARangeInCodeOrder)
{
    InvoiceCompany co;
    co.addTor(30, "丙", 20);
    co.addTor(10, "甲", 20);
    co.addTor(20, "乙", 31);
    co.addTor(40, "丁", 20);
    const QSqlDatabase db = co.db();
    EXPECT_EQ(invoiceCustomers(db, 20, {}, {}), (QList<qint64>{10, 30, 40}));
    EXPECT_EQ(invoiceCustomers(db, 20, 15, 40), (QList<qint64>{30, 40}));
    EXPECT_EQ(invoiceCustomers(db, 20, 30, {}), (QList<qint64>{30}));
    EXPECT_EQ(invoiceCustomers(db, 20, 41, 99), QList<qint64>{});
    EXPECT_EQ(invoiceCustomers(db, 25, {}, {}), QList<qint64>{});
    EXPECT_EQ(seikyuTorName(db, "  30") + "|" + seikyuTorName(db, "31") + "|" + seikyuTorName(db, ""), "丙||");
}

TEST(InvoiceData, PlainPaperIsAFurtherStyleNamedSo)
{
    InvoiceCompany co;
    co.exec("INSERT INTO zSysFunc (Code, contents) VALUES (395, '1:白紙'), (1201, '5-白紙請求書'), (1202, '6-専用'), "
            "(1203, '白紙'), (1300, '7-白紙')");
    const struct {
        short style;
        bool plain;
    } cases[] = {{5, true}, {6, false}, {1, false}, {0, false}, {7, false}};
    for (const auto& c : cases) EXPECT_EQ(isPlainPaperStyle(co.db(), c.style), c.plain) << c.style;
}

TEST(InvoiceData, DemoCompanyTakesTheCustomerCountAskedFor)
{
    QTemporaryDir tmp;
    DemoOptions o;
    o.slips = 0;
    o.year = 2026;
    o.customers = 1000;
    QString error;
    DemoSummary s;
    ASSERT_TRUE(createDemoCompany(tmp.filePath("big"), o, &error, &s)) << qPrintable(error);
    EXPECT_EQ(s.customers, 1000);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "demo-size");
        db.setDatabaseName(tmp.filePath("big/MASTER.db"));
        ASSERT_TRUE(db.open());
        EXPECT_EQ(scalar(db, "SELECT COUNT(*) || ' ' || MIN(Code) || '-' || MAX(Code) || ' ' || COUNT(DISTINCT Sime) FROM Tor")
                      .toString(),
                  "1000 1001-2000 3");
    }
    QSqlDatabase::removeDatabase("demo-size");
    o.customers = 11;
    EXPECT_FALSE(createDemoCompany(tmp.filePath("small"), o, &error));
    EXPECT_EQ(error, "得意先数が正しくありません。");
    EXPECT_FALSE(QDir(tmp.filePath("small")).exists());
}
