#include "reports/LedgerReportFixture.h"
#include "reports/ListDaichou.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {

LedgerRange month(const QString& view, qint64 partner, int m, qint64 nou = 0)
{
    LedgerRange r;
    r.view = view;
    r.partner = partner;
    r.nou = nou;
    r.month = m;
    return r;
}

LedgerRange dates(const QString& view, qint64 partner, int sm, int sd, int em, int ed, qint64 nou = 0)
{
    LedgerRange r = month(view, partner, 0, nou);
    r.byMonth = false;
    r.startMonth = sm;
    r.startDay = sd;
    r.endMonth = em;
    r.endDay = ed;
    return r;
}

// "date|kind|name|qty|price|amount" of each screen line that has a row.
QStringList shown(const ListDaichou& v, int top = 0)
{
    QStringList out;
    for (const LedgerScreenRow& r : v.ShowLedgerRows(top))
        if (!r.Kubun.isEmpty() || !r.fGaku.isEmpty())
            out << QStringList{r.Hizuke, r.Kubun, r.fHinNamae, r.fSuu, r.fTanka, r.fGaku}.join('|');
    return out;
}

QString values(const ListDaichou& v)
{
    QStringList out;
    for (const QString& s : v.LabelHValue) out << s;
    return out.join('|');
}

}  // namespace

class LedgerView : public PartnerReportTest {};

