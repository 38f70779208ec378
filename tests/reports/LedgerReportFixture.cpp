#include "reports/LedgerReportFixture.h"
#include "ledgers/Daichou.h"
#include "ledgers/LedgerBatch.h"
#include "shell/Session.h"
#include "store/Sql.h"

PartnerBooks::PartnerBooks() : company_(std::make_unique<TempCompany>(2026, 4))
{
    EXPECT_TRUE(company_->open());
    Session& s = session();
    s.Nendo = 2026;
    s.sTuki = 4;
    s.eTuki = 3;
    s.Sime = 31;
    s.EigCode = 1;
    s.EigNamae = QStringLiteral("本社");
    s.Zeiritu = Money::fromYen(8);
    s.TaxRateNew = Money::fromYen(10);
    s.TaxChangeDate = QDate(2019, 9, 30);
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
    batch();
    deposit(1, QDate(2026, 5, 12), 1, 0, 5, 1, 3000, QStringLiteral("5月分"));
    deposit(2, QDate(2026, 5, 22), 1, 6, 5, 3, 2000, QStringLiteral("南支店分"));
    deposit(3, QDate(2026, 5, 15), 3, 0, 5, 3, 3000, QStringLiteral("4月分"));
    payment(1, QDate(2026, 5, 30), 1, 5, 1, 1000, QStringLiteral("5月分"));
}

PartnerBooks::~PartnerBooks() = default;

QSqlDatabase PartnerBooks::db() const { return session().MasterDb; }

void PartnerBooks::exec(const QString& sql, const QVariantList& binds) const
{
    QSqlError e;
    EXPECT_EQ(execSql(db(), sql, binds, &e), ErrorClass::None) << sql.toStdString() << " " << e.text().toStdString();
}

QVariant PartnerBooks::one(const QString& sql, const QVariantList& binds) const { return scalar(db(), sql, binds); }

void PartnerBooks::sale(int dno, const QDate& date, qint64 tor, qint64 nou, int getudo, const QList<ReportLine>& lines) const
{
    const QString d = date.toString(Qt::ISODate);
    exec("INSERT INTO Dur (Dno, EigCode, Hizuke, TorCode, TorCodeSei, NouCode, Kubun) VALUES (?, 1, ?, ?, ?, ?, 0)",
         {dno, d, tor, tor, nou});
    int eda = 0;
    for (const ReportLine& l : lines)
        exec("INSERT INTO Dud (Dno, Eda, EigCode, Kubun, Hizuke, TorCode, HinCode, HinNamae, Suu, UTanka, UGaku, "
             "STanka, sGaku, ZeiFlag, ZeiGaku, Getudo, ThiFlag) VALUES (?, ?, 1, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 1, 0, ?, -1)",
             {dno, ++eda, l.kubun, d, tor, l.hin, l.name, l.suu, yen(l.tankaYen), yen(l.suu * l.tankaYen),
              yen(l.tankaYen / 2), yen(l.suu * l.tankaYen / 2), getudo});
}

void PartnerBooks::purchase(int dno, const QDate& date, qint64 sir, int getudo, const QList<ReportLine>& lines) const
{
    const QString d = date.toString(Qt::ISODate);
    exec("INSERT INTO Dsr (Dno, EigCode, Hizuke, SirCode, Kubun) VALUES (?, 1, ?, ?, 0)", {dno, d, sir});
    int eda = 0;
    for (const ReportLine& l : lines)
        exec("INSERT INTO Dsd (Dno, Eda, EigCode, Kubun, Hizuke, SirCode, HinCode, HinNamae, Suu, UTanka, UGaku, "
             "STanka, sGaku, ZeiFlag, ZeiGaku, Getudo, ThiFlag) VALUES (?, ?, 1, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 1, 0, ?, -1)",
             {dno, ++eda, l.kubun, d, sir, l.hin, l.name, l.suu, yen(l.tankaYen), yen(l.suu * l.tankaYen),
              yen(l.tankaYen * 2), yen(l.suu * l.tankaYen * 2), getudo});
}

namespace {
LedgerAmounts received(int kubun, qint64 y)
{
    LedgerAmounts a;
    Money* fields[] = {&a.Genkin, &a.Kogite, &a.Furikomi, &a.Tegata, &a.Sousai, &a.Chousei};
    *fields[kubun - 1] = Money::fromYen(y);
    return a;
}
}  // namespace

void PartnerBooks::deposit(int dno, const QDate& date, qint64 tor, qint64 nou, int getudo, int kubun, qint64 y,
                           const QString& text) const
{
    exec("INSERT INTO Dny (Dno, Eda, EigCode, Hizuke, TorCode, NouCode, Kubun, Nnaiyo, NGaku, Getudo) "
         "VALUES (?, 1, 1, ?, ?, ?, ?, ?, ?, ?)",
         {dno, date.toString(Qt::ISODate), tor, nou, kubun, text, yen(y), getudo});
    const short seiFlag = nou ? short(one("SELECT SeiFlag FROM Nou WHERE TorCode=? AND Code=?", {tor, nou}).toInt()) : 1;
    QString error;
    EXPECT_TRUE(PostCustomer(tor, nou, received(kubun, y), QString::number(getudo), 1, seiFlag, &error)) << error.toStdString();
}

void PartnerBooks::payment(int dno, const QDate& date, qint64 sir, int getudo, int kubun, qint64 y, const QString& text) const
{
    exec("INSERT INTO Dsh (Dno, Eda, EigCode, Hizuke, SirCode, Kubun, Snaiyo, sGaku, Getudo) VALUES (?, 1, 1, ?, ?, ?, ?, ?, ?)",
         {dno, date.toString(Qt::ISODate), sir, kubun, text, yen(y), getudo});
    QString error;
    EXPECT_TRUE(PostLedger("TSI", sir, 0, received(kubun, y), QString::number(getudo), 1, 0, 0, &error)) << error.toStdString();
}

void PartnerBooks::batch() const
{
    QString error;
    EXPECT_TRUE(runLedgerProcessing({}, &error)) << error.toStdString();
}
