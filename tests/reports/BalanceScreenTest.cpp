#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include "entry/FormDriver.h"
#include "reports/LedgerReportFixture.h"
#include "reports/RepoSales_frm.h"
#include "reports/Zandaka_frm.h"
#include "shell/Session.h"

class BalanceScreen : public PartnerReportTest {
protected:
    QPointer<LedgerReportList_frm> form;
    void TearDown() override { delete form; }
    void open(const char* menuKey, LedgerReportList_frm* f)
    {
        session().MenuKey = menuKey;
        form = f;
        ASSERT_TRUE(showActive(form));
        ASSERT_EQ(focused(), form->ebox(0));
    }
    QString row(int r)
    {
        QStringList out;
        for (int c = 0; c < form->columns(); ++c) out << form->cell(r, c)->text();
        return out.join('|');
    }
};

TEST_F(BalanceScreen, MonthClosingDayAndEnterListTheBalances)
{
    open("Uza", new Zandaka_frm);
    // A wrong field is said and takes the focus back.
    enter("0");
    enter("40");
    press(Qt::Key_Return);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"月度の範囲は１から１３です。"});
    EXPECT_EQ(focused(), form->ebox(0));
    enter("5");
    press(Qt::Key_Return);   // 日締 still 40
    press(Qt::Key_Return);
    EXPECT_EQ(dlg.of("Tell").last(), "締日の範囲は１から３１です。");
    EXPECT_EQ(focused(), form->ebox(1));
    enter("31");
    ASSERT_EQ(focused(), form->Command());
    press(Qt::Key_Return);
    EXPECT_EQ(row(0), "1|東京商事|0|3,000|-3,000|16,000|-1,000|1,500|13,500");
    EXPECT_EQ(row(3), "||||||||");
    EXPECT_EQ(form->Total(6)->text(), "20,600");

    press(Qt::Key_F1);
    EXPECT_EQ(focused(), form->ebox(0));
    EXPECT_EQ(row(0) + form->Total(0)->text(), "||||||||");
    press(Qt::Key_F9);
    press(Qt::Key_F10);
    EXPECT_EQ(dlg.of("Tell").mid(2), QStringList({"対象がありません。", "対象がありません。"}));
}

TEST_F(BalanceScreen, SalesListScrollsByTheBarAndF9AndF10TakeItAll)
{
    for (int i = 0; i < 14; ++i) {
        exec("INSERT INTO Tto (TorCode, NouCode, EigCode, TorNamae, Sime, SeiFlag) VALUES (?, 0, 1, ?, 31, 0)",
             {100 + i, QString("得意先%1").arg(100 + i)});
        exec("INSERT INTO TtoD (TorCode, NouCode, EigCode, Getudo, Gaku, KTotal) VALUES (?, 0, 1, 5, ?, ?)",
             {100 + i, yen(100), yen(100)});
    }
    CaughtOutputs caught;
    open("Uza", new RepoSales_frm);
    enter("5");
    enter("");
    press(Qt::Key_Return);
    EXPECT_EQ(form->Bar()->maximum(), 3);
    EXPECT_EQ(row(3), "3|京都屋|0|0|0|0");
    EXPECT_EQ(form->Total(3)->text(), "26,150");
    form->PrintBtn()->setFocus();
    press(Qt::Key_Down);
    ASSERT_EQ(focused(), form->Bar());
    press(Qt::Key_PageDown);
    EXPECT_EQ(form->Bar()->value(), 3);
    EXPECT_EQ(row(14), "113|得意先113|100|0|0|100");

    press(Qt::Key_F9);
    ASSERT_TRUE(showActive(form));   // back from the preview
    press(Qt::Key_F10);
    EXPECT_EQ(caught.pages, 1);
    ASSERT_EQ(caught.sheets.size(), 1);
    EXPECT_TRUE(QFileInfo(caught.sheets[0]).fileName().startsWith("売上一覧表"));
    EXPECT_TRUE(dlg.of("Tell").isEmpty());
}
