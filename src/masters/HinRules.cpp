#include "masters/HinRules.h"

#include "entry/Convert.h"
#include "entry/Recordset.h"
#include "store/Sql.h"

namespace {
const QString kHin = QStringLiteral("Hin");
const QString kCode = QStringLiteral("Code");
}  // namespace

QString hinStoreCode(const QString& typed)
{
    QString t = typed;
    return ZeroPad13(t);
}

QString hinScreenCode(const QString& stored)
{
    QString t = stored;
    return ZeroStrip(t);
}

std::optional<QVariantMap> hinRow(const QSqlDatabase& db, const QString& storedCode)
{
    return ReadRow(db, kHin, {{kCode, storedCode}});
}

ErrorClass registerHin(const QSqlDatabase& db, const QString& storedCode, const ColumnValues& values,
                       QSqlError* error)
{
    return UpsertRow(db, kHin, {{kCode, storedCode}}, values, error);
}

QString hinSlipRefusal(const QSqlDatabase& db, const QString& storedCode)
{
    struct Check { const char* table; const char* message; };
    static const Check checks[] = {
        {"Dud", "売上伝票に使用していますので削除できません。"},
        {"Dsd", "仕入伝票に使用していますので削除できません。"},
    };
    for (const Check& c : checks) {
        const QString table = QString::fromLatin1(c.table);
        bool failed = false;
        if (!AnyRow(db, table, {{QStringLiteral("HinCode"), storedCode}}, &failed)) continue;
        if (failed) return StoreErrorText(Query(db, QStringLiteral("SELECT 1 FROM ") + table).error());
        return QString::fromUtf8(c.message);
    }
    return QString();
}

ErrorClass deleteHin(const QSqlDatabase& db, const QString& storedCode, QSqlError* error)
{
    return DeleteRows(db, kHin, {{kCode, storedCode}}, error);
}
