#include <gtest/gtest.h>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include "LedgerFixture.h"
#include "entry/FormDriver.h"
#include "ledgers/TipsMenu_frm.h"
#include "shell/Session.h"
#include "support/ScriptedDialogs.h"

namespace {

// A year from April: one credit sale of customer 100 in each closing month from October to
// March, 1000 yen times the month, posted; then every one of those months spoilt by 999.
void spoiltAutumnToSpring(LedgerCompany& c)
{
    c.addTor(100);
    c.addHin(QStringLiteral("0000000000001"));
    int dno = 0;
    for (int m : {10, 11, 12, 1, 2, 3})
        c.sale(++dno, QDate(m >= 4 ? 2026 : 2027, m, 5), 100, 0, m, {line(1000 * m, 100 * m)});
    c.batch();
    // Amounts are kept in ten-thousandths of a yen.
    c.exec("UPDATE TtoD SET Gaku=Gaku+9990000 WHERE Getudo IN (10, 11, 12, 1, 2, 3)");
    c.exec("UPDATE ThiD SET UGaku=UGaku+9990000 WHERE Getudo=11");
}

struct Form {
    QPointer<TipsMenu_frm> w = new TipsMenu_frm;
    Form() { EXPECT_TRUE(showActive(w)); }
    ~Form() { delete w.data(); }
    // Closed forms are deleted, so the menu opens a fresh one next time.
    bool gone()
    {
        flushDeletes();
        return w.isNull();
    }
    // Types into the field that has the focus and ends with Enter.
    static void type(const QString& text)
    {
        QTest::keyClicks(focused(), text);
        press(Qt::Key_Return);
    }
};

} // namespace

TEST(TipsMenu, KeysRebuildTheCustomerLedgerOverTheTurnOfTheYear)
{
    LedgerCompany c;
    spoiltAutumnToSpring(c);
    ScriptedDialogs dlg;
    Form f;
    EXPECT_EQ(focused(), f.w->Text1());
    Form::type("11");
    EXPECT_EQ(focused(), f.w->Text2());
    Form::type("2");
    EXPECT_EQ(focused(), f.w->Command1(0));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    ASSERT_EQ(focused(), f.w->Command1(2));   // 得意先台帳
    press(Qt::Key_Return);

    EXPECT_EQ(dlg.log, QStringList{"Tell:終了しました。"});
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    // 11, 12, 1, 2 come back from the slips; October and March, outside the range, do not.
    for (int m : {11, 12, 1, 2}) EXPECT_EQ(c.tto(100, 0, m, "Gaku"), 1000 * m) << m;
    EXPECT_EQ(c.tto(100, 0, 10, "Gaku"), 10000 + 999);
    EXPECT_EQ(c.tto(100, 0, 3, "Gaku"), 3000 + 999);
    // Only the customer ledger was asked for.
    EXPECT_EQ(c.thi("0000000000001", 11, "UGaku"), 11000 + 999);

    // Up from the first button and from the second box goes back to the first box; Esc closes.
    press(Qt::Key_Up);
    press(Qt::Key_Up);
    ASSERT_EQ(focused(), f.w->Command1(0));
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), f.w->Text2());
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), f.w->Text1());
    press(Qt::Key_Escape);
    EXPECT_TRUE(f.gone());
}

TEST(TipsMenu, MonthOutsideTheYearPutsTheCursorBack)
{
    LedgerCompany c;
    spoiltAutumnToSpring(c);
    const QStringList before = c.dump();
    ScriptedDialogs dlg;
    struct Row { const char* first; const char* last; bool firstBad; } rows[] = {
        {"0", "2", true}, {"13", "2", true}, {"11", "13", false}, {"11", "0", false},
    };
    for (const Row& r : rows) {
        Form f;
        f.w->Text1()->setText(r.first);
        f.w->Text2()->setText(r.last);
        f.w->Command1(0)->setFocus();
        press(Qt::Key_Return);
        EXPECT_EQ(focused(), r.firstBad ? f.w->Text1() : f.w->Text2()) << r.first << "-" << r.last;
    }
    EXPECT_TRUE(dlg.log.isEmpty());
    EXPECT_EQ(c.dump(), before);
}

TEST(TipsMenu, TildeMasterNamesAndTheYearEnd)
{
    LedgerCompany c;
    spoiltAutumnToSpring(c);
    c.exec("UPDATE TtoD SET Chousei=NULL WHERE Getudo=5");
    c.exec("UPDATE Tor SET Namae='新しい名前' WHERE Code=100");
    ScriptedDialogs dlg;
    Form f;
    Form::type("~");
    EXPECT_TRUE(f.w->Text1()->text().isEmpty());
    EXPECT_EQ(focused(), f.w->Text1());
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM TtoD WHERE Chousei IS NULL"), 0);

    f.w->Command1(5)->click();
    EXPECT_EQ(f.w->Information()->text(), "終了しました．");
    EXPECT_EQ(c.count("SELECT COUNT(*) FROM Tto WHERE TorNamae='新しい名前'"), 1);
    EXPECT_TRUE(dlg.log.isEmpty());

    // After the year-end update: the first month of the year, in both boxes, rebuilt.
    c.exec("UPDATE TtoD SET Gaku=10000 WHERE Getudo=4");
    EXPECT_TRUE(f.w->AfterNenjiKosin());
    EXPECT_EQ(f.w->Text1()->text(), "4");
    EXPECT_EQ(f.w->Text2()->text(), "4");
    EXPECT_EQ(c.tto(100, 0, 4, "Gaku"), 0);
    EXPECT_EQ(c.tto(100, 0, 10, "Gaku"), 10000 + 999);   // the other months are left alone
    EXPECT_TRUE(dlg.log.isEmpty());
    f.w->Command1(7)->click();
    EXPECT_TRUE(f.gone());
}
