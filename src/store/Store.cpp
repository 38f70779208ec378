#include "store/Store.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlQuery>
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "store/BackupFiles.h"
#include "store/Schema.h"
#include "store/Sql.h"

namespace {

const QString kMasterConn = QStringLiteral("MasterDb");
const QString kSlipConn = QStringLiteral("SlipDb");
StoreFailure gLast;

void closeConnection(const QString& name)
{
    if (!QSqlDatabase::contains(name)) return;
    {
        QSqlDatabase db = QSqlDatabase::database(name, false);
        if (db.isOpen()) db.close();
    }
    QSqlDatabase::removeDatabase(name);
}

bool isPlainName(const QString& n)
{
    static const QRegularExpression re(QStringLiteral("^[A-Za-z_][A-Za-z0-9_]*$"));
    return re.match(n).hasMatch();
}

struct SchemaObject { QString schema, name, type; };

QList<SchemaObject> objectsOf(const QSqlDatabase& db)
{
    QList<SchemaObject> out;
    QStringList schemas;
    Query list(db, QStringLiteral("PRAGMA database_list"));
    while (list.next()) schemas << list.value(1).toString();
    for (const QString& s : schemas) {
        const QString master = s == QLatin1String("temp") ? QStringLiteral("sqlite_temp_master")
                                                           : s + QStringLiteral(".sqlite_master");
        Query q(db, QStringLiteral("SELECT name, type FROM %1 WHERE type IN ('table','view')").arg(master));
        while (q.next()) out << SchemaObject{s, q.value(0).toString(), q.value(1).toString()};
    }
    return out;
}

const SchemaObject* findObject(const QList<SchemaObject>& objs, const QString& name, const QString& schema = {})
{
    const QString want = name.trimmed().toLower();
    for (const SchemaObject& o : objs)
        if ((schema.isEmpty() || o.schema == schema) && o.name.trimmed().toLower() == want) return &o;
    return nullptr;
}

StoreFailure failureFrom(const QSqlError& e)
{
    return StoreFailure{sqliteCode(e), QStringLiteral("SQLite"),
                        e.driverText().isEmpty() ? e.databaseText() : e.databaseText()};
}

// A file that reads back as damaged gets one repair: check it, and rebuild a readable copy
// in its place (the damaged file is kept beside it as .damaged).
bool repairFile(const QString& path)
{
    const QString conn = QStringLiteral("VelmoraRepair");
    bool rebuilt = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), conn);
        db.setDatabaseName(path);
        if (db.open()) {
            Query check(db, QStringLiteral("PRAGMA integrity_check"));
            const bool readable = check.ok();
            const bool clean = check.next() && check.value(0).toString() == QLatin1String("ok");
            if (readable && !clean) {
                const QString copy = path + QStringLiteral(".rebuild");
                QFile::remove(copy);
                rebuilt = execSql(db, QStringLiteral("VACUUM INTO ?"), {copy}) == ErrorClass::None;
            }
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(conn);
    if (!rebuilt) return false;
    const QString damaged = path + QStringLiteral(".damaged");
    QFile::remove(damaged);
    return QFile::rename(path, damaged) && QFile::rename(path + QStringLiteral(".rebuild"), path);
}

bool tryOpen(const QString& conn, const QString& path, StoreFailure* f, bool* damaged)
{
    closeConnection(conn);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), conn);
    db.setDatabaseName(path);
    db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(busyTimeoutMs()));
    *damaged = false;
    if (!db.open()) {
        *f = failureFrom(db.lastError());
        return false;
    }
    // Opening is lazy in SQLite: read the schema now so a damaged file shows itself here.
    Query probe(db, QStringLiteral("SELECT count(*) FROM sqlite_master"));
    if (!probe.ok()) {
        *f = failureFrom(probe.error());
        *damaged = probe.errorClass() == ErrorClass::Damaged;
        db.close();
        return false;
    }
    return true;
}

bool reportFailure(const StoreFailure& f)
{
    gLast = f;
    dialogs().MessageBox(QStringLiteral("エラー"), storeFailureText(f));
    return false;
}

} // namespace

