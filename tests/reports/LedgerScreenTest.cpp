#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include "entry/FormDriver.h"
#include "reports/Daichou_frm.h"
#include "reports/LedgerReportFixture.h"
#include "reports/LedgerReportList_frm.h"
#include "reports/ListDaichou_frm.h"
#include "reports/RepoSales_frm.h"
#include "reports/Zandaka_frm.h"
#include "shell/QtMenuRun.h"
#include "shell/QtScreens.h"
#include "shell/Session.h"
#include "slips/Cashier_frm.h"
#include "slips/Slip_frm.h"

class LedgerScreen : public PartnerReportTest {
protected:
    QPointer<Daichou_frm> form;
    QStringList lookups;

    void SetUp() override
    {
        PartnerReportTest::SetUp();
        registerScreen("ListDaichou_frm", [] { return new ListDaichou_frm; });
        registerScreen("Slip_frm", [] { return new Slip_frm; });
        Daichou_frm::setLookup([this](const QString& t, const QString& f1, const QString&) {
            lookups << t + ":" + f1;
            return QStringLiteral("3");
        });
        Slip_frm::setLookup([](const SlipLookup&) { return QString(); });
    }
    void TearDown() override
    {
        for (const char* name : {"ListDaichou_frm", "Slip_frm", "Cashier_frm"})
            if (screenExists(name)) delete screen(name);
        delete form;
        flushDeletes();
        Daichou_frm::setLookup({});
        Slip_frm::setLookup({});
        PartnerReportTest::TearDown();
    }
    void open(const char* view)
    {
        session().MenuKey = view;
        form = new Daichou_frm;
        ASSERT_TRUE(showActive(form));
        ASSERT_EQ(focused(), form->ModeBox());
    }
    ListDaichou_frm* viewer() { return qobject_cast<ListDaichou_frm*>(screen("ListDaichou_frm")); }
    QString rowTexts(int row)
    {
        QStringList out;
        for (int c = 0; c < 6; ++c) out << viewer()->cell(row, c)->text();
        return out.join('|');
    }
};

TEST_F(LedgerScreen, ClerkTypesACustomerAndAMonthAndReadsTheLedger)
{
    open("Tdc");
    press(Qt::Key_Return);
    ASSERT_EQ(focused(), form->cbox(0));
    EXPECT_EQ(form->cbox(0)->currentText(), "すべて選択");
    press(Qt::Key_Return);
    pick(1);
    EXPECT_EQ(form->cbox(1)->currentText(), "東京商事");
    EXPECT_EQ(form->cbox(2)->count(), 2);
    EXPECT_EQ(focused(), form->cbox(2));
    press(Qt::Key_Return);
    ASSERT_EQ(focused(), form->eGetudo());
    enter("14");
    EXPECT_EQ(dlg.of("Tell"), QStringList{"範囲は１から１３です。"});
    EXPECT_EQ(focused(), form->eGetudo());
    enter("5");

    ListDaichou_frm* v = viewer();
    ASSERT_TRUE(v && v->isVisible());
    EXPECT_EQ(v->TorName()->text() + v->tukiBox()->text(), "東京商事5月度");
    EXPECT_EQ(v->LabelHValue(6)->text(), "13,500");
    EXPECT_EQ(rowTexts(0), "05月22日|振込|南支店分|||2,000");
    EXPECT_EQ(rowTexts(2), "|現金|5月分|||3,000");
    EXPECT_EQ(rowTexts(4), "|||||");
    EXPECT_EQ(dlg.of("Tell").size(), 1);
}

TEST_F(LedgerScreen, DatesModeSupplierViewAndTheLookup)
{
    open("Sdc");
    EXPECT_FALSE(form->cbox(2)->isVisible());
    pick(2);   // 日付で表示
    EXPECT_TRUE(form->dateBox(Daichou_frm::StartMonth)->isVisible());
    EXPECT_FALSE(form->eGetudo()->isVisible());
    press(Qt::Key_Return);
    press(Qt::Key_F6);
    EXPECT_EQ(lookups, QStringList{"Sir:ALL"});
    EXPECT_EQ(form->cbox(1)->currentIndex(), -1);   // no supplier 3
    press(Qt::Key_Delete);
    EXPECT_EQ(form->cbox(1)->currentText(), "すべて選択");
    press(Qt::Key_Return);
    ASSERT_EQ(focused(), form->dateBox(Daichou_frm::StartMonth));
    enter("13");
    EXPECT_EQ(dlg.of("Tell"), QStringList{"範囲は１から１２です。"});
    enter("5");
    enter("32");
    EXPECT_EQ(dlg.of("Tell").last(), "範囲は１から３１です。");
    enter("1");
    enter("5");
    enter("10");
    ListDaichou_frm* v = viewer();
    ASSERT_TRUE(v && v->isVisible());
    EXPECT_EQ(v->Range(0)->text(), "5月1日");
    EXPECT_EQ(v->LabelHValue(1)->text(), "");
    EXPECT_EQ(rowTexts(1), "|仕入|ノート|3|100.00|300");
}

TEST_F(LedgerScreen, ClassNarrowsThePartnersAndTheLookupTakesIt)
{
    open("Tdc");
    press(Qt::Key_Return);
    pick(2);   // 小売
    EXPECT_EQ(form->cbox(1)->count(), 2);
    press(Qt::Key_F6);
    EXPECT_EQ(lookups, QStringList{"Tor:2"});
    EXPECT_EQ(form->cbox(1)->currentText(), "京都屋");
}

