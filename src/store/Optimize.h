#pragma once
// Compaction of both files of a year. Each file is written compacted under its N name
// (MASTERN.db, SLIPN.db) and read back whole; only when both are sound does each take its
// file's place, the previous file kept as .bak (one generation). The files must be free:
// the caller closes the session's connections first.
#include <QList>
#include <QString>

struct CompactionFiles {
    QString file;      // MASTER/MASTER.db, <year>/MASTER.db or <year>/SLIP.db; behind a link, the real file
    QString compact;   // MASTERN.db / SLIPN.db beside it
    QString previous;  // MASTER.bak / SLIP.bak beside it
};

// Master first, then the slip file, as the layout of the company has them.
QList<CompactionFiles> compactionFiles(bool yearFolderMode, int nendo);

// Compacts both files. A file with a damaged page is repaired first (the notice goes to
// takeStoreNotices, for the caller to tell). False with `error` set when anything failed; the files are then as
// they were (a failure while copying) or one of them already compacted (a failure while
// renaming, which changes nothing of their content).
bool compactStore(bool yearFolderMode, int nendo, QString* error);
