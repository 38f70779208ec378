#pragma once
// Opening the company's files. The master file is the one connection of the session
// (`session().MasterDb`); the year's slip file is attached to it as schema `slip`, so every
// table of both files is reached by its plain name. Paths are relative to the working
// directory, which is the root of the company.
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

struct StoreFailure {
    int number = 0;          // SQLite result code (14: the file does not exist)
    QString source;
    QString description;
};

// The text of the fatal store error box (title "エラー").
QString storeFailureText(const StoreFailure& f);
// The last failure of OpenStore / ReopenMaster / OpenSlip / AttachSlipTables / AttachTable.
// The store shows no dialog: the shell shows the failure (ShowStoreFailure).
const StoreFailure& lastStoreFailure();
// What opening did that the clerk must hear of (a repair, and where the damaged file was
// put), oldest first; each is handed out once.
QStringList takeStoreNotices();

// Start: tests for the marker NENDO, sets YearFolderMode (and Nendo from the marker) and
// opens the master file as MasterDb. False on failure (lastStoreFailure); the caller stops.
bool OpenStore();
// Opens the master file again for the session's Nendo (year change, year-end update).
bool ReopenMaster();
// Opens <Nendo>/SLIP.db as SlipDb. Never creates it.
bool OpenSlip();
QSqlDatabase SlipDb();
void CloseSlip();
// Attaches the open slip file to MasterDb as schema `slip`, replacing any earlier year.
// A master object of the same name as a slip table (a stale link) is dropped first.
// False with lastStoreFailure set when the store refused.
bool AttachSlipTables();
// Closes every connection of the session.
void CloseStore();

// True when db holds a table or view of that name (trimmed, case-insensitive), in any schema.
bool TableExists(const QSqlDatabase& db, const QString& name);
// Makes `linkName` a view of table `sourceName` in the file `connect` (attached once as
// `old`, `old2`, ...). An existing name or a refusal of the store: false, and the caller
// tells attachFailedText() ("アタッチに失敗しました。").
bool AttachTable(const QSqlDatabase& db, const QString& linkName, const QString& sourceName,
                 const QString& connect);
QString attachFailedText();
// Drops the link (or table) of that name.
bool DropTable(const QSqlDatabase& db, const QString& name);

// File names of the layout.
QString masterFileName();                 // "MASTER.db"
QString slipPath(int nendo);              // "<nendo>/SLIP.db"
QString yearMasterPath(int nendo);        // "<nendo>/MASTER.db"
QString reopenMasterPathNoMarker();       // "MASTER/MASTER.db"

// Opens a store file on its own connection: never creates it, refuses a file that is no
// database and leaves it alone, and gives a damaged file one repair (store/Repair.h; the
// notice goes to takeStoreNotices). `checkPages` reads every page at opening, not only the
// schema: for the small master file. Used by the store itself, the tools and the tests.
bool openStoreFile(const QString& connectionName, const QString& path, StoreFailure* failure,
                   bool checkPages = false);
