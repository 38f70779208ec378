#include "slips/SlipFixture.h"
#include "slips/SlipNumbering.h"

class SlipCounters : public SlipTest {};

TEST_F(SlipCounters, CounterIsRaisedNeverLoweredAndOnlyOnItsOwnRow)
{
    slipRun("UPDATE Eig SET DurNo = 120, DshNo = NULL WHERE Code = 1");
    struct Step { const char* kind; short office; long candidate; bool ok; long after; } steps[] = {
        {"Dur", 1, 901, true, 901},
        {"Dsh", 1, 5, true, 5},            // a NULL counter reads as 0 and is raised
        {"Dur", 2, 50, true, 0},           // no office row: nothing is made
        {"DurNo=0 --", 1, 50, false, 0},   // not a kind
    };
    for (const Step& s : steps) {
        EXPECT_EQ(RaiseNextDno(s.kind, s.office, s.candidate), s.ok) << s.kind << " " << s.candidate;
        EXPECT_EQ(GetNextDno(s.kind, s.office), s.after) << s.kind << " " << s.candidate;
    }
    EXPECT_EQ(GetNextDno("Tor", 1), 0);
    EXPECT_EQ(slipOne("SELECT count(*) FROM Eig").toInt(), 1);
}

TEST_F(SlipCounters, NextFreeNumberPerOfficeIgnoresCancelledRows)
{
    EXPECT_EQ(nextFreeDno("Dur", 1), 1);
    for (auto [dno, office] : {std::pair{5, 1}, {9, 1}, {-12, 1}, {50, 2}})
        slipRun("INSERT INTO Dur (Dno, EigCode) VALUES (?, ?)", {dno, office});
    slipRun("INSERT INTO Dny (Dno, Eda, EigCode) VALUES (3, 1, 1), (3, 2, 1)");
    EXPECT_EQ(nextFreeDno("Dur", 1), 10);
    EXPECT_EQ(nextFreeDno("Dur", 2), 51);
    EXPECT_EQ(nextFreeDno("Dur", 3), 1);
    EXPECT_EQ(nextFreeDno("Dny", 1), 4);
    EXPECT_EQ(nextFreeDno("Dsh", 1), 1);
    EXPECT_EQ(nextFreeDno("Dur; DELETE FROM Dur", 1), 1);
    EXPECT_EQ(slipOne("SELECT count(*) FROM Dur").toInt(), 4);
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
