#include "LedgerFixture.h"
#include "ledgers/LedgerBatch.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "support/StoreSnapshot.h"

namespace {
QVariant money(qint64 yen) { return Money::fromYen(yen).toStore(); }
}

LedgerCompany::LedgerCompany(int startMonth, int year)
    : company_(std::make_unique<TempCompany>(year, startMonth))
{
    EXPECT_TRUE(company_->open());
    Session& s = session();
    s.Nendo = year;
    s.sTuki = static_cast<short>(startMonth);
    s.eTuki = static_cast<short>(startMonth == 1 ? 12 : startMonth - 1);
    s.EigCode = 1;
    s.Zeiritu = Money::fromYen(8);
    s.TaxRateNew = Money::fromYen(10);
    s.TaxChangeDate = QDate(2019, 9, 30);
    exec(QStringLiteral("INSERT INTO Tbn (Code, Namae) VALUES (1, '卸'), (2, '小売')"));
    exec(QStringLiteral("INSERT INTO Sbn (Code, Namae) VALUES (1, 'メーカー')"));
}

QSqlDatabase LedgerCompany::db() const { return session().MasterDb; }

void LedgerCompany::exec(const QString& sql, const QVariantList& binds)
{
    QSqlError e;
    EXPECT_EQ(execSql(db(), sql, binds, &e), ErrorClass::None) << sql.toStdString() << " " << e.text().toStdString();
}

void LedgerCompany::addTor(qint64 code, int zeituuchi, int hsuType, int hsu, int tbn)
{
    exec(QStringLiteral("INSERT INTO Tor (Code, TbnCode, Namae, Zeituuchi, HsuType, Hsu, Sime) VALUES (?, ?, ?, ?, ?, ?, 31)"),
         {code, tbn, QStringLiteral("得意先%1").arg(code), zeituuchi, hsuType, hsu});
}

void LedgerCompany::addNou(qint64 tor, qint64 code, int seiFlag, const QString& name)
{
    exec(QStringLiteral("INSERT INTO Nou (TorCode, Code, Namae, SeiFlag) VALUES (?, ?, ?, ?)"), {tor, code, name, seiFlag});
}

void LedgerCompany::addSir(qint64 code, int zeituuchi, int hsuType, int hsu)
{
    exec(QStringLiteral("INSERT INTO Sir (Code, SbnCode, Namae, Zeituuchi, HsuType, Hsu, Sime) VALUES (?, 1, ?, ?, ?, ?, 31)"),
         {code, QStringLiteral("仕入先%1").arg(code), zeituuchi, hsuType, hsu});
}

void LedgerCompany::addHin(const QString& code)
{
    exec(QStringLiteral("INSERT INTO Hin (Code, HbnCode, Namae) VALUES (?, 1, ?)"), {code, QStringLiteral("商品") + code});
}

void LedgerCompany::usual()
{
    addTor(100);
    addSir(7);
    addHin(A);
}

void LedgerCompany::sale(int dno, const QDate& date, qint64 tor, qint64 nou, int getudo, const QList<SlipLine>& lines,
                         int headKubun, int eig)
{
    const QString d = date.toString(Qt::ISODate);
    exec(QStringLiteral("INSERT INTO Dur (Dno, EigCode, Hizuke, TorCode, TorCodeSei, NouCode, Kubun) VALUES (?, ?, ?, ?, ?, ?, ?)"),
         {dno, eig, d, tor, tor, nou, headKubun});
    int eda = 0;
    for (const SlipLine& l : lines)
        exec(QStringLiteral("INSERT INTO Dud (Dno, Eda, EigCode, Kubun, Hizuke, TorCode, HinCode, Suu, UGaku, sGaku, "
                            "ZeiFlag, ZeiGaku, Getudo, ThiFlag) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, 0, ?, ?, ?, -1)"),
             {dno, ++eda, eig, l.kubun, d, tor, l.hin, l.suu, money(l.yen), l.zeiFlag, money(l.zeiYen), getudo});
}

