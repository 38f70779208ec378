#pragma once
// The repair of a damaged store file. It works on copies beside the real file (a link such
// as MASTER.db -> MASTER/MASTER.db is followed): the damaged original is kept as
// <name>.damaged-<date>-<time>, a rebuilt copy is made and checked with integrity_check,
// and only then does the rebuilt content replace the file's content, in one transaction
// through SQLite itself. The file's name is never missing, and a station that has the file
// open goes on with the repaired content. A repair cut off at any point leaves the file as
// it was (damaged, to be repaired again) or repaired.
#include <QSqlError>
#include <QString>
#include <QStringList>

struct RepairOutcome {
    QString file;            // the real file that was repaired
    QString damagedCopy;     // the damaged original, kept beside it
    QStringList lostTables;  // tables with rows that could not be read back
    QSqlError error;         // why there was no repair
    QString reason;          // the same in the clerk's words
};

// True when the file is repaired. False when it cannot be (not a database, its schema
// unreadable, the rebuilt copy not sound, other stations holding it past the busy timeout):
// the file is then left as it was, and no copy stays behind.
bool repairStoreFile(const QString& path, RepairOutcome* out);

// What the clerk is told after a repair: that it took place, where the original is, and
// which tables lost rows.
QString repairNotice(const RepairOutcome& r);

// True when the file passes PRAGMA quick_check (a file that cannot be read does not).
bool pagesSound(const QString& connectionName);
