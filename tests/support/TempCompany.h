#pragma once
// A fresh company in a temporary folder, made the working directory for the test's lifetime.
#include <QDir>
#include <QString>
#include <QTemporaryDir>

class TempCompany {
public:
    // year 0: no company is created, the folder is only entered.
    explicit TempCompany(int year = 2026, int startMonth = 4, bool enter = true);
    ~TempCompany();
    QString path() const { return dir_.path(); }
    QString file(const QString& rel) const { return dir_.filePath(rel); }
    // OpenStore + OpenSlip + AttachSlipTables + CloseSlip with session().Nendo = year.
    bool open();
private:
    QTemporaryDir dir_;
    QString oldCwd_;
    int year_;
};
