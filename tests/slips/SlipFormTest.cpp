#include <QApplication>
#include <QPrinter>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include "slips/QtSlipPrint.h"
#include "slips/ScreenFixture.h"
#include "slips/SlipRegister.h"
#include "slips/Slip_frm.h"

class SlipFormTest : public ScreenTest<Slip_frm> {
protected:
    // Number, date, class (none), partner, destination (none), settlement, staff, 請求No., remark.
    void typeHead(const QString& number, int partner, const QString& tekiyo = {})
    {
        enter(number);
        enter("2026");
        enter("5");
        enter("15");
        press(Qt::Key_Return);
        pick(partner);
        for (int i = form->editor().sales() ? 0 : 1; i < 4; ++i) press(Qt::Key_Return);
        enter(tekiyo);
    }
    // From the kind list of a row: first kind, code, name, quantity, both prices, amount.
    void typeLine(const QString& code, const QString& suu = {})
    {
        ASSERT_TRUE(qobject_cast<QComboBox*>(focused()));
        press(Qt::Key_Return);
        enter(code);
        press(Qt::Key_Return);
        if (!suu.isEmpty()) enter(suu);
        else press(Qt::Key_Return);
        for (int i = 0; i < 3; ++i) press(Qt::Key_Return);
    }
    int count(const char* sql) { return slipOne(sql).toInt(); }
};

TEST_F(SlipFormTest, NewSalesSlipNeedsTheDestinationAndTakesItsPrice)
{
    open("Dur");
    EXPECT_EQ(text(form->box(Slip_frm::DnoBox)), "1");
    typeHead("", 1, "至急");
    EXPECT_EQ(text(form->mode()), "新規");
    EXPECT_EQ(text(form->list(Slip_frm::TanList)), "佐藤");   // the customer's staff
    EXPECT_EQ(focused(), form->cell(Slip_frm::fKubun, 0));

    typeLine("1002", "3");
    EXPECT_EQ(text(form->cell(Slip_frm::fTanka, 0)), "1,900.00");   // customer price, no destination yet
    EXPECT_EQ(text(form->cell(Slip_frm::fGaku, 0)), "5,700");
    EXPECT_EQ(text(form->cell(Slip_frm::fZei, 0)), "285");
    EXPECT_EQ(text(form->total(2)), "5,985");

    press(Qt::Key_F10);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"納入先が記入されていません。"});
    EXPECT_EQ(focused(), form->list(Slip_frm::NouList));
    EXPECT_EQ(count("SELECT count(*) FROM Dur"), 0);

    pick(5);                                        // the destination; then the code again
    form->cell(Slip_frm::fHinCode, 0)->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(text(form->cell(Slip_frm::fTanka, 0)), "1,800.00");   // destination price, not the customer's
    press(Qt::Key_F10);
    EXPECT_EQ(count("SELECT count(*) FROM Dur WHERE Dno=1 AND NouCode=5 AND TanCode=2"), 1);
    EXPECT_EQ(slipOne("SELECT UTanka FROM Dud WHERE Dno=1").toLongLong(), yen(1800));
    EXPECT_EQ(slipOne("SELECT Tekiyo FROM Dur").toString(), "至急");
    // Cleared for the next slip, the counter in the number field.
    EXPECT_EQ(focused(), form->box(Slip_frm::DnoBox));
    EXPECT_EQ(text(form->box(Slip_frm::DnoBox)), "2");
    EXPECT_EQ(text(form->cell(Slip_frm::fHinCode, 0)), "");
}

TEST_F(SlipFormTest, FifteenLinesThenTheLastAmountSaves)
{
    open("Dur");
    typeHead("", 2);
    for (int i = 0; i < 14; ++i) typeLine(i % 2 ? "1002" : "1001");
    EXPECT_EQ(form->Bar()->value(), 9);
    EXPECT_EQ(text(form->lineNo(5)), "15");
    // Line 15 up to its price; the grid is full now.
    press(Qt::Key_Return);
    enter("=");                                  // ditto of line 14
    EXPECT_EQ(text(form->cell(Slip_frm::fHinCode, 5)), "1002");
    press(Qt::Key_F4);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"行がいっぱいです。"});
    // A loaded line counts once its quantity or amount has been passed.
    EXPECT_EQ(text(form->total(0)), "21,000");
    form->cell(Slip_frm::fGaku, 5)->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(dlg.of("Tell"), (QStringList{"行がいっぱいです。", "伝票を保存します。"}));
    EXPECT_EQ(count("SELECT max(Eda) FROM Dud WHERE Dno=1"), 15);
    EXPECT_EQ(count("SELECT sum(ZeiGaku) FROM Dud") / 10000, 1150);   // per delivery slip, one tax
    EXPECT_EQ(focused(), form->box(Slip_frm::DnoBox));
}

