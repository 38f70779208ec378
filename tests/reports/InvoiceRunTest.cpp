#include <QProcess>
#include <QTemporaryDir>
#include "pageout/QtPageOutputs.h"
#include "pageout/Vtml.h"
#include "reports/InvoiceFixture.h"
#include "reports/InvoiceRun.h"
#include "shell/Session.h"

namespace {
QString fixed(qint64 yen, const QString& pattern) { return FixedNumberText(Money::fromYen(yen), pattern); }
QString amount(qint64 yen) { return fixed(yen, QStringLiteral("##,###,###")); }
// Data rows start at 2400. The recording surface's text of size 11 is 264 twips high, taller
// than the form's 240, and a taller text raises the row advance as on a real printer.
int rowY(int i) { return 2400 + 264 * i; }

// Fiscal 2026 from April. May is closing month 5 for every customer below.
class InvoiceRunTest : public ::testing::Test {
protected:
    InvoiceCompany co;
    ScriptedDialogs dlg;
    const QDate may10{2026, 5, 10};

    void SetUp() override
    {
        for (int i = 1; i <= 3; ++i) co.addHin(QString::number(1000 + i), QStringList{"ボールペン", "ノート", "消しゴム"}[i - 1]);
        // 1001: two destinations, only the first one buys.
        co.addTor(1001, "東京商事");
        co.addNou(1001, 1, "東京商事　北店");
        co.addNou(1001, 2, "東京商事　南店");
        co.sale(1, may10, 1001, 1, 5, {{"1001", 10, 120}, {"1002", 5, 300}});
        co.sale(2, may10.addDays(2), 1001, 1, 5, {{"1001", 20, 120}, {"1003", 3, 100, 310}});
        // A return of the notes with a typed amount: the group keeps 50 yen and no quantity.
        co.sale(3, may10.addDays(10), 1001, 1, 5, {{"1001", 5, 110}, {"1002", -5, 300, -1450, 1, 0, 1}});
        // 1002: twenty-two products, one line each.
        co.addTor(1002, "大阪物産");
        QList<InvoiceLine> many;
        for (int i = 1; i <= 22; ++i) {
            co.addHin(QString::number(2000 + i), QStringLiteral("商品%1").arg(i, 2, 10, QLatin1Char('0')));
            many << InvoiceLine{QString::number(2000 + i), 1, 100};
        }
        co.sale(4, may10, 1002, 0, 5, many);
        // 1003 only paid; 1005 bought in June only; 1004 closes on the 30th.
        co.addTor(1003, "京都屋");
        co.addTor(1005, "神戸堂");
        co.sale(5, QDate(2026, 6, 3), 1005, 0, 6, {{"1001", 1, 100}});
        co.addTor(1004, "奈良堂", 30);
        co.sale(6, may10, 1004, 0, 5, {{"1001", 2, 500}});
        ledgerRun();
        exec("INSERT INTO TtoD (TorCode, NouCode, EigCode, Getudo, Nendo, Genkin, NTotal, KTotal) "
                "VALUES (1003, 0, 1, 5, 2026, ?, ?, 0)",
                {yen(10000), yen(10000)});
    }

    InvoiceRunOutcome run(Recorded& r, const QString& sime, const QString& from = {}, const QString& to = {},
                          InvoiceRun* with = nullptr)
    {
        InvoiceRun own(co.db());
        const ScopedPageOutput scope(&r);
        return (with ? *with : own).IssueInvoices({QStringLiteral("5"), sime, from, to, QDate(2026, 6, 1)});
    }
    // The reference of each page: whose document it is.
    static QStringList references(const Recorded& r)
    {
        QStringList out;
        for (int p = 1; p <= r.pages(); ++p) out << r.at(p, 4080, 1200);
        return out;
    }
};
}  // namespace

