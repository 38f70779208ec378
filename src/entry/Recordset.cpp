#include "entry/Recordset.h"

#include <algorithm>
#include "store/Schema.h"

bool Recordset::open(const QSqlDatabase& db, const QString& table, const QString& keyColumn)
{
    *this = Recordset();
    const TableDef* def = findTableDef(table);
    // Names go into the statement text, so only names of the store's own layout are taken.
    if (!def || !def->column(keyColumn)) return false;
    db_ = db;
    table_ = def->name;
    key_ = def->column(keyColumn)->name;
    for (const ColumnDef& c : def->columns) columns_ << c.name;
    open_ = true;
    Requery();
    return true;
}

void Recordset::Requery()
{
    keys_.clear();
    current_.reset();
    row_.clear();
    CancelUpdate();
    if (!open_) return;
    Query q(db_, QStringLiteral("SELECT %1 FROM %2 ORDER BY %1").arg(key_, table_));
    while (q.next()) keys_ << q.value(0).toLongLong();
    if (!q.ok()) error_ = q.error();
}

bool Recordset::readRow(qint64 key)
{
    Query q(db_, QStringLiteral("SELECT * FROM %1 WHERE %2 = ?").arg(table_, key_), {key});
    if (!q.next()) {
        if (!q.ok()) error_ = q.error();
        return false;
    }
    row_.clear();
    const QSqlRecord rec = q.raw().record();
    for (int i = 0; i < rec.count(); ++i) row_.insert(rec.fieldName(i).toLower(), q.value(i));
    current_ = key;
    return true;
}

bool Recordset::FindFirst(qint64 key)
{
    current_.reset();
    row_.clear();
    noMatch_ = true;
    if (!open_ || !std::binary_search(keys_.begin(), keys_.end(), key)) return false;
    // Deleted by another station since the last Requery: as good as not there.
    if (!readRow(key)) {
        keys_.removeOne(key);
        return false;
    }
    noMatch_ = false;
    return true;
}

bool Recordset::MoveLast()
{
    current_.reset();
    row_.clear();
    return open_ && !keys_.isEmpty() && readRow(keys_.last());
}

QVariant Recordset::value(const QString& column) const
{
    return row_.value(column.toLower());
}

void Recordset::AddNew()
{
    CancelUpdate();
    if (open_) pending_ = Pending::Add;
}

void Recordset::Edit()
{
    CancelUpdate();
    if (open_ && current_) pending_ = Pending::Edit;
}

void Recordset::setValue(const QString& column, const QVariant& value)
{
    if (pending_ == Pending::None) return;
    const auto it = std::find_if(columns_.begin(), columns_.end(), [&](const QString& c) {
        return c.compare(column, Qt::CaseInsensitive) == 0;
    });
    if (it == columns_.end()) return;   // not a column of this table
    if (!edits_.contains(*it)) editOrder_ << *it;
    edits_.insert(*it, value);
}

void Recordset::CancelUpdate()
{
    pending_ = Pending::None;
    edits_.clear();
    editOrder_.clear();
}

ErrorClass Recordset::Update()
{
    if (pending_ == Pending::None || editOrder_.isEmpty()) return ErrorClass::Other;
    QVariantList binds;
    QString sql;
    if (pending_ == Pending::Add) {
        QStringList marks;
        for (const QString& c : editOrder_) {
            binds << edits_.value(c);
            marks << QStringLiteral("?");
        }
        sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                  .arg(table_, editOrder_.join(QLatin1Char(',')), marks.join(QLatin1Char(',')));
    } else {
        QStringList sets;
        for (const QString& c : editOrder_) {
            binds << edits_.value(c);
            sets << c + QStringLiteral(" = ?");
        }
        binds << *current_;
        sql = QStringLiteral("UPDATE %1 SET %2 WHERE %3 = ?").arg(table_, sets.join(QLatin1Char(',')), key_);
    }
    Query q(db_, sql, binds);
    if (!q.ok()) {
        error_ = q.error();
        return q.errorClass();
    }
    error_ = QSqlError();
    const QVariant newKey = edits_.value(key_);
    if (pending_ == Pending::Add || newKey.isValid()) {
        const qint64 k = newKey.toLongLong();
        if (pending_ == Pending::Edit && current_ && *current_ != k) keys_.removeOne(*current_);
        const auto pos = std::lower_bound(keys_.begin(), keys_.end(), k);
        if (pos == keys_.end() || *pos != k) keys_.insert(pos, k);
        if (pending_ == Pending::Edit) current_ = k;
    }
    const bool edited = pending_ == Pending::Edit;
    CancelUpdate();
    if (edited && current_) readRow(*current_);
    return ErrorClass::None;
}

ErrorClass Recordset::Delete()
{
    if (!open_ || !current_) return ErrorClass::Other;
    Query q(db_, QStringLiteral("DELETE FROM %1 WHERE %2 = ?").arg(table_, key_), {*current_});
    if (!q.ok()) {
        error_ = q.error();
        return q.errorClass();
    }
    keys_.removeOne(*current_);
    current_.reset();
    row_.clear();
    return ErrorClass::None;
}
