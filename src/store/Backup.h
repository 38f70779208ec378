#pragma once
// The backup: both files of the year copied to a folder, seven generations by weekday
// (MAST<year><weekday>.db and SLIP<year><weekday>.db, Sunday 1). Each copy is a consistent copy
// of the live file, written under a temporary name and renamed over last week's only when both
// copies are complete and read back whole, so a failed backup never destroys the previous one.
#include <QDate>
#include <QString>

// The target folder: UserOP row 5 when the row exists (even blank: then the working
// directory), otherwise defaultBackupFolder().
QString backupFolder();
// ~/VelmoraBackup/<name of the company's folder>: one folder per company, since the file
// names carry only the year and the weekday.
QString defaultBackupFolder();

// 1 for Sunday .. 7 for Saturday.
int backupWeekday(const QDate& day);
// "MAST" or "SLIP", the year, the weekday and ".db": MAST20013.db for a Tuesday of 2001.
QString backupFileName(const QString& stem, int nendo, const QDate& day);

struct BackupResult {
    QString masterCopy;    // where the copies went
    QString slipCopy;
    QString error;         // the reason of a failure, for the log of a script
};

// Copies the master and slip file of `nendo` into `folder` (created when missing). The
// session's connections may stay open. False on any failure, with nothing of last week's
// generation touched.
bool backupStore(const QString& folder, bool yearFolderMode, int nendo, const QDate& day, BackupResult* result);

// The message of a failed backup.
QString backupFailureText();
