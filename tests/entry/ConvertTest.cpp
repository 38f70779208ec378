#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "entry/Convert.h"

namespace {

struct NumCase {
    QString text;
    QString numText;
    double num;
};

TEST(Convert, NumTextAndToNum)
{
    const NumCase cases[] = {
        {"¥1,234-", "1234-", 1234},  // a trailing minus ends the number
        {"¥-1,234", "-1234", -1234},  // the minus is the first character kept
        {"", "0", 0},
        {"1２3", "13", 13},           // full-width digits are not digits
        {"1.2.3", "1.2.3", 1.2},      // a second point ends it
        {"12-3", "12-3", 12},         // so does a minus in the middle
        {"--5", "--5", 0},
        {"-.5", "-.5", -0.5},
        {"-", "-", 0},
        {" 1 2 ", "12", 12},
        {"1,000.50", "1000.50", 1000.5},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(NumText(c.text), c.numText) << c.text.toStdString();
        EXPECT_DOUBLE_EQ(ToNum(c.text), c.num) << c.text.toStdString();
        EXPECT_FALSE(std::signbit(ToNum(c.text)) && c.num == 0) << "negative zero " << c.text.toStdString();
    }
    // Beyond a double's range nothing is read.
    EXPECT_EQ(ToNum("1" + QString(400, '0')), 0);
}

TEST(Convert, DigitText)
{
    const std::pair<QString, QString> cases[] = {
        {"-1,234.5", "12345"}, {"abc", "0"}, {"", "0"}, {"１２", "0"}, {"A-0012", "0012"},
    };
    for (const auto& [text, digits] : cases) EXPECT_EQ(DigitText(text), digits) << text.toStdString();
}

TEST(Convert, ToCurRoundsAtFourthDecimalTiesToEven)
{
    struct Case { QString text; int64_t raw; bool ok; } cases[] = {
        {"abc", 0, true},
        {"-1,000.50", -10005000, true},
        {"¥12,345", 123450000, true},
        {"0.00005", 0, true},   // a tie to the even 0
        {"0.00015", 2, true},
        {"0.00025", 2, true},
        {"0.000251", 3, true},
        {"-0.00015", -2, true},
        {"12-3", 120000, true},
        {"922337203685477.5807", std::numeric_limits<int64_t>::max(), true},
        {"-922337203685477.5808", std::numeric_limits<int64_t>::min(), true},
        {"922337203685477.5808", 0, false},
        {"99999999999999999", 0, false},
        {"1" + QString(400, '0'), 0, false},
    };
    for (const auto& c : cases) {
        bool ok = !c.ok;
        EXPECT_EQ(ToCur(c.text, &ok).raw(), c.raw) << c.text.toStdString();
        EXPECT_EQ(ok, c.ok) << c.text.toStdString();
    }
}

TEST(Convert, ToIntRoundsTiesToEvenAndNeverOverflows)
{
    struct Case { int bits; QString text; qint32 value; bool ok; } cases[] = {
        {16, "abc", 0, true}, {16, "1,234", 1234, true},
        {16, "2.5", 2, true}, {16, "3.5", 4, true}, {16, "-2.5", -2, true}, {16, "-3.5", -4, true}, {16, "2.51", 3, true},
        {16, "32767", 32767, true}, {16, "32766.5", 32766, true}, {16, "32767.5", 0, false},
        {16, "32768", 0, false}, {16, "-32768", -32768, true}, {16, "-32769", 0, false},
        {32, "2147483647", 2147483647, true}, {32, "2147483648", 0, false},
        {32, "-2147483648", std::numeric_limits<qint32>::min(), true}, {32, "-2147483649", 0, false},
        {32, "1" + QString(400, '0'), 0, false},
    };
    for (const auto& c : cases) {
        bool ok = !c.ok;
        EXPECT_EQ(c.bits == 16 ? ToInt16(c.text, &ok) : ToInt32(c.text, &ok), c.value) << c.text.toStdString();
        EXPECT_EQ(ok, c.ok) << c.text.toStdString();
    }
    EXPECT_EQ(ToInt16("40000"), 0);  // no flag asked for: still no failure
}

TEST(Convert, FormatRightOfDouble)
{
    struct Case { double value; QString format; QString shown; } cases[] = {
        {1234567, "####0", "34567"},  // too wide: the left part is lost
        {0, "####0", "    0"},
        {-0.4, "###", "   "},
        {0.5, "###", "  1"},
        {2.5, "####0", "    3"},
        {-2.5, "####0", "   -3"},
        {-99.5, "###,###,##0", "       -100"},
        {-1234567, "###,###,##0", " -1,234,567"},
        {1.005, "#0.00", " 1.01"},     // rounds the decimal figure, not its binary neighbour
        {1.004, "#0.00", " 1.00"},
        {-0.004, "#0.00", " 0.00"},
        {999.995, "##0.00", "000.00"},
        {-12345.678, "##,##0.00", "12,345.68"},  // the sign falls off the left
        {-1234.5, "##,##0.00", "-1,234.50"},
        {std::nan(""), "###", "   "},
        {42, "", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FormatRight(c.value, c.format), c.shown)
            << c.value << " in " << c.format.toStdString();
}

TEST(Convert, FormatRightOfMoneyIsExact)
{
    struct Case { int64_t raw; QString format; QString shown; } cases[] = {
        {-505000, "###,###,##0", "        -51"},
        {505000, "###,###,##0", "         51"},
        {12345, "#0.00", " 1.23"},
        {12350, "#0.00", " 1.24"},
        {-12350, "#0.00", "-1.24"},
        {std::numeric_limits<int64_t>::min(), "###,###,##0", "203,685,478"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(FormatRight(Money::fromRaw(c.raw), c.format), c.shown) << c.raw;
}

TEST(Convert, ZeroPad13AndZeroStripAlsoRewriteTheirArgument)
{
    using Fn = QString (*)(QString&);
    struct Case { Fn fn; QString text; QString result; QString argAfter; } cases[] = {
        {ZeroPad13, "", "0000000000000", "0"},
        {ZeroPad13, "00123", "0000000000123", "00123"},
        {ZeroPad13, " 123 ", "0000000000123", " 123 "},
        {ZeroPad13, "12A", "12A", "12A"},
        {ZeroPad13, "１２３", "１２３", "１２３"},
        {ZeroPad13, "12345678901234567", "5678901234567", "12345678901234567"},
        {ZeroStrip, "0000000000000", "0", ""},
        {ZeroStrip, "0000004901234", "4901234", "4901234"},
        {ZeroStrip, "", "0", ""},
        {ZeroStrip, "00A12", "00A12", "00A12"},
    };
    for (const auto& c : cases) {
        QString arg = c.text;
        EXPECT_EQ(c.fn(arg), c.result) << c.text.toStdString();
        EXPECT_EQ(arg, c.argAfter) << c.text.toStdString();
    }
}

TEST(Convert, SjisLength)
{
    const std::pair<QString, int> cases[] = {
        {"", 0}, {"あいう", 6}, {"ｱｲｳ", 3}, {"｡", 1}, {"ﾟ", 1},
        {QString(QChar(0xFF60)), 2}, {QString(QChar(0xFFA0)), 2},
        {"¥", 1}, {"‾", 1}, {"￥", 2}, {"漢字ab", 6}, {"𠮷", 2},
    };
    for (const auto& [text, bytes] : cases) EXPECT_EQ(SjisLength(text), bytes) << text.toStdString();
}

TEST(Convert, CutToBytesNeverSplitsACharacter)
{
    struct Case { QString text; int max; QString kept; } cases[] = {
        {"山田商事株式会社大阪支店", 20, "山田商事株式会社大阪"},  // twenty bytes, ten characters
        {"ABあ", 3, "AB"},
        {"ABあ", 4, "ABあ"},
        {"ｱｲｳｴｵ", 3, "ｱｲｳ"},
        {"ABC", -1, ""},
        {"𠮷a", 1, ""},
        {"𠮷a", 2, "𠮷"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CutToBytes(c.text, c.max), c.kept) << c.text.toStdString() << " / " << c.max;
}

TEST(Convert, CopyIfEmpty)
{
    struct Case { QString source, target; int max; QString result; } cases[] = {
        {"株式会社山田商店", "", 10, "株式会社山"},
        {"ABC", " ", 10, "ABC"},
        {"ABC", "XYZ", 10, "XYZ"},
        {"ABC", "あいうえおか", 10, "あいうえお"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CopyIfEmpty(c.source, c.target, c.max), c.result) << c.source.toStdString();
}

TEST(Convert, HasTextAndEmptyToSpace)
{
    const std::pair<QVariant, bool> hasText[] = {
        {QVariant(), false}, {QVariant(QString(" ")), false}, {QVariant(QString("　")), false},
        {QVariant(QString(" a ")), true}, {QVariant(0), true}, {QVariant(QMetaType::fromType<QString>()), false},
    };
    for (const auto& [v, has] : hasText) EXPECT_EQ(HasText(v), has) << v.toString().toStdString();
    EXPECT_EQ(EmptyToSpace(""), " ");   // the store's empty text
    EXPECT_EQ(EmptyToSpace("a"), "a");
}

TEST(Convert, ToText)
{
    EXPECT_EQ(ToText(int64_t(9007199254740993)), "9007199254740993");
    EXPECT_EQ(ToText(0.1 + 0.2), "0.3");
    EXPECT_EQ(ToText(-0.0), "0");
    EXPECT_EQ(ToText(Money::fromRaw(10005000)), "1000.5");
}

}  // namespace

TEST(Convert, FormatNumberKeepsEveryDigitAndTheSign)
{
    EXPECT_EQ(FormatNumber(-170.0, "##0.00"), "-170.00");
    EXPECT_EQ(FormatNumber(123456789.0, "##,###,##0"), "123,456,789");
    EXPECT_EQ(FormatNumber(Money::fromYen(-1100), "##,###,##0"), "-1,100");
    EXPECT_EQ(FormatRight(123456789.0, "##,###,##0"), "23,456,789");   // the cell rule cuts
}
