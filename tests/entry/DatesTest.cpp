#include <gtest/gtest.h>

#include "entry/Dates.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "support/TempCompany.h"

// Failure messages show dates as text; static so other test files can have their own.
static void PrintTo(const QDate& d, std::ostream* os)
{
    *os << (d.isValid() ? d.toString(Qt::ISODate).toStdString() : std::string("(invalid)"));
}

namespace {

// Sets the session values the date routines read and puts the old ones back afterwards.
class DatesTest : public ::testing::Test {
protected:
    void SetUp() override { saved = session(); }
    void TearDown() override { session() = saved; }
    Session saved;
};

struct ClosingCase {
    int nendo;
    short sTuki, eTuki, sime, year, month, day;
    const char* expect;
};

}  // namespace

TEST(Dates, ClosingMonthAcrossFiscalYears)
{
    const ClosingCase cases[] = {
        // April to March, Nendo 2001
        {2001, 4, 3, 20, 2001, 3, 25, "4"},          // behind the 20th of March: April
        {2001, 4, 3, 20, 2001, 3, 20, "RangeOver"},  // on the closing day: still March 2001
        {2001, 4, 3, 20, 2002, 3, 20, "3"},
        {2001, 4, 3, 20, 2002, 3, 21, "13"},         // last fiscal month, behind the closing
        {2001, 4, 3, 20, 2002, 3, 31, "13"},         // the year's last calendar day
        {2001, 4, 3, 20, 2002, 4, 1, "RangeOver"},   // after the year's last calendar day
        {2001, 4, 3, 31, 2001, 5, 31, "5"},
        {2001, 4, 3, 31, 2002, 3, 31, "3"},          // month-end closing never moves on
        {2001, 4, 3, 20, 2001, 12, 21, "1"},         // December behind the closing: January
        {2001, 4, 3, 20, 2001, 4, 20, "4"},
        {2001, 4, 3, 20, 2001, 4, 21, "5"},
        {2001, 4, 3, 0, 2001, 4, 1, "5"},            // sime 0 moves every date on
        // end-of-February closings
        {2001, 4, 3, 28, 2002, 2, 28, "2"},
        {2001, 4, 3, 27, 2002, 2, 28, "3"},
        {2003, 4, 3, 28, 2004, 2, 29, "3"},          // leap year: the 29th lies behind the 28th
        {2003, 4, 3, 29, 2004, 2, 29, "2"},
        // January to December
        {2001, 1, 12, 20, 2001, 12, 25, "13"},
        {2001, 1, 12, 20, 2001, 12, 20, "12"},
        {2001, 1, 12, 20, 2000, 12, 25, "1"},        // late December of the year before
        {2001, 1, 12, 20, 2000, 12, 20, "RangeOver"},
        {2001, 1, 12, 20, 2002, 1, 1, "RangeOver"},
        // December to November
        {2001, 12, 11, 20, 2002, 11, 21, "13"},
        {2001, 12, 11, 20, 2002, 11, 30, "13"},
        {2001, 12, 11, 20, 2002, 12, 1, "RangeOver"},
        {2001, 12, 11, 20, 2001, 11, 20, "RangeOver"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ClosingMonth(c.sime, c.year, c.month, c.day, c.nendo, c.sTuki, c.eTuki),
                  QString::fromLatin1(c.expect))
            << "Nendo " << c.nendo << " sTuki " << c.sTuki << " sime " << c.sime << " date "
            << c.year << "/" << c.month << "/" << c.day;
}

TEST(Dates, DateFromPartsCutsTheDay)
{
    const struct { int y, m, d; QDate expect; } cases[] = {
        {2001, 2, 31, QDate(2001, 2, 28)},
        {2000, 2, 31, QDate(2000, 2, 29)},
        {1900, 2, 29, QDate(1900, 2, 28)},
        {2001, 4, 31, QDate(2001, 4, 30)},
        {2001, 12, 31, QDate(2001, 12, 31)},
        {2001, 13, 5, QDate(2002, 1, 5)},  // months run on into the next year
        {2001, 2, 0, QDate()},             // no day 0 in January
        {2001, 2, 32, QDate()},
    };
    for (const auto& c : cases)
        EXPECT_EQ(DateFromParts(c.y, c.m, c.d), c.expect) << c.y << "/" << c.m << "/" << c.d;
}

TEST(Dates, PeriodOfMonth)
{
    const QDate keepFrom(1999, 9, 9), keepTo(1999, 9, 10);
    const struct { short sime; int year, month; QDate from, to; } cases[] = {
        {20, 2001, 1, QDate(2000, 12, 21), QDate(2001, 1, 20)},
        {31, 2000, 2, QDate(2000, 2, 1), QDate(2000, 2, 29)},
        {31, 2001, 2, QDate(2001, 2, 1), QDate(2001, 2, 28)},
        {30, 2001, 3, keepFrom, keepTo},                       // no 31 February
        {28, 2001, 3, keepFrom, keepTo},                       // no 29 February 2001
        {28, 2000, 3, QDate(2000, 2, 29), QDate(2000, 3, 28)},
        {29, 2001, 2, keepFrom, keepTo},                       // no 29 February: "to" fails
        {28, 2001, 2, QDate(2001, 1, 29), QDate(2001, 2, 28)},
        {30, 2001, 5, keepFrom, keepTo},                       // April has no 31st either
        {29, 2001, 5, QDate(2001, 4, 30), QDate(2001, 5, 29)},
        {0, 2001, 5, keepFrom, keepTo},
        {31, 2001, 13, keepFrom, keepTo},
    };
    for (const auto& c : cases) {
        QDate from = keepFrom, to = keepTo;
        PeriodOfMonth(c.sime, c.year, c.month, from, to);
        EXPECT_EQ(from, c.from) << c.sime << " " << c.year << "/" << c.month;
        EXPECT_EQ(to, c.to) << c.sime << " " << c.year << "/" << c.month;
    }
}

TEST_F(DatesTest, BoxesToDateFillsAndClamps)
{
    const QDate today(2023, 7, 15);
    const struct { short hiz; const char *y, *m, *d; QDate expect; } cases[] = {
        {1, "", "", "", QDate(2023, 1, 1)},
        {1, "13", "4", "1", QDate(2001, 4, 1)},
        {2, "2001", "13", "5", QDate(2001, 12, 5)},        // month above 12
        {2, "2001", "3", "0", QDate(2001, 3, 1)},          // day below 1
        {2, "0", "3", "5", QDate(2023, 3, 5)},             // year below 1
        {2, "2001", "0", "5", QDate(2001, 7, 5)},          // month below 1: the current month
        {2, "2001", "2", "99", QDate(2001, 2, 28)},        // 31, then cut to February
        {2, "10000", "2", "1", QDate(2023, 2, 1)},         // year above 9999
        {1, "8012", "2", "1", QDate(2023, 2, 1)},          // 8012 + 1988 is above 9999
        {1, "0", "2", "1", QDate(1988, 2, 1)},             // era year 0 is 1988, not clamped
        {2, "H13年", "4月", "1日", QDate(13, 4, 1)},         // only ASCII digits count
        {2, "２００１", "4", "1", QDate(2023, 4, 1)},          // full-width digits are dropped
        {2, "abc", "x", "y", QDate(2023, 7, 1)},           // boxes with text but no digits
        {2, "99999999999999999999", "4", "1", QDate(2023, 4, 1)},
    };
    for (const auto& c : cases) {
        session().Hiz = c.hiz;
        EXPECT_EQ(BoxesToDate(QString::fromUtf8(c.y), QString::fromUtf8(c.m), QString::fromUtf8(c.d), today),
                  c.expect)
            << "Hiz " << c.hiz << " [" << c.y << "][" << c.m << "][" << c.d << "]";
    }
}

TEST_F(DatesTest, BoxesAreDate)
{
    const struct { short hiz; const char *y, *m, *d; bool expect; } cases[] = {
        {2, "2000", "2", "29", true},  {2, "1900", "2", "29", false},
        {2, "2001", "2", "29", false}, {2, "2001", "13", "1", false},
        {2, "2001", "0", "1", false},  {2, "2001", "1", "", false},
        {1, "12", "2", "29", true},    {1, "13", "2", "29", false},
        {1, "0", "1", "1", true},      {2, "0", "1", "1", false},
        {2, "２００１", "1", "1", false}, {2, " 2001", "01", "01 ", true},
    };
    for (const auto& c : cases) {
        session().Hiz = c.hiz;
        EXPECT_EQ(BoxesAreDate(QString::fromUtf8(c.y), QString::fromUtf8(c.m), QString::fromUtf8(c.d)), c.expect)
            << "Hiz " << c.hiz << " " << c.y << "/" << c.m << "/" << c.d;
    }
}

TEST_F(DatesTest, DateToBoxesAndBack)
{
    const struct { short hiz; QDate date; const char *y, *m, *d; } cases[] = {
        {2, QDate(2001, 4, 1), "2001", " 4", " 1"},
        {1, QDate(2001, 12, 31), "  13", "12", "31"},
    };
    for (const auto& c : cases) {
        session().Hiz = c.hiz;
        const DateBoxes b = DateToBoxes(c.date);
        EXPECT_EQ(QStringList({b.year, b.month, b.day}), QStringList({c.y, c.m, c.d})) << c.y;
        EXPECT_EQ(BoxesToDate(b.year, b.month, b.day, QDate(2023, 1, 1)), c.date) << c.y;   // they read back
    }
    EXPECT_EQ(DateToBoxes(QDate(1988, 5, 5)).year, "    ");  // era year 0 shows as blanks
    EXPECT_EQ(DisplayYear(QDate(1987, 1, 1)), -1);
    session().Hiz = 2;
    EXPECT_EQ(DateToBoxes(QDate(2001, 4, 1)).weekday, "日曜");
}

TEST_F(DatesTest, NendoText)
{
    session().Nendo = 2001;
    session().Hiz = 1;
    EXPECT_EQ(NendoText(), "H13年");
    session().Hiz = 2;
    EXPECT_EQ(NendoText(), "2001年");
}

TEST_F(DatesTest, FormatDateStyles)
{
    const QDate d(2001, 4, 1);
    const struct { short hiz; int style; const char* expect; } cases[] = {
        {2, 0, "2001/04/01"},  {2, 1, "2001年04月01日 (日曜)"}, {2, 2, "04/01"}, {2, 3, "01"}, {2, 4, "0401"},
        {1, -1, "2001/04/01"}, {1, 0, "13/04/01"}, {1, 1, "13年04月01日 (日曜)"},
        {2, 5, ""},            {1, -2, ""},
    };
    for (const auto& c : cases) {
        session().Hiz = c.hiz;
        EXPECT_EQ(FormatDate(d, c.style), QString::fromUtf8(c.expect)) << "Hiz " << c.hiz << " style " << c.style;
    }
    EXPECT_EQ(FormatDate(QDate(), 0), "");
}

TEST(Dates, NextGetudo)
{
    const struct { const char *in, *out; } cases[] = {
        {"12", "13"}, {"13", "1"}, {"212", "213"}, {"213", "201"}, {" 3 ", "4"}, {"", "1"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(NextGetudo(c.in), QString::fromLatin1(c.out)) << "[" << c.in << "]";
}

TEST_F(DatesTest, PartnerSimeFromTheMasterFile)
{
    TempCompany co;
    ASSERT_TRUE(co.open());
    for (const char* sql : {"INSERT INTO Tor (Code, Sime) VALUES (1, 20), (2, 31), (3, NULL)",
                            "INSERT INTO Sir (Code, Sime, SimeFlag) VALUES (1, 15, 2), (2, 15, 1), (3, 25, NULL), (4, NULL, 2)"})
        ASSERT_EQ(execSql(session().MasterDb, QString::fromLatin1(sql)), ErrorClass::None) << sql;
    session().Sime = 10;
    const struct { const char* kind; long code; short expect; } cases[] = {
        {"TOR", 1, 20}, {"TOR", 3, 0}, {"TOR", 99, 0}, {"TOR", -1, 0},
        {"SIR", 1, 15}, {"SIR", 2, 10}, {"SIR", 3, 10}, {"SIR", 4, 0},
        {"tor", 1, 15},  // any kind but "TOR" is a supplier
    };
    for (const auto& c : cases)
        EXPECT_EQ(PartnerSime(c.kind, c.code), c.expect) << c.kind << " " << c.code;

    execSql(session().MasterDb, "DROP TABLE Sir");
    EXPECT_EQ(PartnerSime("SIR", 1), 0);  // store error: 0, no crash
    CloseStore();
    EXPECT_EQ(PartnerSime("TOR", 1), 0);  // no file at all
}
