#include "pageout/ReportRows.h"
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include "entry/Convert.h"
#include "store/Sql.h"

namespace {

QString storeError(const QSqlError& e)
{
    return QStringLiteral("エラー：%1 %2").arg(sqliteCode(e)).arg(e.databaseText().isEmpty() ? e.text() : e.databaseText());
}

// Column positions by name, case-insensitive, and which of them hold money.
class Columns {
public:
    void set(const QStringList& names, const QStringList& money)
    {
        names_ = names;
        money_.fill(false, names.size());
        for (qsizetype i = 0; i < names.size(); ++i)
            money_[i] = money.contains(names[i], Qt::CaseInsensitive);
    }
    int index(const QString& name) const
    {
        for (qsizetype i = 0; i < names_.size(); ++i)
            if (names_[i].compare(name, Qt::CaseInsensitive) == 0) return int(i);
        return -1;
    }
    QVariant present(int i, const QVariant& v) const
    {
        if (i < 0 || v.isNull()) return {};
        return money_[i] ? moneyVariant(Money::fromStore(v)) : v;
    }
private:
    QStringList names_;
    QList<bool> money_;
};

QStringList recordNames(const QSqlRecord& r)
{
    QStringList n;
    for (int i = 0; i < r.count(); ++i) n << r.fieldName(i);
    return n;
}

class QueryRows : public ReportRows {
public:
    QueryRows(const QSqlDatabase& db, const QString& sql, const QVariantList& binds, const QStringList& money)
        : q_(db)
    {
        q_.setForwardOnly(true);
        ok_ = q_.prepare(sql);
        if (ok_) {
            for (const QVariant& v : binds) q_.addBindValue(v);
            ok_ = q_.exec();
        }
        if (!ok_) error_ = storeError(q_.lastError());
        else cols_.set(recordNames(q_.record()), money);
    }
    bool next() override
    {
        if (!ok_) return false;
        if (q_.next()) return true;
        // The end of the rows and a failed read look alike; the error tells them apart.
        if (q_.lastError().isValid()) {
            ok_ = false;
            error_ = storeError(q_.lastError());
        }
        return false;
    }
    QVariant value(const QString& column) const override
    {
        const int i = cols_.index(column);
        return cols_.present(i, i < 0 ? QVariant() : q_.value(i));
    }
    bool hasColumn(const QString& column) const override { return cols_.index(column) >= 0; }
    bool ok() const override { return ok_; }
    QString error() const override { return error_; }
private:
    QSqlQuery q_;
    Columns cols_;
    bool ok_ = false;
    QString error_;
};

class ListRows : public ReportRows {
public:
    ListRows(const QStringList& columns, const QList<QVariantList>& rows, const QStringList& money)
        : rows_(rows)
    {
        cols_.set(columns, money);
    }
    bool next() override
    {
        if (at_ < rows_.size()) ++at_;
        return at_ < rows_.size();
    }
    QVariant value(const QString& column) const override
    {
        if (at_ < 0 || at_ >= rows_.size()) return {};
        const int i = cols_.index(column);
        return cols_.present(i, rows_[at_].value(i));
    }
    bool hasColumn(const QString& column) const override { return cols_.index(column) >= 0; }
    int count() const override { return int(rows_.size()); }
private:
    Columns cols_;
    QList<QVariantList> rows_;
    qsizetype at_ = -1;
};

}  // namespace

std::unique_ptr<ReportRows> queryRows(const QSqlDatabase& db, const QString& sql, const QVariantList& binds,
                                      const QStringList& moneyColumns)
{
    return std::make_unique<QueryRows>(db, sql, binds, moneyColumns);
}

std::unique_ptr<ReportRows> listRows(const QStringList& columns, const QList<QVariantList>& rows)
{
    return std::make_unique<ListRows>(columns, rows, QStringList());
}

std::unique_ptr<ReportRows> bufferedQueryRows(const QSqlDatabase& db, const QString& sql, const QVariantList& binds,
                                              QString* error, const QStringList& moneyColumns)
{
    QSqlQuery q(db);
    q.setForwardOnly(true);
    bool ok = q.prepare(sql);
    if (ok) {
        for (const QVariant& v : binds) q.addBindValue(v);
        ok = q.exec();
    }
    QList<QVariantList> rows;
    QStringList names;
    if (ok) {
        names = recordNames(q.record());
        while (q.next()) {
            QVariantList row;
            row.reserve(names.size());
            for (int i = 0; i < names.size(); ++i) row << q.value(i);
            rows << row;
        }
        ok = !q.lastError().isValid();
    }
    if (!ok) {
        if (error) *error = storeError(q.lastError());
        return nullptr;
    }
    return std::make_unique<ListRows>(names, rows, moneyColumns);
}

QVariant moneyVariant(Money m) { return QVariant::fromValue(m); }

bool isMoneyVariant(const QVariant& v) { return v.metaType() == QMetaType::fromType<Money>(); }

bool isNumberVariant(const QVariant& v)
{
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}

Money variantMoney(const QVariant& v)
{
    if (v.isNull() || !v.isValid()) return {};
    if (isMoneyVariant(v)) return v.value<Money>();
    if (v.typeId() == QMetaType::Double || v.typeId() == QMetaType::Float) return Money::fromDouble(v.toDouble());
    if (isNumberVariant(v)) return Money::fromYen(v.toLongLong());
    return ToCur(NumText(v.toString()));
}
