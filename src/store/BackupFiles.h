#pragma once
// Whole-file work on a company's store, shared by the backup, the compaction and the year-end
// update. A file is never overwritten in place: a consistent copy of the live file is written
// under a temporary name, read back whole, synced, and only then renamed over its target, so
// at no instant is a file's own name missing or a finished copy replaced by a broken one.
#include <functional>
#include <QSqlDatabase>
#include <QString>

// A connection of its own on an existing store file (never created by opening), with the
// session's busy timeout; closed and removed when the object goes.
class OwnConnection {
public:
    explicit OwnConnection(const QString& path);
    ~OwnConnection();
    bool isOpen() const { return open_; }
    QSqlDatabase db() const;
    OwnConnection(const OwnConnection&) = delete;
    OwnConnection& operator=(const OwnConnection&) = delete;
private:
    QString name_;
    bool open_ = false;
};

// The master file on the copying paths: with the marker <nendo>/MASTER.db, without it
// MASTER/MASTER.db (the root MASTER.db being a link or copy of it).
QString copyingMasterPath(bool yearFolderMode, int nendo);

// Empty when the master file is where the copying paths look for it. Otherwise the message
// that names the missing file and the layout it needs; the caller changes nothing then.
QString masterLayoutProblem(bool yearFolderMode, int nendo);

// Test hook, asked before each named step ("copy", "check", "place", "keep") with the file it
// is about; false makes the step fail there. An empty hook restores the default (go on).
using FileStepHook = std::function<bool(const QString& step, const QString& path)>;
FileStepHook setFileStepHook(FileStepHook hook);

// Writes a consistent copy of the store file `source` to `temp` through a connection of its
// own (VACUUM INTO: a snapshot even while others have the file open), checks it whole and
// syncs it to disk. On failure `temp` is gone and `error` says why.
bool writeCheckedCopy(const QString& source, const QString& temp, QString* error);

// The same without the reading back and the sync, for a copy that is only a start.
bool writeCopy(const QString& source, const QString& temp, QString* error);

// PRAGMA integrity_check of a file through a connection of its own.
bool fileIsSound(const QString& path, QString* error);

// Renames `temp` over `target` in one step and syncs the folder.
bool putInPlace(const QString& temp, const QString& target, QString* error);

// Replaces `file` by `replacement` and keeps the previous file as `keep`, replacing an older
// `keep`. The file's name never goes missing: the previous file gets a second name first, the
// replacement is renamed over the file, and only then does the second name become `keep`.
bool replaceKeepingPrevious(const QString& file, const QString& replacement, const QString& keep,
                            QString* error);

// A journal beside the file: another program is writing it, or left it half-written.
bool hasJournal(const QString& file);

// Removes a file and its journal, when there.
void removeStoreFile(const QString& path);

// "エラー：" with a file operation's reason and the file.
QString fileErrorText(const QString& what, const QString& path);
