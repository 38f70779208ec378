#include <cmath>
#include <gtest/gtest.h>
#include "slips/SlipTax.h"

// Readable failures: amounts as plain decimals.
static void PrintTo(const Money& m, std::ostream* os) { *os << m.toText().toStdString(); }

namespace {

Money yen(int64_t v) { return Money::fromYen(v); }

const TaxRates Rates{Money::fromYen(3), Money::fromYen(5), QDate(1997, 3, 31)};
const QDate NewDate(2000, 5, 10);

SlipLineTax line(short flag, int64_t gaku, int64_t zei = 0)
{
    SlipLineTax l;
    l.ZeiFlag = flag;
    l.Gaku = yen(gaku);
    l.Zei = yen(zei);
    return l;
}

// Lines as the screen has them after each passed its own tax step.
QList<SlipLineTax> computed(QList<SlipLineTax> lines, short HsuType, short Hsu)
{
    for (SlipLineTax& l : lines)
        calcLineTax(Rates, l, NewDate, HsuType, Hsu);
    return lines;
}

QList<int64_t> zeiOf(const QList<SlipLineTax>& lines)
{
    QList<int64_t> out;
    for (const SlipLineTax& l : lines)
        out << l.Zei.raw() / Money::Scale;
    return out;
}

} // namespace

TEST(SlipTax, LineTaxByKind)
{
    struct Row { short flag; int64_t gaku; QDate date; short Hsu; int64_t net, zei; const char* why; } rows[] = {
        {1, -1010, NewDate, 2, -1010, -51, "outside tax, return"},
        {1, 1010, QDate(1997, 3, 31), 3, 1010, 31, "change date still pays the old rate"},
        {1, 1010, QDate(1997, 4, 1), 3, 1010, 51, "the day after pays the new rate"},
        {2, 1050, NewDate, 1, 1000, 50, "inside tax splits the price"},
        {2, 1051, NewDate, 3, 1001, 50, "inside tax rounded up"},
        {2, -1051, NewDate, 1, -1001, -50, "inside tax floors a return away from zero"},
        {3, 1000, NewDate, 2, 1000, 0, "not taxable clears a tax"},
        {4, 1000, NewDate, 2, 1000, 7, "typed tax stays"},
    };
    for (const Row& r : rows) {
        SlipLineTax l = line(r.flag, r.gaku, 7);
        calcLineTax(Rates, l, r.date, 1, r.Hsu);
        EXPECT_EQ(l.Net, yen(r.net)) << r.why;
        EXPECT_EQ(l.Zei, yen(r.zei)) << r.why;
    }

    // An unset or unknown kind leaves the line as it is.
    for (short flag : {short(0), short(5), short(-1)}) {
        SlipLineTax l = line(flag, 1000, 9);
        l.Net = yen(11);
        calcLineTax(Rates, l, NewDate, 1, 1);
        EXPECT_EQ(l.Net, yen(11)) << flag;
        EXPECT_EQ(l.Zei, yen(9)) << flag;
    }
}

TEST(SlipTax, NotificationModes)
{
    // outside 1,000; inside 1,050; outside 2,000; typed tax 7 on 500; not taxable 300
    const QList<SlipLineTax> base = {line(1, 1000), line(2, 1050), line(1, 2000), line(4, 500, 7), line(3, 300)};
    struct Row { short Zeituuchi; QList<int64_t> zei; const char* why; } rows[] = {
        {3, {50, 50, 100, 7, 0}, "per line keeps each line's tax"},
        {2, {150, 50, 0, 7, 0}, "per delivery slip: one tax on the first outside-tax line"},
        {1, {0, 50, 0, 0, 0}, "per invoice: only inside tax is kept"},
        {4, {0, 50, 0, 0, 0}, "exempt: as per invoice"},
        {5, {50, 50, 100, 7, 0}, "unknown mode leaves the lines"},
    };
    for (const Row& r : rows) {
        QList<SlipLineTax> lines = computed(base, 1, 1);
        calcSlipTax(Rates, lines, r.Zeituuchi, NewDate, 1, 1);
        EXPECT_EQ(zeiOf(lines), r.zei) << r.why;
        EXPECT_EQ(lines[1].Net, yen(1000)) << r.why;
    }
}

TEST(SlipTax, DeliverySlipTaxIsOneTaxOfTheSum)
{
    // Per line 1,010 and 1,010 give 50 + 50 cut off; the slip's 2,020 gives 101.
    QList<SlipLineTax> lines = computed({line(3, 400), line(1, 1010), line(2, 1050), line(1, 1010)}, 1, 1);
    calcSlipTax(Rates, lines, 2, NewDate, 1, 1);
    EXPECT_EQ(zeiOf(lines), (QList<int64_t>{0, 101, 50, 0}));

    // Returns and sales offset before the tax; the rate follows the slip date.
    lines = computed({line(1, 3000), line(1, -1010)}, 1, 2);
    calcSlipTax(Rates, lines, 2, QDate(1997, 3, 31), 1, 2);
    EXPECT_EQ(zeiOf(lines), (QList<int64_t>{60, 0}));  // 1,990 at 3 percent is 59.7

    // No outside-tax line: nothing to place.
    lines = computed({line(2, 1050), line(4, 100, 3)}, 1, 1);
    calcSlipTax(Rates, lines, 2, NewDate, 1, 1);
    EXPECT_EQ(zeiOf(lines), (QList<int64_t>{50, 3}));
}

TEST(SlipTax, LineAmountRoundsToYenTiesAwayFromZero)
{
    struct Row { double qty; int64_t priceRaw; int64_t expect; } rows[] = {
        {3, 333300, 100},      // 99.99
        {3, 5000, 2},          // 1.5
        {-3, 5000, -2},
        {3, -5000, -2},
        {15, 1307000, 1961},   // 1960.5, which a binary double holds as 1960.4999...
        {-15, 1307000, -1961},
        {1, 4999, 0},          // 0.4999
        {-1, 4999, 0},
        {2.5, 30000, 8},       // 7.5
        {std::nan(""), 10000, 0},
        {INFINITY, 10000, 0},
    };
    for (const Row& r : rows)
        EXPECT_EQ(lineAmount(r.qty, Money::fromRaw(r.priceRaw)), yen(r.expect)) << r.qty << " x " << r.priceRaw;
}
