#pragma once
// Rows of the master tables as the master forms write them: each value converted the way its
// column is typed, and statements built only from names of the store's own layout, with
// every value bound.
#include <optional>
#include <QList>
#include <QSqlDatabase>
#include <QSqlError>
#include <QString>
#include <QVariant>
#include <QVariantMap>
#include "store/Sql.h"

struct ColumnValue {
    QString column;
    QVariant value;
};
using ColumnValues = QList<ColumnValue>;

// The text of a box as its column keeps it: text through EmptyToSpace, short and long
// through ToInt16 and ToInt32, money through ToCur. A number beyond its column's range, or a
// name the table does not have, gives nothing.
std::optional<QVariant> StoreValue(const QString& table, const QString& column, const QString& text);
// True for a short, long or money column.
bool IsNumberColumn(const QString& table, const QString& column);
bool IsMoneyColumn(const QString& table, const QString& column);

// INSERT of the values. Unknown names run nothing and give Other.
ErrorClass InsertRow(const QSqlDatabase& db, const QString& table, const ColumnValues& values,
                     QSqlError* error = nullptr);
// The row of `key` (every column of the table's primary key) with `values`: added when it is
// missing, changed when it is there, in one statement, so nothing comes between the look and
// the write. Unknown names or a key that is not the table's run nothing and give Other.
ErrorClass UpsertRow(const QSqlDatabase& db, const QString& table, const ColumnValues& key, const ColumnValues& values,
                     QSqlError* error = nullptr);
// UPDATE of the rows matching every `where` value.
ErrorClass UpdateRows(const QSqlDatabase& db, const QString& table, const ColumnValues& values,
                      const ColumnValues& where, QSqlError* error = nullptr);
ErrorClass DeleteRows(const QSqlDatabase& db, const QString& table, const ColumnValues& where,
                      QSqlError* error = nullptr);
// The first matching row, its column names in lower case; nothing when there is none.
std::optional<QVariantMap> ReadRow(const QSqlDatabase& db, const QString& table, const ColumnValues& where);
// Whether a row matches. A statement that cannot run counts as a row, and *failed says so:
// the callers refuse a deletion they cannot check.
bool AnyRow(const QSqlDatabase& db, const QString& table, const ColumnValues& where, bool* failed = nullptr);
// A column of a row read by ReadRow.
inline QVariant Col(const QVariantMap& row, const QString& column) { return row.value(column.toLower()); }
