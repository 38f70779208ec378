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
// What every screen shows for a store failure: "エラー：" with SQLite's number and text. A
// damaged file also says how to mend it.
QString StoreErrorText(const QSqlError& error);

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

// One unit of work: everything between begin and commit lands together or not at all. The
// outermost unit of a connection is a transaction (BEGIN IMMEDIATE); a unit opened inside it
// is a savepoint of that transaction, so a posting wrapped by a save lands with the save.
// The destructor rolls back a unit that was not committed. Every save, posting and batch
// opens its transaction this way and no other.
class UnitOfWork {
public:
    explicit UnitOfWork(const QSqlDatabase& db);
    ~UnitOfWork();
    bool active() const;
    // False when the unit was not active or the store refused the COMMIT (or RELEASE); the
    // unit is rolled back then and error() holds the store's own failure.
    bool commit();
    void rollback();
    // The store's failure of BEGIN, SAVEPOINT, COMMIT or RELEASE; no error when there was none.
    QSqlError error() const { return error_; }
    ErrorClass errorClass() const { return classifyError(error_); }
    // 1 for the outermost unit of its connection, 2 for one inside it, ...; 0 when not active.
    int depth() const { return active() ? level_ : 0; }
    UnitOfWork(const UnitOfWork&) = delete;
    UnitOfWork& operator=(const UnitOfWork&) = delete;
private:
    void leave();
    QSqlDatabase db_;
    QString savepoint_;
    int level_ = 0;
    quint64 transaction_ = 0;
    QSqlError error_;
};

// Units of work open on the connection right now (0: none, the connection is in autocommit).
int openUnits(const QSqlDatabase& db);

// Milliseconds a connection waits on a file locked by another station (30 s by default).
int busyTimeoutMs();
void setBusyTimeoutMs(int ms);
