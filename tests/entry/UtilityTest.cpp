#include <gtest/gtest.h>

#include "entry/Utility.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "support/TempCompany.h"

namespace {

class UtilityTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(company.open());
        const QSqlDatabase db = session().MasterDb;
        execSql(db, "INSERT INTO Hin (Code, Namae) VALUES ('0000000000123', '林檎')");
        execSql(db, "INSERT INTO Tbn (Code, Namae) VALUES (1, '卸')");
        execSql(db, "INSERT INTO Sbn (Code, Namae) VALUES (4, 'メーカー')");
        execSql(db, "INSERT INTO Chi (Code, Namae) VALUES (2, '部長')");
        execSql(db, "INSERT INTO Tor (Code, TbnCode, Namae, Tenmei, Sime) VALUES (5, 1, '桜商店', '本店', 20), (6, 9, '梅屋', ' ', 0)");
        execSql(db, "INSERT INTO Sir (Code, SbnCode, Namae, Sime, SimeFlag) VALUES (7, 4, '松工業', 15, 2), (8, 4, '竹製作所', 10, 1)");
        execSql(db, "INSERT INTO Nou (TorCode, Code, Namae, Tenmei, SeiFlag) VALUES (5, 1, '桜商店', '駅前店', 2), (5, 2, '桜商店', ' ', 1)");
    }
    TempCompany company;
};

TEST_F(UtilityTest, MissingCodesShowTheSameEverywhere)
{
    EXPECT_EQ(HinName("0000000000123"), "林檎");
    EXPECT_EQ(HinName("123"), "NoMatch");
    EXPECT_EQ(HinName("' OR '1'='1"), "NoMatch");
    EXPECT_EQ(CodeName("Tbn", 1), "卸");
    EXPECT_EQ(CodeName("Tbn", 2), " ");   // a deleted class reads as one blank
    EXPECT_EQ(CodeName("NoTable", 1), " ");
    EXPECT_EQ(TorClass(99), 0);
    EXPECT_EQ(NouName(5, 9), " ");
    EXPECT_EQ(NouNameShop(5, 1), "桜商店駅前店");
    EXPECT_EQ(NouNameShop(5, 2), "桜商店");      // no shop name: the name alone
    EXPECT_EQ(NouBilling(5, 1), "2");
    EXPECT_EQ(NouBilling(5, 3), "");
    EXPECT_TRUE(NouCodes(5));
    EXPECT_FALSE(NouCodes(6));
}

TEST_F(UtilityTest, PartnerRecords)
{
    session().Sime = 31;
    struct Case { bool tor; qint64 code; QString name; int cls; QString className; QString sime; } cases[] = {
        {true, 5, "桜商店", 1, "卸", "20"},
        {true, 6, "梅屋", 9, " ", "0"},           // its class was deleted
        {true, 99, " ", 0, " ", "0"},
        {false, 7, "松工業", 4, "メーカー", "15"}, // its own closing day
        {false, 8, "竹製作所", 4, "メーカー", "31"}, // the company's
        {false, 99, " ", 0, " ", "0"},
    };
    for (const Case& c : cases) {
        const PartnerRecord r = c.tor ? TorRecord(c.code) : SirRecord(c.code);
        EXPECT_EQ(r.name, c.name) << c.code;
        EXPECT_EQ(r.classCode, c.cls) << c.code;
        EXPECT_EQ(r.className, c.className) << c.code;
        EXPECT_EQ(r.sime, c.sime) << c.code;
    }
}

TEST_F(UtilityTest, ZipAddressOneManyNone)
{
    const QSqlDatabase db = session().MasterDb;
    execSql(db, "INSERT INTO Zip (Code, Addr) VALUES (060, '札幌市中央区'), (100, '千代田区丸の内'), (100, '千代田区大手町')");
    execSql(db, "INSERT INTO Zip7 (Code, Addr) VALUES (1000005, '千代田区丸の内一丁目')");
    QStringList asked;
    setZipChooser([&](const QString& table, const QString& code) {
        asked << table + ":" + code;
        return QStringLiteral("千代田区大手町");
    });
    EXPECT_EQ(ZipAddress("060"), "札幌市中央区");
    EXPECT_EQ(ZipAddress(" 1000005 "), "千代田区丸の内一丁目");
    EXPECT_EQ(ZipAddress("100"), "千代田区大手町");
    EXPECT_EQ(asked, QStringList({"Zip:100"}));
    EXPECT_EQ(ZipAddress("999"), "");
    EXPECT_EQ(ZipAddress("100-0005"), "");   // not a number: nothing, quietly
    setZipChooser(nullptr);
    EXPECT_EQ(ZipAddress("100"), "");
    EXPECT_EQ(asked.size(), 1);
}

}  // namespace
