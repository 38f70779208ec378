#include "store/Sql.h"
#include <sqlite3.h>
#include "store/SqliteHandle.h"
#include <QElapsedTimer>
#include <QHash>
#include <QSqlDriver>
#include <QThread>

namespace {

int gBusyTimeoutMs = 30000;
LockWaitNotice gLockWaitNotice;
bool gWaitTold = false;
QElapsedTimer gWaitingSince;

// A wait shorter than this (another station's commit) passes without a word.
constexpr qint64 kTellAfterMs = 400;

// SQLite calls this while the file is locked: `count` is the number of earlier calls in the
// same wait. Returning 0 ends the wait with SQLITE_BUSY.
int waitForLock(void*, int count)
{
    if (count == 0) gWaitingSince.start();
    const qint64 waited = gWaitingSince.elapsed();
    if (waited >= gBusyTimeoutMs) return 0;
    if (!gWaitTold && waited >= qMin<qint64>(kTellAfterMs, gBusyTimeoutMs / 4) && gLockWaitNotice) {
        gWaitTold = true;
        gLockWaitNotice(true);
    }
    QThread::msleep(static_cast<unsigned long>(qMin<qint64>(count < 4 ? 5 : 50, gBusyTimeoutMs - waited)));
    return 1;
}

// The units of work of one connection: how deep they are nested, and which transaction the
// outermost one opened (a unit of an earlier, finished transaction is no longer active).
struct UnitState {
    int depth = 0;
    quint64 transaction = 0;
};

QHash<QString, UnitState>& unitStates()
{
    static QHash<QString, UnitState> states;
    return states;
}

} // namespace

int busyTimeoutMs() { return gBusyTimeoutMs; }
void setBusyTimeoutMs(int ms) { gBusyTimeoutMs = ms; }

void setLockWaitNotice(LockWaitNotice notice)
{
    endLockWait();
    gLockWaitNotice = std::move(notice);
}

sqlite3* sqliteHandle(const QSqlDatabase& db)
{
    const QVariant h = db.isOpen() && db.driver() ? db.driver()->handle() : QVariant();
    if (!h.isValid() || qstrcmp(h.typeName(), "sqlite3*") != 0) return nullptr;
    return *static_cast<sqlite3* const*>(h.constData());
}

bool installLockWait(const QSqlDatabase& db)
{
    sqlite3* handle = sqliteHandle(db);
    return handle && sqlite3_busy_handler(handle, waitForLock, nullptr) == SQLITE_OK;
}

void endLockWait()
{
    if (!gWaitTold) return;
    gWaitTold = false;
    if (gLockWaitNotice) gLockWaitNotice(false);
}

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

QString StoreErrorText(const QSqlError& error)
{
    QString text = error.databaseText();
    if (text.isEmpty()) text = error.text();
    QString out = QStringLiteral("エラー：") + QString::number(sqliteCode(error)) + QLatin1Char(' ') + text;
    // A damaged page can turn up in any statement long after opening: say what mends it.
    if (classifyError(error) == ErrorClass::Damaged)
        out += QStringLiteral("\nデータファイルが壊れています。他の端末を終了してから「データ最適化」で修復してください。");
    return out;
}

Query::Query(const QSqlDatabase& db, const QString& sql, const QVariantList& binds) : q_(db)
{
    q_.setForwardOnly(true);
    ok_ = q_.prepare(sql);
    if (ok_) {
        for (const QVariant& v : binds) q_.addBindValue(v);
        ok_ = q_.exec();
    }
    // Preparing can wait too: it reads the schema, which a fresh connection has not yet.
    endLockWait();
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

int openUnits(const QSqlDatabase& db)
{
    return unitStates().value(db.connectionName()).depth;
}

UnitOfWork::UnitOfWork(const QSqlDatabase& db) : db_(db)
{
    UnitState& st = unitStates()[db_.connectionName()];
    QSqlError e;
    if (st.depth == 0) {
        // BEGIN IMMEDIATE takes the write lock up front, so a unit never fails half way on a
        // lock another station holds; the busy timeout bounds the wait.
        if (execSql(db_, QStringLiteral("BEGIN IMMEDIATE"), {}, &e) != ErrorClass::None) {
            error_ = e;
            return;
        }
        ++st.transaction;
    } else {
        savepoint_ = QStringLiteral("unit%1").arg(st.depth + 1);
        if (execSql(db_, QStringLiteral("SAVEPOINT ") + savepoint_, {}, &e) != ErrorClass::None) {
            error_ = e;
            return;
        }
    }
    level_ = ++st.depth;
    transaction_ = st.transaction;
}

UnitOfWork::~UnitOfWork() { rollback(); }

bool UnitOfWork::active() const
{
    if (level_ == 0) return false;
    UnitState& st = unitStates()[db_.connectionName()];
    // SQLite rolls a whole transaction back by itself on some failures (a full disk, an I/O
    // error): then no unit of it is active any more.
    sqlite3* h = sqliteHandle(db_);
    if (st.depth > 0 && h && sqlite3_get_autocommit(h)) st.depth = 0;
    // An outer unit that ended took this one with it.
    return st.transaction == transaction_ && st.depth >= level_;
}

void UnitOfWork::leave()
{
    UnitState& st = unitStates()[db_.connectionName()];
    if (st.transaction == transaction_ && st.depth >= level_) st.depth = level_ - 1;
    level_ = 0;
}

bool UnitOfWork::commit()
{
    if (!active()) {
        // Rolled back by SQLite itself: its own words say there is nothing to commit.
        sqlite3* h = sqliteHandle(db_);
        if (level_ > 0 && error_.type() == QSqlError::NoError && h && sqlite3_get_autocommit(h))
            execSql(db_, QStringLiteral("COMMIT"), {}, &error_);
        level_ = 0;
        return false;
    }
    QSqlError e;
    const QString sql = level_ == 1 ? QStringLiteral("COMMIT") : QStringLiteral("RELEASE ") + savepoint_;
    if (execSql(db_, sql, {}, &e) != ErrorClass::None) {
        error_ = e;
        rollback();
        return false;
    }
    leave();
    return true;
}

void UnitOfWork::rollback()
{
    if (!active()) {
        level_ = 0;
        return;
    }
    // A failure here changes nothing that matters: SQLite may already have rolled the
    // transaction back itself (a full disk, an I/O error), and the first error is the one told.
    if (level_ == 1) {
        execSql(db_, QStringLiteral("ROLLBACK"));
    } else {
        execSql(db_, QStringLiteral("ROLLBACK TO ") + savepoint_);
        execSql(db_, QStringLiteral("RELEASE ") + savepoint_);
    }
    leave();
}
