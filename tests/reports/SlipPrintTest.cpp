#include <QApplication>
#include <QFile>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include "reports/InvoiceFixture.h"
#include "shell/Session.h"
#include "slips/QtSlipPrint.h"
#include "slips/Slip_prn.h"

namespace {
// One slip per tax mode: pens outside tax, tea inside tax (1,080 with 99 of tax), stamps not
// taxable. The line taxes are those the slip screen leaves for the customer's mode.
class SlipPrintTest : public ::testing::Test {
protected:
    InvoiceCompany co;
    ScriptedDialogs dlg;

    void SetUp() override
    {
        co.addHin("1001", "ボールペン");
        co.addHin("1002", "お茶");
        co.addHin("1003", "切手");
        const char* names[] = {"請求書毎商店", "納品書毎商店", "明細毎商店", "免税商店"};
        for (int mode = 1; mode <= 4; ++mode) {
            co.addTor(2000 + mode, QString::fromUtf8(names[mode - 1]), 31, mode);
            const qint64 penTax = mode == 2 || mode == 3 ? 120 : 0;
            co.sale(mode, QDate(2026, 5, 15), 2000 + mode, 0, 5,
                    {{"1001", 10, 120, 0, 1, penTax}, {"1002", 2, 540, 981, 2, 99}, {"1003", 1, 84, 0, 3, 0}},
                    QStringLiteral("午前着"));
        }
        co.addNou(2001, 3, "北倉庫");
        exec("UPDATE Dur SET NouCode = 3 WHERE Dno = 1");
    }

    // Prints slip dno into r; the error when it fails.
    QString print(Recorded& r, long dno, short style = 0)
    {
        session().SlipStyle = style;
        Slip_prn prn(co.db());
        const ScopedPageOutput scope(&r);
        QString error;
        return prn.PrintSlip(dno, &error) ? QString() : error;
    }
};
}  // namespace

TEST_F(SlipPrintTest, TaxStandsOnTheSlipAsTheCustomersModePutsIt)
{
    const struct {
        int mode;
        QString header;
        QStringList lineTax;   // the tax column of the three lines
        QString zei, total, note;
    } cases[] = {
        {1, "税区分", {"", "内税", "非課税"}, "99", "2,364", "※消費税は請求書にて一括して計算いたします。"},
        {2, "税区分", {"", "内税", "非課税"}, "219", "2,484", ""},
        {3, "消費税", {"120", "99", "0"}, "219", "2,484", ""},
        {4, "税区分", {"", "内税", "非課税"}, "99", "2,364", "※免税のため消費税は計算しておりません。"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.mode);
        Recorded r;
        ASSERT_EQ(print(r, c.mode), "");
        ASSERT_EQ(r.pages(), 1);
        const QStringList t = r.rec.texts();
        for (const QString& drawn : {QStringLiteral("納　品　書"), c.header, QStringLiteral("伝票No. %1").arg(c.mode),
                                     QStringLiteral("2026年5月15日"), QStringLiteral("午前着"), QStringLiteral("株式会社丸八商事")})
            EXPECT_TRUE(t.contains(drawn)) << qPrintable(drawn);
        EXPECT_FALSE(t.contains("受　領　書"));
        EXPECT_EQ(t.contains(c.note), !c.note.isEmpty());
        // Lines: code, name, then quantity, price and amount flush right against their columns
        // (size 10: a half-width character is 100 twips wide).
        const QString lines[3][5] = {{"1001", "ボールペン", "10", "120", "1,200"},
                                     {"1002", "お茶", "2", "540", "1,080"},
                                     {"1003", "切手", "1", "84", "84"}};
        for (int i = 0; i < 3; ++i) {
            const int y = 2590 + 270 * i;
            EXPECT_EQ(r.at(1, 627, y), lines[i][0]);
            EXPECT_EQ(r.at(1, 2460, y), lines[i][1]);
            EXPECT_EQ(r.at(1, 7240 - 100 * int(lines[i][2].size()), y), lines[i][2]);
            EXPECT_EQ(r.at(1, 8640 - 100 * int(lines[i][3].size()), y), lines[i][3]);
            EXPECT_EQ(r.at(1, 10240 - 100 * int(lines[i][4].size()), y), lines[i][4]);
            const QString tax = c.lineTax[i];
            if (c.mode == 3) {
                EXPECT_EQ(r.at(1, 11279 - 100 * int(tax.size()), y), tax);
            } else if (!tax.isEmpty()) {
                EXPECT_EQ(r.at(1, 10360, y), tax);
            }
        }
        // Without tax, tax, and the total, under the amounts.
        const QString totals[] = {"2,265", c.zei, c.total};
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(r.at(1, 10240 - 100 * int(totals[i].size()), 6650 + 280 * i), totals[i]) << i;
    }
}