TEST_F(SlipFormTest, AmendingAPostedSlipLocksTheListsAndLeavesTheNegativeImage)
{
    {
        SlipEditor ed("Dur");
        startSlip(ed, "0", 2);
        SlipTest::typeLine(ed, 0, "1001");
        ASSERT_TRUE(Register(ed, ed.mode).saved);
        slipRun("UPDATE Dud SET ThiFlag=0");
    }
    open("Dur");
    enter("1");
    EXPECT_EQ(text(form->mode()), "参照");
    EXPECT_EQ(text(form->total(1)), "50");
    press(Qt::Key_Return);                          // into the date: still "参照", never "修正"
    EXPECT_EQ(text(form->mode()), "参照");
    // The partner cannot be changed by keys.
    QComboBox* partner = form->list(Slip_frm::PartnerList);
    partner->setFocus();
    for (Qt::Key k : {Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End, Qt::Key_Delete, Qt::Key_Right})
        QTest::keyClick(partner, k);
    EXPECT_EQ(text(partner), "大阪物産");

    form->cell(Slip_frm::fSuu, 0)->setFocus();
    enter("4");
    press(Qt::Key_F10);
    EXPECT_EQ(count("SELECT count(*) FROM Dud WHERE Dno=-1 AND Suu=-1 AND ThiFlag=-1"), 1);
    EXPECT_EQ(count("SELECT count(*) FROM Dud WHERE Dno=1 AND Suu=4 AND ThiFlag=-1"), 1);
}

TEST_F(SlipFormTest, DeleteByKeyAndByButtonAskDifferently)
{
    for (int i = 0; i < 2; ++i) {
        SlipEditor ed("Dur");
        startSlip(ed, "0", 2);
        SlipTest::typeLine(ed, 0, "1001");
        ASSERT_TRUE(Register(ed, ed.mode).saved);
    }
    open("Dur");
    enter("1");
    press(Qt::Key_F2);
    EXPECT_EQ(dlg.of("Ask"), QStringList{"この伝票を削除してもよろしいですか？"});
    EXPECT_EQ(focused(), form->box(Slip_frm::DnoBox));
    enter("2");
    QTest::mouseClick(form->command(Slip_frm::DeleteCmd), Qt::LeftButton);
    EXPECT_EQ(plain, QStringList{"Norbrin Data|この伝票を削除してよろしいですか？"});
    EXPECT_EQ(count("SELECT count(*) FROM Dur"), 0);
    EXPECT_EQ(count("SELECT count(*) FROM Dud"), 0);
    EXPECT_EQ(text(form->box(Slip_frm::DnoBox)), "3");
}

TEST_F(SlipFormTest, F9SavesThenAsksTheStyleAndPrinter)
{
    slipRun("INSERT INTO zSysFunc (Code, contents) VALUES (385, '1:標準,2:複写'), (1101, '7-特注')");
    QList<int> stylesAtPrint;
    // Printing itself is the printing tests' own; here the printer is asked, and declined.
    setPrinterQuestion([&](QPrinter&) {
        stylesAtPrint << session().SlipStyle;
        return false;
    });
    open("Dur");
    for (Qt::Key answer : {Qt::Key_Down, Qt::Key_Escape}) {
        typeHead("", 2);
        typeLine("1001");
        // The style window: Down to the second style and Enter, or Esc.
        QTimer::singleShot(50, [answer] {
            QWidget* w = QApplication::activeModalWidget();
            if (!w) return;
            QTest::keyClick(w->focusWidget(), answer);
            if (answer != Qt::Key_Escape) QTest::keyClick(w->focusWidget(), Qt::Key_Return);
        });
        press(Qt::Key_F9);
        // The style window has gone; the slip screen has its window back.
        form->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form));
        EXPECT_EQ(focused(), form->box(Slip_frm::DnoBox));
    }
    EXPECT_EQ(stylesAtPrint, QList<int>{2});
    EXPECT_EQ(count("SELECT count(*) FROM Dur"), 2);   // Esc still leaves the slip saved
    EXPECT_TRUE(dlg.of("Tell").isEmpty());
}

