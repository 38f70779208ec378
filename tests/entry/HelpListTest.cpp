#include <gtest/gtest.h>

#include "entry/HelpList.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "support/TempCompany.h"

namespace {

class HelpListTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(company.open()); }
    void add(const QString& table, int code, const QString& kana, const QString& namae, const QString& ryaku = " ")
    {
        ASSERT_EQ(execSql(session().MasterDb,
                          QStringLiteral("INSERT INTO %1 (Code, Kana, Namae, Ryaku) VALUES (?, ?, ?, ?)").arg(table),
                          {code, kana, namae, ryaku}), ErrorClass::None);
    }
    void addClasses(int n)
    {
        for (int i = 1; i <= n; ++i) add("Tbn", i, QStringLiteral("ﾌﾞﾝﾙｲ%1").arg(i, 2, 10, QLatin1Char('0')), QStringLiteral("分類%1").arg(i));
    }
    static QStringList codes(const HelpList& h)
    {
        QStringList out;
        for (const HelpLine& l : h.page()) out << l.hCode;
        return out;
    }
    TempCompany company;
};

// Keys: d Down, u Up, P Page Down, p Page Up. A page shows rows top+1 to top+15 by code.
TEST_F(HelpListTest, KeysKeepPagesFullAndScrollAtTheEdges)
{
    struct Case { int rows; QString keys; int top, cur; } cases[] = {
        {2, "ddddd", 0, 1},                                  // not below the last row
        {15, "ddP", 0, 2},                                   // exactly one page: nothing to move
        {16, "ddP", 1, 2},                                   // one row more: it comes in at the end
        {31, "ddP", 15, 2},
        {31, "ddPp", 0, 2},
        {20, "u" + QString(14, 'd'), 0, 14},                 // at the very top Up does nothing
        {20, QString(24, 'd'), 5, 14},                       // the page follows until the rows end
        {20, QString(24, 'd') + QString(15, 'u'), 4, 0},
    };
    for (const Case& c : cases) {
        execSql(session().MasterDb, QStringLiteral("DELETE FROM Tbn"));
        addClasses(c.rows);
        HelpList h;
        h.Init("Tbn", "", "");
        for (QChar k : c.keys) {
            if (k == 'd') h.keyDown();
            else if (k == 'u') h.keyUp();
            else if (k == 'P') h.pageDown();
            else h.pageUp();
        }
        const QString what = QString::number(c.rows) + " " + c.keys;
        EXPECT_EQ(h.TopRow, c.top) << qPrintable(what);
        EXPECT_EQ(h.CurRow, c.cur) << qPrintable(what);
        EXPECT_EQ(h.page().last().hCode, QString::number(std::min(c.top + HelpList::PageRows, c.rows))) << qPrintable(what);
        ASSERT_TRUE(h.enter(""));
        EXPECT_EQ(h.HitCode, QString::number(c.top + c.cur + 1)) << qPrintable(what);
    }
}

TEST_F(HelpListTest, EnterOnTheKanaBoxFiltersAndSorts)
{
    add("Tbn", 1, "ｶｱ", "加藤", "c");
    add("Tbn", 2, "ｱｵｷ", "青木", "a");
    add("Tbn", 3, "ｲｶ", "伊賀", "d");
    add("Tbn", 4, "ｱｲ", "相井", "b");
    HelpList h;
    h.Init("Tbn", "", "");
    EXPECT_EQ(codes(h), QStringList({"1", "2", "3", "4"}));
    struct Case { QString typed; QStringList codes; QString pattern; } cases[] = {
        {"ｱ", {"4", "2"}, "ｱ"},                 // readings that begin with it, by reading
        {"*", {"4", "2", "3", "1"}, "*"},
        {"*3", {"2", "4", "1", "3"}, "*"},
        {"*4", {"3", "1", "4", "2"}, "*"},       // 伊 < 加 < 相 < 青 by code point
        {"ｱ*ｷ", {"2"}, "ｱ*ｷ"},
        {"ｷ", {}, "ｷ"},
    };
    for (const Case& c : cases) {
        EXPECT_FALSE(h.enter(c.typed)) << c.typed.toStdString();
        EXPECT_EQ(codes(h), c.codes) << c.typed.toStdString();
        EXPECT_EQ(h.Pattern, c.pattern) << c.typed.toStdString();
        EXPECT_TRUE(h.lastError().isEmpty());
    }
    // An empty list gives no hit.
    EXPECT_TRUE(h.enter(""));
    EXPECT_FALSE(h.Hit);
    EXPECT_TRUE(h.HitCode.isEmpty());
}

TEST_F(HelpListTest, QuotesAndPercentSignsAreOnlyText)
{
    add("Tbn", 1, "ｱｲ", "相井");
    add("Tbn", 2, "ｱ%ｲ", "記号");
    add("Tbn", 3, "ｱ_ｲ", "下線");
    HelpList h;
    h.Init("Tbn", "", "");
    struct Case { QString typed; QStringList codes; } cases[] = {
        {"ｱ'", {}}, {"'; DELETE FROM Tbn; --", {}}, {"%", {}},
        {"ｱ%", {"2"}}, {"ｱ_", {"3"}}, {"ｱ?ｲ", {"2", "3"}},
    };
    for (const Case& c : cases) {
        h.enter(c.typed);
        EXPECT_EQ(codes(h), c.codes) << c.typed.toStdString();
        EXPECT_TRUE(h.lastError().isEmpty()) << c.typed.toStdString();
    }
    EXPECT_EQ(scalar(session().MasterDb, "SELECT COUNT(*) FROM Tbn").toInt(), 3);
}

