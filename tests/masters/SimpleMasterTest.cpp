#include <gtest/gtest.h>

#include "entry/FormDriver.h"
#include "entry/Recordset.h"
#include "masters/SimpleMaster.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

namespace {

class SimpleMasterTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(company.open()); }
    QString row(const QString& table, int code)
    {
        return scalar(session().MasterDb,
                      QStringLiteral("SELECT Code || '|' || kana || '|' || Namae || '|' || Ryaku FROM %1 WHERE Code = ?").arg(table),
                      {code}).toString();
    }
    TempCompany company;
    ScriptedDialogs dialogs;
};

TEST_F(SimpleMasterTest, NextFreeCodeIsTheHighestPlusOne)
{
    const QSqlDatabase db = session().MasterDb;
    EXPECT_FALSE(NextFreeCode(db, "Cku").has_value());
    execSql(db, "INSERT INTO Cku (Code, Namae) VALUES (1, 'a'), (7, 'b'), (3, 'c')");
    EXPECT_EQ(NextFreeCode(db, "Cku"), 8);   // gaps are not reused
    EXPECT_FALSE(NextFreeCode(db, "Cku; DROP TABLE Cku").has_value());
}

TEST_F(SimpleMasterTest, RegisterNewEditAndTakenNumbers)
{
    const SimpleMasterKind* hbn = simpleMasterKind("Hbn");
    ASSERT_NE(hbn, nullptr);
    Recordset rs;
    ASSERT_TRUE(rs.open(session().MasterDb, "Hbn"));

    struct Case { QString mode; SimpleRow in; bool saved; QString code; QString stored; QStringList told; } cases[] = {
        {"NEW", {"    1", "ｱ", "青果", ""}, true, "1", "1|ｱ|青果| ", {}},
        {"EDIT", {"1", "ｱｵ", "青物", "青"}, true, "1", "1|ｱｵ|青物|青", {}},
        {"NEW", {"1", "", "重複", ""}, true, "2", "2| |重複| ", {"マスターは、No.2で登録しました。"}},
        // The row went away under an edit: it comes back as a new row.
        {"EDIT", {"9", "", "九", "九"}, true, "9", "9| |九|九", {}},
        {"NEW", {"32767", "", "上限", ""}, true, "32767", "32767| |上限| ", {}},
        {"NEW", {"32768", "", "超過", ""}, false, "32768", "", {"コードに不適切な数値です。\n32000以下にしてください。"}},
    };
    for (const Case& c : cases) {
        dialogs.log.clear();
        const RegisterOutcome out = registerSimpleRow(rs, *hbn, c.mode, c.in);
        EXPECT_EQ(out.saved, c.saved) << c.in.namae.toStdString();
        EXPECT_EQ(out.code, c.code) << c.in.namae.toStdString();
        EXPECT_EQ(dialogs.of("Tell"), c.told) << c.in.namae.toStdString();
        if (c.saved) {
            EXPECT_EQ(row("Hbn", c.code.toInt()), c.stored);
        }
    }
    // The last free number taken: 32767 is the top of the code, the save is dropped.
    dialogs.log.clear();
    const RegisterOutcome full = registerSimpleRow(rs, *hbn, "NEW", {"32767", "", "満杯", ""});
    EXPECT_FALSE(full.saved);
    EXPECT_EQ(scalar(session().MasterDb, "SELECT COUNT(*) FROM Hbn").toInt(), 4);
}

// Another station holds the file past the wait: the clerk is asked, and a "はい" after the
// other station let go saves what was typed.
TEST_F(SimpleMasterTest, LockedStoreAsksAndSavesOnRetry)
{
    Recordset rs;
    ASSERT_TRUE(rs.open(session().MasterDb, "Hbn"));
    OtherStation other(company.file("MASTER.db"));
    ASSERT_TRUE(other.exec("BEGIN EXCLUSIVE"));
    struct Releasing : ScriptedDialogs {
        OtherStation* held = nullptr;
        bool Ask(const QString& m, const QString& y, const QString& n) override
        {
            held->exec("ROLLBACK");
            return ScriptedDialogs::Ask(m, y, n);
        }
    } clerk;
    clerk.held = &other;
    setBusyTimeoutMs(50);
    const RegisterOutcome out = registerSimpleRow(rs, *simpleMasterKind("Hbn"), "NEW", {"5", "ﾃｽﾄ", "試験", ""});
    setBusyTimeoutMs(30000);
    EXPECT_TRUE(out.saved);
    ASSERT_EQ(clerk.of("Ask").size(), 1);
    EXPECT_TRUE(clerk.of("Ask")[0].endsWith("もう一度保存しますか？"));
    EXPECT_EQ(row("Hbn", 5), "5|ﾃｽﾄ|試験| ");
}

}  // namespace
