#include "store/Optimize.h"
#include <QFileInfo>
#include <QSqlDatabase>
#include "store/BackupFiles.h"
#include "store/Store.h"

namespace {

// The store's own opening repairs a file that reads back damaged, before it is compacted.
// Every page is read, not only the schema: a damaged page of the slip file, which the start
// does not read through, is what sends the clerk here.
bool repaired(const QString& file, QString* error)
{
    const QString conn = QStringLiteral("VelmoraCompactRepair");
    StoreFailure failure;
    const bool ok = openStoreFile(conn, file, &failure, true);
    {
        QSqlDatabase db = QSqlDatabase::database(conn, false);
        if (db.isOpen()) db.close();
    }
    QSqlDatabase::removeDatabase(conn);
    if (!ok && error) *error = storeFailureText(failure);
    return ok;
}

CompactionFiles filesOf(const QString& path, const QString& stem)
{
    // A file behind a link is compacted where it lives: renaming over the link would leave
    // the link's other names on the old, uncompacted file.
    const QFileInfo info(path);
    const QString file = info.isSymLink() && info.exists() ? info.canonicalFilePath() : path;
    const QString dir = QFileInfo(file).path() + QLatin1Char('/');
    return {file, dir + stem + QStringLiteral("N.db"), dir + stem + QStringLiteral(".bak")};
}

} // namespace

QList<CompactionFiles> compactionFiles(bool yearFolderMode, int nendo)
{
    return {filesOf(copyingMasterPath(yearFolderMode, nendo), QStringLiteral("MASTER")),
            filesOf(slipPath(nendo), QStringLiteral("SLIP"))};
}

bool compactStore(bool yearFolderMode, int nendo, QString* error)
{
    if (const QString problem = masterLayoutProblem(yearFolderMode, nendo); !problem.isEmpty()) {
        if (error) *error = problem;
        return false;
    }
    const QList<CompactionFiles> files = compactionFiles(yearFolderMode, nendo);
    auto dropCopies = [&] {
        for (const CompactionFiles& f : files) removeStoreFile(f.compact);
    };
    for (const CompactionFiles& f : files)
        if (!repaired(f.file, error)) return false;
    for (const CompactionFiles& f : files) {
        // Reading the file through the engine first rolls back what a crash left half-written;
        // a journal still there afterwards is another program's write in progress.
        if (!writeCheckedCopy(f.file, f.compact, error)) {
            dropCopies();
            return false;
        }
        if (hasJournal(f.file)) {
            dropCopies();
            if (error) *error = fileErrorText(QStringLiteral("他の端末が使用中です。"), f.file);
            return false;
        }
    }
    for (const CompactionFiles& f : files)
        if (!replaceKeepingPrevious(f.file, f.compact, f.previous, error)) {
            dropCopies();
            return false;
        }
    return true;
}
