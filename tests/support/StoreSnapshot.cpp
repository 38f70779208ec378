#include "support/StoreSnapshot.h"
#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSqlRecord>
#include "store/BackupFiles.h"
#include "store/Sql.h"

QStringList storeFileRows(const QString& path)
{
    QStringList out;
    OwnConnection c(path);
    if (!c.isOpen()) return {QStringLiteral("<cannot open>")};
    QStringList tables;
    Query list(c.db(), QStringLiteral("SELECT name FROM sqlite_master WHERE type='table' ORDER BY name"));
    while (list.next()) tables << list.value(0).toString();
    for (const QString& t : tables) {
        Query q(c.db(), QStringLiteral("SELECT * FROM \"%1\"").arg(t));
        QStringList rows;
        while (q.next()) {
            QStringList row{t};
            const QSqlRecord r = q.raw().record();
            for (int i = 0; i < r.count(); ++i) row << (r.isNull(i) ? QStringLiteral("<null>") : r.value(i).toString());
            rows << row.join(QLatin1Char('|'));
        }
        rows.sort();
        out << rows;
    }
    return out;
}

QStringList companySnapshot(const QString& root)
{
    QStringList paths;
    QDirIterator it(root, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) paths << QDir(root).relativeFilePath(it.next());
    paths.sort();
    QStringList out;
    for (const QString& p : paths) {
        const QFileInfo f(QDir(root).filePath(p));
        if (f.isSymLink()) out << p + QStringLiteral(" -> ") + QDir(root).relativeFilePath(f.symLinkTarget());
        else if (f.isDir()) out << p + QLatin1Char('/');
        else if (p.endsWith(QLatin1String(".db")) || p.endsWith(QLatin1String(".bak"))) out << p << storeFileRows(f.filePath());
        else {
            QFile file(f.filePath());
            file.open(QIODevice::ReadOnly);
            out << p + QStringLiteral(": ") + QString::fromUtf8(file.readAll());
        }
    }
    return out;
}

QByteArray fileHash(const QString& path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly)) return {};
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

std::string snapshotDifference(const QStringList& before, const QStringList& after)
{
    QStringList onlyBefore = before;
    QStringList onlyAfter;
    for (const QString& l : after)
        if (!onlyBefore.removeOne(l)) onlyAfter << l;
    QStringList lines;
    for (const QString& l : onlyBefore) lines << QStringLiteral("- ") + l;
    for (const QString& l : onlyAfter) lines << QStringLiteral("+ ") + l;
    return lines.mid(0, 30).join(QLatin1Char('\n')).toStdString();
}
