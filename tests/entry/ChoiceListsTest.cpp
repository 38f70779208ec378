#include <gtest/gtest.h>

#include <QComboBox>

#include "entry/ChoiceLists.h"
#include "entry/QtChoiceLists.h"
#include "entry/QtListFields.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "support/TempCompany.h"

namespace {

TEST(ChoiceLists, FixedListsAreNumberedFromOne)
{
    QComboBox list;
    SetListHsuType(&list);
    ASSERT_EQ(list.count(), 4);
    EXPECT_EQ(list.currentIndex(), 0);
    EXPECT_EQ(ListCode(&list), 1);
    FindListCode(&list, 4);
    EXPECT_EQ(list.currentText(), "千円未満");
    FindListCode(&list, 0);   // a stored 0 is no selection, not "円未満"
    EXPECT_EQ(list.currentIndex(), -1);
    EXPECT_FALSE(ListCode(&list).has_value());

    SetListKingaku(&list);    // filling again starts from an empty list
    ASSERT_EQ(list.count(), 6);
    EXPECT_EQ(list.itemData(5).toInt(), 6);
}

TEST(ChoiceLists, SettlementOfASlipCountsFromZero)
{
    QComboBox list;
    SetListTorihiki(&list);
    EXPECT_EQ(ListCode(&list), 1);
    list.setCurrentIndex(1);
    EXPECT_EQ(TorihikiKubun(list.currentIndex()), 1);
    EXPECT_EQ(TorihikiListIndex(1), 1);
    EXPECT_EQ(TorihikiListIndex(7), -1);
}

TEST(ChoiceLists, ListsFromTables)
{
    TempCompany company;
    ASSERT_TRUE(company.open());
    const QSqlDatabase db = session().MasterDb;
    execSql(db, "INSERT INTO Tbn (Code, Namae) VALUES (2, '小売'), (1, NULL)");
    execSql(db, "INSERT INTO Tor (Code, TbnCode, Kana, Namae, Tenmei) VALUES "
                "(0, 0, 'ｹﾞﾝｷﾝ', '現金客', ' '), (5, 1, 'ｻｸﾗ', '桜商店', '本店'), (3, 1, 'ｱｵｲ', '葵屋', ' ')");
    execSql(db, "INSERT INTO Nou (TorCode, Code, Tenmei, Ryaku) VALUES (5, 1, '駅前店', ' '), (5, 2, '北店', '北')");

    EXPECT_EQ(CodeTableEntries("Tbn"), (QList<ListEntry>{{"", 1}, {"小売", 2}}));
    // By reading, not by code; a class of 0 is a class like any other.
    EXPECT_EQ(TorEntries(std::nullopt), (QList<ListEntry>{{"葵屋", 3}, {"現金客", 0}, {"桜商店", 5}}));
    EXPECT_EQ(TorEntries(1), (QList<ListEntry>{{"葵屋", 3}, {"桜商店", 5}}));
    EXPECT_EQ(TorEntries(0), (QList<ListEntry>{{"現金客", 0}}));
    EXPECT_EQ(TorShopEntries(1), (QList<ListEntry>{{"葵屋", 3}, {"桜商店･本店", 5}}));
    EXPECT_EQ(NouEntries(5), (QList<ListEntry>{{"駅前店", 1}, {"北", 2}}));
    EXPECT_TRUE(CodeTableEntries("Nothing").isEmpty());

    QComboBox list;
    ListTbn(&list);
    EXPECT_EQ(list.count(), 2);
    EXPECT_EQ(list.currentIndex(), -1);
    FindListCode(&list, 2);
    EXPECT_EQ(list.currentText(), "小売");
}

}  // namespace
