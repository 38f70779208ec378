#include "store/Sql.h"

namespace {
int gBusyTimeoutMs = 30000;
}

int busyTimeoutMs() { return gBusyTimeoutMs; }
void setBusyTimeoutMs(int ms) { gBusyTimeoutMs = ms; }

int sqliteCode(const QSqlError& e)
{
    bool ok = false;
    const int code = e.nativeErrorCode().toInt(&ok);
    return ok ? code : 0;
}

ErrorClass classifyError(const QSqlError& e)
{
    if (e.type() == QSqlError::NoError) return ErrorClass::None;
    const int code = sqliteCode(e);
    switch (code & 0xff) {   // primary result code
    case 5:  // SQLITE_BUSY
    case 6:  // SQLITE_LOCKED
        return ErrorClass::Busy;
    case 11: // SQLITE_CORRUPT
    case 26: // SQLITE_NOTADB
        return ErrorClass::Damaged;
    case 19: // SQLITE_CONSTRAINT: only key violations mean "take the next number"
        if (code == 1555 || code == 2067) return ErrorClass::Duplicate;
        return ErrorClass::Other;
    default:
        return ErrorClass::Other;
    }
}

Query::Query(const QSqlDatabase& db, const QString& sql, const QVariantList& binds) : q_(db)
{
    q_.setForwardOnly(true);
    ok_ = q_.prepare(sql);
    if (ok_) {
        for (const QVariant& v : binds) q_.addBindValue(v);
        ok_ = q_.exec();
    }
    if (!ok_) cls_ = classifyError(q_.lastError());
    if (!ok_ && cls_ == ErrorClass::None) cls_ = ErrorClass::Other;
}

ErrorClass execSql(const QSqlDatabase& db, const QString& sql, const QVariantList& binds, QSqlError* error)
{
    Query q(db, sql, binds);
    if (error) *error = q.error();
    return q.ok() ? ErrorClass::None : q.errorClass();
}

QVariant scalar(const QSqlDatabase& db, const QString& sql, const QVariantList& binds)
{
    Query q(db, sql, binds);
    return q.next() ? q.value(0) : QVariant();
}

UnitOfWork::UnitOfWork(const QSqlDatabase& db) : db_(db)
{
    // BEGIN IMMEDIATE takes the write lock up front, so a unit never fails half way on a
    // lock another station holds; the busy timeout bounds the wait.
    active_ = execSql(db_, QStringLiteral("BEGIN IMMEDIATE")) == ErrorClass::None;
}

UnitOfWork::~UnitOfWork() { rollback(); }

bool UnitOfWork::commit()
{
    if (!active_) return false;
    if (execSql(db_, QStringLiteral("COMMIT")) != ErrorClass::None) {
        rollback();
        return false;
    }
    active_ = false;
    return true;
}

void UnitOfWork::rollback()
{
    if (!active_) return;
    execSql(db_, QStringLiteral("ROLLBACK"));
    active_ = false;
}
