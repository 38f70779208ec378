#include "support/DamagedFile.h"
#include <QFile>
#include <QSqlDatabase>
#include "store/Sql.h"

bool damageLeaf(const QString& path, const QString& object, int n)
{
    const QString conn = QStringLiteral("damage-leaf");
    int page = 0, pageSize = 0;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), conn);
        db.setDatabaseName(path);
        if (db.open()) {
            page = scalar(db, QStringLiteral("SELECT pageno FROM dbstat WHERE name=? AND pagetype='leaf' "
                                             "ORDER BY pageno LIMIT 1 OFFSET ?"),
                          {object, n})
                       .toInt();
            pageSize = scalar(db, QStringLiteral("PRAGMA page_size")).toInt();
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(conn);
    if (page < 2 || pageSize <= 0) return false;
    QFile f(path);
    if (!f.open(QIODevice::ReadWrite) || !f.seek(qint64(page - 1) * pageSize)) return false;
    return f.write(QByteArray(pageSize, char(0xA5))) == pageSize;
}