TEST_F(SlipPrintTest, CustomerAndDestinationAreAddressedWithTheirHonorific)
{
    Recorded r, other;
    print(r, 1);
    EXPECT_EQ(r.at(1, 680, 1000) + "|" + r.at(1, 5300, 1000) + "|" + r.at(1, 680, 1450), "請求書毎商店|様|納入先　北倉庫　様");
    // No destination, no line for it; the era when the company shows years so.
    session().Hiz = 1;
    print(other, 2);
    EXPECT_FALSE(other.rec.texts().join('|').contains("納入先"));
    EXPECT_TRUE(other.rec.texts().contains("平成38年5月15日"));
}

TEST_F(SlipPrintTest, StyleTwoAddsTheReceiptCopyAndAnUnknownStylePrintsTheSlipAlone)
{
    const struct {
        short style;
        bool receipt;
    } cases[] = {{0, false}, {1, false}, {2, true}, {7, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.style);
        Recorded r;
        print(r, 2, c.style);
        ASSERT_EQ(r.pages(), 1);
        const QStringList t = r.rec.texts();
        EXPECT_TRUE(r.rec.log.contains(c.receipt ? "AREA 11906,16838" : "AREA 11906,8419"));
        EXPECT_EQ(t.contains("受　領　書") && t.contains("受領印"), c.receipt);
        EXPECT_EQ(t.count("納品書毎商店"), c.receipt ? 2 : 1);
        // The copy stands on the lower half, line for line.
        EXPECT_EQ(r.at(1, 680, 1000 + 8419), c.receipt ? "納品書毎商店" : "");
        EXPECT_EQ(r.at(1, 9740, 2590 + 8419), c.receipt ? "1,200" : "");
        EXPECT_FALSE(r.rec.only("L ").isEmpty());
    }
}

TEST_F(SlipPrintTest, ShrunkReceiptCopyKeepsItsTextsOnItsOwnRules)
{
    // The installation that shrinks every page: the copy's texts move down with its rules.
    session().ShrinkMode = true;
    Recorded r;
    print(r, 2, 2);
    session().ShrinkMode = false;
    QList<double> names;
    for (const QString& e : r.rec.only("T "))
        if (e.endsWith(" 納品書毎商店")) names << e.section(' ', 1, 1).section(',', 1).toDouble();
    ASSERT_EQ(names.size(), 2);
    EXPECT_NEAR(names[0], 1000 * 0.9, 1);
    EXPECT_NEAR(names[1], (8419 + 1000) * 0.9, 1);
    // The rule under the copy's customer name.
    EXPECT_EQ(r.rec.only("L ").filter(QStringLiteral(",%1 ").arg((8419 + 1340) * 0.9)).size(), 1);
    // A figure ends where it ends unshrunk, shrunk: the amount column's edge less its margin.
    // At 9 points "1,200" is 450 wide.
    QList<double> amounts;
    for (const QString& e : r.rec.only("T "))
        if (e.endsWith(" 1,200")) amounts << e.section(' ', 1, 1).section(',', 0, 0).toDouble();
    ASSERT_FALSE(amounts.isEmpty());
    EXPECT_NEAR(amounts[0] + 450, (10300 - 60) * 0.9, 1.5);
}

TEST_F(SlipPrintTest, SlipThatIsNotThereIsToldAndDrawsNothing)
{
    // Another office's slip of that number is not ours.
    exec("UPDATE Dur SET EigCode = 2 WHERE Dno = 4");
    for (long dno : {0L, 99L, 4L}) {
        Recorded r;
        EXPECT_EQ(print(r, dno), "該当する伝票がありません。") << dno;
        EXPECT_EQ(r.pages(), 0);
    }
    EXPECT_EQ(dlg.of("Tell"), QStringList(3, "該当する伝票がありません。"));
}

TEST_F(SlipPrintTest, F9TailPrintsSalesSlipsOnlyAndCancellingKeepsTheStyle)
{
    exec("INSERT INTO zSysFunc (Code, contents) VALUES (385, '1:納品書,2:受領書付')");
    QTemporaryDir tmp;
    int asked = 0;
    setPrinterQuestion([&](QPrinter& p) {
        ++asked;
        p.setOutputFormat(QPrinter::PdfFormat);
        p.setOutputFileName(tmp.filePath("slip.pdf"));
        return false;
    });
    session().SlipStyle = 1;
    printAfterSave("Dsr", 1);
    printAfterSave("Dur", 0);
    EXPECT_EQ(asked, 0);
    // The style window: the second style, then the printer is cancelled.
    QTimer::singleShot(50, [] {
        if (QWidget* w = QApplication::activeModalWidget()) {
            QTest::keyClick(w->focusWidget(), Qt::Key_Down);
            QTest::keyClick(w->focusWidget(), Qt::Key_Return);
        }
    });
    printAfterSave("Dur", 2);
    setPrinterQuestion({});
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(session().SlipStyle, 1);
    EXPECT_FALSE(QFile::exists(tmp.filePath("slip.pdf")));
    EXPECT_TRUE(dlg.log.isEmpty());
}
