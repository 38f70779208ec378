#include "masters/MasterRows.h"

#include <QSqlRecord>
#include <QStringList>

#include "entry/Convert.h"
#include "store/Schema.h"

namespace {
const ColumnDef* columnOf(const QString& table, const QString& column)
{
    const TableDef* def = findTableDef(table);
    return def ? def->column(column) : nullptr;
}

// "a = ? AND b = ?" with the values appended to binds; empty when a name is unknown.
bool whereClause(const TableDef& def, const ColumnValues& where, QString& sql, QVariantList& binds)
{
    QStringList parts;
    for (const ColumnValue& w : where) {
        const ColumnDef* c = def.column(w.column);
        if (!c) return false;
        parts << c->name + QStringLiteral(" = ?");
        binds << w.value;
    }
    if (!parts.isEmpty()) sql += QStringLiteral(" WHERE ") + parts.join(QStringLiteral(" AND "));
    return true;
}
}  // namespace

std::optional<QVariant> StoreValue(const QString& table, const QString& column, const QString& text)
{
    const ColumnDef* c = columnOf(table, column);
    if (!c) return std::nullopt;
    bool ok = true;
    switch (c->type) {
    case 'S': {
        const qint16 v = ToInt16(text, &ok);
        if (!ok) return std::nullopt;
        return QVariant(int(v));
    }
    case 'L': {
        const qint32 v = ToInt32(text, &ok);
        if (!ok) return std::nullopt;
        return QVariant(v);
    }
    case 'M': {
        const Money m = ToCur(text, &ok);
        if (!ok) return std::nullopt;
        return m.toStore();
    }
    default:
        return QVariant(EmptyToSpace(text));
    }
}

bool IsNumberColumn(const QString& table, const QString& column)
{
    const ColumnDef* c = columnOf(table, column);
    return c && (c->type == 'S' || c->type == 'L' || c->type == 'M');
}

bool IsMoneyColumn(const QString& table, const QString& column)
{
    const ColumnDef* c = columnOf(table, column);
    return c && c->type == 'M';
}

ErrorClass InsertRow(const QSqlDatabase& db, const QString& table, const ColumnValues& values, QSqlError* error)
{
    const TableDef* def = findTableDef(table);
    if (!def || values.isEmpty()) return ErrorClass::Other;
    QStringList names, marks;
    QVariantList binds;
    for (const ColumnValue& v : values) {
        const ColumnDef* c = def->column(v.column);
        if (!c) return ErrorClass::Other;
        names << c->name;
        marks << QStringLiteral("?");
        binds << v.value;
    }
    return execSql(db, QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                           .arg(def->name, names.join(QLatin1Char(',')), marks.join(QLatin1Char(','))),
                   binds, error);
}

ErrorClass UpsertRow(const QSqlDatabase& db, const QString& table, const ColumnValues& key, const ColumnValues& values,
                     QSqlError* error)
{
    const TableDef* def = findTableDef(table);
    if (!def || values.isEmpty() || key.size() != def->key.size()) return ErrorClass::Other;
    QStringList names, marks, keyNames, sets;
    QVariantList binds;
    for (const ColumnValue& v : key + values) {
        const ColumnDef* c = def->column(v.column);
        if (!c) return ErrorClass::Other;
        names << c->name;
        marks << QStringLiteral("?");
        binds << v.value;
    }
    for (const ColumnValue& k : key) {
        const ColumnDef* c = def->column(k.column);
        if (!def->key.contains(c->name, Qt::CaseInsensitive)) return ErrorClass::Other;
        keyNames << c->name;
    }
    for (const ColumnValue& v : values) sets << def->column(v.column)->name + QStringLiteral(" = excluded.") + def->column(v.column)->name;
    return execSql(db, QStringLiteral("INSERT INTO %1 (%2) VALUES (%3) ON CONFLICT (%4) DO UPDATE SET %5")
                           .arg(def->name, names.join(QLatin1Char(',')), marks.join(QLatin1Char(',')),
                                keyNames.join(QLatin1Char(',')), sets.join(QLatin1Char(','))),
                   binds, error);
}

ErrorClass UpdateRows(const QSqlDatabase& db, const QString& table, const ColumnValues& values,
                      const ColumnValues& where, QSqlError* error)
{
    const TableDef* def = findTableDef(table);
    if (!def || values.isEmpty()) return ErrorClass::Other;
    QStringList sets;
    QVariantList binds;
    for (const ColumnValue& v : values) {
        const ColumnDef* c = def->column(v.column);
        if (!c) return ErrorClass::Other;
        sets << c->name + QStringLiteral(" = ?");
        binds << v.value;
    }
    QString sql = QStringLiteral("UPDATE %1 SET %2").arg(def->name, sets.join(QLatin1Char(',')));
    if (!whereClause(*def, where, sql, binds)) return ErrorClass::Other;
    return execSql(db, sql, binds, error);
}

ErrorClass DeleteRows(const QSqlDatabase& db, const QString& table, const ColumnValues& where, QSqlError* error)
{
    const TableDef* def = findTableDef(table);
    if (!def || where.isEmpty()) return ErrorClass::Other;
    QString sql = QStringLiteral("DELETE FROM ") + def->name;
    QVariantList binds;
    if (!whereClause(*def, where, sql, binds)) return ErrorClass::Other;
    return execSql(db, sql, binds, error);
}

std::optional<QVariantMap> ReadRow(const QSqlDatabase& db, const QString& table, const ColumnValues& where)
{
    const TableDef* def = findTableDef(table);
    if (!def) return std::nullopt;
    QString sql = QStringLiteral("SELECT * FROM ") + def->name;
    QVariantList binds;
    if (!whereClause(*def, where, sql, binds)) return std::nullopt;
    Query q(db, sql + QStringLiteral(" LIMIT 1"), binds);
    if (!q.next()) return std::nullopt;
    QVariantMap row;
    const QSqlRecord rec = q.raw().record();
    for (int i = 0; i < rec.count(); ++i) row.insert(rec.fieldName(i).toLower(), q.value(i));
    return row;
}

bool AnyRow(const QSqlDatabase& db, const QString& table, const ColumnValues& where, bool* failed)
{
    if (failed) *failed = false;
    const TableDef* def = findTableDef(table);
    QString sql = QStringLiteral("SELECT 1 FROM ") + (def ? def->name : QString());
    QVariantList binds;
    if (!def || !whereClause(*def, where, sql, binds)) {
        if (failed) *failed = true;
        return true;
    }
    Query q(db, sql + QStringLiteral(" LIMIT 1"), binds);
    if (q.next()) return true;
    if (!q.ok()) {
        if (failed) *failed = true;
        return true;
    }
    return false;
}
