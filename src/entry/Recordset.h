#pragma once
// `myrs` of the entry forms: one table ordered by its numeric key. Like the recordsets the
// forms were written against, it knows the keys it had at the last Requery (a row another
// station adds stays unseen until then) and reads the row itself when it moves onto it.
#include <optional>
#include <QList>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlRecord>
#include <QString>
#include <QVariantMap>
#include "store/Sql.h"

class Recordset {
public:
    Recordset() = default;
    // "SELECT * FROM <table> ORDER BY <key>". A table the store does not have opens nothing,
    // and every later call does nothing.
    bool open(const QSqlDatabase& db, const QString& table, const QString& keyColumn = QStringLiteral("Code"));
    bool isOpen() const { return open_; }
    QString table() const { return table_; }
    QSqlDatabase database() const { return db_; }

    // Reads the keys again; there is no current row afterwards.
    void Requery();
    int RecordCount() const { return int(keys_.size()); }
    bool isEmpty() const { return keys_.isEmpty(); }
    const QList<qint64>& keys() const { return keys_; }

    // Moves onto the row with that key. NoMatch() is the opposite of the result; without a
    // match there is no current row.
    bool FindFirst(qint64 key);
    bool NoMatch() const { return noMatch_; }
    bool MoveLast();
    bool hasCurrent() const { return current_.has_value(); }
    qint64 currentKey() const { return current_.value_or(0); }
    // A column of the current row as read when the recordset moved onto it; null without one.
    QVariant value(const QString& column) const;

    // Editing: AddNew or Edit, setValue for each column, then Update.
    void AddNew();
    void Edit();
    void setValue(const QString& column, const QVariant& value);
    void CancelUpdate();
    // Writes the pending row in one statement. A new row joins the keys; the current row
    // stays where it was. The edit stays pending after a failure, so a caller can change a
    // value and update again.
    ErrorClass Update();
    // Deletes the current row.
    ErrorClass Delete();
    QSqlError lastError() const { return error_; }

private:
    bool readRow(qint64 key);
    enum class Pending { None, Add, Edit };

    QSqlDatabase db_;
    QString table_;
    QString key_;
    QStringList columns_;
    bool open_ = false;
    QList<qint64> keys_;
    std::optional<qint64> current_;
    QVariantMap row_;
    bool noMatch_ = true;
    Pending pending_ = Pending::None;
    QVariantMap edits_;
    QStringList editOrder_;
    QSqlError error_;
};
