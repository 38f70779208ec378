#include <QApplication>
#include "shell/QtScreens.h"
#include "slips/Cashier_frm.h"
#include "slips/ScreenFixture.h"
#include "slips/SlipNumbering.h"

class CashierFormTest : public ScreenTest<Cashier_frm> {
protected:
    void TearDown() override
    {
        Cashier_frm::setCashListPicker({});
        ScreenTest::TearDown();
    }
    // Number, date, class (taken from the partner), partner, destination, staff, 請求No.
    void typeHead(const QString& number, int partner, const QString& nno = {})
    {
        enter(number);
        enter("2026");
        enter("5");
        enter("15");
        press(Qt::Key_Return);
        pick(partner);
        for (int i = form->editor().deposit() ? 0 : 1; i < 2; ++i) press(Qt::Key_Return);
        enter(nno);
    }
    // From the kind list of a row: the kind by Page Down (0: Enter takes the usual one), the
    // text and the amount; the focus ends on the next row's kind.
    void typeRow(int kind, const QString& naiyou, const QString& amount)
    {
        ASSERT_TRUE(qobject_cast<QComboBox*>(focused()));
        for (int i = 0; i < kind; ++i) press(Qt::Key_PageDown);
        press(Qt::Key_Return);
        enter(naiyou);
        enter(amount);
    }
    QStringList rows()
    {
        QStringList out;
        for (int r = 0; r < CashSlipEditor::RowCount; ++r)
            out << text(form->cell(Cashier_frm::dKubun, r)) + ":" + text(form->cell(Cashier_frm::dGaku, r));
        return out;
    }
};

TEST_F(CashierFormTest, ADepositTypedFromTheMenuThenTheNextNumberTypedOver)
{
    open("Dny");
    EXPECT_EQ(text(form->box(Cashier_frm::DnoBox)), "1");
    typeHead("", 2, "123");
    EXPECT_EQ(text(form->mode()), "新規");
    EXPECT_EQ(text(form->list(Cashier_frm::TanList)), "佐藤");      // the customer's staff
    EXPECT_EQ(text(form->list(Cashier_frm::ClassList)), "一般");
    EXPECT_EQ(text(form->dZandaka()), "-");                           // no ledger yet
    EXPECT_EQ(focused(), form->cell(Cashier_frm::dKubun, 0));

    typeRow(0, "5月分", "10000");                                      // Enter: the usual transfer
    typeRow(1, "", "2500");
    EXPECT_EQ(rows().mid(0, 2), (QStringList{"振  込:10,000", "現  金:2,500"}));
    EXPECT_EQ(text(form->Gakukei()), "12,500");

    press(Qt::Key_F10);
    EXPECT_EQ(slipOne("SELECT count(*) FROM Dny WHERE Dno=1 AND TorCode=2 AND TanCode=2 AND NNo=123").toInt(), 2);
    EXPECT_EQ(slipOne("SELECT Nnaiyo FROM Dny WHERE Eda=1").toString(), "5月分");
    EXPECT_EQ(tto(2, 0, 5, "Furikomi"), 10000);
    EXPECT_EQ(tto(2, 0, 5, "Genkin"), 2500);
    // Cleared for the next slip; the counter offered is replaced by what is typed.
    EXPECT_EQ(focused(), form->box(Cashier_frm::DnoBox));
    EXPECT_EQ(text(form->box(Cashier_frm::DnoBox)), "2");
    EXPECT_EQ(text(form->cell(Cashier_frm::dGaku, 0)), "");
    QTest::keyClicks(focused(), "7");
    EXPECT_EQ(text(form->box(Cashier_frm::DnoBox)), "7");
    press(Qt::Key_Return);
    EXPECT_EQ(text(form->mode()), "新規");
    EXPECT_EQ(text(form->box(Cashier_frm::MonthBox)), "5");         // the last deposit's date
}

