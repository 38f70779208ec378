#include "store/Repair.h"
#include <sqlite3.h>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include "store/Sql.h"
#include "store/SqliteHandle.h"

namespace {

const QString kDamagedConn = QStringLiteral("VelmoraRepairDamaged");
const QString kRebuiltConn = QStringLiteral("VelmoraRepairRebuilt");

// Rows are read back in slices of rowids; a slice that fails is read row by row.
constexpr qint64 kSlice = 512;
// Beyond this many slices a table is given up rather than walked for hours.
constexpr qint64 kMaxSlices = 200000;

QSqlError plainError(const QString& text)
{
    return QSqlError(QString(), text, QSqlError::UnknownError);
}

QSqlDatabase openFile(const QString& conn, const QString& path)
{
    QSqlDatabase db = QSqlDatabase::contains(conn) ? QSqlDatabase::database(conn, false)
                                                   : QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), conn);
    if (db.isOpen()) db.close();
    db.setDatabaseName(path);
    db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(busyTimeoutMs()));
    db.open();
    return db;
}

void closeFile(const QString& conn)
{
    {
        QSqlDatabase db = QSqlDatabase::database(conn, false);
        if (db.isOpen()) db.close();
    }
    QSqlDatabase::removeDatabase(conn);
}

// A name beside `file` that no file has yet.
QString freeName(const QString& base)
{
    QString name = base;
    for (int i = 2; QFileInfo::exists(name); ++i) name = base + QStringLiteral("-%1").arg(i);
    return name;
}

void removeWithJournal(const QString& path)
{
    QFile::remove(path);
    QFile::remove(path + QStringLiteral("-journal"));
}

struct SchemaRow { QString type, name, sql; };

// Copies what can be read of one table; false when some rows could not be read.
bool salvageTable(const QSqlDatabase& damaged, const QString& table)
{
    const QString copy = QStringLiteral("INSERT OR IGNORE INTO rebuilt.\"%1\" SELECT * FROM main.\"%1\"").arg(table);
    if (execSql(damaged, copy) == ErrorClass::None) return true;
    Query top(damaged, QStringLiteral("SELECT max(rowid) FROM main.\"%1\"").arg(table));
    if (!top.next()) return false;
    const qint64 last = top.value(0).toLongLong();
    top.raw().finish();
    if (last / kSlice > kMaxSlices) return false;
    bool whole = true;
    for (qint64 from = 0; from < last; from += kSlice) {
        if (execSql(damaged, copy + QStringLiteral(" WHERE rowid > ? AND rowid <= ?"), {from, from + kSlice})
            == ErrorClass::None)
            continue;
        for (qint64 r = from + 1; r <= from + kSlice; ++r)
            if (execSql(damaged, copy + QStringLiteral(" WHERE rowid = ?"), {r}) != ErrorClass::None) whole = false;
    }
    return whole;
}

// A new file with the damaged file's schema and every row that can still be read. Used when
// the damage keeps VACUUM from reading a table through.
bool salvageInto(const QSqlDatabase& damaged, const QString& rebuiltPath, QStringList* lost, QSqlError* error)
{
    QList<SchemaRow> tables, others;
    {
        Query q(damaged, QStringLiteral("SELECT type, name, sql FROM main.sqlite_master "
                                        "WHERE sql IS NOT NULL AND name NOT LIKE 'sqlite_%' ORDER BY rowid"));
        if (!q.ok()) {
            *error = q.error();
            return false;
        }
        while (q.next()) {
            const SchemaRow r{q.value(0).toString(), q.value(1).toString(), q.value(2).toString()};
            (r.type == QLatin1String("table") ? tables : others) << r;
        }
        // A schema read only in part would rebuild a file without some of its tables.
        if (q.raw().lastError().type() != QSqlError::NoError) {
            *error = q.raw().lastError();
            return false;
        }
    }
    {
        QSqlDatabase rebuilt = openFile(kRebuiltConn, rebuiltPath);
        for (const SchemaRow& t : tables)
            if (execSql(rebuilt, t.sql, {}, error) != ErrorClass::None) return false;
        rebuilt.close();
    }
    if (execSql(damaged, QStringLiteral("ATTACH DATABASE ? AS rebuilt"), {rebuiltPath}, error) != ErrorClass::None)
        return false;
    // A scratch file until it is checked: a cut-off repair removes it anyway.
    execSql(damaged, QStringLiteral("PRAGMA rebuilt.journal_mode=OFF"));
    execSql(damaged, QStringLiteral("PRAGMA rebuilt.synchronous=OFF"));
    for (const SchemaRow& t : tables)
        if (!salvageTable(damaged, t.name)) *lost << t.name;
    execSql(damaged, QStringLiteral("DETACH DATABASE rebuilt"));
    // Indexes are built from the rows that came back, after them.
    QSqlDatabase rebuilt = QSqlDatabase::database(kRebuiltConn, false);
    rebuilt.open();
    for (const SchemaRow& o : others)
        if (execSql(rebuilt, o.sql, {}, error) != ErrorClass::None) return false;
    rebuilt.close();
    return true;
}

bool soundCopy(const QString& path, QSqlError* error)
{
    QSqlDatabase db = openFile(kRebuiltConn, path);
    Query check(db, QStringLiteral("PRAGMA integrity_check"));
    const bool ok = check.next() && check.value(0).toString() == QLatin1String("ok") && !check.next();
    if (!ok) *error = check.ok() ? plainError(QStringLiteral("integrity_check")) : check.error();
    return ok;
}

