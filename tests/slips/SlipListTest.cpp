#include <gtest/gtest.h>
#include <QTableWidget>
#include <QTest>
#include "shell/Session.h"
#include "slips/SlipList_frm.h"
#include "slips/SlipPick.h"
#include "store/Sql.h"
#include "support/TempCompany.h"

namespace {
void heads(TempCompany& co)
{
    ASSERT_TRUE(co.open());
    session().EigCode = 1;
    session().Hiz = 2;
    // partner 5: two live slips, one cancelled image, one of another office; partner 6: one slip
    ASSERT_EQ(execSql(session().MasterDb,
                      "INSERT INTO Dur (Dno, EigCode, Hizuke, TorCode, Tekiyo) VALUES "
                      "(3, 1, '2026-05-01', 5, '五月分'), (7, 1, '2026-06-10', 5, ' '), (-7, 1, '2026-06-11', 5, ' '), "
                      "(9, 2, '2026-07-01', 5, ' '), (4, 1, '2026-08-01', 6, ' ')"),
              ErrorClass::None);
    ASSERT_EQ(execSql(session().MasterDb, "INSERT INTO Dsr (Dno, EigCode, Hizuke, SirCode) VALUES (2, 1, '2026-04-02', 5)"),
              ErrorClass::None);
}
}

TEST(SlipList, LiveSlipsOfThePartnerAndOfficeNewestFirst)
{
    TempCompany co(2026);
    heads(co);
    const QList<SlipListRow> rows = slipListRows("Dur", 5, 1);
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0].number, "     7");
    EXPECT_EQ(rows[0].date, "2026 / 6 / 10 水曜");
    EXPECT_EQ(rows[1].number, "     3");
    EXPECT_EQ(rows[1].tekiyo, "五月分");
    EXPECT_EQ(slipListRows("Dur", 5, 2).size(), 1);
    EXPECT_EQ(slipListRows("Dsr", 5, 1).size(), 1);         // purchases by SirCode
    EXPECT_TRUE(slipListRows("Dur", 99, 1).isEmpty());
    EXPECT_TRUE(slipListRows("Dny", 5, 1).isEmpty());
}

TEST(SlipList, EnterAnswersTheCurrentRowEscAnswersNothing)
{
    TempCompany co(2026);
    heads(co);
    struct Case { QList<int> keys; const char* answer; } cases[] = {
        {{Qt::Key_Return}, "7"},
        {{Qt::Key_Down, Qt::Key_Return}, "3"},
        {{Qt::Key_Down, Qt::Key_Right, Qt::Key_Left, Qt::Key_Return}, "3"},
        {{Qt::Key_Escape}, ""},
    };
    for (const auto& c : cases) {
        SlipList_frm f;
        f.Init("Dur", 5);
        auto* list = f.findChild<QTableWidget*>("List");
        ASSERT_NE(list, nullptr);
        for (int k : c.keys) QTest::keyClick(list, Qt::Key(k));
        EXPECT_EQ(f.answer(), c.answer);
    }
    SlipList_frm empty;
    empty.Init("Dur", 99);
    QTest::keyClick(empty.findChild<QTableWidget*>("List"), Qt::Key_Return);
    EXPECT_EQ(empty.answer(), "");
}