TEST_F(CashierFormTest, AmendingTenThousandToSevenThousandReplacesTheRowsAndTheLedger)
{
    ASSERT_TRUE(deposit(2, "2026/5/10", {500}).saved);
    ASSERT_TRUE(deposit(2, "2026/5/15", {10000}).saved);
    open("Dny");
    enter("2");
    EXPECT_EQ(text(form->mode()), "参照");
    EXPECT_EQ(focused(), form->box(Cashier_frm::DnoBox));
    EXPECT_EQ(rows()[0], "現  金:10,000");
    EXPECT_EQ(text(form->Results(1)), "10,500");                      // May, both deposits
    EXPECT_EQ(text(form->monthCaption(1)), "5 月20日締");
    // Walk the head with Enter as a clerk does, to the amount of the first row.
    for (int i = 0; i < 11; ++i) press(Qt::Key_Return);
    ASSERT_EQ(focused(), form->cell(Cashier_frm::dGaku, 0));
    EXPECT_EQ(text(form->mode()), "参照");
    enter("7000");
    press(Qt::Key_F10);
    EXPECT_EQ(tto(2, 0, 5, "Genkin"), 500 + 7000);
    EXPECT_EQ(zanTto(2, 0), -7500);
    EXPECT_EQ(slipOne("SELECT group_concat(Dno || ':' || (NGaku / 10000)) FROM Dny").toString(), "1:500,2:7000");
    EXPECT_EQ(slipOne("SELECT count(*) FROM TtoD WHERE Genkin<0 OR NTotal<0").toInt(), 0);
    EXPECT_EQ(GetNextDno("Dny", 1), 3);                                // an amendment leaves the counter
    EXPECT_TRUE(dlg.of("Tell").isEmpty());

    // Another number typed over an amended one without Enter saves nothing, under neither.
    enter("2");
    form->box(Cashier_frm::DnoBox)->setText("1");
    press(Qt::Key_F10);
    EXPECT_EQ(focused(), form->box(Cashier_frm::DnoBox));
    EXPECT_EQ(slipOne("SELECT group_concat(Dno || ':' || (NGaku / 10000)) FROM Dny").toString(), "1:500,2:7000");
    EXPECT_EQ(tto(2, 0, 5, "Genkin"), 7500);
}

TEST_F(CashierFormTest, TheLastRowAsksBeforeSavingAndAForgottenRowGoesIn)
{
    open("Dny");
    typeHead("", 3);
    for (int i = 0; i < 5; ++i) typeRow(1, "", QString::number((i + 1) * 100));
    plainAnswers = {false, true};
    typeRow(1, "", "600");                          // no: the amount keeps the focus
    EXPECT_EQ(plain, QStringList{"確認|登録します。\nよろしいですか？"});
    EXPECT_EQ(focused(), form->cell(Cashier_frm::dGaku, 5));
    EXPECT_EQ(slipOne("SELECT count(*) FROM Dny").toInt(), 0);

    // F4 on the second kind opens a row there and pushes the sixth off.
    form->cell(Cashier_frm::dKubun, 1)->setFocus();
    press(Qt::Key_F4);
    EXPECT_EQ(text(form->Gakukei()), "1,500");
    typeRow(3, "振替分", "700");
    EXPECT_EQ(text(form->Gakukei()), "2,200");
    form->cell(Cashier_frm::dGaku, 5)->setFocus();
    press(Qt::Key_Return);                          // yes: saved
    EXPECT_EQ(slipOne("SELECT group_concat(NGaku / 10000) FROM (SELECT NGaku FROM Dny ORDER BY Eda)").toString(),
              "100,700,200,300,400,500");
    EXPECT_EQ(slipOne("SELECT Nnaiyo FROM Dny WHERE Eda=2").toString(), "振替分");
    EXPECT_EQ(tto(3, 0, 5, "Genkin"), 1500);
    EXPECT_EQ(tto(3, 0, 5, "Furikomi"), 700);
    EXPECT_EQ(focused(), form->box(Cashier_frm::DnoBox));
}

TEST_F(CashierFormTest, RowKeysInTheirFields)
{
    open("Dny");
    typeHead("", 3);
    typeRow(1, "a", "1000");
    typeRow(3, "b", "2000");
    struct Step { Cashier_frm::GridField field; int row; Qt::Key key; QStringList after; };
    const QString blank = ":";
    const Step steps[] = {
        // F3 and F4 are bound unlike the slip screen: the kind deletes with F3.
        {Cashier_frm::dKubun, 0, Qt::Key_F4, {blank, "現  金:1,000", "振  込:2,000", blank, blank, blank}},
        {Cashier_frm::dGaku, 1, Qt::Key_F4, {blank, "振  込:2,000", blank, blank, blank, blank}},
        {Cashier_frm::dNaiyou, 0, Qt::Key_F3, {blank, blank, "振  込:2,000", blank, blank, blank}},
        {Cashier_frm::dKubun, 0, Qt::Key_F3, {blank, "振  込:2,000", blank, blank, blank, blank}},
        {Cashier_frm::dKubun, 1, Qt::Key_Delete, {blank, blank, blank, blank, blank, blank}},
    };
    for (const Step& s : steps) {
        form->cell(s.field, s.row)->setFocus();
        press(s.key);
        EXPECT_EQ(rows(), s.after) << s.key;
    }
    EXPECT_EQ(text(form->Gakukei()), "");

    // The walk: Up from the first kind goes back to 請求No.
    struct Walk { Cashier_frm::GridField from; int row; Qt::Key key; Cashier_frm::GridField to; int toRow; } walks[] = {
        {Cashier_frm::dKubun, 2, Qt::Key_Down, Cashier_frm::dKubun, 3},
        {Cashier_frm::dKubun, 2, Qt::Key_Up, Cashier_frm::dKubun, 1},
        {Cashier_frm::dNaiyou, 2, Qt::Key_Down, Cashier_frm::dGaku, 2},
        {Cashier_frm::dNaiyou, 2, Qt::Key_Up, Cashier_frm::dKubun, 2},
        {Cashier_frm::dGaku, 2, Qt::Key_Up, Cashier_frm::dNaiyou, 2},
        {Cashier_frm::dGaku, 2, Qt::Key_Down, Cashier_frm::dGaku, 2},
    };
    for (const Walk& w : walks) {
        form->cell(w.from, w.row)->setFocus();
        press(w.key);
        EXPECT_EQ(focused(), form->cell(w.to, w.toRow)) << w.from << " " << w.key;
    }
    form->cell(Cashier_frm::dKubun, 0)->setFocus();
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), form->box(Cashier_frm::NNoBox));
}

