#include <gtest/gtest.h>
#include <Qt>
#include "shell/MenuModel.h"

namespace {
MenuModel withItems(int group, int n)
{
    MenuModel m;
    for (int i = 0; i < n; ++i) m.MenuAddItem(group, QStringLiteral("item%1").arg(i));
    m.selectStart();
    m.CurGroup = group;
    return m;
}
using Cmd = MenuModel::Command;
}

TEST(MenuModel, ArrowsInTheRightColumnWithThirteenAndFourteenItems)
{
    // (key, count, presses) -> (CurItem, TopItem)
    struct Case { Qt::Key key; int count; int presses; int item; int top; };
    const QList<Case> cases = {
        {Qt::Key_Down, 13, 12, 12, 0}, {Qt::Key_Down, 13, 13, 0, 0},   // wraps from the last to the first
        {Qt::Key_Down, 14, 13, 12, 1}, {Qt::Key_Down, 14, 14, 0, 0},   // scrolls once, then back to the start
        {Qt::Key_Down, 20, 19, 12, 7}, {Qt::Key_Down, 0, 3, 0, 0},
        {Qt::Key_Up, 13, 1, 12, 0},
        {Qt::Key_Up, 14, 1, 12, 1},                                    // from the top straight to the end
        {Qt::Key_Up, 14, 13, 0, 1}, {Qt::Key_Up, 14, 14, 0, 0},       // up the rows, then one scroll step
        {Qt::Key_Up, 14, 15, 12, 1},
    };
    for (const Case& c : cases) {
        MenuModel m = withItems(0, c.count);
        for (int i = 0; i < c.presses; ++i) m.keyPress(c.key);
        EXPECT_EQ(m.CurItem, c.item) << c.key << " " << c.count << "/" << c.presses;
        EXPECT_EQ(m.TopItem, c.top) << c.key << " " << c.count << "/" << c.presses;
    }
}

TEST(MenuModel, ScrolledListShowsAndRunsFromItsTop)
{
    MenuModel m = withItems(2, 15);
    m.keyPress(Qt::Key_Up);   // to the end: TopItem 2, CurItem 12
    const QStringList shown = m.visibleItems();
    ASSERT_EQ(shown.size(), 13);
    EXPECT_EQ(shown.first(), "item2");
    const Cmd c = m.keyPress(Qt::Key_Return);
    EXPECT_EQ(c.kind, Cmd::Run);
    EXPECT_EQ(c.caption, "item14");
}

TEST(MenuModel, LeftColumnWrapsThroughTheSevenGroups)
{
    MenuModel m = withItems(0, 20);
    m.keyPress(Qt::Key_Down);
    m.keyPress(Qt::Key_Down);
    m.keyPress(Qt::Key_Left);
    EXPECT_FALSE(m.InRight);
    EXPECT_EQ(m.CurItem, 0);
    EXPECT_EQ(m.keyPress(Qt::Key_Up).kind, Cmd::Redraw);
    EXPECT_EQ(m.CurGroup, 6);
    m.keyPress(Qt::Key_Down);
    EXPECT_EQ(m.CurGroup, 0);
    // Enter does nothing in the left column.
    EXPECT_EQ(m.keyPress(Qt::Key_Return).kind, Cmd::Nothing);
}

TEST(MenuModel, ArrowsBetweenTheColumns)
{
    MenuModel m = withItems(0, 20);
    for (int i = 0; i < 13; ++i) m.keyPress(Qt::Key_Down);   // scrolled: TopItem 1
    ASSERT_EQ(m.TopItem, 1);
    m.keyPress(Qt::Key_Left);
    EXPECT_EQ(m.CurItem, 0);
    EXPECT_EQ(m.TopItem, 0);
    EXPECT_EQ(m.visibleItems().first(), "item0");
    m.CurItem = 4;   // Right keeps CurItem as it is
    m.keyPress(Qt::Key_Right);
    EXPECT_TRUE(m.InRight);
    EXPECT_EQ(m.CurItem, 4);
    EXPECT_EQ(m.keyPress(Qt::Key_Right).kind, Cmd::Nothing);
}

TEST(MenuModel, EmptyGroupTakesTheKeysButRunsNothing)
{
    MenuModel m = withItems(0, 3);
    m.keyPress(Qt::Key_Left);
    m.keyPress(Qt::Key_Down);   // group 1 is empty
    EXPECT_TRUE(m.visibleItems().isEmpty());
    m.keyPress(Qt::Key_Right);
    EXPECT_TRUE(m.InRight);
    EXPECT_EQ(m.keyPress(Qt::Key_Return).kind, Cmd::Nothing);
    EXPECT_EQ(m.keyPress(Qt::Key_Down).kind, Cmd::Nothing);
}

// Clicks that change the group and run an item are the menu screen's test.
TEST(MenuModel, ClicksResetTheItemAndMissHiddenButtons)
{
    MenuModel m = withItems(1, 4);
    m.MenuAddItem(3, "master");
    m.CurItem = 2;
    EXPECT_EQ(m.clickLeft(3).kind, Cmd::Redraw);
    EXPECT_EQ(m.CurItem, 0);
    EXPECT_EQ(m.clickRight(1).kind, Cmd::Nothing);   // a hidden button
    EXPECT_EQ(m.clickLeft(7).kind, Cmd::Nothing);
}
