#pragma once
// Everything a company folder holds, as text: each file and link by its path, the rows of
// every table of every store file (sorted), and the text of the small files. Two snapshots are
// equal exactly when nothing a user could see has changed.
#include <QString>
#include <string>
#include <QStringList>

// The rows of every table of one store file, sorted, one line each.
QStringList storeFileRows(const QString& path);
// The folder `root` (the working directory by default) and all below it.
QStringList companySnapshot(const QString& root = QStringLiteral("."));
// The bytes of a file, hashed; empty when it does not exist.
QByteArray fileHash(const QString& path);
// "" when equal; otherwise the lines only in `before` ("- ") and only in `after` ("+ "), at
// most 30, for a readable failure.
std::string snapshotDifference(const QStringList& before, const QStringList& after);
