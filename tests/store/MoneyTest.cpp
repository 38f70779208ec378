#include <gtest/gtest.h>
#include "store/Money.h"

TEST(Money, ProductRoundsAtFourthDecimalTiesToEven)
{
    struct Case { int64_t a, b, expect; } cases[] = {
        // raw ten-thousandths
        {10100000, 50000, 50500000},   // 1010 x 5 = 5050
        {-10100000, 50000, -50500000},
        {5, 5000, 2},                  // 0.0005 x 0.5 = 0.00025 -> tie -> 0.0002 (even)
        {15, 5000, 8},                 // 0.0015 x 0.5 = 0.00075 -> tie -> 0.0008 (even)
        {-5, 5000, -2},
        {-15, 5000, -8},
        {3, 3333, 1},                  // 0.00009999 -> 0.0001
        {12345, 10000, 12345},         // x 1 is exact
    };
    for (const auto& c : cases)
        EXPECT_EQ((Money::fromRaw(c.a) * Money::fromRaw(c.b)).raw(), c.expect) << c.a << " x " << c.b;
}

TEST(Money, FromDoubleRoundsTiesToEvenBothSigns)
{
    struct Case { double v; int64_t raw; } cases[] = {
        {50.5, 505000}, {-50.5, -505000},
        // exact binary ties: 312.5 and 937.5 ten-thousandths
        {0.03125, 312}, {0.09375, 938}, {-0.03125, -312}, {-0.09375, -938},
        {47.61904761904762, 476190}, {952.380952380952, 9523810},
        {0.0, 0},
    };
    for (const auto& c : cases) EXPECT_EQ(Money::fromDouble(c.v).raw(), c.raw) << c.v;
}

TEST(Money, TextIsPlain)
{
    EXPECT_EQ(Money::fromRaw(-505000).toText(), "-50.5");
    EXPECT_EQ(Money::fromYen(1000).toText(), "1000");
    EXPECT_EQ(Money::fromRaw(1).toText(), "0.0001");
    EXPECT_EQ(Money::fromStore(QVariant()).raw(), 0);
    EXPECT_EQ(Money::fromRaw(-15000).truncYen(), -1);
    EXPECT_TRUE(Money::fromRaw(-15000).hasFraction());
}
