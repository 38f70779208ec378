#include "support/TempCompany.h"
#include <QFile>
#include "shell/Session.h"
#include "store/NewCompany.h"
#include "store/Sql.h"
#include "store/Store.h"

TempCompany::TempCompany(int year, int startMonth, bool enter) : year_(year)
{
    oldCwd_ = QDir::currentPath();
    if (year) {
        NewCompanyOptions o;
        o.year = year;
        o.startMonth = startMonth;
        createCompany(dir_.path(), o, nullptr);
    }
    if (enter) QDir::setCurrent(dir_.path());
}

TempCompany::~TempCompany()
{
    CloseStore();
    session() = Session();
    QDir::setCurrent(oldCwd_);
}

bool TempCompany::useRootMasterFile() const
{
    return QFile::remove(file("MASTER.db")) && QFile::rename(file("MASTER/MASTER.db"), file("MASTER.db"))
           && QDir(file("MASTER")).removeRecursively();
}

bool TempCompany::open()
{
    if (!OpenStore()) return false;
    session().Nendo = year_;
    const bool ok = OpenSlip() && AttachSlipTables();
    CloseSlip();
    return ok;
}

bool TempCompany::execOn(const QString& rel, const QStringList& statements) const
{
    const QString name = QStringLiteral("execOn-") + rel;
    bool ok = true;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        db.setDatabaseName(file(rel));
        ok = db.open();
        for (const QString& sql : statements)
            ok = ok && execSql(db, sql) == ErrorClass::None;
        db.close();
    }
    QSqlDatabase::removeDatabase(name);
    return ok;
}