TEST_F(CashierFormTest, F10RefusesWhatCannotBeSaved)
{
    open("Dny");
    enter("");
    enter("2026");
    enter("5");
    enter("15");
    press(Qt::Key_F10);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"得意先が記入されていません。"});
    EXPECT_EQ(focused(), form->list(Cashier_frm::PartnerList));
    pick(2);
    form->box(Cashier_frm::YearBox)->setFocus();
    enter("2025");
    press(Qt::Key_F10);
    EXPECT_EQ(dlg.of("Tell").last(), "対象年度の範囲内ではありません。");
    EXPECT_EQ(focused(), form->box(Cashier_frm::YearBox));
    EXPECT_EQ(slipOne("SELECT count(*) FROM Dny").toInt() + slipOne("SELECT count(*) FROM Tto").toInt(), 0);
    EXPECT_EQ(GetNextDno("Dny", 1), 1);
}

// Deleting a deposit takes it off the ledger at once, without a ledger run: by F2 after the
// box (Cancel first changes nothing), or by deleting every row and saving.
TEST_F(CashierFormTest, ADeletedDepositLeavesTheLedgerAtOnce)
{
    for (bool byKey : {true, false}) {
        SCOPED_TRACE(byKey ? "F2" : "rows deleted");
        const SlipSaveResult saved = deposit(2, "2026/5/15", {3000, 2000});
        ASSERT_TRUE(saved.saved);
        open("Dny");
        enter(QString::number(saved.dno));
        ASSERT_EQ(text(form->mode()), "参照");
        if (byKey) {
            plainAnswers = {false};
            press(Qt::Key_F2);
            EXPECT_EQ(slipOne("SELECT count(*) FROM Dny").toInt(), 2);
            press(Qt::Key_F2);
            EXPECT_EQ(plain, QStringList(2, "Norbrin Data|この伝票を削除してよろしいですか？"));
        } else {
            for (int i = 0; i < 9; ++i) press(Qt::Key_Return);
            ASSERT_EQ(focused(), form->cell(Cashier_frm::dKubun, 0));
            press(Qt::Key_F3);
            press(Qt::Key_F3);
            EXPECT_EQ(rows(), QStringList(6, ":"));
            press(Qt::Key_F10);
        }
        EXPECT_EQ(slipOne("SELECT count(*) FROM Dny").toInt(), 0);
        EXPECT_EQ(tto(2, 0, 5, "NTotal"), 0);
        EXPECT_EQ(zanTto(2, 0), 0);
        EXPECT_EQ(focused(), form->box(Cashier_frm::DnoBox));
        EXPECT_EQ(text(form->mode()), "");
        form->close();
        flushDeletes();
    }
}

TEST_F(CashierFormTest, F6PicksClassPartnerThenTheSlip)
{
    ASSERT_TRUE(deposit(2, "2026/5/15", {3000}).saved);
    QStringList asked;
    SlipScreens::setLookup([&](const SlipLookup& l) {
        asked << l.table + ":" + l.filter1;
        return l.table == "Tbn" ? QString("1") : QString("2");
    });
    QList<qint64> listed;
    Cashier_frm::setCashListPicker([&](const QString& kind, qint64 partner) {
        listed << partner;
        return kind == "Dny" ? QString("1") : QString();
    });
    open("Dny");
    press(Qt::Key_F6);
    EXPECT_EQ(asked, (QStringList{"Tbn:", "Tor:1"}));
    EXPECT_EQ(listed, QList<qint64>{2});
    EXPECT_EQ(text(form->mode()), "参照");
    EXPECT_EQ(rows()[0], "現  金:3,000");

    // F6 in the partner list acts as Enter on the pick.
    press(Qt::Key_F1);
    enter("");
    for (int i = 0; i < 4; ++i) press(Qt::Key_Return);
    ASSERT_EQ(focused(), form->list(Cashier_frm::PartnerList));
    press(Qt::Key_F6);
    EXPECT_EQ(text(form->list(Cashier_frm::PartnerList)), "大阪物産");
    EXPECT_EQ(text(form->list(Cashier_frm::TanList)), "佐藤");
    EXPECT_EQ(text(form->Results(1)), "3,000");
    EXPECT_EQ(focused(), form->list(Cashier_frm::NouList));
}

