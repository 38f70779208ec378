#include <gtest/gtest.h>

#include "masters/CompanyRules.h"
#include "masters/DealRules.h"
#include "masters/MasterRows.h"
#include "masters/NouRules.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

namespace {

QSqlDatabase db() { return session().MasterDb; }
void run(const QString& sql, const QVariantList& binds = {}) { ASSERT_EQ(execSql(db(), sql, binds), ErrorClass::None) << qPrintable(sql); }
QString cell(const QString& sql) { return scalar(db(), sql).toString(); }

TEST(CompanyPeriod, StartMonthEndAndRefusals)
{
    struct Case { QString sKai; int nendo, sime; QString message, start, eKai, fin; } cases[] = {
        {"20260421", 2026, 20, "", "05", "20270420", "04"},   // closes on the 20th: the year's first month is May
        {"20260420", 2026, 20, "", "04", "20270419", "04"},   // the closing day itself stays in its month
        {"20010401", 2001, 31, "", "04", "20020331", "03"},
        {"20261221", 2026, 20, "", "01", "20271220", "12"},   // 13 becomes 1
        {"20260421", 2026, 0, "", "05", "20270420", "04"},    // no closing day: every day is past it
        {"2026041", 2026, 31, "開始会計期間の年度設定が間違ってます。", "", "", ""},
        {"20261301", 2026, 31, "開始会計期間の年度設定が間違ってます。", "", "", ""},
        {"20260400", 2026, 31, "開始会計期間の年度設定が間違ってます。", "", "", ""},
    };
    for (const Case& c : cases) {
        const StartPeriod p = checkStartPeriod(c.sKai, c.nendo, c.sime);
        EXPECT_EQ(p.message, c.message) << qPrintable(c.sKai);
        EXPECT_EQ(p.start, c.start) << qPrintable(c.sKai);
        EXPECT_EQ(p.eKai, c.eKai) << qPrintable(c.sKai);
        EXPECT_EQ(p.fin, c.fin) << qPrintable(c.sKai);
    }
}

TEST(StoreValues, ByColumnType)
{
    EXPECT_EQ(StoreValue("Tor", "Namae", "").value(), QVariant(" "));
    EXPECT_EQ(StoreValue("Tor", "Sime", "20").value().toInt(), 20);
    EXPECT_EQ(StoreValue("Tor", "UMax", "1,234,567").value().toLongLong(), 12345670000LL);
    EXPECT_EQ(StoreValue("Tor", "Seikyu", "1234567").value().toInt(), 1234567);
    EXPECT_FALSE(StoreValue("Tor", "Sime", "40000"));     // beyond a short
    EXPECT_FALSE(StoreValue("Tor", "NoSuchColumn", "1"));
    EXPECT_FALSE(StoreValue("Tor; DROP TABLE Tor", "Code", "1"));
}

class RulesStore : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(company.open()); }
    TempCompany company;
    ScriptedDialogs dialogs;
};

TEST_F(RulesStore, EachPartnerLooksAtItsOwnSlipsOfTheYear)
{
    struct Case { const char* kind; const char* insert; QString refusal; } cases[] = {
        {"Tor", "INSERT INTO Dny (Dno, Eda, EigCode, TorCode, NouCode) VALUES (1, 1, 1, 5, 2)", "この得意先が伝票に存在するので、削除は出来ません。"},
        {"Sir", "INSERT INTO Dsr (Dno, EigCode, SirCode) VALUES (1, 1, 5)", "この仕入先が伝票に存在するので、削除は出来ません。"},
    };
    for (const Case& c : cases) {
        const DealKind& kind = *dealKind(c.kind);
        EXPECT_EQ(dealSlipRefusal(db(), kind, 5), "");
        run(c.insert);
        EXPECT_EQ(dealSlipRefusal(db(), kind, 5), c.refusal);
        EXPECT_EQ(dealSlipRefusal(db(), kind, 6), "");
    }
    EXPECT_EQ(nouSlipRefusal(db(), 5, 2), "この納入先が伝票に存在するので、削除はできません。");   // a deposit counts too
}

TEST_F(RulesStore, ACompanySaveTheStoreRefusesWritesNothing)
{
    run("INSERT INTO UserOP (Code, contents) VALUES (725, '19970331'), (726, '5')");
    session().TaxRateNew = Money::fromYen(5);
    EXPECT_FALSE(saveCompany(db(), {{"Kaisya", "別"}, {"NoSuchColumn", 1}}, {QDate(2030, 1, 1), Money::fromYen(9), "11"}));
    EXPECT_EQ(cell("SELECT Kaisya FROM Com"), "株式会社ヴェルモラ商事");
    EXPECT_EQ(cell("SELECT contents FROM UserOP WHERE Code = 725"), "19970331");
    EXPECT_EQ(session().TaxRateNew, Money::fromYen(5));
    // Rows 725 and 726 are kept up to date, never added.
    run("DELETE FROM UserOP");
    EXPECT_TRUE(saveCompany(db(), {{"Kaisya", "新会社"}}, {QDate(2019, 10, 1), Money::fromYen(8), "10"}));
    EXPECT_EQ(cell("SELECT COUNT(*) FROM UserOP"), "0");
    EXPECT_EQ(cell("SELECT Kaisya FROM Com"), "新会社");
}

}  // namespace
