#include <gtest/gtest.h>

#include <QComboBox>

#include "entry/QtListFields.h"

namespace {

TEST(QtListFields, CodesOfAChoiceList)
{
    QComboBox list;
    list.addItem("東京", 10);
    list.addItem("大阪", 20);
    list.addItem("大阪第二", 20);
    list.addItem("名古屋", QVariant(qlonglong(30)));
    list.setCurrentIndex(-1);
    EXPECT_FALSE(ListCode(&list).has_value());

    FindListCode(&list, 20);
    EXPECT_EQ(list.currentIndex(), 1);  // the first entry with that code
    EXPECT_EQ(ListCode(&list), 20);
    FindListCode(&list, 30);
    EXPECT_EQ(ListCode(&list), 30);
    FindListCode(&list, 99);
    EXPECT_EQ(list.currentIndex(), -1);
    EXPECT_FALSE(ListCode(&list).has_value());

    ClearList(&list);
    EXPECT_EQ(list.count(), 0);
    EXPECT_FALSE(ListCode(&list).has_value());
    EXPECT_FALSE(ListCode(nullptr).has_value());
}

}  // namespace