TEST_F(InvoiceRunTest, CustomerWithDestinationsGetsCoveringAllDetailAndOneInvoicePerBuyingDestination)
{
    Recorded r;
    ASSERT_EQ(run(r, "31", "1001", "1001"), InvoiceRunOutcome::Done);
    // Covering invoice, all detail, the first destination; the second has no ledger row.
    ASSERT_EQ(references(r), (QStringList{"(1001)", "(1001)", "(1001-1)"}));
    EXPECT_EQ(r.at(1, 720, 720) + "|" + r.at(3, 720, 720), "東京商事|東京商事　北店");

    // The covering invoice: one line per destination that bought.
    EXPECT_EQ(r.at(1, 600, 2400) + "|" + r.at(1, 7440, 2400), "東京商事　北店|" + fixed(4510, "#,###,##0"));
    EXPECT_EQ(r.at(1, 600, rowY(1)), "");

    // All detail: product and unit price groups, the mean price of each, cut downwards; a
    // group whose quantities cancel keeps its amount.
    const struct { QString name; qint64 suu; QString mean; qint64 gaku; } rows[] = {
        {"ボールペン", 5, "110", 550}, {"ボールペン", 30, "120", 3600}, {"ノート", 0, "", 50}, {"消しゴム", 3, "103", 310}};
    for (int i = 0; i < 4; ++i) {
        const int y = rowY(i);
        EXPECT_EQ(QStringList({r.at(2, 600, y), r.at(2, 5232, y), r.at(2, 6480, y).trimmed(), r.at(2, 7440, y)}),
                  QStringList({rows[i].name, fixed(rows[i].suu, "###,###"), rows[i].mean, fixed(rows[i].gaku, "#,###,##0")}));
    }
    // The destination's own invoice shows the unit price itself.
    EXPECT_EQ(r.at(3, 6480, 2400).trimmed() + "|" + r.at(3, 6480, rowY(2)).trimmed(), "110|300");

    // The three amounts come from the ledger: on the covering invoice as its page lines and
    // again at its end; once on each of the others.
    for (int p = 1; p <= 3; ++p) {
        SCOPED_TRACE(p);
        EXPECT_EQ(QStringList({r.at(p, 3840, 7920), r.at(p, 5640, 7920), r.at(p, 7200, 7920)}),
                  QStringList({amount(4510), amount(451), amount(4961)}));
        EXPECT_EQ(r.rec.page(p).filter(QStringLiteral("T 3840,7920 ")).size(), p == 1 ? 2 : 1);
    }
    // Invoices carry no number: the office's counter is untouched.
    EXPECT_EQ(one("SELECT SeikyuNo FROM Eig WHERE Code = 1").toInt(), 1);
}

TEST_F(InvoiceRunTest, TwentyTwoLinesMakeTwoPagesWithTheAmountsOnTheLastOnly)
{
    Recorded r;
    ASSERT_EQ(run(r, "31", "1002"), InvoiceRunOutcome::Done);
    ASSERT_EQ(r.pages(), 2);
    EXPECT_EQ(r.at(1, 7680, 240) + r.at(2, 7680, 240), "1ページ 2ページ ");
    EXPECT_EQ(r.at(1, 600, rowY(20)) + "|" + r.at(2, 600, 2400) + "|" + r.at(2, 600, rowY(1)), "商品21|商品22|");
    EXPECT_EQ(r.at(1, 3840, 7920), "");
    EXPECT_EQ(QStringList({r.at(2, 3840, 7920), r.at(2, 5640, 7920), r.at(2, 7200, 7920)}),
              QStringList({amount(2200), amount(220), amount(2420)}));
    // Both pages are the same invoice: addressee and period on each.
    for (int p = 1; p <= 2; ++p)
        EXPECT_EQ(QStringList({r.at(p, 720, 720), r.at(p, 840, 1200), r.at(p, 2040, 1200), r.at(p, 2760, 1200)}),
                  QStringList({"大阪物産", "2026", "5", "末"})) << p;
}

