#include "reports/LedgerReportFixture.h"
#include "reports/ListDaichou.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {

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

TEST_F(LedgerView, SheetReadsOldestFirstWithThePricesInTheirColumns)
{
    ListDaichou v;
    ASSERT_TRUE(v.Init(month("Tdc", 1, 5)));
    ReportSheet sheet;
    QString error;
    ASSERT_TRUE(v.exportSheet(&sheet, &error));
    EXPECT_EQ(v.rows.at(0, "Hizuke").toString(), "2026-05-22");   // the screen is newest first again
    ASSERT_EQ(sheet.rows.size(), 5);
    // Customer views: the slip's other price first, the sales price last.
    EXPECT_EQ(sheet.rows[1], QVariantList({QDate(2026, 5, 10), "売上", "0000000001001", "ボールペン", 10LL, 500.0, 5000.0,
                                           1000.0, 10000.0}));
    EXPECT_EQ(sheet.rows[3], QVariantList({QDate(2026, 5, 12), "現金", " ", "5月分", QVariant(), QVariant(), QVariant(),
                                           QVariant(), 3000.0}));
    // Supplier views: the purchase price in the purchase columns.
    ASSERT_TRUE(v.Init(month("Sdc", 1, 5)));
    ASSERT_TRUE(v.exportSheet(&sheet, &error));
    EXPECT_EQ(sheet.rows[1], QVariantList({QDate(2026, 5, 8), "仕入", "0000000001001", "ボールペン", 7LL, 100.0, 700.0,
                                           QVariant(), QVariant()}));
}

TEST_F(LedgerView, ScreenLinesLeadToTheirSlipsWithinTheRowsUnderTheEraTitle)
{
    session().Hiz = 1;
    ListDaichou v;
    ASSERT_TRUE(v.Init(month("Sdc", 1, 5)));
    EXPECT_EQ(v.Title, "平成38年度 仕入先元帳");
    LedgerSlipTarget t;
    ASSERT_TRUE(v.slipOf(0, 1, &t));
    EXPECT_EQ(QStringList({t.form, t.kind, QString::number(t.Dno)}), QStringList({"Slip_frm", "Dsr", "1"}));
    EXPECT_FALSE(v.slipOf(0, 3, &t));
    EXPECT_FALSE(v.slipOf(1, 14, &t));
}

TEST_F(LedgerView, NoRowsIsSaid)
{
    ListDaichou v;
    ASSERT_TRUE(v.Init(month("Tdc", 1, 7)));
    EXPECT_EQ(v.rowCount, 0);
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
    exec("INSERT INTO Mei (Dno, HinNamae) VALUES (99, '前の表示')");
    const auto meiSeen = [&] { return one("SELECT group_concat(Dno) FROM Mei").toString(); };
    ListDaichou v;
    ASSERT_TRUE(v.Init(month("Sdc", 1, 5)));
    EXPECT_EQ(v.rowCount, 3);
    // Money rows read like lines: a blank code and size.
    EXPECT_EQ(v.rows.at(0, "UriFlag").toString() + v.rows.at(0, "HinCode").toString() + v.rows.at(0, "SizCode").toString(), "* 0");
    EXPECT_EQ(meiSeen(), "99");

    // The lines of the next view fail after its deposits went in: nothing of it stays.
    exec("CREATE TEMP TRIGGER refuse BEFORE INSERT ON Mei WHEN NEW.Kubun=1 AND NEW.UriFlag IS NULL "
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
    exec("DROP TRIGGER refuse");
    ASSERT_TRUE(v.Init(month("Tdc", 1, 5)));
    EXPECT_EQ(v.rowCount, 4);
    EXPECT_EQ(meiSeen(), "99");
}

TEST_F(LedgerView, CancelledSlipsWaitingForTheNextRunAreNotListed)
{
    // Slip 4 amended to 2 at 1,000 and purchase 1 deleted, both after they were posted: their
    // old rows wait as negative images until the next ledger processing.
    cancelPosted("Dur", "Dud", 4);
    cancelPosted("Dsr", "Dsd", 1);
    sale(4, QDate(2026, 5, 25), 2, 0, 6, {{2, 1000}});
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

TEST_F(LedgerView, OrderViewsReadTheirOwnTables)
{
    exec("INSERT INTO Dcr (Dno, EigCode, Hizuke, TorCode, NouCode) VALUES (1, 1, '2026-05-02', 1, 5), "
         "(2, 1, '2026-05-04', 1, 6)");
    exec("INSERT INTO Dcd (Dno, Eda, EigCode, Kubun, Hizuke, TorCode, HinNamae, Suu, UTanka, UGaku, Getudo) VALUES "
         "(1, 1, 1, 0, '2026-05-02', 1, '注文品', 2, ?, ?, 5), (2, 1, 1, 0, '2026-05-04', 1, '別注品', 1, ?, ?, 5)",
         {yen(300), yen(600), yen(50), yen(50)});
    exec("INSERT INTO Dhd (Dno, Eda, EigCode, Kubun, Hizuke, SirCode, HinNamae, Suu, UTanka, UGaku, Getudo) VALUES "
         "(1, 1, 1, 0, '2026-05-06', 1, '発注品', 5, ?, ?, 5)", {yen(10), yen(50)});
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
