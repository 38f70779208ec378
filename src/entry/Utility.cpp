#include "entry/Utility.h"
#include <functional>

#include <QDateTime>
#include "entry/Convert.h"
#include "store/Session.h"
#include "store/Schema.h"
#include "store/Sql.h"

namespace {
ZipChooser& chooser()
{
    static ZipChooser c;
    return c;
}

QSqlDatabase db() { return session().MasterDb; }

// Table names are pasted into the statement, so only the store's own are taken.
QString knownTable(const QString& table)
{
    const TableDef* def = findTableDef(table);
    return def ? def->name : QString();
}

const QString kNou = QStringLiteral(" WHERE TorCode = ? AND Code = ?");
}  // namespace

QString HinName(const QString& code)
{
    Query q(db(), QStringLiteral("SELECT Code,Namae FROM Hin WHERE Code = ?"), {code});
    return q.next() ? NullToEmpty(q.value(1)) : QStringLiteral("NoMatch");
}

QList<ListEntry> TableName(const QString& table, qint64 code)
{
    const QString t = knownTable(table);
    if (t.isEmpty()) return {};
    Query q(db(), QStringLiteral("SELECT Namae FROM %1 WHERE Code = ?").arg(t), {code});
    if (!q.next()) return {};
    return {ListEntry{NullToEmpty(q.value(0)), code}};
}

QList<ListEntry> TorNameList(qint64 code)
{
    Query q(db(), QStringLiteral("SELECT Namae,Tenmei FROM Tor WHERE Code = ?"), {code});
    if (!q.next()) return {};
    QString text = NullToEmpty(q.value(0));
    const QString tenmei = NullToEmpty(q.value(1));
    if (HasText(tenmei)) text += QStringLiteral("･") + tenmei;
    return {ListEntry{text, code}};
}

QStringList SideCaption(const QString& side, qint64 code)
{
    if (code != 0) return {};
    return {side == QLatin1String("URI") ? QStringLiteral("売掛") : QStringLiteral("買掛"), QStringLiteral("現金")};
}

QString CodeName(const QString& table, qint64 code)
{
    const QString t = knownTable(table);
    if (t.isEmpty()) return QStringLiteral(" ");
    Query q(db(), QStringLiteral("SELECT Code,Namae FROM %1 WHERE Code = ?").arg(t), {code});
    return q.next() ? NullToEmpty(q.value(1)) : QStringLiteral(" ");
}

QString NouName(qint64 tor, qint64 nou)
{
    Query q(db(), QStringLiteral("SELECT Namae FROM Nou") + kNou, {tor, nou});
    return q.next() ? EmptyToSpace(NullToEmpty(q.value(0))) : QStringLiteral(" ");
}

QString NouShop(qint64 tor, qint64 nou)
{
    Query q(db(), QStringLiteral("SELECT Tenmei FROM Nou") + kNou, {tor, nou});
    return q.next() ? EmptyToSpace(NullToEmpty(q.value(0))) : QStringLiteral(" ");
}

QString NouNameShop(qint64 tor, qint64 nou)
{
    Query q(db(), QStringLiteral("SELECT Namae,Tenmei FROM Nou") + kNou, {tor, nou});
    if (!q.next()) return QStringLiteral(" ");
    // Stored empty texts are one blank; a missing shop name adds nothing.
    const QString tenmei = NullToEmpty(q.value(1));
    return NullToEmpty(q.value(0)) + (HasText(tenmei) ? tenmei : QString());
}

QString NouBilling(qint64 tor, qint64 nou)
{
    Query q(db(), QStringLiteral("SELECT SeiFlag FROM Nou") + kNou, {tor, nou});
    return q.next() ? NullToEmpty(q.value(0)) : QString();
}

bool NouCodes(qint64 tor)
{
    Query q(db(), QStringLiteral("SELECT Code FROM Nou WHERE TorCode = ?"), {tor});
    return q.next();
}

int TorClass(qint64 code)
{
    Query q(db(), QStringLiteral("SELECT Code,TbnCode FROM Tor WHERE Code = ?"), {code});
    return q.next() ? q.value(1).toInt() : 0;
}

int SirClass(qint64 code)
{
    Query q(db(), QStringLiteral("SELECT Code,SbnCode FROM Sir WHERE Code = ?"), {code});
    return q.next() ? q.value(1).toInt() : 0;
}

namespace {
// Partner, its class name and its closing day; `sime` turns the row into the closing day text.
PartnerRecord partnerRecord(const QString& sql, qint64 code, const std::function<QString(const Query&)>& sime)
{
    PartnerRecord r;
    Query q(db(), sql, {code});
    if (!q.next()) {
        r.sime = QStringLiteral("0");
        return r;
    }
    r.classCode = q.value(1).toInt();
    r.name = NullToEmpty(q.value(2));
    r.className = EmptyToSpace(NullToEmpty(q.value(3)));
    r.sime = sime(q);
    return r;
}
}

PartnerRecord TorRecord(qint64 code)
{
    return partnerRecord(QStringLiteral("SELECT Tor.Code, Tor.TbnCode, Tor.Namae, Tbn.Namae, Tor.Sime "
                                        "FROM Tor LEFT JOIN Tbn ON Tor.TbnCode = Tbn.Code WHERE Tor.Code = ?"),
                         code, [](const Query& q) { return ToText(q.value(4).toLongLong()); });
}

PartnerRecord SirRecord(qint64 code)
{
    // The supplier's own closing day counts only with SimeFlag 2; otherwise the company's.
    return partnerRecord(QStringLiteral("SELECT Sir.Code, Sir.SbnCode, Sir.Namae, Sbn.Namae, Sir.Sime, Sir.SimeFlag "
                                        "FROM Sir LEFT JOIN Sbn ON Sir.SbnCode = Sbn.Code WHERE Sir.Code = ?"),
                         code, [](const Query& q) {
                             return q.value(5).toInt() == 2 ? ToText(q.value(4).toLongLong()) : ToText(session().Sime);
                         });
}

QString ChiName(qint64 code)
{
    Query q(db(), QStringLiteral("SELECT Namae FROM Chi WHERE Code = ?"), {code});
    return q.next() ? NullToEmpty(q.value(0)) : QString();
}

QString ZipAddress(const QString& code)
{
    const QString c = code.trimmed();
    const QString table = !c.isEmpty() && c.size() <= 5 ? QStringLiteral("Zip") : QStringLiteral("Zip7");
    bool isNumber = false;
    const qlonglong n = c.toLongLong(&isNumber);
    // Text that is not a number matches no integer code.
    Query q(db(), QStringLiteral("SELECT Addr FROM %1 WHERE Code = ?").arg(table),
            {isNumber ? QVariant(n) : QVariant(c)});
    if (!q.next()) return QString();
    const QString first = NullToEmpty(q.value(0));
    if (!q.next()) return first;
    return chooser() ? chooser()(table, c) : QString();
}

void setZipChooser(ZipChooser c) { chooser() = std::move(c); }

QString StampText()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmss"));
}
