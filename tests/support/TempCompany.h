#pragma once
// A fresh company in a temporary folder, made the working directory for the test's lifetime.
#include <QDir>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

class TempCompany {
public:
    // year 0: no company is created, the folder is only entered.
    explicit TempCompany(int year = 2026, int startMonth = 4, bool enter = true);
    ~TempCompany();
    QString path() const { return dir_.path(); }
    QString file(const QString& rel) const { return dir_.filePath(rel); }
    // The layout of an installation from before the MASTER folder: the root MASTER.db a plain
    // file, no MASTER folder (a new company keeps MASTER/MASTER.db with a link at the root).
    bool useRootMasterFile() const;
    // OpenStore + OpenSlip + AttachSlipTables + CloseSlip with session().Nendo = year.
    bool open();
    // Runs statements on one of the company's files (e.g. "2026/SLIP.db") through a
    // connection of its own, as another program would; false at the first failure.
    bool execOn(const QString& rel, const QStringList& statements) const;
private:
    QTemporaryDir dir_;
    QString oldCwd_;
    int year_;
};
