#include <gtest/gtest.h>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>
#include "LedgerFixture.h"
#include "ledgers/AfterWork.h"
#include "ledgers/AfterWork_frm.h"
#include "ledgers/LedgerBatch.h"
#include "ledgers/LedgerCommands.h"
#include "store/Store.h"
#include "support/ScriptedDialogs.h"

namespace {

const QString kSales = "売上伝票", kPurchases = "仕入伝票";
const QString kThi = "商品台帳", kTto = "得意先台帳", kTsi = "仕入先台帳";

// Customer 100 and supplier 7 of the masters, offices 1 and 2; a good sale and purchase of May.
void company(LedgerCompany& c)
{
    c.exec("INSERT INTO Eig (Code, Namae) VALUES (2, '大阪')");
    c.addTor(100);
    c.addSir(7);
    c.addHin("0000000000001");
    c.sale(1, QDate(2026, 5, 10), 100, 0, 5, {line(1000, 80)});
    c.purchase(1, QDate(2026, 5, 12), 7, 5, {line(600, 48)});
}

} // namespace

TEST(Unreached, EveryLineNoLedgerTakesIsToldBySlipAndTheRestIsPosted)
{
    struct Case {
        const char* what;
        std::function<void(LedgerCompany&)> add;
        QList<UnreachedLine> told;
        qint64 customerMay = 1000;   // what reaches customer 100's May
    } cases[] = {
        {"customer not in the masters", [](LedgerCompany& c) { c.sale(2, QDate(2026, 5, 11), 999, 0, 5, {line(10), line(20)}); },
         {{kTto, kSales, 2, 1, 1, "得意先 999 が得意先マスターにありません"},
          {kTto, kSales, 2, 1, 2, "得意先 999 が得意先マスターにありません"}}},
        {"supplier not in the masters", [](LedgerCompany& c) { c.purchase(2, QDate(2026, 5, 11), 77, 5, {line(10)}); },
         {{kTsi, kPurchases, 2, 1, 1, "仕入先 77 が仕入先マスターにありません"}}},
        {"closing month 14", [](LedgerCompany& c) {
             c.sale(3, QDate(2026, 5, 11), 100, 0, 14, {line(10)});
             c.purchase(3, QDate(2026, 5, 11), 7, 0, {line(10)});
         },
         {{kTto, kSales, 3, 1, 1, "締め月 14 が 1 から 13 ではありません"},
          {kTsi, kPurchases, 3, 1, 1, "締め月 0 が 1 から 13 ではありません"}}},
        {"a date that is not a date", [](LedgerCompany& c) {
             c.sale(4, QDate(2026, 5, 11), 100, 0, 5, {line(10)});
             c.exec("UPDATE Dud SET Hizuke='令和8年5月' WHERE Dno=4");
         },
         {{kThi, kSales, 4, 1, 1, "日付 令和8年5月 が日付ではありません"}}, 1010},
        {"office 9 not in Eig", [](LedgerCompany& c) { c.sale(5, QDate(2026, 5, 11), 100, 0, 5, {line(10)}, 0, 9); },
         {{kThi, kSales, 5, 9, 1, "営業所 9 が営業所マスターにありません"},
          {kTto, kSales, 5, 9, 1, "営業所 9 が営業所マスターにありません"}}},
        {"another office", [](LedgerCompany& c) { c.sale(6, QDate(2026, 5, 11), 100, 0, 5, {line(10)}, 0, 2); },
         {{kTto, kSales, 6, 2, 1, "営業所 1 の台帳処理では入らず、この後の台帳処理でも入りません", false}}},
        {"a cancelled image", [](LedgerCompany& c) {
             c.sale(7, QDate(2026, 5, 11), 999, 0, 5, {line(10)});
             c.negate("Dur", "Dud", 7);
         },
         {{kTto, kSales, -7, 1, 1, "得意先 999 が得意先マスターにありません"}}},
    };
    for (const Case& c : cases) {
        LedgerCompany co;
        company(co);
        c.add(co);
        QList<UnreachedLine> told;
        QString error;
        ASSERT_TRUE(runLedgerProcessing({}, &error, &told)) << c.what << qPrintable(error);
        EXPECT_EQ(told, c.told) << c.what;
        // The good slips of the run are posted all the same, and no line stays marked.
        EXPECT_EQ(co.tto(100, 0, 5, "Gaku"), c.customerMay) << c.what;
        EXPECT_EQ(co.tsi(7, 5, "Gaku"), 600) << c.what;
        EXPECT_EQ(co.count("SELECT (SELECT count(*) FROM Dud WHERE ThiFlag<>0) + (SELECT count(*) FROM Dsd WHERE ThiFlag<>0)"),
                  0) << c.what;
    }
}

