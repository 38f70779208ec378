#include <QTableWidget>
#include <QTest>
#include "slips/CasherList_frm.h"
#include "slips/SlipFixture.h"
#include "slips/SlipList_frm.h"
#include "slips/SlipPick.h"

class SlipListTest : public SlipTest {
protected:
    void SetUp() override
    {
        SlipTest::SetUp();
        slipRun("INSERT INTO Eig (Code, Namae) VALUES (2, '大阪')");
        // Customer 2: two live slips, one cancelled image, one of another office; customer 3: one.
        slipRun("INSERT INTO Dur (Dno, EigCode, Hizuke, TorCode, Tekiyo) VALUES (3, 1, '2026-05-01', 2, '五月分'), "
                "(7, 1, '2026-06-10', 2, ' '), (-7, 1, '2026-06-11', 2, ' '), (9, 2, '2026-07-01', 2, ' '), "
                "(4, 1, '2026-08-01', 3, ' ')");
        slipRun("INSERT INTO Dsr (Dno, EigCode, Hizuke, SirCode) VALUES (2, 1, '2026-04-02', 2)");
        // Deposits have no head: a number of two rows is one entry, dated by its first row.
        const char* dny = "INSERT INTO Dny (Dno, Eda, EigCode, Hizuke, TorCode, Kubun, NGaku, Getudo) VALUES (?, ?, ?, ?, ?, 1, 0, 5)";
        slipRun(dny, {3, 1, 1, "2026-05-15", 2});
        slipRun(dny, {3, 2, 1, "2026-05-16", 2});
        slipRun(dny, {4, 1, 1, "2026-06-01", 2});
        slipRun(dny, {5, 1, 1, "2026-04-30", 2});
        slipRun(dny, {6, 1, 2, "2026-07-01", 2});
    }
    static QStringList shown(const QString& kind, qint64 partner, short office = 1)
    {
        QStringList out;
        for (const SlipListRow& r : slipListRows(kind, partner, office))
            out << (r.number.trimmed() + " " + r.date + " " + r.tekiyo).trimmed();
        return out;
    }
};

TEST_F(SlipListTest, LiveSlipsOfThePartnerAndOfficeNewestFirst)
{
    EXPECT_EQ(shown("Dur", 2), (QStringList{"7 2026 / 6 / 10 水曜", "3 2026 / 5 / 1 金曜 五月分"}));
    EXPECT_EQ(shown("Dur", 2, 2), QStringList{"9 2026 / 7 / 1 水曜"});
    EXPECT_EQ(shown("Dsr", 2), QStringList{"2 2026 / 4 / 2 木曜"});   // purchases by SirCode
    EXPECT_EQ(shown("Dny", 2), (QStringList{"4 2026 年 6 月 1 日 月曜", "3 2026 年 5 月 15 日 金曜",
                                             "5 2026 年 4 月 30 日 木曜"}));
    EXPECT_TRUE(shown("Dsh", 2).isEmpty());
    EXPECT_TRUE(shown("Dur", 99).isEmpty());
}

TEST_F(SlipListTest, EnterAnswersTheCurrentRowEscAnswersNothing)
{
    struct Case { const char* kind; QList<int> keys; const char* answer; } cases[] = {
        {"Dur", {Qt::Key_Return}, "7"},
        {"Dur", {Qt::Key_Down, Qt::Key_Right, Qt::Key_Left, Qt::Key_Return}, "3"},
        {"Dur", {Qt::Key_Escape}, ""},
        {"Dny", {Qt::Key_Down, Qt::Key_Return}, "3"},
        {"Dny", {Qt::Key_Escape}, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.kind);
        std::unique_ptr<PickListDialog> f;
        if (QString(c.kind) == "Dny") f = std::make_unique<CasherList_frm>();
        else f = std::make_unique<SlipList_frm>();
        f->Init(c.kind, 2);
        ASSERT_EQ(f->grid()->columnCount(), QString(c.kind) == "Dny" ? 2 : 3);
        for (int k : c.keys) QTest::keyClick(f->grid(), Qt::Key(k));
        EXPECT_EQ(f->answer(), c.answer);
    }
    SlipList_frm empty;
    empty.Init("Dur", 99);
    QTest::keyClick(empty.grid(), Qt::Key_Return);
    EXPECT_EQ(empty.answer(), "");
}
