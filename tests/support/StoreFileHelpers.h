#pragma once
// Reading a company file as another program would, and the file steps' test hook.
#include <QString>
#include <QVariant>
#include "store/BackupFiles.h"
#include "store/Sql.h"

// One value of `file`, read through a connection of its own.
inline QVariant valueIn(const QString& file, const QString& sql, const QVariantList& binds = {})
{
    OwnConnection c(file);
    return scalar(c.db(), sql, binds);
}

inline QString inFile(const QString& file, const QString& sql) { return valueIn(file, sql).toString(); }

// Sets the hook of the copy, check and rename steps for the lifetime of the object.
struct ScopedFileHook {
    FileStepHook prev;
    explicit ScopedFileHook(FileStepHook h) { prev = setFileStepHook(std::move(h)); }
    ~ScopedFileHook() { setFileStepHook(prev); }
};