TEST_F(InvoiceRunTest, CoveringInvoiceOfTwoPagesCarriesTheAmountsOnBoth)
{
    co.addTor(1006, "福岡商会", 25);
    for (int n = 1; n <= 22; ++n) {
        co.addNou(1006, n, QStringLiteral("支店%1").arg(n));
        co.sale(100 + n, may10, 1006, n, 5, {{"1001", 1, 100}});
    }
    ledgerRun();
    Recorded r;
    InvoiceRun counted(co.db());
    ASSERT_EQ(run(r, "25", {}, {}, &counted), InvoiceRunOutcome::Done);
    // Covering invoice of two pages, all detail, twenty-two destinations.
    ASSERT_EQ(r.pages(), 25);
    EXPECT_EQ(counted.documents(), 24);
    EXPECT_EQ(counted.customers(), 1);
    EXPECT_EQ(r.at(1, 600, rowY(20)) + "|" + r.at(2, 600, 2400), "支店21|支店22");
    for (int p = 1; p <= 2; ++p) EXPECT_EQ(r.at(p, 7200, 7920), amount(2420)) << p;
    EXPECT_EQ(r.at(3, 5232, 2400), fixed(22, "###,###"));
    EXPECT_EQ(r.at(25, 4080, 1200), "(1006-22)");
}

TEST_F(InvoiceRunTest, RunOfTheDayTakesItsCustomersInCodeOrderAndSkipsThoseWithoutSales)
{
    Recorded r;
    InvoiceRun counted(co.db());
    ASSERT_EQ(run(r, "31", {}, {}, &counted), InvoiceRunOutcome::Done);
    // 1003 paid but bought nothing (KTotal 0); 1005 has no May row; 1004 closes on the 30th.
    EXPECT_EQ(references(r), (QStringList{"(1001)", "(1001)", "(1001-1)", "(1002)", "(1002)"}));
    EXPECT_EQ(counted.customers(), 2);
    EXPECT_EQ(counted.documents(), 4);

    Recorded none;
    EXPECT_EQ(run(none, "31", "1003", "1003"), InvoiceRunOutcome::Done);
    EXPECT_EQ(run(none, "31", "1005"), InvoiceRunOutcome::Done);
    EXPECT_EQ(run(none, "15"), InvoiceRunOutcome::Done);
    EXPECT_EQ(none.pages(), 0);
    EXPECT_TRUE(dlg.log.isEmpty()) << qPrintable(dlg.log.join('\n'));
    EXPECT_EQ(run(none, ""), InvoiceRunOutcome::Empty);
}

TEST_F(InvoiceRunTest, PeriodShowsTheDayAndTheEraYearAndShrinkStopsForARange)
{
    session().Hiz = 1;
    Recorded r;
    ASSERT_EQ(run(r, "30"), InvoiceRunOutcome::Done);
    ASSERT_EQ(r.pages(), 1);
    EXPECT_EQ(QStringList({r.at(1, 720, 1200), r.at(1, 840, 1200), r.at(1, 2760, 1200), r.at(1, 7200, 7920)}),
              QStringList({"平成 38", "", "30", amount(1100)}));

    // An installation that shrinks every page prints a customer of a range at full size.
    session().ShrinkMode = true;
    VtmlSetShrinkMode(true);
    Recorded whole, range;
    run(whole, "30");
    run(range, "30", "1004", "1004");
    VtmlSetShrinkMode(false);
    session().ShrinkMode = false;
    EXPECT_EQ(whole.at(1, 648, 648) + "|" + range.at(1, 720, 720), "奈良堂|奈良堂");
    EXPECT_FALSE(VtmlShrinkOff());
}

