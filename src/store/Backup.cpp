#include "store/Backup.h"
#include <QDir>
#include <QFileInfo>
#include "masters/SystemRows.h"
#include "store/BackupFiles.h"
#include "store/Store.h"

QString defaultBackupFolder()
{
    return QDir::homePath() + QStringLiteral("/VelmoraBackup/") + QDir::current().dirName();
}

QString backupFolder()
{
    const std::optional<QString> row = readOption(kOptBackupPath);
    if (!row) return defaultBackupFolder();
    return row->trimmed();
}

int backupWeekday(const QDate& day)
{
    return day.dayOfWeek() % 7 + 1;   // Qt counts Monday 1 .. Sunday 7
}

QString backupFileName(const QString& stem, int nendo, const QDate& day)
{
    return stem + QString::number(nendo) + QString::number(backupWeekday(day)) + QStringLiteral(".db");
}

QString backupFailureText()
{
    return QStringLiteral("バックアップ機器の電源が入っていないか,\nパスの設定が異なります。");
}

bool backupStore(const QString& folderText, bool yearFolderMode, int nendo, const QDate& day, BackupResult* result)
{
    BackupResult r;
    auto finish = [&](bool ok) {
        if (result) *result = r;
        return ok;
    };
    if (const QString problem = masterLayoutProblem(yearFolderMode, nendo); !problem.isEmpty()) {
        r.error = problem;
        return finish(false);
    }
    // A folder written the other system's way still names the same place.
    QString folder = QString(folderText).replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (!folder.isEmpty() && !folder.endsWith(QLatin1Char('/'))) folder += QLatin1Char('/');
    if (!folder.isEmpty()) QDir().mkpath(folder);
    r.masterCopy = folder + backupFileName(QStringLiteral("MAST"), nendo, day);
    r.slipCopy = folder + backupFileName(QStringLiteral("SLIP"), nendo, day);
    const QString masterTemp = r.masterCopy + QStringLiteral(".new");
    const QString slipTemp = r.slipCopy + QStringLiteral(".new");
    // Both copies complete before either replaces its generation: the two files of one
    // weekday always belong together.
    const bool ok = writeCheckedCopy(copyingMasterPath(yearFolderMode, nendo), masterTemp, &r.error)
                    && writeCheckedCopy(slipPath(nendo), slipTemp, &r.error)
                    && putInPlace(masterTemp, r.masterCopy, &r.error) && putInPlace(slipTemp, r.slipCopy, &r.error);
    if (!ok) {
        removeStoreFile(masterTemp);
        removeStoreFile(slipTemp);
    }
    return finish(ok);
}