void LedgerCompany::purchase(int dno, const QDate& date, qint64 sir, int getudo, const QList<SlipLine>& lines,
                             int headKubun, int eig)
{
    const QString d = date.toString(Qt::ISODate);
    exec(QStringLiteral("INSERT INTO Dsr (Dno, EigCode, Hizuke, SirCode, Kubun) VALUES (?, ?, ?, ?, ?)"),
         {dno, eig, d, sir, headKubun});
    int eda = 0;
    for (const SlipLine& l : lines)
        exec(QStringLiteral("INSERT INTO Dsd (Dno, Eda, EigCode, Kubun, Hizuke, SirCode, HinCode, Suu, UGaku, sGaku, "
                            "ZeiFlag, ZeiGaku, Getudo, ThiFlag) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, 0, ?, ?, ?, -1)"),
             {dno, ++eda, eig, l.kubun, d, sir, l.hin, l.suu, money(l.yen), l.zeiFlag, money(l.zeiYen), getudo});
}

void LedgerCompany::negate(const QString& head, const QString& lines, int dno, int eig)
{
    exec(QStringLiteral("UPDATE %1 SET Dno=-Dno WHERE Dno=? AND EigCode=?").arg(head), {dno, eig});
    exec(QStringLiteral("UPDATE %1 SET Dno=-Dno, ThiFlag=-1, Suu=-Suu, UTanka=-UTanka, UGaku=-UGaku, Zeigaku=-Zeigaku "
                        "WHERE Dno=? AND EigCode=?").arg(lines),
         {dno, eig});
}

static qint64 yenOf(const QSqlDatabase& db, const QString& sql, const QVariantList& binds)
{
    Query q(db, sql, binds);
    if (!q.next()) return Missing;
    return Money::fromStore(q.value(0)).truncYen();
}

qint64 LedgerCompany::tto(qint64 tor, qint64 nou, int getudo, const QString& column, int eig) const
{
    return yenOf(db(), QStringLiteral("SELECT %1 FROM TtoD WHERE TorCode=? AND NouCode=? AND Getudo=? AND EigCode=?").arg(column),
                 {tor, nou, getudo, eig});
}

qint64 LedgerCompany::tsi(qint64 sir, int getudo, const QString& column, int eig) const
{
    return yenOf(db(), QStringLiteral("SELECT %1 FROM TsiD WHERE SirCode=? AND Getudo=? AND EigCode=?").arg(column),
                 {sir, getudo, eig});
}

qint64 LedgerCompany::thi(const QString& hin, int getudo, const QString& column, int eig) const
{
    // Quantities are plain counts; amounts come back in yen.
    const bool quantity = column.endsWith(QLatin1String("Suu"), Qt::CaseInsensitive);
    Query q(db(), QStringLiteral("SELECT %1 FROM ThiD WHERE HinCode=? AND Getudo=? AND EigCode=?").arg(column), {hin, getudo, eig});
    if (!q.next()) return Missing;
    return quantity ? q.value(0).toLongLong() : Money::fromStore(q.value(0)).truncYen();
}

template <class One>
static QString joined(const QStringList& columns, One one)
{
    QStringList out;
    for (const QString& c : columns) out << QString::number(one(c));
    return out.join(QLatin1Char('/'));
}

QString LedgerCompany::tto(qint64 tor, qint64 nou, int getudo, const QStringList& columns, int eig) const
{
    return joined(columns, [&](const QString& c) { return tto(tor, nou, getudo, c, eig); });
}

QString LedgerCompany::tsi(qint64 sir, int getudo, const QStringList& columns, int eig) const
{
    return joined(columns, [&](const QString& c) { return tsi(sir, getudo, c, eig); });
}

QString LedgerCompany::thi(const QString& hin, int getudo, const QStringList& columns, int eig) const
{
    return joined(columns, [&](const QString& c) { return thi(hin, getudo, c, eig); });
}

qint64 LedgerCompany::zan(const QString& head, const QString& where, const QVariantList& binds) const
{
    Query q(db(), QStringLiteral("SELECT Zan FROM %1 WHERE %2").arg(head, where), binds);
    if (!q.next()) return Missing;
    return head == QLatin1String("Thi") ? q.value(0).toLongLong() : Money::fromStore(q.value(0)).truncYen();
}

qint64 LedgerCompany::count(const QString& sql, const QVariantList& binds) const
{
    Query q(db(), sql, binds);
    return q.next() ? q.value(0).toLongLong() : -1;
}

QStringList LedgerCompany::dump() const { return storeFileRows(QStringLiteral("%1/SLIP.db").arg(session().Nendo)); }

QStringList LedgerCompany::batch()
{
    QStringList texts;
    QString error;
    EXPECT_TRUE(runLedgerProcessing([&](const QString& t) { texts << t; }, &error)) << error.toStdString();
    return texts;
}