TEST_F(InvoiceRunTest, ChosenStyleHoldsForTheRunAndPlainPaperCarriesTheForm)
{
    exec("INSERT INTO zSysFunc (Code, contents) VALUES (395, '1:専用紙'), (1201, '5-白紙請求書'), (1202, '6-控え')");
    const struct {
        int answer;
        InvoiceRunOutcome outcome;
        bool form;
    } cases[] = {{-1, InvoiceRunOutcome::Cancelled, false}, {1, InvoiceRunOutcome::Done, false},
                 {6, InvoiceRunOutcome::Done, false}, {5, InvoiceRunOutcome::Done, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.answer);
        Recorded r;
        InvoiceRun styled(co.db());
        short during = -1;
        styled.chooseStyle = [&] { return c.answer; };
        styled.progress = [&](int, int) { during = session().SeiStyle; };
        EXPECT_EQ(run(r, "30", {}, {}, &styled), c.outcome);
        EXPECT_EQ(session().SeiStyle, 0);
        if (c.outcome == InvoiceRunOutcome::Cancelled) {
            EXPECT_EQ(r.pages(), 0);
            continue;
        }
        EXPECT_EQ(during, c.answer);
        const QStringList t = r.rec.texts();
        for (const char* formText : {"請　求　書", "今回御買上額", "今回御請求額", "株式会社丸八商事"})
            EXPECT_EQ(t.contains(formText), c.form) << formText;
        EXPECT_EQ(!r.rec.only("L ").isEmpty(), c.form);
        // The data keep their places on either paper.
        EXPECT_EQ(r.at(1, 720, 720) + "|" + r.at(1, 7200, 7920), "奈良堂|" + amount(1100));
    }
}

TEST_F(InvoiceRunTest, PlainPaperNamesTheAccountTheCustomerPaysInto)
{
    exec("INSERT INTO zSysFunc (Code, contents) VALUES (1201, '5-白紙')");
    exec("UPDATE Com SET Bank3 = '三井住友銀行', Mise3 = '神田支店', shurui3 = 2, koza3 = '7654321'");
    session().SeiStyle = 5;
    const QString first = "みずほ銀行 神田支店 普通 1234567", third = "三井住友銀行 神田支店 当座 7654321";
    // 1004 closes on the 30th; the account is the customer's transfer account, if it has one.
    const struct {
        int bankCode;
        QStringList shown;
    } cases[] = {{0, {first, third}}, {3, {third}}, {1, {first}}, {2, {first, third}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.bankCode);
        exec("UPDATE Tor SET BankCode = ? WHERE Code = 1004", {c.bankCode});
        Recorded r;
        ASSERT_EQ(run(r, "30"), InvoiceRunOutcome::Done);
        EXPECT_TRUE(r.rec.texts().contains("お振込先"));
        EXPECT_EQ(r.rec.texts().filter("銀行 "), c.shown);
    }
    session().SeiStyle = 0;
}

TEST_F(InvoiceRunTest, PdfOfARunHoldsEveryInvoiceInRunOrder)
{
    QTemporaryDir tmp;
    const QString file = tmp.filePath("invoices.pdf");
    QString error;
    std::unique_ptr<PageOutput> out = makePdfOutput(file, &error);
    ASSERT_TRUE(out) << qPrintable(error);
    InvoiceRun run(co.db());
    run.chooseStyle = [] { return 5; };
    exec("INSERT INTO zSysFunc (Code, contents) VALUES (395, '#'), (1201, '5-白紙')");
    ASSERT_TRUE(printTo(*out, [&] { return run.IssueInvoices({"5", "31", {}, {}, {}}) == InvoiceRunOutcome::Done; }));
    EXPECT_EQ(out->pages(), 5);
    QProcess p;
    p.start("pdftotext", {"-layout", file, "-"});
    ASSERT_TRUE(p.waitForFinished(30000));
    // The extracted text may name some kanji by their radicals (⼤ for 大): compare normalised.
    const QString text = QString::fromUtf8(p.readAllStandardOutput()).normalized(QString::NormalizationForm_KC);
    for (const char* s : {"東京商事", "大阪物産", "4,510", "4,961", "2,420", "今回御請求額"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(s))) << s;
    EXPECT_LT(text.indexOf("東京商事"), text.indexOf("大阪物産"));
    EXPECT_FALSE(text.contains("京都屋"));
}
