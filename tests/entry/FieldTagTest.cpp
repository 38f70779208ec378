#include <gtest/gtest.h>

#include "entry/FieldTag.h"

namespace {

TEST(FieldTag, ParsesTheDeclaredShapes)
{
    struct Case { QString tag; int item; char kind; int maxBytes; QString format; int maxLength; } cases[] = {
        {"24_N###,###,##0", 24, 'N', 0, "###,###,##0", 11},
        {"05_N##,##0.00", 5, 'N', 0, "##,##0.00", 9},
        {"50_S1", 50, 'S', 1, "", 1},
        {" 03_S20 ", 3, 'S', 20, "", 20},
    };
    for (const auto& c : cases) {
        const FieldTag f = parseTag(c.tag);
        ASSERT_TRUE(f.valid) << c.tag.toStdString();
        EXPECT_EQ(f.item, c.item) << c.tag.toStdString();
        EXPECT_EQ(f.kind, c.kind) << c.tag.toStdString();
        EXPECT_EQ(f.maxBytes, c.maxBytes) << c.tag.toStdString();
        EXPECT_EQ(f.format, c.format) << c.tag.toStdString();
        EXPECT_EQ(f.maxLength(), c.maxLength) << c.tag.toStdString();
    }
}

TEST(FieldTag, MalformedTagsAreInvalid)
{
    const QString bad[] = {
        "", "0", "00", "00_", "00_S", "00_N", "0A_S10", "00-S10", "00_X10", "00_s20",
        "00_S1x", "00_S0", "00_S999999", "1_S20", "00_Nabc", "00_N,.", "00_N##a", "51_S10",
        "99_N#", "０３_S20",
    };
    for (const auto& tag : bad) EXPECT_FALSE(parseTag(tag).valid) << tag.toStdString();
}

}  // namespace
