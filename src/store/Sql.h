#pragma once
// Statements on the store: values are always bound, errors are classified, and a locked file
// is waited for (bounded by the busy timeout) instead of failing at once.
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>
#include <QVariantList>

// What a screen does about a failure: wait and retry, take the next free number, repair, or
// report it. Screens act on the class, never on the text of a message.
enum class ErrorClass { None, Busy, Duplicate, Damaged, Other };

ErrorClass classifyError(const QSqlError& e);
// SQLite's result code of a failure (extended code when the driver gives one), 0 when none.
int sqliteCode(const QSqlError& e);

// One statement with bound values. Bad SQL or a store failure never throws: ok() is false
// and errorClass() tells what kind of failure it was.
class Query {
public:
    Query(const QSqlDatabase& db, const QString& sql, const QVariantList& binds = {});
    bool ok() const { return ok_; }
    ErrorClass errorClass() const { return cls_; }
    QSqlError error() const { return q_.lastError(); }
    bool next() { return ok_ && q_.next(); }
    QVariant value(int i) const { return q_.value(i); }
    QVariant value(const QString& name) const { return q_.value(name); }
    QSqlQuery& raw() { return q_; }
private:
    QSqlQuery q_;
    bool ok_ = false;
    ErrorClass cls_ = ErrorClass::None;
};

// Runs one statement; returns its class (None on success).
ErrorClass execSql(const QSqlDatabase& db, const QString& sql, const QVariantList& binds = {},
                   QSqlError* error = nullptr);
// First column of the first row, or an invalid QVariant when there is none or it fails.
QVariant scalar(const QSqlDatabase& db, const QString& sql, const QVariantList& binds = {});

// One unit of work: everything between begin and commit lands together or not at all.
// The destructor rolls back a unit that was not committed.
class UnitOfWork {
public:
    explicit UnitOfWork(const QSqlDatabase& db);
    ~UnitOfWork();
    bool active() const { return active_; }
    bool commit();
    void rollback();
    UnitOfWork(const UnitOfWork&) = delete;
    UnitOfWork& operator=(const UnitOfWork&) = delete;
private:
    QSqlDatabase db_;
    bool active_ = false;
};

// Milliseconds a connection waits on a file locked by another station (30 s by default).
int busyTimeoutMs();
void setBusyTimeoutMs(int ms);
