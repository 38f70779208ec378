#include "reports/InvoiceFixture.h"
#include "entry/Convert.h"
#include "shell/Session.h"
#include "store/Sql.h"

InvoiceCompany::InvoiceCompany()
{
    EXPECT_TRUE(company_.open());
    useFiscal2026();
    exec(QStringLiteral("INSERT INTO Tbn (Code, Namae) VALUES (1, '卸')"));
    exec(QStringLiteral("UPDATE Com SET Kaisya = '株式会社丸八商事', Yubin = '101-0032', Addr1 = '東京都千代田区岩本町', "
                        "Addr2 = '2-11-7', Tel = '03-3861-2451', Fax = '03-3861-2452', Bank1 = 'みずほ銀行', "
                        "Mise1 = '神田支店', shurui1 = 1, koza1 = '1234567'"));
}

QSqlDatabase InvoiceCompany::db() const { return session().MasterDb; }

void InvoiceCompany::addTor(qint64 code, const QString& name, int sime, int zeituuchi)
{
    exec(QStringLiteral("INSERT INTO Tor (Code, TbnCode, Kana, Namae, Zeituuchi, HsuType, Hsu, Sime) "
                        "VALUES (?, 1, 'ｱ', ?, ?, 1, 1, ?)"),
         {code, name, zeituuchi, sime});
}

void InvoiceCompany::addNou(qint64 tor, qint64 code, const QString& name)
{
    exec(QStringLiteral("INSERT INTO Nou (TorCode, Code, Namae, SeiFlag) VALUES (?, ?, ?, 1)"), {tor, code, name});
}

void InvoiceCompany::addHin(const QString& code, const QString& name)
{
    QString typed = code;
    exec(QStringLiteral("INSERT INTO Hin (Code, HbnCode, Namae, ZeiFlag) VALUES (?, 1, ?, 1)"), {ZeroPad13(typed), name});
}

void InvoiceCompany::sale(int dno, const QDate& date, qint64 tor, qint64 nou, int getudo, const QList<InvoiceLine>& lines,
                          const QString& tekiyo)
{
    const QString d = date.toString(Qt::ISODate);
    exec(QStringLiteral("INSERT INTO Dur (Dno, EigCode, Hizuke, TorCode, TorCodeSei, NouCode, Tekiyo, Kubun) "
                        "VALUES (?, 1, ?, ?, ?, ?, ?, 0)"),
         {dno, d, tor, tor, nou, tekiyo.isEmpty() ? QStringLiteral(" ") : tekiyo});
    int eda = 0;
    for (const InvoiceLine& l : lines) {
        QString typed = l.hin;
        const QString code = ZeroPad13(typed);
        const QVariant name = one(QStringLiteral("SELECT Namae FROM Hin WHERE Code = ?"), {code});
        const qint64 gaku = l.gaku != 0 ? l.gaku : l.suu * l.tanka;
        exec(QStringLiteral("INSERT INTO Dud (Dno, Eda, EigCode, Kubun, Hizuke, TorCode, HinCode, HinNamae, Suu, UTanka, "
                            "UGaku, STanka, sGaku, ZeiFlag, ZeiGaku, Getudo, ThiFlag) "
                            "VALUES (?, ?, 1, ?, ?, ?, ?, ?, ?, ?, ?, 0, 0, ?, ?, ?, -1)"),
             {dno, ++eda, l.kubun, d, tor, code, name.isValid() ? name.toString() : QStringLiteral("商品"), l.suu,
              yen(l.tanka), yen(gaku), l.zeiFlag, yen(l.zei), getudo});
    }
}

QString Recorded::at(int page, int x, int y) const
{
    const QString prefix = QStringLiteral("T %1,%2 ").arg(x).arg(y);
    for (const QString& e : rec.page(page))
        if (e.startsWith(prefix)) return e.mid(prefix.size());
    return QString();
}
