#include <QLineEdit>
#include <QPointer>
#include "entry/FormDriver.h"
#include "slips/SlipDno_frm.h"
#include "slips/SlipFixture.h"
#include "slips/SlipNumbering.h"

class SlipDnoFormTest : public SlipTest {
protected:
    QPointer<SlipDno_frm> form;
    void TearDown() override
    {
        if (form) form->close();
        flushDeletes();
    }
    void open()
    {
        form = new SlipDno_frm;
        ASSERT_TRUE(showActive(form));
    }
    QList<long> counters()
    {
        QList<long> out;
        for (const char* k : {"Dsr", "Dur", "Dsh", "Dny", "Seikyu"}) out << GetNextDno(k, 1);
        return out;
    }
};

TEST_F(SlipDnoFormTest, EnterThroughTheFiveThenConfirmSavesAndLowers)
{
    slipRun("UPDATE Eig SET DsrNo=10, DurNo=120, DshNo=30, DnyNo=40, SeikyuNo=50 WHERE Code=1");
    slipRun("INSERT INTO Dur (Dno, EigCode, Hizuke, TorCode) VALUES (100, 1, '2026-05-01', 2)");
    session().EigCode = 2;     // the screen works on office 1 whatever the session's
    open();
    ASSERT_EQ(focused(), form->ebox()[0]);
    EXPECT_EQ(form->ebox()[1]->text().trimmed(), "120");
    enter("11");
    enter("100");         // lowered onto a number in use
    press(Qt::Key_Return);
    press(Qt::Key_Down);
    enter("55");
    ASSERT_EQ(focused(), form->RecField());
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), form->ebox()[4]);
    press(Qt::Key_Return);
    press(Qt::Key_Return);     // "確認"
    flushDeletes();
    EXPECT_TRUE(form.isNull());
    EXPECT_EQ(counters(), (QList<long>{11, 100, 30, 40, 55}));
    // The slip screen offers that number, and it opens the slip to amend.
    session().EigCode = 1;
    SlipEditor ed("Dur");
    EXPECT_EQ(load(ed, "0"), SlipEditor::NumberOutcome::Edit);
    EXPECT_EQ(ed.head.Dno.trimmed(), "100");
}

TEST_F(SlipDnoFormTest, EscLeavesAndZeroIsRefused)
{
    open();
    enter("7");
    press(Qt::Key_Escape);
    flushDeletes();
    EXPECT_TRUE(form.isNull());
    EXPECT_EQ(counters(), (QList<long>{1, 1, 1, 1, 1}));

    open();
    press(Qt::Key_Down);
    enter("0");
    press(Qt::Key_F10);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"伝票番号が不正です。"});
    EXPECT_EQ(focused(), form->ebox()[1]);
    EXPECT_EQ(counters(), (QList<long>{1, 1, 1, 1, 1}));
}

TEST_F(SlipDnoFormTest, WithoutTheFirstOfficeTheScreenDoesNotOpen)
{
    slipRun("DELETE FROM Eig WHERE Code=1");
    EXPECT_FALSE(SlipDno_frm::mayOpen());
    EXPECT_EQ(dlg.of("Tell"), QStringList{"Eigマスターのエラーです。"});
}