TEST(Unreached, TheReportGroupsTheLinesOfASlip)
{
    const QString otherOffice = "営業所 1 の台帳処理では入らず、この後の台帳処理でも入りません";
    const QList<UnreachedLine> lines{{kTto, kSales, 12, 1, 1, "得意先 999 が得意先マスターにありません"},
                                     {kTto, kSales, 12, 1, 3, "得意先 999 が得意先マスターにありません"},
                                     {kTsi, kPurchases, -4, 2, 2, "締め月 0 が 1 から 13 ではありません"},
                                     {kTto, kSales, 3, 2, 1, otherOffice, false},
                                     {kTto, kSales, 3, 2, 2, otherOffice, false},
                                     {kTto, kSales, 8, 2, 1, otherOffice, false}};
    EXPECT_EQ(unreachedReport(lines),
              "台帳に入らなかった明細があります（6 行）。\n"
              "得意先台帳：営業所 2 の売上伝票 2 枚 3 行：" + otherOffice + "\n"
              "得意先台帳：売上伝票 No.12（営業所 1） 1, 3行目：得意先 999 が得意先マスターにありません\n"
              "仕入先台帳：仕入伝票 No.4（取消分）（営業所 2） 2行目：締め月 0 が 1 から 13 ではありません");
    EXPECT_TRUE(unreachedReport({}).isEmpty());
}

TEST(Unreached, TheProgressFormListsThemUntilTheClerkHasReadThem)
{
    LedgerCompany co;
    company(co);
    co.sale(2, QDate(2026, 5, 11), 999, 0, 5, {line(10)});
    ScriptedDialogs dlg;
    AfterWork_frm form;
    QString shownHeading, shownLines;
    bool visibleWhileRead = false;
    // The clerk reads the list once it is there, then presses Enter; the run's own event
    // passes before that do nothing.
    QTimer clerk;
    int looks = 0;
    QObject::connect(&clerk, &QTimer::timeout, [&] {
        if (!form.unreached()->isVisible() && ++looks < 500) return;
        clerk.stop();
        shownHeading = form.message()->text();
        shownLines = form.unreached()->toPlainText();
        visibleWhileRead = form.isVisible() && form.unreached()->isVisible();
        QTest::keyClick(&form, Qt::Key_Return);
    });
    clerk.start(5);
    EXPECT_TRUE(ActionAfterWork(true));
    EXPECT_EQ(shownHeading, "台帳に入らなかった明細があります（1 行）。");
    EXPECT_EQ(shownLines, "得意先台帳：売上伝票 No.2（営業所 1） 1行目：得意先 999 が得意先マスターにありません");
    EXPECT_TRUE(visibleWhileRead);
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(dlg.log.isEmpty());
    EXPECT_EQ(co.tto(100, 0, 5, "Gaku"), 1000);
}

TEST(Unreached, TheBatchCommandWritesThemOnStandardErrorAndStillSucceeds)
{
    LedgerCompany co;
    company(co);
    co.sale(2, QDate(2026, 5, 11), 999, 0, 5, {line(10)});
    CloseStore();
    QStringList out, err;
    CommandConsole console{[&](const QString& s) { out << s; }, [&](const QString& s) { err << s; },
                           [](QString*) { return false; }};
    EXPECT_EQ(runLedgerCommand({"batch"}, console), 0);
    EXPECT_EQ(err.join('\n'), "台帳に入らなかった明細があります（1 行）。\n"
                              "得意先台帳：売上伝票 No.2（営業所 1） 1行目：得意先 999 が得意先マスターにありません");
    EXPECT_TRUE(out.contains("売上伝票処理中"));
}
