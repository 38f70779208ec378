#include <gtest/gtest.h>

#include "entry/FormDriver.h"
#include "entry/Recordset.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "support/TempCompany.h"

namespace {

class RecordsetTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(company.open());
        execSql(session().MasterDb, "INSERT INTO Tbn (Code, Kana, Namae, Ryaku) VALUES (1, 'ｱ', '一', ' '), (2, 'ｲ', '二', ' ')");
    }
    TempCompany company;
};

TEST_F(RecordsetTest, RowsOfOtherStationsAreSeenAfterRequery)
{
    Recordset rs;
    ASSERT_TRUE(rs.open(session().MasterDb, "Tbn"));
    EXPECT_EQ(rs.keys(), QList<qint64>({1, 2}));
    OtherStation other(company.file("MASTER.db"));
    ASSERT_TRUE(other.exec("INSERT INTO Tbn (Code, Namae) VALUES (3, '三')"));
    EXPECT_FALSE(rs.FindFirst(3));
    EXPECT_TRUE(rs.NoMatch());
    rs.Requery();
    ASSERT_TRUE(rs.FindFirst(3));
    EXPECT_EQ(rs.value("namae").toString(), "三");
    // A row deleted elsewhere is not found, even though the keys still had it.
    ASSERT_TRUE(other.exec("DELETE FROM Tbn WHERE Code = 1"));
    EXPECT_FALSE(rs.FindFirst(1));
    EXPECT_FALSE(rs.hasCurrent());
    ASSERT_TRUE(rs.MoveLast());
    EXPECT_EQ(rs.currentKey(), 3);
}

TEST_F(RecordsetTest, AddEditDelete)
{
    Recordset rs;
    ASSERT_TRUE(rs.open(session().MasterDb, "Tbn"));
    rs.AddNew();
    rs.setValue("Code", 2);
    rs.setValue("Namae", "重複");
    rs.setValue("NoSuchColumn", 1);   // dropped, never pasted into the statement
    EXPECT_EQ(rs.Update(), ErrorClass::Duplicate);
    rs.setValue("Code", 7);           // the pending row can be saved under another code
    EXPECT_EQ(rs.Update(), ErrorClass::None);
    EXPECT_EQ(rs.keys(), QList<qint64>({1, 2, 7}));
    EXPECT_EQ(scalar(session().MasterDb, "SELECT Namae FROM Tbn WHERE Code = 7").toString(), "重複");

    ASSERT_TRUE(rs.FindFirst(2));
    rs.Edit();
    rs.setValue("Namae", "弐");
    EXPECT_EQ(rs.Update(), ErrorClass::None);
    EXPECT_EQ(rs.value("Namae").toString(), "弐");
    EXPECT_EQ(rs.Delete(), ErrorClass::None);
    EXPECT_EQ(rs.keys(), QList<qint64>({1, 7}));
    EXPECT_EQ(rs.Delete(), ErrorClass::Other);   // no current row any more
    EXPECT_EQ(scalar(session().MasterDb, "SELECT COUNT(*) FROM Tbn").toInt(), 2);
}

TEST_F(RecordsetTest, UnknownTableOpensNothing)
{
    Recordset rs;
    EXPECT_FALSE(rs.open(session().MasterDb, "Tbn; DROP TABLE Tbn"));
    EXPECT_FALSE(rs.FindFirst(1));
    rs.AddNew();
    rs.setValue("Code", 1);
    EXPECT_EQ(rs.Update(), ErrorClass::Other);
    EXPECT_EQ(scalar(session().MasterDb, "SELECT COUNT(*) FROM Tbn").toInt(), 2);
}

}  // namespace
