#include "reports/MeiT.h"
#include <QHash>
#include <QSet>
#include "entry/Convert.h"
#include "entry/Recordset.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {

// The sums by partner and line kind. The table and partner names are the code's own words.
// A posted slip that was amended or deleted waits as its negative image (sales negated, cost
// not) until the next ledger run; the list shows the slips as they stand, so it leaves the
// image out.
QString sumsStatement(const QString& code)
{
    if (code == QLatin1String("KAI"))
        return QStringLiteral("SELECT Sir.Code, Sir.Namae AS aNamae, Dsd.Kubun, SUM(Dsd.UGaku) AS tUGaku, "
                              "SUM(Dsd.SGaku) AS tSGaku FROM Dsd INNER JOIN Sir ON Dsd.SirCode=Sir.Code "
                              "WHERE Hizuke>=? AND Hizuke<=? AND EigCode=? AND Dsd.Dno>0 GROUP BY Sir.Code,Dsd.Kubun");
    if (code == QLatin1String("TAN"))
        return QStringLiteral("SELECT Dur.TanCode AS Code, Tan.Namae AS aNamae, Dud.Kubun, SUM(Dud.UGaku) AS tUGaku, "
                              "SUM(Dud.SGaku) AS tSGaku FROM (Dud INNER JOIN Dur ON (Dud.EigCode=Dur.EigCode) "
                              "AND (Dud.Dno=Dur.Dno)) INNER JOIN Tan ON Dur.TanCode=Tan.Code "
                              "WHERE Dur.Hizuke>=? AND Dur.Hizuke<=? AND Dur.EigCode=? AND Dud.Dno>0 "
                              "GROUP BY Dur.TanCode,Dud.Kubun");
    return QStringLiteral("SELECT Tor.Code, Tor.Namae AS aNamae, Dud.Kubun, SUM(Dud.UGaku) AS tUGaku, "
                          "SUM(Dud.SGaku) AS tSGaku FROM Dud INNER JOIN Tor ON Dud.TorCode=Tor.Code "
                          "WHERE Hizuke>=? AND Hizuke<=? AND EigCode=? AND Dud.Dno>0 GROUP BY Tor.Code,Dud.Kubun");
}

MeiTRow rowOf(const Query& q)
{
    MeiTRow r;
    r.Code = q.value(QStringLiteral("Code")).toLongLong();
    r.Namae = NullToEmpty(q.value(QStringLiteral("Namae")));
    r.UGaku = Money::fromStore(q.value(QStringLiteral("UGaku")));
    r.NGaku = Money::fromStore(q.value(QStringLiteral("NGaku")));
    r.HGaku = Money::fromStore(q.value(QStringLiteral("HGaku")));
    r.KGaku = Money::fromStore(q.value(QStringLiteral("KGaku")));
    r.SGaku = Money::fromStore(q.value(QStringLiteral("SGaku")));
    r.Arari = Money::fromStore(q.value(QStringLiteral("Arari")));
    return r;
}

bool readMeiT(const QSqlDatabase& db, const QString& orderBy, QList<MeiTRow>* rows, QSqlError* e)
{
    Query q(db, QStringLiteral("SELECT * FROM MeiT ORDER BY ") + orderBy);
    if (!q.ok()) return *e = q.error(), false;
    rows->clear();
    while (q.next()) *rows << rowOf(q);
    return true;
}

// Writes the partners a run touched: a row that was there is edited, a new one added.
bool storeRow(const QSqlDatabase& db, const MeiTRow& r, bool existed, QSqlError* e)
{
    const QVariantList money{r.UGaku.toStore(), r.NGaku.toStore(), r.HGaku.toStore(), r.KGaku.toStore(),
                             r.SGaku.toStore(), r.Arari.toStore()};
    if (existed)
        return execSql(db, QStringLiteral("UPDATE MeiT SET UGaku=?, NGaku=?, HGaku=?, KGaku=?, SGaku=?, Arari=? WHERE Code=?"),
                       money + QVariantList{r.Code}, e) == ErrorClass::None;
    return execSql(db, QStringLiteral("INSERT INTO MeiT (Code, Namae, UGaku, NGaku, HGaku, KGaku, SGaku, Arari) "
                                      "VALUES (?, ?, ?, ?, ?, ?, ?, ?)"),
                   QVariantList{r.Code, EmptyToSpace(r.Namae)} + money, e) == ErrorClass::None;
}

} // namespace

double MeiTRow::rate() const
{
    const Money n = net();
    return n.raw() == 0 ? 0.0 : Arari / n * 100.0;
}

MeiTResult FillMeiT(const MeiTRequest& r, QList<MeiTRow>* rows, QString* error)
{
    const QSqlDatabase db = session().MasterDb;
    QSqlError e;
    auto fail = [&](const QSqlError& err) {
        if (error) *error = StoreErrorText(err);
        return MeiTResult::Failed;
    };
    UnitOfWork unit(db);
    if (!unit.active()) return fail(unit.error());
    if (execSql(db, QStringLiteral("DELETE FROM MeiT"), {}, &e) != ErrorClass::None) return fail(e);
    // Every customer, also for suppliers and staff: a supplier whose code a customer has
    // shares that customer's row.
    if (r.order == 3
        && execSql(db, QStringLiteral("INSERT INTO MeiT ( Code, Namae ,UGaku ,NGaku ,HGaku ,KGaku ,SGaku ,Arari ) "
                                      " SELECT Tor.Code, Tor.Namae, 0, 0, 0, 0, 0, 0  FROM Tor "),
                   {}, &e) != ErrorClass::None)
        return fail(e);

    QList<MeiTRow> seeded;
    if (!readMeiT(db, QStringLiteral("Code"), &seeded, &e)) return fail(e);
    QHash<qint64, MeiTRow> partners;
    QHash<qint64, bool> existed;
    for (const MeiTRow& m : seeded) {
        partners.insert(m.Code, m);
        existed.insert(m.Code, true);
    }
    QList<qint64> touched;   // in the order the sums came
    QSet<qint64> seen;

    Query q(db, sumsStatement(r.code), {r.from.toString(Qt::ISODate), r.to.toString(Qt::ISODate), r.office});
    if (!q.ok()) return fail(q.error());
    bool any = false;
    while (q.next()) {
        any = true;
        const qint64 code = q.value(0).toLongLong();
        if (!partners.contains(code)) {
            MeiTRow fresh;
            fresh.Code = code;
            fresh.Namae = NullToEmpty(q.value(1));
            partners.insert(code, fresh);
        }
        MeiTRow& m = partners[code];
        const Money amount = Money::fromStore(q.value(3));
        switch (q.value(2).toInt()) {
        case 0: m.UGaku = amount; break;
        case 1: m.HGaku = amount; break;
        case 2: m.NGaku = amount; break;
        case 3: m.KGaku = amount; break;
        default: break;
        }
        m.SGaku += Money::fromStore(q.value(4));
        m.Arari = m.net() - m.SGaku;
        if (!seen.contains(code)) {
            seen.insert(code);
            touched << code;
        }
    }
    if (!any) {
        rows->clear();
        return unit.commit() ? MeiTResult::NoSlips : fail(db.lastError());
    }
    for (qint64 code : touched)
        if (!storeRow(db, partners[code], existed.value(code), &e)) return fail(e);
    const QString orderBy = r.order == 2 ? QStringLiteral("UGaku DESC,Code") : QStringLiteral("Code");
    if (!readMeiT(db, orderBy, rows, &e)) return fail(e);
    if (!unit.commit()) return fail(db.lastError());
    return MeiTResult::Done;
}
