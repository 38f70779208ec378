#include "reports/InvoiceData.h"
#include "reports/InvoiceFixture.h"
#include "reports/SeikyuRules.h"
#include "shell/Session.h"

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

TEST(InvoiceData, PeriodYearFollowsTheFiscalYear)
{
    InvoiceCompany co;   // fiscal 2026 from April
    const struct {
        short month;
        int year;
    } years[] = {{4, 2026}, {12, 2026}, {1, 2027}, {3, 2027}};
    for (const auto& y : years) EXPECT_EQ(invoicePeriodYear(y.month), y.year) << y.month;
    session().sTuki = 1;
    EXPECT_EQ(invoicePeriodYear(1), 2026);
}