// The rebuilt content replaces the damaged one in one write transaction of the damaged
// file's own connection: stations that have the file open see the repaired file next.
bool copyInPlace(const QSqlDatabase& damaged, QSqlError* error)
{
    QSqlDatabase rebuilt = QSqlDatabase::database(kRebuiltConn, false);
    if (!rebuilt.isOpen()) rebuilt.open();
    sqlite3* to = sqliteHandle(damaged);
    sqlite3* from = sqliteHandle(rebuilt);
    if (!to || !from) {
        *error = plainError(QStringLiteral("no SQLite handle"));
        return false;
    }
    sqlite3_backup* b = sqlite3_backup_init(to, "main", from, "main");
    if (!b) {
        *error = QSqlError(QString(), QString::fromUtf8(sqlite3_errmsg(to)), QSqlError::StatementError,
                           QString::number(sqlite3_extended_errcode(to)));
        return false;
    }
    // Busy here means the busy handler has waited its time and other stations still read.
    const int rc = sqlite3_backup_step(b, -1);
    sqlite3_backup_finish(b);
    if (rc != SQLITE_DONE) {
        *error = QSqlError(QString(), QString::fromUtf8(sqlite3_errstr(rc)), QSqlError::StatementError,
                           QString::number(rc));
        return false;
    }
    return true;
}

} // namespace

bool pagesSound(const QString& connectionName)
{
    Query check(QSqlDatabase::database(connectionName, false), QStringLiteral("PRAGMA quick_check"));
    return check.next() && check.value(0).toString() == QLatin1String("ok") && !check.next();
}

bool repairStoreFile(const QString& path, RepairOutcome* out)
{
    RepairOutcome r;
    const QFileInfo info(path);
    r.file = info.canonicalFilePath();   // the file behind a link
    auto give = [&](bool ok) {
        if (out) *out = r;
        return ok;
    };
    if (r.file.isEmpty()) {
        r.reason = QStringLiteral("ファイルが見つかりません。");
        return give(false);
    }
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-hhmmss"));
    const QString damagedCopy = freeName(r.file + QStringLiteral(".damaged-") + stamp);
    const QString rebuiltPath = r.file + QStringLiteral(".rebuilt");
    // What a repair cut off earlier left behind is of no use.
    removeWithJournal(rebuiltPath);

    bool ok = false;
    {
        QSqlDatabase damaged = openFile(kDamagedConn, r.file);
        // Exclusive locking keeps the read lock from the first read to the end: nobody writes
        // to the file while it is copied and rebuilt.
        execSql(damaged, QStringLiteral("PRAGMA locking_mode=EXCLUSIVE"));
        installLockWait(damaged);
        {
            Query schema(damaged, QStringLiteral("SELECT count(*) FROM main.sqlite_master"));
            if (!schema.ok()) {
                r.error = schema.error();
                r.reason = sqliteCode(r.error) == SQLITE_NOTADB
                               ? QStringLiteral("データベースのファイルではありません。")
                               : QStringLiteral("ファイルの構成が読めないため修復できません。");
            }
        }
        if (r.error.type() == QSqlError::NoError) {
            if (!QFile::copy(r.file, damagedCopy)) {
                r.error = plainError(QStringLiteral("copy"));
                r.reason = QStringLiteral("壊れたファイルを残せないため修復しません（空き容量を確かめてください）。");
            } else if (execSql(damaged, QStringLiteral("VACUUM INTO ?"), {rebuiltPath}) != ErrorClass::None) {
                removeWithJournal(rebuiltPath);
                if (!salvageInto(damaged, rebuiltPath, &r.lostTables, &r.error))
                    r.reason = QStringLiteral("読み取れる行から作り直すことができませんでした。");
            }
            if (r.error.type() == QSqlError::NoError && !soundCopy(rebuiltPath, &r.error))
                r.reason = QStringLiteral("作り直したファイルが検査を通りませんでした。");
            if (r.error.type() == QSqlError::NoError) {
                ok = copyInPlace(damaged, &r.error);
                if (!ok) r.reason = QStringLiteral("他の端末が使用中のため修復できません。他の端末を終了してください。");
            }
        }
        endLockWait();
    }
    closeFile(kRebuiltConn);
    closeFile(kDamagedConn);
    removeWithJournal(rebuiltPath);
    if (ok) {
        r.damagedCopy = damagedCopy;
    } else {
        QFile::remove(damagedCopy);
        r.lostTables.clear();
    }
    return give(ok);
}

QString repairNotice(const RepairOutcome& r)
{
    const QDir here = QDir::current();
    QString text = QStringLiteral("データファイル %1 が壊れていたため修復しました。\n壊れたファイルは %2 として残してあります。")
                       .arg(QDir::toNativeSeparators(here.relativeFilePath(r.file)),
                            QDir::toNativeSeparators(here.relativeFilePath(r.damagedCopy)));
    if (!r.lostTables.isEmpty())
        text += QStringLiteral("\n次の表には読み取れなかった行があります：%1\n伝票と台帳を確かめてください。")
                    .arg(r.lostTables.join(QStringLiteral("、")));
    return text;
}