TEST_F(LedgerView, ViewsMergeLinesAndMoneyNewestFirst)
{
    struct Case {
        const char* what;
        LedgerRange range;
        QString torName;
        QStringList rows;
        QString header;
    };
    const QList<Case> cases = {
        // The own-billed destination 6 keeps its lines out, but its deposit stands here.
        {"customer", month("Tdc", 1, 5), "東京商事",
         {"05月22日|振込|南支店分|||2,000", "05月12日|返品|ボールペン|-1|1,000.00|-1,000", "|現金|5月分|||3,000",
          "05月10日|売上|ボールペン|10|1,000.00|10,000"},
         "0|3,000|-3,000|16,000|-1,000|1,500|13,500"},
        {"own-billed destination", month("Tdc", 1, 5, 6), "東京商事 南店",
         {"05月22日|振込|南支店分|||2,000", "05月12日|売上|ノート|3|2,000.00|6,000"}, "0|2,000|-2,000|6,000|0|600|4,600"},
        // A destination billed through its customer has no figures of its own on screen.
        {"destination", month("Tdc", 1, 5, 5), "東京商事 北店",
         {"05月12日|返品|ボールペン|-1|1,000.00|-1,000", "05月10日|売上|ボールペン|10|1,000.00|10,000"}, "||||||"},
        {"closing on the 20th", month("Tdc", 2, 6), "大阪物産", {"05月25日|売上|ボールペン|4|1,000.00|4,000"},
         "1,650|0|1,650|4,000|0|400|6,050"},
        {"supplier", month("Sdc", 1, 5), "丸井商店",
         {"05月30日|現金|5月分|||1,000", "05月08日|仕入|ボールペン|7|100.00|700", "|仕入|ノート|3|100.00|300"},
         "0|1,000|-1,000|1,000|0|100|100"},
        // Dates carry no figures at all.
        {"customer by dates", dates("Tdc", 1, 5, 11, 5, 31), "東京商事",
         {"05月22日|振込|南支店分|||2,000", "05月12日|返品|ボールペン|-1|1,000.00|-1,000", "|現金|5月分|||3,000"}, "||||||"},
        // All customers of May are read by May's dates, whatever their closing month.
        {"all customers", month("Tdc", 0, 5), "すべて選択",
         {"05月25日|売上|ボールペン|4|1,000.00|4,000", "05月22日|振込|南支店分|||2,000",
          "05月15日|売上|ボールペン|1|1,500.00|1,500", "|振込|4月分|||3,000", "05月12日|売上|ノート|3|2,000.00|6,000",
          "|返品|ボールペン|-1|1,000.00|-1,000", "|現金|5月分|||3,000", "05月10日|売上|ボールペン|10|1,000.00|10,000"},
         "-|-|-|-|-|-|-"},
        {"all suppliers by dates", dates("Sdc", 0, 4, 1, 5, 10), "すべて選択",
         {"05月08日|仕入|ボールペン|7|100.00|700", "|仕入|ノート|3|100.00|300"}, "||||||"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        ListDaichou v;
        ASSERT_TRUE(v.Init(c.range));
        EXPECT_EQ(v.TorName, c.torName);
        EXPECT_EQ(shown(v), c.rows);
        EXPECT_EQ(values(v), c.header);
    }
    EXPECT_TRUE(dlg.log.isEmpty()) << dlg.log.join(',').toStdString();
}

TEST_F(LedgerView, SupplierLabelsAndTheEraTitle)
{
    ListDaichou v;
    ASSERT_TRUE(v.Init(month("Sdc", 1, 5)));
    QStringList labels(std::begin(v.LabelHeader), std::end(v.LabelHeader));
    EXPECT_EQ(labels, QStringList({"前回仕入額", "支払額", "繰越金額", "仕入金額", "返品値引等", "消費税額", "税込買掛残高"}));
    session().Hiz = 1;
    ASSERT_TRUE(v.Init(dates("Tdc", 1, 5, 1, 5, 31)));
    EXPECT_EQ(v.Title, "平成38年度 得意先元帳");
    EXPECT_EQ(v.LabelHeader[0], "前回請求額");
}

TEST_F(LedgerView, PrintHeaderShowsTheMonthsFiguresAtTheirPlaces)
{
    ListDaichou v;
    ASSERT_TRUE(v.Init(month("Tdc", 1, 5)));
    QStringList cells;
    for (const ListDaichou::HeaderCell& c : v.printHeader())
        cells << QStringLiteral("%1:%2=%3:%4").arg(c.labelX).arg(c.label).arg(c.valueX).arg(c.value);
    EXPECT_EQ(cells, QStringList({"1980:前回請求額=1800:0", "4140:入金金額=3720:3,000", "6060:繰越金額=5640:-3,000",
                                  "7980:今回売上額=7800:16,000", "10140:返品値引等=9960:-1,000", "12300:消費税=11640:1,500",
                                  "13980:今回税込売上額=14280:16,500", "16740:税込売掛残高=16800:13,500"}));
    ASSERT_TRUE(v.Init(month("Sdc", 1, 5)));
    EXPECT_EQ(v.printHeader().at(0).label, "前回未払額");
    EXPECT_EQ(v.printHeader().at(7).value, "100");
}

TEST_F(LedgerView, PrintAndSheetReadOldestFirstThenTheScreenIsNewestFirstAgain)
{
    ListDaichou v;
    ASSERT_TRUE(v.Init(month("Tdc", 1, 5)));
    QString error;
    ASSERT_TRUE(v.OpenLedgerRows(QString(), &error)) << error.toStdString();
    QStringList order;
    for (int r = 0; r < v.rowCount; ++r) order << v.rows.at(r, "Hizuke").toString() + v.rows.at(r, "UriFlag").toString();
    // Within a date the lines come before the money.
    EXPECT_EQ(order, QStringList({"2026-05-10", "2026-05-12", "2026-05-12*", "2026-05-22*"}));

    ReportSheet sheet;
    ASSERT_TRUE(v.exportSheet(&sheet, &error));
    EXPECT_EQ(v.rows.at(0, "Hizuke").toString(), "2026-05-22");
    ASSERT_EQ(sheet.rows.size(), 5);
    EXPECT_EQ(sheet.rows[0], QVariantList({"日  付", "区  分", "コード", "品名", "数  量", "仕入単価", "仕入金額", "売上単価", "売上金額"}));
    // Customer views: the slip's other price first, the sales price last.
    EXPECT_EQ(sheet.rows[1], QVariantList({QDate(2026, 5, 10), "売上", "0000000001001", "ボールペン", 10LL, 500.0, 5000.0,
                                           1000.0, 10000.0}));
    EXPECT_EQ(sheet.rows[3], QVariantList({QDate(2026, 5, 12), "現金", " ", "5月分", QVariant(), QVariant(), QVariant(),
                                           QVariant(), 3000.0}));
    EXPECT_EQ(sheet.formats.value({4, 1}), "yyyy/mm/dd");
    EXPECT_EQ(sheet.formats.size(), 4);

    ASSERT_TRUE(v.Init(month("Sdc", 1, 5)));
    ASSERT_TRUE(v.exportSheet(&sheet, &error));
    // Supplier views: the purchase price in the purchase columns.
    EXPECT_EQ(sheet.rows[1], QVariantList({QDate(2026, 5, 8), "仕入", "0000000001001", "ボールペン", 7LL, 100.0, 700.0,
                                           QVariant(), QVariant()}));
}

TEST_F(LedgerView, ScreenLinesScrollAndLeadToTheirSlips)
{
    // Fifteen more lines of customer 2 in May: sixteen rows, one step of the bar.
    QList<ReportLine> lines;
    for (int i = 0; i < 15; ++i) lines << ReportLine{1, 100 + i};
    books->sale(30, QDate(2026, 5, 3), 2, 0, 5, lines);
    ListDaichou v;
    ASSERT_TRUE(v.Init(month("Tdc", 2, 5)));
    EXPECT_EQ(v.rowCount, 16);
    EXPECT_EQ(v.barMax, 1);
    const QStringList first = shown(v, 0), second = shown(v, 1);
    EXPECT_EQ(first.size(), 15);
    EXPECT_EQ(first.at(1), "05月03日|売上|ボールペン|1|100.00|100");
    EXPECT_EQ(first.at(2), "|売上|ボールペン|1|101.00|101");
    // The first line of a screen always shows its date.
    EXPECT_EQ(second.at(0), "05月03日|売上|ボールペン|1|100.00|100");
    EXPECT_EQ(shown(v, 10).size(), 6);

    LedgerSlipTarget t;
    ASSERT_TRUE(v.slipOf(0, 0, &t));
    EXPECT_EQ(QStringList({t.form, t.kind, QString::number(t.Dno)}), QStringList({"Slip_frm", "Dur", "5"}));
    ASSERT_TRUE(v.slipOf(1, 14, &t));
    EXPECT_EQ(t.Dno, 30);
    EXPECT_FALSE(v.slipOf(2, 14, &t));
    EXPECT_FALSE(v.slipOf(0, 15, &t));

    ASSERT_TRUE(v.Init(month("Tdc", 1, 5)));
    ASSERT_TRUE(v.slipOf(0, 2, &t));
    EXPECT_EQ(QStringList({t.form, t.kind, QString::number(t.Dno)}), QStringList({"Cashier_frm", "Dny", "1"}));
    ASSERT_TRUE(v.Init(month("Sdc", 1, 5)));
    ASSERT_TRUE(v.slipOf(0, 0, &t));
    EXPECT_EQ(QStringList({t.form, t.kind}), QStringList({"Cashier_frm", "Dsh"}));
    ASSERT_TRUE(v.slipOf(0, 1, &t));
    EXPECT_EQ(QStringList({t.form, t.kind}), QStringList({"Slip_frm", "Dsr"}));
}

TEST_F(LedgerView, NoRowsIsSaid)
{
    ListDaichou v;
    ASSERT_TRUE(v.Init(month("Tdc", 1, 7)));
    EXPECT_EQ(v.rowCount, 0);
    EXPECT_EQ(v.barMax, 0);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"対象がありません。"});
    ReportSheet sheet;
    QString error;
    EXPECT_FALSE(v.exportSheet(&sheet, &error));
    EXPECT_EQ(error, "対象がありません。");
    // Month 13 of all customers has no range of dates.
    ASSERT_TRUE(v.Init(month("Tdc", 0, 13)));
    EXPECT_EQ(v.rowCount, 0);
}

