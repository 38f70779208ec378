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

    SetListKingaku(&list);    // filling again starts from an empty list
    ASSERT_EQ(list.count(), 6);
    EXPECT_EQ(list.itemText(0), "現  金");
    EXPECT_EQ(list.itemData(5).toInt(), 6);
    SetListTorihiki(&list);
    EXPECT_EQ(list.itemText(1), "現金");
    EXPECT_NE(list.itemText(1), fixedListTexts(FixedList::Kingaku)[0]);

    struct Case { FixedList list; int count; QString first; QString last; } cases[] = {
        {FixedList::Atukai, 2, "電信", "文書"},
        {FixedList::Furikomi, 3, "同銀行", "他支局"},
        {FixedList::Hsu, 3, "切り捨て", "切り上げ"},
        {FixedList::Keisho, 2, "様", "御中"},
        {FixedList::KaisyuTuki, 3, "当月", "翌々月"},
        {FixedList::Zei, 3, "外税", "非課税"},
        {FixedList::Hanei, 2, "反映しない", "反映する"},
        {FixedList::Yokin, 2, "普通", "当座"},
        {FixedList::Tesuryo, 2, "相手", "当社"},
        {FixedList::Zeituuchi, 4, "請求書毎", "免税"},
        {FixedList::Seikyu, 2, "得意先", "納入先"},
        {FixedList::Hiz, 2, "和暦", "西暦"},
    };
    for (const Case& c : cases) {
        const QList<ListEntry> e = NumberedEntries(fixedListTexts(c.list));
        ASSERT_EQ(e.size(), c.count);
        EXPECT_EQ(e.first(), (ListEntry{c.first, 1}));
        EXPECT_EQ(e.last(), (ListEntry{c.last, c.count}));
    }
    EXPECT_EQ(orderListTexts("TAN"), QStringList({"ｺｰﾄﾞ順", "売上順", "全ての得意先"}));
    EXPECT_EQ(orderListTexts("KAI"), QStringList({"ｺｰﾄﾞ順", "買上順", "全ての仕入先"}));
    EXPECT_EQ(orderListTexts("Xyz"), QStringList({"ｺｰﾄﾞ順"}));
}

TEST(ChoiceLists, SettlementOfASlipCountsFromZero)
{
    QComboBox list;
    SetListTorihiki(&list);
    EXPECT_EQ(ListCode(&list), 1);
    list.setCurrentIndex(1);
    EXPECT_EQ(TorihikiKubun(list.currentIndex()), 1);
    EXPECT_EQ(TorihikiListIndex(0), 0);
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
    EXPECT_TRUE(SirEntries(std::nullopt).isEmpty());
    EXPECT_TRUE(CodeTableEntries("Nothing").isEmpty());

    QComboBox list;
    ListTbn(&list);
    EXPECT_EQ(list.count(), 2);
    EXPECT_EQ(list.currentIndex(), -1);
    FindListCode(&list, 2);
    EXPECT_EQ(list.currentText(), "小売");
}

}  // namespace
