#include <gtest/gtest.h>
#include "ledgers/Tax.h"

// Readable failures: amounts as plain decimals.
static void PrintTo(const Money& m, std::ostream* os) { *os << m.toText().toStdString(); }

namespace {

Money yen(int64_t v) { return Money::fromYen(v); }

const TaxRates Rates{Money::fromYen(3), Money::fromYen(5), QDate(1997, 3, 31)};

enum class Op { Tax, Net };

Money run(Op op, bool isNew, Money amount, short HsuType, short Hsu)
{
    return op == Op::Tax ? CalcTax(Rates, isNew, amount, HsuType, Hsu)
                         : CalcNetAmount(Rates, isNew, amount, HsuType, Hsu);
}

} // namespace

TEST(Tax, WorkedTableAtNewRate)
{
    struct Row { Op op; int64_t amount; short HsuType; int64_t expect[3]; } rows[] = {
        {Op::Tax, 1010, 1, {50, 51, 51}},
        {Op::Tax, -1010, 1, {-50, -51, -51}},
        {Op::Tax, 1030, 2, {50, 50, 60}},
        {Op::Tax, 1000, 3, {0, 100, 100}},
        {Op::Tax, 1000, 4, {0, 0, 1000}},
        {Op::Net, 1050, 1, {1000, 1000, 1000}},
        {Op::Net, 1051, 1, {1000, 1001, 1001}},
        {Op::Net, -1051, 1, {-1001, -1001, -1000}},
        {Op::Net, 1051, 4, {1001, 1001, 1002}},
        {Op::Net, 1000, 1, {952, 952, 953}},
        {Op::Net, -1000, 1, {-953, -952, -952}},
    };
    for (const Row& r : rows)
        for (short hsu = 1; hsu <= 3; ++hsu)
            EXPECT_EQ(run(r.op, true, yen(r.amount), r.HsuType, hsu), yen(r.expect[hsu - 1]))
                << (r.op == Op::Tax ? "CalcTax " : "CalcNetAmount ") << r.amount
                << " HsuType " << r.HsuType << " Hsu " << hsu;
}

TEST(Tax, CalcTaxEdgesBothSigns)
{
    struct Row { Money amount; short HsuType, Hsu; Money expect; const char* why; } rows[] = {
        {yen(1000), 1, 3, yen(50), "a whole tax stays when rounding up"},
        {yen(-1000), 1, 3, yen(-50), "a whole tax stays when rounding up, negative"},
        {yen(9980), 4, 2, yen(0), "499 at thousands, half up"},
        {yen(9980), 4, 3, yen(1000), "499 at thousands, up"},
        {yen(-9980), 4, 3, yen(-1000), "-499 at thousands, up"},
        {yen(10000), 4, 2, yen(1000), "500 at thousands is a tie, away from zero"},
        {yen(-10000), 4, 2, yen(-1000), "-500 at thousands is a tie, away from zero"},
        {yen(1090), 2, 2, yen(50), "54.5 at tens: 5.45 + 0.5 truncates to 5"},
        {yen(1100), 2, 2, yen(60), "55 at tens: 5.5 + 0.5 is 6"},
        // 0.04 scaled by 1000 falls below the fourth decimal and rounds up to nothing.
        {Money::fromRaw(8000), 4, 3, yen(0), "0.04 yen lost by the scale-down"},
        {Money::fromRaw(8000), 1, 3, yen(1), "0.04 yen at one yen rounds up"},
        {Money::fromRaw(12000), 4, 3, yen(1000), "0.06 yen survives as 0.0001"},
    };
    for (const Row& r : rows)
        EXPECT_EQ(CalcTax(Rates, true, r.amount, r.HsuType, r.Hsu), r.expect) << r.why;
}

TEST(Tax, OldRateUpToChangeDateNewRateAfter)
{
    EXPECT_FALSE(IsNewTaxRate(Rates, QDate(1997, 3, 31)));
    EXPECT_TRUE(IsNewTaxRate(Rates, QDate(1997, 4, 1)));

    // 1010 at 3 percent is 30.3.
    EXPECT_EQ(CalcTax(Rates, IsNewTaxRate(Rates, QDate(1997, 3, 31)), yen(1010), 1, 3), yen(31));
    EXPECT_EQ(CalcTax(Rates, IsNewTaxRate(Rates, QDate(1997, 4, 1)), yen(1010), 1, 3), yen(51));
    EXPECT_EQ(CalcNetAmount(Rates, false, yen(1030), 1, 1), yen(1000));
    EXPECT_EQ(CalcNetAmount(Rates, true, yen(1030), 1, 1), yen(980));
}

TEST(Tax, NetAmountUnitDoesNotGiveMultiples)
{
    struct Row { int64_t amount; short HsuType; int64_t expect[3]; } rows[] = {
        {1051, 3, {1000, 1001, 1001}},  // 10.0095 scaled back is 1000.95
        {1051, 4, {1001, 1001, 1002}},
        {123456, 3, {117577, 117577, 117578}},  // 1175.7714 scaled back is 117577.14
        {123456, 4, {117577, 117577, 117578}},  // 117.5771 scaled back is 117577.1
    };
    for (const Row& r : rows)
        for (short hsu = 1; hsu <= 3; ++hsu) {
            const Money net = CalcNetAmount(Rates, true, yen(r.amount), r.HsuType, hsu);
            EXPECT_EQ(net, yen(r.expect[hsu - 1])) << r.amount << " HsuType " << r.HsuType << " Hsu " << hsu;
            EXPECT_FALSE(net.hasFraction());
            EXPECT_EQ(CalcNetAmount(Rates, true, Money(), r.HsuType, hsu), Money());
        }
}

TEST(Tax, ValuesOutsideTheTablesCauseNoError)
{
    for (short type : {short(0), short(5), short(-1), short(99)})
        for (short hsu = 1; hsu <= 3; ++hsu) {
            EXPECT_EQ(CalcTax(Rates, true, yen(1010), type, hsu), CalcTax(Rates, true, yen(1010), 1, hsu)) << type;
            EXPECT_EQ(CalcNetAmount(Rates, true, yen(1051), type, hsu), CalcNetAmount(Rates, true, yen(1051), 1, hsu))
                << type;
        }
    // An unknown mode leaves the tax unrounded, scaled down and back.
    EXPECT_EQ(CalcTax(Rates, true, yen(1010), 1, 0), Money::fromRaw(505000));
    EXPECT_EQ(CalcTax(Rates, true, yen(1030), 2, 9), Money::fromRaw(515000));
    // The net amount is floored whatever the mode.
    EXPECT_EQ(CalcNetAmount(Rates, true, yen(-1051), 1, 4), yen(-1001));
}

TEST(Tax, CalcTaxMirrorsNegativeAmounts)
{
    const TaxRates odd{Money::fromRaw(82500), Money::fromYen(10), QDate(2019, 9, 30)};  // 8.25 and 10
    int checked = 0;
    for (const TaxRates& rates : {Rates, odd})
        for (int64_t raw = 0; raw <= 40000000; raw += 9973) {  // 0 to 4000 yen, in odd steps
            const Money a = Money::fromRaw(raw);
            for (bool isNew : {false, true})
                for (short type = 0; type <= 5; ++type)
                    for (short hsu = 0; hsu <= 4; ++hsu) {
                        const Money t = CalcTax(rates, isNew, a, type, hsu);
                        ASSERT_EQ(CalcTax(rates, isNew, -a, type, hsu), -t)
                            << a.raw() << " HsuType " << type << " Hsu " << hsu;
                        ++checked;
                    }
        }
    EXPECT_GT(checked, 100000);
}