TEST_F(LedgerScreen, BarKeysF9F10AndADoubleClickOpenTheSlip)
{
    sixteenRows();
    CaughtOutputs caught;
    ListDaichou_frm* v = viewer();
    v->Init(month("Tdc", 2, 5));
    ASSERT_TRUE(showActive(v));
    EXPECT_EQ(v->Bar()->maximum(), 1);
    press(Qt::Key_Down);   // from 印刷 to the bar
    ASSERT_EQ(focused(), v->Bar());
    press(Qt::Key_Down);
    EXPECT_EQ(v->Bar()->value(), 1);
    EXPECT_EQ(v->cell(0, 0)->text() + "|" + v->cell(14, 5)->text(), "05月03日|114");
    press(Qt::Key_Left);
    EXPECT_EQ(focused(), v->Command());

    // The print and the sheet read oldest first; the screen stays as it was.
    press(Qt::Key_F9);
    EXPECT_EQ(caught.pages, 1);
    ASSERT_TRUE(showActive(v));   // back from the preview
    QTest::mouseClick(v->DoExcel(), Qt::LeftButton);
    ASSERT_EQ(caught.sheets.size(), 1);
    EXPECT_TRUE(QFileInfo(caught.sheets[0]).fileName().startsWith("元帳"));
    EXPECT_EQ(v->Bar()->value(), 1);
    EXPECT_EQ(v->cell(14, 5)->text(), "114");

    QTest::mouseDClick(v->cell(14, 0), Qt::LeftButton);
    auto* slip = qobject_cast<Slip_frm*>(screen("Slip_frm"));
    ASSERT_TRUE(slip && slip->isVisible());
    EXPECT_EQ(slip->box(Slip_frm::DnoBox)->text().trimmed() + slip->mode()->text(), "30参照");
    EXPECT_EQ(session().SlipCaller, "LstDaichou");

    // Enter on a date does the same; the bar's Enter steps into the rows.
    v->activateWindow();
    v->Bar()->setFocus();
    v->Bar()->setValue(0);
    press(Qt::Key_Return);
    ASSERT_EQ(focused(), v->cell(0, 0));
    press(Qt::Key_Return);
    EXPECT_EQ(slip->box(Slip_frm::DnoBox)->text().trimmed(), "5");

    // Without rows F9 prints nothing and the sheet says so.
    v->Init(month("Tdc", 1, 7));
    ASSERT_TRUE(showActive(v));
    press(Qt::Key_F9);
    press(Qt::Key_F10);
    EXPECT_EQ(caught.pages, 1);
    EXPECT_EQ(dlg.of("Tell"), QStringList({"対象がありません。", "対象がありません。"}));
}

TEST_F(LedgerScreen, DepositsOpenOnTheDepositScreenByItsKind)
{
    registerScreen("Cashier_frm", [] { return new Cashier_frm; });
    ListDaichou_frm* v = viewer();
    // Deposit 1 (現金 3,000) of the customer, payment 1 (現金 1,000) of the supplier.
    for (const auto& [view, line, kind] : {std::tuple{"Tdc", 2, "Dny"}, std::tuple{"Sdc", 0, "Dsh"}}) {
        v->Init(month(view, 1, 5));
        v->openLine(line);
        auto* cashier = qobject_cast<Cashier_frm*>(screen("Cashier_frm"));
        ASSERT_TRUE(cashier && cashier->isVisible());
        EXPECT_EQ(cashier->editor().kind(), kind);
        EXPECT_EQ(cashier->box(Cashier_frm::DnoBox)->text().trimmed() + cashier->mode()->text(), "1参照");
    }
    EXPECT_EQ(session().SlipCaller, "LstDaichou");
    EXPECT_TRUE(dlg.of("Tell").isEmpty()) << dlg.log.join(',').toStdString();
}

TEST_F(LedgerScreen, MenuItemsOpenTheirListsWithTheirWords)
{
    registerScreen("Daichou_frm", [] { return new Daichou_frm; });
    registerScreen("Zandaka_frm", [] { return new Zandaka_frm; });
    registerScreen("RepoSales_frm", [] { return new RepoSales_frm; });
    // The view word of a ledger, the title of a list.
    const std::tuple<const char*, const char*, QString> cases[] = {
        {"得意先元帳", "Daichou_frm", "Tdc"},          {"仕入先元帳", "Daichou_frm", "Sdc"},
        {"売掛残高一覧", "Zandaka_frm", "2026年度売掛残高一覧"}, {"買掛残高一覧", "Zandaka_frm", "2026年度買掛残高一覧"},
        {"売上一覧表", "RepoSales_frm", "2026年度売上一覧表"},   {"仕入一覧表", "RepoSales_frm", "2026年度仕入一覧表"},
    };
    for (const auto& [caption, name, shown] : cases) {
        dlg.askAnswers = {false};   // no ledger processing first
        ASSERT_TRUE(MenuRun(caption)) << caption;
        QWidget* w = screen(name);
        ASSERT_TRUE(w && w->isVisible());
        const auto* d = qobject_cast<Daichou_frm*>(w);
        EXPECT_EQ(d ? d->view() : qobject_cast<LedgerReportList_frm*>(w)->Title()->text(), shown);
        w->close();
        flushDeletes();
    }
    EXPECT_EQ(dlg.of("Ask").size(), 6);
}
