#include "store/Store.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlQuery>
#include "store/BackupFiles.h"
#include "store/Repair.h"
#include "store/Session.h"
#include "store/Schema.h"
#include "store/Sql.h"

namespace {

const QString kMasterConn = QStringLiteral("MasterDb");
const QString kSlipConn = QStringLiteral("SlipDb");
StoreFailure gLast;
QStringList gNotices;

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

// Opens and reads the schema; `deep` also reads every page (the small master file). A file
// that reads back as damaged sets *damaged; one that is no database at all does not.
bool tryOpen(const QString& conn, const QString& path, bool deep, StoreFailure* f, bool* damaged)
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
    installLockWait(db);
    // Opening is lazy in SQLite: read the schema now so a damaged file shows itself here.
    bool failed = false;
    {
        Query probe(db, QStringLiteral("SELECT count(*) FROM sqlite_master"));
        if (!probe.ok()) {
            failed = true;
            *f = failureFrom(probe.error());
            if (f->number == 26)
                f->description = QStringLiteral("データベースのファイルではありません。(%1)")
                                     .arg(QDir::current().absoluteFilePath(path));
            *damaged = (f->number & 0xff) == 11;
        }
    }
    if (!failed && deep && !pagesSound(conn)) {
        failed = *damaged = true;
        *f = StoreFailure{11, QStringLiteral("SQLite"), QStringLiteral("database disk image is malformed")};
    }
    if (!failed) return true;
    db.close();
    return false;
}

bool reportFailure(const StoreFailure& f)
{
    gLast = f;
    return false;
}

} // namespace

QString storeFailureText(const StoreFailure& f)
{
    return QStringLiteral("エラー番号 ") + QString::number(f.number) + f.source
           + QStringLiteral(" でエラーが発生しました。 \n") + f.description;
}

const StoreFailure& lastStoreFailure() { return gLast; }

QStringList takeStoreNotices()
{
    QStringList out;
    out.swap(gNotices);
    return out;
}

QString attachFailedText() { return QStringLiteral("アタッチに失敗しました。"); }

QString masterFileName() { return QStringLiteral("MASTER.db"); }
QString slipPath(int nendo) { return QString::number(nendo) + QStringLiteral("/SLIP.db"); }
QString yearMasterPath(int nendo) { return QString::number(nendo) + QStringLiteral("/MASTER.db"); }
QString reopenMasterPathNoMarker() { return QStringLiteral("MASTER/MASTER.db"); }

bool openStoreFile(const QString& conn, const QString& path, StoreFailure* failure, bool checkPages)
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
    if (tryOpen(conn, path, checkPages, &f, &damaged)) return true;
    if (damaged) {
        // One repair, then the file opens or the failure stands.
        closeConnection(conn);
        RepairOutcome r;
        if (repairStoreFile(path, &r)) {
            gNotices << repairNotice(r);
            f = StoreFailure();
            if (tryOpen(conn, path, checkPages, &f, &damaged)) return true;
        } else {
            f.description += QStringLiteral("\n") + r.reason;
        }
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
    if (!openStoreFile(kMasterConn, path, &f, true)) return reportFailure(f);
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
        QSqlError err;
        if (execSql(master, QStringLiteral("DETACH DATABASE slip"), {}, &err) != ErrorClass::None)
            return reportFailure(failureFrom(err));
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
    if (execSql(master, QStringLiteral("ATTACH DATABASE ? AS slip"), {file}, &err) != ErrorClass::None)
        return reportFailure(failureFrom(err));
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
    const auto refused = [](const QSqlError& e = {}) {
        return reportFailure(StoreFailure{sqliteCode(e), QStringLiteral("SQLite"),
                                          e.type() == QSqlError::NoError ? attachFailedText() : e.databaseText()});
    };
    QString path = connect;
    if (path.startsWith(QLatin1String(";DATABASE="), Qt::CaseInsensitive)) path = path.mid(10);
    if (TableExists(db, linkName) || !isPlainName(linkName.trimmed()) || !isPlainName(sourceName.trimmed())
        || !QFileInfo(path).isFile())
        return refused();
    const QString canonical = QFileInfo(path).canonicalFilePath();
    QString alias;
    QStringList used;
    Query list(db, QStringLiteral("PRAGMA database_list"));
    while (list.next()) {
        used << list.value(1).toString();
        if (QFileInfo(list.value(2).toString()).canonicalFilePath() == canonical) alias = list.value(1).toString();
    }
    QSqlError err;
    if (alias.isEmpty()) {
        alias = QStringLiteral("old");
        for (int i = 2; used.contains(alias); ++i) alias = QStringLiteral("old%1").arg(i);
        if (execSql(db, QStringLiteral("ATTACH DATABASE ? AS %1").arg(alias), {canonical}, &err) != ErrorClass::None)
            return refused(err);
    }
    const QString sql = QStringLiteral("CREATE TEMP VIEW \"%1\" AS SELECT * FROM %2.\"%3\"")
                            .arg(linkName.trimmed(), alias, sourceName.trimmed());
    if (execSql(db, sql, {}, &err) != ErrorClass::None) return refused(err);
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