TEST_F(SlipFormTest, PurchaseSlipHidesTheDestinationAndOfficeChangeClears)
{
    slipRun("INSERT INTO Eig (Code, Namae, DsrNo) VALUES (2, '大阪営業所', 40)");
    open("Dsr");
    EXPECT_FALSE(form->list(Slip_frm::NouList)->isVisible());
    typeHead("", 1);
    typeLine("1001", "2");
    EXPECT_EQ(text(form->cell(Slip_frm::fTanka, 0)), "550.00");
    EXPECT_EQ(text(form->cell(Slip_frm::fSTanka, 0)), "1,000.00");
    press(Qt::Key_F10);
    EXPECT_EQ(count("SELECT count(*) FROM Dsd WHERE SirCode=1 AND UTanka=5500000 AND ThiFlag=-1"), 1);

    QTest::mouseClick(form->officeLabel(), Qt::RightButton);
    EXPECT_EQ(session().EigCode, 2);
    EXPECT_EQ(text(form->box(Slip_frm::DnoBox)), "40");
}

TEST_F(SlipFormTest, LeavingThePartnerListKeepsTextTypedInTheGrid)
{
    open("Dur");
    typeHead("", 2);
    press(Qt::Key_Return);
    enter("1001");
    // A name overtyped without Enter, then back to the customer list and on.
    auto* name = qobject_cast<QLineEdit*>(form->cell(Slip_frm::fHinNamae, 0));
    ASSERT_TRUE(name);
    name->setText("特注ボールペン");
    form->list(Slip_frm::PartnerList)->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(text(form->cell(Slip_frm::fHinNamae, 0)), "特注ボールペン");
    EXPECT_EQ(text(form->cell(Slip_frm::fHinCode, 0)), "1001");
}

TEST_F(SlipFormTest, APartnerPickedWithF6ActsAsEnter)
{
    struct Case { const char* kind; int partner; const char* sime; const char* zei; const char* cls; const char* tan; Slip_frm::List next; } cases[] = {
        {"Dur", 2, "20", "納品書毎", "一般", "佐藤", Slip_frm::NouList},
        {"Dsr", 1, "31", "明細毎", "問屋", "山田", Slip_frm::KubunList},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.kind);
        QStringList asked;
        Slip_frm::setLookup([&](const SlipLookup& l) {
            asked << l.table + ":" + l.filter1;
            return QString::number(c.partner);
        });
        open(c.kind);
        enter("");
        for (int i = 0; i < 4; ++i) press(Qt::Key_Return);
        ASSERT_EQ(focused(), form->list(Slip_frm::PartnerList));
        press(Qt::Key_F6);
        EXPECT_EQ(asked, QStringList{QString(form->editor().partnerTable()) + ":ALL"});
        EXPECT_EQ(text(form->simeLabel()), c.sime);
        EXPECT_EQ(text(form->zeiLabel()), c.zei);
        EXPECT_EQ(text(form->list(Slip_frm::ClassList)), c.cls);
        EXPECT_EQ(text(form->list(Slip_frm::TanList)), c.tan);
        EXPECT_EQ(focused(), form->list(c.next));
        form->close();
        flushDeletes();
    }
}

TEST_F(SlipFormTest, AQuantityBeyondItsColumnIsRefusedWhereItIsTyped)
{
    const QStringList refused{"数量に不適切な数値です。\n999999以下にしてください。"};
    open("Dur");
    typeHead("", 2);
    press(Qt::Key_Return);   // the first kind
    enter("1001");
    press(Qt::Key_Return);   // the name as it came
    enter("3,000,000,000");
    EXPECT_EQ(dlg.of("Tell"), refused);
    EXPECT_EQ(focused(), form->cell(Slip_frm::fSuu, 0));
    EXPECT_EQ(text(form->cell(Slip_frm::fSuu, 0)), "3,000,000,000");

    // F10 from the cell refuses the slip too: nothing is written, no quantity becomes 0.
    press(Qt::Key_F10);
    EXPECT_EQ(dlg.of("Tell").size(), 2);
    EXPECT_EQ(focused(), form->cell(Slip_frm::fKubun, 0));
    EXPECT_EQ(count("SELECT count(*) FROM Dur"), 0);

    // Seven places would lose a digit on the grid; six are kept whole.
    form->cell(Slip_frm::fSuu, 0)->setFocus();
    enter("1000000");
    EXPECT_EQ(dlg.of("Tell").size(), 3);
    EXPECT_EQ(focused(), form->cell(Slip_frm::fSuu, 0));
    enter("999999");
    EXPECT_EQ(focused(), form->cell(Slip_frm::fSTanka, 0));
    EXPECT_EQ(dlg.of("Tell").size(), 3);
    press(Qt::Key_F10);
    EXPECT_EQ(slipOne("SELECT Suu FROM Dud WHERE Dno=1").toLongLong(), 999999);
}
