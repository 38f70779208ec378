#include <gtest/gtest.h>
#include "shell/Session.h"
#include "slips/SlipNumbering.h"
#include "store/Sql.h"
#include "support/TempCompany.h"

namespace {
void run(const QString& sql, const QVariantList& b = {}) { ASSERT_EQ(execSql(session().MasterDb, sql, b), ErrorClass::None) << qPrintable(sql); }
QVariant one(const QString& sql) { return scalar(session().MasterDb, sql); }

class SlipCounters : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(co.open()); }
    TempCompany co{2026};
};
}

TEST_F(SlipCounters, CounterIsRaisedNeverLowered)
{
    run("UPDATE Eig SET DurNo = 120, DsrNo = 7 WHERE Code = 1");
    EXPECT_EQ(GetNextDno("Dur", 1), 120);
    EXPECT_EQ(GetNextDno("Dsr", 1), 7);

    struct Step { const char* kind; long candidate; long after; } steps[] = {
        {"Dur", 901, 901},   // a number typed far ahead moves the counter on
        {"Dur", 101, 901},   // an old free number leaves it alone
        {"Dsr", 8, 8},
        {"Seikyu", 0, 1},    // counters of 1 from the template
    };
    for (const auto& s : steps) {
        EXPECT_TRUE(RaiseNextDno(s.kind, 1, s.candidate));
        EXPECT_EQ(GetNextDno(s.kind, 1), s.after) << s.kind << " " << s.candidate;
    }
    // A NULL counter reads as 0 and is raised.
    run("UPDATE Eig SET DshNo = NULL");
    EXPECT_EQ(GetNextDno("Dsh", 1), 0);
    EXPECT_TRUE(RaiseNextDno("Dsh", 1, 5));
    EXPECT_EQ(GetNextDno("Dsh", 1), 5);
}

TEST_F(SlipCounters, MissingOfficeOrUnknownKindGivesZeroAndChangesNothing)
{
    EXPECT_EQ(GetNextDno("Dur", 2), 0);
    EXPECT_TRUE(RaiseNextDno("Dur", 2, 50));
    EXPECT_EQ(one("SELECT count(*) FROM Eig").toInt(), 1);
    EXPECT_EQ(GetNextDno("Dur", 2), 0);
    EXPECT_EQ(GetNextDno("Tor", 1), 0);
    EXPECT_FALSE(RaiseNextDno("DurNo=0 --", 1, 50));
    EXPECT_EQ(GetNextDno("Dur", 1), 1);
}

TEST_F(SlipCounters, NextFreeNumberPerOfficeIgnoresCancelledRows)
{
    EXPECT_EQ(nextFreeDno("Dur", 1), 1);
    for (auto [dno, office] : {std::pair{5, 1}, {9, 1}, {-12, 1}, {50, 2}})
        run("INSERT INTO Dur (Dno, EigCode) VALUES (?, ?)", {dno, office});
    run("INSERT INTO Dny (Dno, Eda, EigCode) VALUES (3, 1, 1), (3, 2, 1)");
    EXPECT_EQ(nextFreeDno("Dur", 1), 10);
    EXPECT_EQ(nextFreeDno("Dur", 2), 51);
    EXPECT_EQ(nextFreeDno("Dur", 3), 1);
    EXPECT_EQ(nextFreeDno("Dny", 1), 4);
    EXPECT_EQ(nextFreeDno("Dsh", 1), 1);
    EXPECT_EQ(nextFreeDno("Dur; DELETE FROM Dur", 1), 1);
    EXPECT_EQ(one("SELECT count(*) FROM Dur").toInt(), 4);
}

TEST(SlipNumbering, CheckPeriodMapsTheTypedDateToTheClosingMonth)
{
    Session& s = session();
    s.Nendo = 2026; s.sTuki = 4; s.eTuki = 3;
    struct Case { short hiz; const char *y, *m, *d; short sime; const char* expect; } cases[] = {
        {2, "2026", "5", "21", 20, "6"},
        {2, "2027", "3", "25", 20, "13"},     // behind the last closing of the year
        {1, "38", "5", "21", 20, "6"},        // era year 38 is 2026
        {1, "H38", "05", "21", 25, "5"},
        {2, "", "", "", 20, "RangeOver"},
        {2, "2026", "13", "1", 20, "RangeOver"},
    };
    for (const auto& c : cases) {
        s.Hiz = c.hiz;
        EXPECT_EQ(checkPeriod(c.y, c.m, c.d, c.sime), c.expect) << c.y << "/" << c.m << "/" << c.d << " sime " << c.sime;
    }
    s.Hiz = 2;
    EXPECT_EQ(checkPeriod(QDate(2027, 3, 21), 20), "13");
    EXPECT_EQ(checkPeriod(QDate(), 20), "RangeOver");
    s = Session();
}
