#include "reports/LedgerReportFixture.h"
#include "ledgers/Daichou.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {

// The cost price is given in halves of the price: sales cost half, purchases sell at double.
void writeLines(const char* table, const char* partner, int dno, const QString& date, qint64 code, int getudo,
                const QList<ReportLine>& lines, int costHalves)
{
    int eda = 0;
    for (const ReportLine& l : lines)
        exec(
            QStringLiteral("INSERT INTO %1 (Dno, Eda, EigCode, Kubun, Hizuke, %2, HinCode, HinNamae, Suu, UTanka, UGaku, "
                           "STanka, sGaku, ZeiFlag, ZeiGaku, Getudo, ThiFlag) VALUES (?, ?, 1, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 1, 0, ?, -1)")
                .arg(table, partner),
            {dno, ++eda, l.kubun, date, code, l.hin, l.name, l.suu, yen(l.tankaYen), yen(l.suu * l.tankaYen),
             yen(l.tankaYen * costHalves / 2), yen(l.suu * l.tankaYen * costHalves / 2), getudo});
}

void purchase(int dno, const QDate& date, qint64 sir, int getudo, const QList<ReportLine>& lines)
{
    const QString d = date.toString(Qt::ISODate);
    exec("INSERT INTO Dsr (Dno, EigCode, Hizuke, SirCode, Kubun) VALUES (?, 1, ?, ?, 0)", {dno, d, sir});
    writeLines("Dsd", "SirCode", dno, d, sir, getudo, lines, 4);
}

// Deposits of customers (sir 0) and payments to suppliers as the deposit screen saves them:
// the row, then the ledger posting.
void received(int dno, const QDate& date, qint64 tor, qint64 nou, qint64 sir, int kubun, qint64 y, const QString& text)
{
    const QString d = date.toString(Qt::ISODate);
    if (sir == 0)
        exec("INSERT INTO Dny (Dno, Eda, EigCode, Hizuke, TorCode, NouCode, Kubun, Nnaiyo, NGaku, Getudo) "
                                "VALUES (?, 1, 1, ?, ?, ?, ?, ?, ?, 5)", {dno, d, tor, nou, kubun, text, yen(y)});
    else
        exec("INSERT INTO Dsh (Dno, Eda, EigCode, Hizuke, SirCode, Kubun, Snaiyo, sGaku, Getudo) "
                                "VALUES (?, 1, 1, ?, ?, ?, ?, ?, 5)", {dno, d, sir, kubun, text, yen(y)});
    LedgerAmounts a;
    Money* fields[] = {&a.Genkin, &a.Kogite, &a.Furikomi, &a.Tegata, &a.Sousai, &a.Chousei};
    *fields[kubun - 1] = Money::fromYen(y);
    const short seiFlag = nou ? short(one("SELECT SeiFlag FROM Nou WHERE TorCode=? AND Code=?", {tor, nou}).toInt()) : 1;
    QString error;
    EXPECT_TRUE(sir ? PostLedger("TSI", sir, 0, a, "5", 1, 0, 0, &error) : PostCustomer(tor, nou, a, "5", 1, seiFlag, &error))
        << error.toStdString();
}

}  // namespace

void PartnerReportTest::SetUp()
{
    ASSERT_TRUE(company.open());
    useFiscal2026();
    session().Sime = 31;
    session().EigNamae = QStringLiteral("本社");
    exec("INSERT INTO Tbn (Code, Namae) VALUES (1, '卸'), (2, '小売')");
    exec("INSERT INTO Sbn (Code, Namae) VALUES (1, 'メーカー')");
    const char* tor = "INSERT INTO Tor (Code, TbnCode, Kana, Namae, Tenmei, Zeituuchi, HsuType, Hsu, Sime) "
                      "VALUES (?, ?, ?, ?, ?, 1, 1, 1, ?)";
    exec(tor, {1, 1, "ﾄｳｷｮｳ", "東京商事", "本店", 31});
    exec(tor, {2, 1, "ｵｵｻｶ", "大阪物産", " ", 20});
    exec(tor, {3, 2, "ｷｮｳﾄ", "京都屋", " ", 31});
    exec("INSERT INTO Nou (TorCode, Code, Kana, Namae, Ryaku, Tenmei, SeiFlag) VALUES "
         "(1, 5, 'ｷﾀ', '北倉庫', '北倉庫', '北店', 1), (1, 6, 'ﾐﾅﾐ', '南支店', '南支店', '南店', 2)");
    exec("INSERT INTO Sir (Code, SbnCode, Kana, Namae, Zeituuchi, HsuType, Hsu, SimeFlag, Sime) "
         "VALUES (1, 1, 'ﾏﾙｲ', '丸井商店', 1, 1, 1, 0, 31)");
    exec("INSERT INTO Hin (Code, HbnCode, Namae, ZeiFlag) VALUES ('0000000001001', 1, 'ボールペン', 1), "
         "('0000000001002', 1, 'ノート', 1)");

    const ReportLine note{3, 2000, 0, QStringLiteral("0000000001002"), QStringLiteral("ノート")};
    sale(1, QDate(2026, 5, 10), 1, 5, 5, {{10, 1000}});
    sale(2, QDate(2026, 5, 12), 1, 6, 5, {note});
    sale(3, QDate(2026, 5, 12), 1, 5, 5, {{-1, 1000, 1}});
    sale(4, QDate(2026, 5, 25), 2, 0, 6, {{4, 1000}});
    sale(5, QDate(2026, 5, 15), 2, 0, 5, {{1, 1500}});
    sale(6, QDate(2026, 4, 20), 3, 0, 4, {{5, 1000}});
    purchase(1, QDate(2026, 5, 8), 1, 5, {{7, 100}, {3, 100, 0, QStringLiteral("0000000001002"), QStringLiteral("ノート")}});
    ledgerRun();
    received(1, QDate(2026, 5, 12), 1, 0, 0, 1, 3000, QStringLiteral("5月分"));
    received(2, QDate(2026, 5, 22), 1, 6, 0, 3, 2000, QStringLiteral("南支店分"));
    received(3, QDate(2026, 5, 15), 3, 0, 0, 3, 3000, QStringLiteral("4月分"));
    received(1, QDate(2026, 5, 30), 0, 0, 1, 1, 1000, QStringLiteral("5月分"));
}

void PartnerReportTest::sale(int dno, const QDate& date, qint64 tor, qint64 nou, int getudo, const QList<ReportLine>& lines)
{
    const QString d = date.toString(Qt::ISODate);
    exec("INSERT INTO Dur (Dno, EigCode, Hizuke, TorCode, TorCodeSei, NouCode, Kubun) VALUES (?, 1, ?, ?, ?, ?, 0)",
         {dno, d, tor, tor, nou});
    writeLines("Dud", "TorCode", dno, d, tor, getudo, lines, 1);
}

void PartnerReportTest::sixteenRows()
{
    QList<ReportLine> lines;
    for (int i = 0; i < 15; ++i) lines << ReportLine{1, 100 + i};
    sale(30, QDate(2026, 5, 3), 2, 0, 5, lines);
}
