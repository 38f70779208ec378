#include "store/Backup.h"
#include <cstdio>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include "store/Options.h"
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

namespace {

// A second name for `file`, which stays where it is.
bool keepAside(const QString& file, const QString& aside, QString* error)
{
    if (::link(QFile::encodeName(file).constData(), QFile::encodeName(aside).constData()) == 0
        || QFile::copy(file, aside))
        return true;
    if (error) *error = fileErrorText(QStringLiteral("前回のバックアップを残せません。"), file);
    return false;
}

} // namespace

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
    // Both copies complete before either replaces its generation, and last week's master copy
    // is kept aside until the slip copy has its name too: the two files of one weekday always
    // belong together.
    const QString aside = r.masterCopy + QStringLiteral(".prev");
    QFile::remove(aside);
    const bool hadMaster = QFileInfo::exists(r.masterCopy);
    bool ok = writeCheckedCopy(copyingMasterPath(yearFolderMode, nendo), masterTemp, &r.error)
              && writeCheckedCopy(slipPath(nendo), slipTemp, &r.error)
              && (!hadMaster || keepAside(r.masterCopy, aside, &r.error))
              && putInPlace(masterTemp, r.masterCopy, &r.error);
    if (ok && !putInPlace(slipTemp, r.slipCopy, &r.error)) {
        if (hadMaster) std::rename(QFile::encodeName(aside).constData(), QFile::encodeName(r.masterCopy).constData());
        else QFile::remove(r.masterCopy);
        ok = false;
    }
    QFile::remove(aside);
    if (!ok) {
        removeStoreFile(masterTemp);
        removeStoreFile(slipTemp);
    }
    return finish(ok);
}