TEST_F(CashierFormTest, ACarriedBalanceTypedInThePanel)
{
    open("Dny");
    typeHead("", 3);
    EXPECT_EQ(text(form->dZandaka()), "-");
    form->dKurikoshi()->setFocus();
    enter("250000");
    EXPECT_EQ(dlg.of("Tell"), QStringList{"繰越しを登録しました。"});
    EXPECT_EQ(text(form->dKurikoshi()), "250,000");
    EXPECT_EQ(text(form->dZandaka()), "250,000");
    EXPECT_EQ(text(form->monthCaption(0)), "4 月末日締");
    EXPECT_EQ(zanTto(3, 0), 250000);
}

TEST_F(CashierFormTest, ThePaymentScreen)
{
    open("Dsh");
    EXPECT_FALSE(form->list(Cashier_frm::NouList)->isVisible());
    EXPECT_FALSE(form->nouCaption()->isVisible());
    typeHead("", 2);
    EXPECT_EQ(text(form->list(Cashier_frm::TanList)), "山田");
    typeRow(0, "約手", "88000");                     // Enter: the supplier's usual bill
    press(Qt::Key_F10);
    EXPECT_EQ(slipOne("SELECT Kubun FROM Dsh WHERE Dno=1").toInt(), 4);
    EXPECT_EQ(tsi(2, 5, "Tegata"), 88000);
    EXPECT_EQ(GetNextDno("Dsh", 1), 2);
}

TEST_F(CashierFormTest, OpenedOnASlipFromALedgerListAndBack)
{
    registerScreen("Cashier_frm", [] { return new Cashier_frm; });
    registerScreen("ListDaichou_frm", [] { return new QWidget; });
    CashSlipEditor pay("Dsh");
    startCash(pay, "0", 1);
    row(pay, 0, 2, "4321");
    ASSERT_TRUE(save(pay).saved);

    session().MenuKey = "Dny";
    form = qobject_cast<Cashier_frm*>(screen("Cashier_frm"));
    ASSERT_TRUE(showActive(form));
    session().SlipCaller = "LstDaichou";
    EXPECT_EQ(Cashier_frm::openSlip("Dsh", 1), form.data());
    EXPECT_EQ(text(form->titleLabel()), "支払伝票処理");

    // From the menu the other kind again, while nothing is typed.
    press(Qt::Key_F1);
    session().MenuKey = "Dny";
    QEvent activate(QEvent::WindowActivate);
    QApplication::sendEvent(form, &activate);
    EXPECT_EQ(text(form->titleLabel()), "入金伝票処理");

    press(Qt::Key_Escape);
    flushDeletes();
    EXPECT_TRUE(form.isNull());
    QWidget* list = screen("ListDaichou_frm");
    EXPECT_TRUE(list->isVisible());
    delete list;
}

TEST_F(CashierFormTest, APartnerChangedInItsListThenF10TakesThatPartnersClosingDay)
{
    // 京都屋 closes at the month's end, 大阪物産 (above it in the list) on the 20th: the 25th of
    // May is May's for the one and June's for the other.
    open("Dny");
    enter("");
    enter("2026");
    enter("5");
    enter("25");
    press(Qt::Key_Return);
    pick(3);
    for (int i = 0; i < 3; ++i) press(Qt::Key_Return);
    typeRow(1, "", "1000");
    form->cell(Cashier_frm::dKubun, 0)->setFocus();
    for (int i = 0; i < 4; ++i) press(Qt::Key_Up);
    ASSERT_EQ(focused(), form->list(Cashier_frm::PartnerList));
    press(Qt::Key_PageUp);
    ASSERT_EQ(text(form->list(Cashier_frm::PartnerList)), "大阪物産");
    press(Qt::Key_F10);
    EXPECT_EQ(slipOne("SELECT TorCode || ':' || Getudo FROM Dny WHERE Dno=1").toString(), "2:6");
    EXPECT_EQ(tto(2, 0, 6, "Genkin"), 1000);
    EXPECT_EQ(tto(2, 0, 5, "Genkin"), 0);
}