TEST_F(HelpListTest, PartnersByClassOrAll)
{
    auto tor = [](int code, int tbn, const char* kana) {
        execSql(session().MasterDb, "INSERT INTO Tor (Code, TbnCode, Kana, Namae, Ryaku) VALUES (?, ?, ?, ?, ?)",
                {code, tbn, QString::fromUtf8(kana), QStringLiteral("得意先%1").arg(code), QStringLiteral("略%1").arg(code)});
    };
    tor(0, 1, "ｱ");   // the cash customer never shows with "ALL"
    tor(10, 1, "ｳ");
    tor(20, 2, "ｲ");
    tor(30, 1, "ｴ");
    HelpList h;
    h.Init("Tor", "ALL", "");
    EXPECT_EQ(codes(h), QStringList({"20", "10", "30"}));
    h.Init("Tor", "1", "");
    EXPECT_EQ(codes(h), QStringList({"0", "10", "30"}));
    h.enter("ｳ");
    EXPECT_EQ(codes(h), QStringList({"10"}));
    h.Init("Tor", "1 OR 1=1", "");
    EXPECT_EQ(h.RowCount, 0);
    EXPECT_TRUE(h.lastError().isEmpty());
}

TEST_F(HelpListTest, ProductListsShowPrices)
{
    const QSqlDatabase db = session().MasterDb;
    execSql(db, "INSERT INTO Hin (Code, Kana, Namae, Ryaku, STanka, UTanka) VALUES ('0000000000123', 'ﾘﾝｺﾞ', '林檎', 'ﾘﾝ', 12000000, 15000000)");
    execSql(db, "INSERT INTO Hin (Code, Kana, Namae, Ryaku, STanka, UTanka) VALUES ('A-1', 'ﾐｶﾝ', '蜜柑', 'ﾐｶ', 0, 12345670000)");
    execSql(db, "INSERT INTO Tka (TorCode, HinCode, Tanka) VALUES (5, '0000000000123', 13500000)");
    execSql(db, "INSERT INTO Ska (SirCode, HinCode, Tanka) VALUES (7, '0000000000123', 9800000)");
    execSql(db, "INSERT INTO Nka (TorCode, NouCode, HinCode, Tanka) VALUES (5, 2, 'A-1', 10000)");
    struct Case { QString table, f1, f2; QStringList line; QString head3; } cases[] = {
        {"Tka", "5", "", {"123", "ﾘﾝｺﾞ", "1,200-1,350", "林檎"}, "略称 *3"},
        {"Ska", "7", "", {"123", "ﾘﾝｺﾞ", "980-1,500", "林檎"}, "略称 *3"},
        {"Nka", "5", "2", {"A-1", "ﾐｶﾝ", "-1", "蜜柑"}, "単価 *3"},
    };
    for (const Case& c : cases) {
        HelpList h;
        h.Init(c.table, c.f1, c.f2);
        ASSERT_FALSE(h.page().isEmpty()) << c.table.toStdString();
        const HelpLine l = h.page()[0];
        EXPECT_EQ(QStringList({l.hCode, l.hKana, l.hRyaku, l.hNamae}), c.line) << c.table.toStdString();
        EXPECT_EQ(h.head3(), c.head3);
    }
    HelpList h;
    h.Init("Hin", "", "");
    ASSERT_EQ(h.RowCount, 2);
    EXPECT_EQ(h.page()[1].hRyaku, "-1,234,567");   // a price wider than the column keeps its digits
    h.HinFilter = "ZeiFlag IS NULL AND Code LIKE 'A%'";
    h.RunQuery("Code");
    EXPECT_EQ(h.RowCount, 1);
    h.enter("ﾘ");
    EXPECT_EQ(h.RowCount, 0);   // the caller's condition holds under the reading filter too
}

TEST_F(HelpListTest, PostalCodesListAddresses)
{
    const QSqlDatabase db = session().MasterDb;
    execSql(db, "INSERT INTO Zip (Code, Addr) VALUES (123, '北区一丁目'), (123, '北区二丁目'), (456, '南区')");
    HelpList h;
    h.Init("Zip", "123", "");
    ASSERT_EQ(h.RowCount, 2);
    EXPECT_EQ(h.page()[0].hCode, "123");
    EXPECT_TRUE(h.page()[0].hKana.isEmpty());
    h.keyDown();
    ASSERT_TRUE(h.enter(""));
    EXPECT_TRUE(h.Hit);
    EXPECT_EQ(h.HitCode, h.page()[1].hNamae);   // the address is what a postal lookup wants

    h.enter("ｱ");   // the postal table has no reading: the failure is reported, nothing breaks
    EXPECT_EQ(h.RowCount, 0);
    EXPECT_TRUE(h.lastError().startsWith("エラー："));

    h.Init("Bum", "", "");   // no such table in this store
    EXPECT_EQ(h.RowCount, 0);
}

}  // namespace
