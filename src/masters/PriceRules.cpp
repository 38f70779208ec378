#include "masters/PriceRules.h"

#include "entry/Convert.h"
#include "masters/MasterRows.h"

namespace {
ColumnValues keyOf(const PriceKind& kind, const PricePartner& p, const QString& hin)
{
    ColumnValues k = {{kind.partnerColumn, p.code}};
    if (kind.withNou) k << ColumnValue{QStringLiteral("NouCode"), p.nou};
    k << ColumnValue{QStringLiteral("HinCode"), hin};
    return k;
}
}  // namespace

const PriceKind* priceKind(const QString& key)
{
    static const PriceKind kinds[] = {
        {QStringLiteral("Tka"), QStringLiteral("Tor"), QStringLiteral("TorCode"), false,
         QStringLiteral("得意先別単価の設定"), QStringLiteral("得意先")},
        {QStringLiteral("Ska"), QStringLiteral("Sir"), QStringLiteral("SirCode"), false,
         QStringLiteral("仕入先別単価の設定"), QStringLiteral("仕入先")},
        {QStringLiteral("Nka"), QStringLiteral("Tor"), QStringLiteral("TorCode"), true,
         QStringLiteral("納入先別単価"), QStringLiteral("得意先")},
    };
    for (const PriceKind& k : kinds)
        if (k.table == key) return &k;
    return nullptr;
}

QList<PriceLine> showPriceList(const QSqlDatabase& db, const PriceKind& kind, const PricePartner& p)
{
    QString sql = QStringLiteral("SELECT %1.HinCode, Hin.Namae, %1.Tanka FROM %1 INNER JOIN Hin ON %1.HinCode = Hin.Code"
                                 " WHERE %1.%2 = ?").arg(kind.table, kind.partnerColumn);
    QVariantList binds = {p.code};
    if (kind.withNou) {
        sql += QStringLiteral(" AND %1.NouCode = ?").arg(kind.table);
        binds << p.nou;
    }
    Query q(db, sql + QStringLiteral(" ORDER BY %1.HinCode").arg(kind.table), binds);
    QList<PriceLine> lines;
    while (q.next())
        lines << PriceLine{NullToEmpty(q.value(0)), NullToEmpty(q.value(1)), Money::fromStore(q.value(2))};
    return lines;
}

ErrorClass registerPrice(const QSqlDatabase& db, const PriceKind& kind, const PricePartner& p,
                         const QString& storedHinCode, Money tanka, QSqlError* error)
{
    const ColumnValues key = keyOf(kind, p, storedHinCode);
    const ColumnValues price = {{QStringLiteral("Tanka"), tanka.toStore()}};
    return UpsertRow(db, kind.table, key, price, error);
}

ErrorClass erasePrice(const QSqlDatabase& db, const PriceKind& kind, const PricePartner& p,
                      const QString& storedHinCode, QSqlError* error)
{
    return DeleteRows(db, kind.table, keyOf(kind, p, storedHinCode), error);
}

std::optional<QString> pricePartnerName(const QSqlDatabase& db, const PriceKind& kind, qint64 code)
{
    const std::optional<QVariantMap> row = ReadRow(db, kind.partnerTable, {{QStringLiteral("Code"), code}});
    if (!row) return std::nullopt;
    return NullToEmpty(Col(*row, QStringLiteral("Namae")));
}
