#include "entry/ChoiceLists.h"

#include <QSqlRecord>
#include "entry/Convert.h"
#include "store/Session.h"
#include "store/Schema.h"
#include "store/Sql.h"

namespace {
QStringList texts(std::initializer_list<const char*> l)
{
    QStringList out;
    for (const char* t : l) out << QString::fromUtf8(t);
    return out;
}
}  // namespace

QStringList fixedListTexts(FixedList list)
{
    switch (list) {
    case FixedList::Atukai: return texts({"電信", "文書"});
    case FixedList::Furikomi: return texts({"同銀行", "他銀行", "他支局"});
    case FixedList::HsuType: return texts({"円未満", "10円未満", "百円未満", "千円未満"});
    case FixedList::Hsu: return texts({"切り捨て", "四捨五入", "切り上げ"});
    case FixedList::Keisho: return texts({"様", "御中"});
    case FixedList::KaisyuTuki: return texts({"当月", "翌月", "翌々月"});
    case FixedList::Torihiki: return texts({"売掛", "現金"});
    // two half-width blanks inside: the width of the slip columns
    case FixedList::Kingaku: return texts({"現  金", "小切手", "振  込", "手  形", "相  殺", "調  整"});
    case FixedList::Zei: return texts({"外税", "内税", "非課税"});
    case FixedList::Hanei: return texts({"反映しない", "反映する"});
    case FixedList::Yokin: return texts({"普通", "当座"});
    case FixedList::Tesuryo: return texts({"相手", "当社"});
    case FixedList::Zeituuchi: return texts({"請求書毎", "納品書毎", "明細行毎", "免税"});
    case FixedList::Seikyu: return texts({"得意先", "納入先"});
    case FixedList::Hiz: return texts({"和暦", "西暦"});
    }
    return {};
}

QStringList orderListTexts(const QString& key)
{
    QStringList out = texts({"ｺｰﾄﾞ順"});
    if (key == QLatin1String("URI") || key == QLatin1String("TAN"))
        out << texts({"売上順", "全ての得意先"});
    else if (key == QLatin1String("KAI"))
        out << texts({"買上順", "全ての仕入先"});
    return out;
}

QList<ListEntry> NumberedEntries(const QStringList& list)
{
    QList<ListEntry> out;
    for (int i = 0; i < list.size(); ++i) out << ListEntry{list[i], i + 1};
    return out;
}

int TorihikiKubun(int listIndex) { return listIndex < 0 ? 0 : listIndex; }
int TorihikiListIndex(int kubun) { return kubun == 0 || kubun == 1 ? kubun : -1; }

QList<ListEntry> FillEntries(const QSqlDatabase& db, const QString& sql, const QVariantList& binds,
                             const QString& textField, const QString& codeField)
{
    QList<ListEntry> out;
    Query q(db, sql, binds);
    while (q.next()) out << ListEntry{NullToEmpty(q.value(textField)), q.value(codeField).toLongLong()};
    return out;
}

QList<ListEntry> CodeTableEntries(const QString& table)
{
    const TableDef* def = findTableDef(table);
    if (!def) return {};
    return FillEntries(session().MasterDb, QStringLiteral("SELECT Code,Namae FROM %1 ORDER BY Code").arg(def->name),
                       {}, QStringLiteral("Namae"), QStringLiteral("Code"));
}

namespace {
QList<ListEntry> partnerEntries(const char* table, const char* classCol, std::optional<int> cls, bool shop)
{
    const QString t = QString::fromLatin1(table), c = QString::fromLatin1(classCol);
    QString sql = QStringLiteral("SELECT Code,%1,Namae%2 FROM %3").arg(c, shop ? QStringLiteral(",Tenmei") : QString(), t);
    QVariantList binds;
    if (cls) {
        sql += QStringLiteral(" WHERE %1 = ?").arg(c);
        binds << *cls;
    }
    sql += QStringLiteral(" ORDER BY Kana");
    if (!shop) return FillEntries(session().MasterDb, sql, binds, QStringLiteral("Namae"), QStringLiteral("Code"));
    QList<ListEntry> out;
    Query q(session().MasterDb, sql, binds);
    while (q.next()) {
        QString text = NullToEmpty(q.value(QStringLiteral("Namae")));
        const QString tenmei = NullToEmpty(q.value(QStringLiteral("Tenmei")));
        if (HasText(tenmei)) text += QStringLiteral("･") + tenmei;
        out << ListEntry{text, q.value(QStringLiteral("Code")).toLongLong()};
    }
    return out;
}
}  // namespace

QList<ListEntry> TorEntries(std::optional<int> tbn) { return partnerEntries("Tor", "TbnCode", tbn, false); }
QList<ListEntry> SirEntries(std::optional<int> sbn) { return partnerEntries("Sir", "SbnCode", sbn, false); }
QList<ListEntry> TorShopEntries(std::optional<int> tbn) { return partnerEntries("Tor", "TbnCode", tbn, true); }

QList<ListEntry> NouEntries(qint64 tor)
{
    QList<ListEntry> out;
    Query q(session().MasterDb, QStringLiteral("SELECT Code,Tenmei,Ryaku FROM Nou WHERE TorCode = ?"), {tor});
    while (q.next()) {
        QString text = NullToEmpty(q.value(QStringLiteral("Ryaku")));
        if (!HasText(text)) text = NullToEmpty(q.value(QStringLiteral("Tenmei")));
        out << ListEntry{text, q.value(QStringLiteral("Code")).toLongLong()};
    }
    return out;
}
