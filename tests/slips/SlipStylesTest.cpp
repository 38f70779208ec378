#include <QApplication>
#include <QComboBox>
#include <QTest>
#include <QTimer>
#include "slips/SlipFixture.h"
#include "slips/SlipSelect_frm.h"
#include "slips/SlipStyles.h"

TEST(SlipStyles, ContentsAndRowsAreCut)
{
    using E = SlipStyleEntry;
    struct Case { const char* contents; QList<E> expect; } cases[] = {
        {"#", {}},
        {"1:標準,2:複写", {{1, "標準"}, {2, "複写"}}},
        {"1:標準,2:複写,", {{1, "標準"}, {2, "複写"}}},   // an empty last entry is dropped
        {"3 特別", {{3, "特別"}}},
        {"x:名前", {{0, "名前"}}},                         // not a digit: number 0
    };
    for (const Case& c : cases) EXPECT_EQ(parseStyleContents(c.contents), c.expect) << c.contents;
    EXPECT_EQ(parseStyleRow("7-特注"), (E{7, "特注"}));
    EXPECT_EQ(parseStyleRow("12-大判-横"), (E{12, "大判-横"}));
    EXPECT_FALSE(parseStyleRow("特注").has_value());
}

TEST_F(SlipTest, StyleWindowReadsItsRowsAndAnswers)
{
    EXPECT_FALSE(loadSlipStyles("Nou").has_value());
    EXPECT_FALSE(slipStyleQuestionOn());
    slipRun("INSERT INTO zSysFunc (Code, contents) VALUES (385, '#'), (395, '1:請求書'), (1102, '9-後'), "
            "(1101, '8-前'), (1201, '5-別'), (1100, '4-外')");
    EXPECT_TRUE(slipStyleQuestionOn());
    EXPECT_EQ(*loadSlipStyles("Nou"), (QList<SlipStyleEntry>{{8, "前"}, {9, "後"}}));
    EXPECT_EQ(*loadSlipStyles("Sei"), (QList<SlipStyleEntry>{{1, "請求書"}, {5, "別"}}));

    // "#" and no further rows: an empty list, and Enter answers 0.
    slipRun("DELETE FROM zSysFunc WHERE Code > 1000");
    SlipSelect_frm w;
    w.Init("Nou");
    EXPECT_EQ(w.cbox()->count(), 0);
    QTimer::singleShot(50, [&] { QTest::keyClick(w.cbox(), Qt::Key_Return); });
    EXPECT_EQ(w.choose(), 0);
    slipRun("DELETE FROM zSysFunc WHERE Code = 385");
    w.Init("Nou");
    EXPECT_EQ(w.choose(), -1);   // no row: nothing to ask
}