QString storeFailureText(const StoreFailure& f)
{
    return QStringLiteral("エラー番号 ") + QString::number(f.number) + f.source
           + QStringLiteral(" でエラーが発生しました。 \n") + f.description;
}

const StoreFailure& lastStoreFailure() { return gLast; }

QString masterFileName() { return QStringLiteral("MASTER.db"); }
QString slipPath(int nendo) { return QString::number(nendo) + QStringLiteral("/SLIP.db"); }
QString yearMasterPath(int nendo) { return QString::number(nendo) + QStringLiteral("/MASTER.db"); }
QString reopenMasterPathNoMarker() { return QStringLiteral("MASTER/MASTER.db"); }

bool openStoreFile(const QString& conn, const QString& path, StoreFailure* failure)
{
    StoreFailure f;
    if (!QFileInfo(path).isFile()) {
        // Never create a store file by opening it.
        f = StoreFailure{14, QStringLiteral("SQLite"),
                         QStringLiteral("ファイルが見つかりません。(%1)").arg(QDir::current().absoluteFilePath(path))};
        if (failure) *failure = f;
        return false;
    }
    bool damaged = false;
    if (tryOpen(conn, path, &f, &damaged)) return true;
    if (damaged) {
        closeConnection(conn);
        if (repairFile(path) && tryOpen(conn, path, &f, &damaged)) return true;
    }
    closeConnection(conn);
    if (failure) *failure = f;
    return false;
}

static bool openMaster(const QString& path)
{
    Session& s = session();
    s.MasterDb = QSqlDatabase();
    StoreFailure f;
    if (!openStoreFile(kMasterConn, path, &f)) return reportFailure(f);
    s.MasterDb = QSqlDatabase::database(kMasterConn, false);
    return true;
}

bool OpenStore()
{
    Session& s = session();
    s.YearFolderMode = false;
    for (const QString& n : QDir::current().entryList(QDir::Files | QDir::Hidden))
        if (n.toUpper() == QLatin1String("NENDO")) {
            s.YearFolderMode = true;
            QFile marker(n);
            if (marker.open(QIODevice::ReadOnly)) {
                static const QRegularExpression num(QStringLiteral("-?\\d+"));
                const auto m = num.match(QString::fromLatin1(marker.readAll()));
                if (m.hasMatch()) s.Nendo = m.captured().toInt();
            }
            break;
        }
    return openMaster(s.YearFolderMode ? yearMasterPath(s.Nendo) : masterFileName());
}

bool ReopenMaster()
{
    Session& s = session();
    // Without the marker the reopening needs the master file in its MASTER folder: say so.
    if (!s.YearFolderMode)
        if (const QString problem = masterLayoutProblem(false, s.Nendo); !problem.isEmpty())
            return reportFailure(StoreFailure{14, QStringLiteral("SQLite"), problem});
    return openMaster(s.YearFolderMode ? yearMasterPath(s.Nendo) : reopenMasterPathNoMarker());
}

bool OpenSlip()
{
    StoreFailure f;
    if (!openStoreFile(kSlipConn, slipPath(session().Nendo), &f)) return reportFailure(f);
    return true;
}

QSqlDatabase SlipDb() { return QSqlDatabase::database(kSlipConn, false); }

void CloseSlip() { closeConnection(kSlipConn); }