TEST_F(LedgerView, MeiIsFilledAndReadInOneUnitThatNoOtherStationSees)
{
    // Another station's view of Mei, filled as an earlier view left it.
    books->exec("INSERT INTO Mei (Dno, HinNamae) VALUES (99, '前の表示')");
    const auto meiSeen = [&] { return books->one("SELECT group_concat(Dno) FROM Mei").toString(); };
    ListDaichou v;
    ASSERT_TRUE(v.Init(month("Sdc", 1, 5)));
    EXPECT_EQ(v.rowCount, 3);
    // Money rows read like lines: a blank code and size.
    EXPECT_EQ(v.rows.at(0, "UriFlag").toString(), "*");
    EXPECT_EQ(v.rows.at(0, "HinCode").toString(), " ");
    EXPECT_EQ(v.rows.at(0, "SizCode").toInt(), 0);
    EXPECT_EQ(meiSeen(), "99");

    // The lines of the next view fail after its deposits went in: nothing of it stays.
    books->exec("CREATE TEMP TRIGGER refuse BEFORE INSERT ON Mei WHEN NEW.Kubun=1 AND NEW.UriFlag IS NULL "
                "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    EXPECT_FALSE(v.Init(month("Tdc", 1, 5)));
    EXPECT_EQ(meiSeen(), "99");
    EXPECT_EQ(v.rowCount, 0);
    // The supplier's rows read before are gone: no line of them shows or opens under this title.
    EXPECT_TRUE(shown(v).isEmpty()) << shown(v).join(',').toStdString();
    LedgerSlipTarget t;
    EXPECT_FALSE(v.slipOf(0, 0, &t));
    ASSERT_EQ(dlg.of("Tell").size(), 1);
    EXPECT_TRUE(dlg.of("Tell").at(0).startsWith("エラー：")) << dlg.of("Tell").at(0).toStdString();
    books->exec("DROP TRIGGER refuse");
    ASSERT_TRUE(v.Init(month("Tdc", 1, 5)));
    EXPECT_EQ(v.rowCount, 4);
    EXPECT_EQ(meiSeen(), "99");
}

TEST_F(LedgerView, CancelledSlipsWaitingForTheNextRunAreNotListed)
{
    // Slip 4 amended to 2 at 1,000 and purchase 1 deleted, both after they were posted: their
    // old rows wait as negative images until the next ledger processing.
    for (const char* head : {"Dur", "Dsr"}) {
        const QString line = head == QLatin1String("Dur") ? "Dud" : "Dsd";
        const int dno = head == QLatin1String("Dur") ? 4 : 1;
        books->exec(QStringLiteral("UPDATE %1 SET Dno=Dno*-1 WHERE Dno=? AND EigCode=1").arg(head), {dno});
        books->exec(QStringLiteral("UPDATE %1 SET Dno=Dno*-1,ThiFlag=-1,Suu=Suu*-1,UTanka=UTanka*-1,UGaku=UGaku*-1,"
                                   "Zeigaku=Zeigaku*-1 WHERE Dno=? AND EigCode=1")
                        .arg(line),
                    {dno});
    }
    books->sale(4, QDate(2026, 5, 25), 2, 0, 6, {{2, 1000}});
    struct Case {
        const char* what;
        LedgerRange range;
        QStringList rows;
    };
    const QList<Case> cases = {
        {"customer by month", month("Tdc", 2, 6), {"05月25日|売上|ボールペン|2|1,000.00|2,000"}},
        {"customer by dates", dates("Tdc", 2, 5, 20, 5, 31), {"05月25日|売上|ボールペン|2|1,000.00|2,000"}},
        {"supplier by month", month("Sdc", 1, 5), {"05月30日|現金|5月分|||1,000"}},
        {"all suppliers by dates", dates("Sdc", 0, 5, 1, 5, 31), {"05月30日|現金|5月分|||1,000"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        ListDaichou v;
        ASSERT_TRUE(v.Init(c.range));
        EXPECT_EQ(shown(v), c.rows);
    }
}

TEST_F(LedgerView, DepositKindGoesIntoEdaByMonthOnly)
{
    // Deposit 2 is a transfer (kind 3) on its row 1; the newest row.
    ListDaichou v;
    ASSERT_TRUE(v.Init(month("Tdc", 1, 5)));
    EXPECT_EQ(v.rows.at(0, "Eda").toInt(), 3);
    ASSERT_TRUE(v.Init(dates("Tdc", 1, 5, 1, 5, 31)));
    EXPECT_EQ(v.rows.at(0, "Eda").toInt(), 1);
    ASSERT_TRUE(v.Init(dates("Sdc", 1, 5, 1, 5, 31)));
    EXPECT_TRUE(v.rows.at(0, "Eda").isNull());
}

TEST_F(LedgerView, OrderViewsReadTheirOwnTables)
{
    books->exec("INSERT INTO Dcr (Dno, EigCode, Hizuke, TorCode, NouCode) VALUES (1, 1, '2026-05-02', 1, 5), "
                "(2, 1, '2026-05-04', 1, 6)");
    books->exec("INSERT INTO Dcd (Dno, Eda, EigCode, Kubun, Hizuke, TorCode, HinNamae, Suu, UTanka, UGaku, Getudo) VALUES "
                "(1, 1, 1, 0, '2026-05-02', 1, '注文品', 2, ?, ?, 5), (2, 1, 1, 0, '2026-05-04', 1, '別注品', 1, ?, ?, 5)",
                {yen(300), yen(600), yen(50), yen(50)});
    books->exec("INSERT INTO Dhd (Dno, Eda, EigCode, Kubun, Hizuke, SirCode, HinNamae, Suu, UTanka, UGaku, Getudo) VALUES "
                "(1, 1, 1, 0, '2026-05-06', 1, '発注品', 5, ?, ?, 5)",
                {yen(10), yen(50)});
    ListDaichou v;
    ASSERT_TRUE(v.Init(month("Jdc", 1, 5)));
    EXPECT_EQ(v.Title, "得意先受注台帳");
    EXPECT_EQ(shown(v), QStringList({"05月04日|売上|別注品|1|50.00|50", "05月02日|売上|注文品|2|300.00|600"}));
    ASSERT_TRUE(v.Init(month("Jdc", 1, 5, 6)));
    EXPECT_EQ(shown(v), QStringList({"05月04日|売上|別注品|1|50.00|50"}));
    ASSERT_TRUE(v.Init(dates("Hdc", 0, 5, 1, 5, 31)));
    EXPECT_EQ(shown(v), QStringList({"05月06日|仕入|発注品|5|10.00|50"}));
    LedgerSlipTarget t;
    EXPECT_FALSE(v.slipOf(0, 0, &t));
}