bool AttachSlipTables()
{
    Session& s = session();
    QSqlDatabase master = s.MasterDb;
    QSqlDatabase slip = SlipDb();
    if (!master.isOpen() || !slip.isOpen()) return false;
    QList<SchemaObject> masterObjs = objectsOf(master);
    // Another year may be attached: take it away first, so nothing points at it afterwards.
    if (!scalar(master, QStringLiteral("SELECT name FROM pragma_database_list WHERE name='slip'")).isNull()) {
        if (execSql(master, QStringLiteral("DETACH DATABASE slip")) != ErrorClass::None) return false;
        masterObjs = objectsOf(master);
    }
    QList<SchemaObject> slipObjs;
    Query tables(slip, QStringLiteral("SELECT name FROM sqlite_master WHERE type IN ('table','view')"));
    while (tables.next()) slipObjs << SchemaObject{QStringLiteral("main"), tables.value(0).toString(), {}};
    for (const SchemaObject& t : slipObjs) {
        if (t.name.startsWith(QLatin1String("sqlite_"))) continue;   // the engine's own
        const SchemaObject* old = findObject(masterObjs, t.name, QStringLiteral("main"));
        if (!old || old->name.startsWith(QLatin1String("sqlite_"))) continue;
        // A master table of the template is never dropped; anything else of the name is a stale link.
        const TableDef* d = findTableDef(old->name);
        if (old->type == QLatin1String("table") && d && d->file == StoreFile::Master) continue;
        const QString drop = old->type == QLatin1String("view") ? QStringLiteral("DROP VIEW main.\"%1\"")
                                                                : QStringLiteral("DROP TABLE main.\"%1\"");
        execSql(master, drop.arg(old->name));
    }
    QSqlError err;
    const QString file = QFileInfo(slip.databaseName()).absoluteFilePath();
    if (execSql(master, QStringLiteral("ATTACH DATABASE ? AS slip"), {file}, &err) != ErrorClass::None) {
        Tell(QStringLiteral("エラー：") + QString::number(sqliteCode(err)) + QLatin1Char(' ') + err.databaseText());
        return false;
    }
    return true;
}

void CloseStore()
{
    CloseSlip();
    session().MasterDb = QSqlDatabase();
    closeConnection(kMasterConn);
}

bool TableExists(const QSqlDatabase& db, const QString& name)
{
    return findObject(objectsOf(db), name) != nullptr;
}

bool AttachTable(const QSqlDatabase& db, const QString& linkName, const QString& sourceName,
                 const QString& connect)
{
    const QString failed = QStringLiteral("アタッチに失敗しました。");
    QString path = connect;
    if (path.startsWith(QLatin1String(";DATABASE="), Qt::CaseInsensitive)) path = path.mid(10);
    if (TableExists(db, linkName) || !isPlainName(linkName.trimmed()) || !isPlainName(sourceName.trimmed())
        || !QFileInfo(path).isFile()) {
        Tell(failed);
        return false;
    }
    const QString canonical = QFileInfo(path).canonicalFilePath();
    QString alias;
    QStringList used;
    Query list(db, QStringLiteral("PRAGMA database_list"));
    while (list.next()) {
        used << list.value(1).toString();
        if (QFileInfo(list.value(2).toString()).canonicalFilePath() == canonical) alias = list.value(1).toString();
    }
    if (alias.isEmpty()) {
        alias = QStringLiteral("old");
        for (int i = 2; used.contains(alias); ++i) alias = QStringLiteral("old%1").arg(i);
        if (execSql(db, QStringLiteral("ATTACH DATABASE ? AS %1").arg(alias), {canonical}) != ErrorClass::None) {
            Tell(failed);
            return false;
        }
    }
    const QString sql = QStringLiteral("CREATE TEMP VIEW \"%1\" AS SELECT * FROM %2.\"%3\"")
                            .arg(linkName.trimmed(), alias, sourceName.trimmed());
    if (execSql(db, sql) != ErrorClass::None) {
        Tell(failed);
        return false;
    }
    return true;
}

bool DropTable(const QSqlDatabase& db, const QString& name)
{
    const QList<SchemaObject> objs = objectsOf(db);
    const SchemaObject* o = findObject(objs, name, QStringLiteral("temp"));
    if (!o) o = findObject(objs, name);
    if (!o || o->name.startsWith(QLatin1String("sqlite_"))) return false;
    const QString kind = o->type == QLatin1String("view") ? QStringLiteral("VIEW") : QStringLiteral("TABLE");
    return execSql(db, QStringLiteral("DROP %1 %2.\"%3\"").arg(kind, o->schema, o->name)) == ErrorClass::None;
}
