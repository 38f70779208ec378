#include "slips/SlipNumbering.h"
#include "entry/Convert.h"
#include "entry/Dates.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {

// Column names are never built from free text: only these counters and tables exist.
QString counterColumn(const QString& kind)
{
    static const QStringList kinds = {QStringLiteral("Dur"), QStringLiteral("Dsr"), QStringLiteral("Dny"),
                                      QStringLiteral("Dsh"), QStringLiteral("Seikyu")};
    return kinds.contains(kind) ? kind + QStringLiteral("No") : QString();
}

QString slipTable(const QString& kind)
{
    static const QStringList tables = {QStringLiteral("Dur"), QStringLiteral("Dsr"), QStringLiteral("Dny"),
                                       QStringLiteral("Dsh"), QStringLiteral("Dcr"), QStringLiteral("Dhr"),
                                       QStringLiteral("Mit")};
    return tables.contains(kind) ? kind : QString();
}

} // namespace

long GetNextDno(const QString& kind, short office)
{
    const QString col = counterColumn(kind);
    if (col.isEmpty()) return 0;
    const QVariant v = scalar(session().MasterDb, QStringLiteral("SELECT %1 FROM Eig WHERE Code = ?").arg(col), {office});
    return v.isNull() ? 0 : static_cast<long>(v.toLongLong());
}

bool RaiseNextDno(const QString& kind, short office, long candidate, QSqlError* error)
{
    const QString col = counterColumn(kind);
    if (col.isEmpty()) {
        if (error) *error = QSqlError(QString(), QStringLiteral("no counter for %1").arg(kind), QSqlError::StatementError);
        return false;
    }
    return execSql(session().MasterDb,
                   QStringLiteral("UPDATE Eig SET %1 = ? WHERE Code = ? AND IFNULL(%1, 0) < ?").arg(col),
                   {static_cast<qlonglong>(candidate), office, static_cast<qlonglong>(candidate)}, error)
           == ErrorClass::None;
}

long nextFreeDno(const QString& kind, short office)
{
    const QString table = slipTable(kind);
    if (table.isEmpty()) return 1;
    const QVariant v = scalar(session().MasterDb,
                              QStringLiteral("SELECT Dno FROM %1 WHERE EigCode = ? ORDER BY Dno DESC LIMIT 1").arg(table),
                              {office});
    return v.isNull() ? 1 : static_cast<long>(v.toLongLong()) + 1;
}

QString checkPeriod(const QString& year, const QString& month, const QString& day, short sime)
{
    bool ok = true;
    int y = ToInt32(DigitText(year), &ok);
    if (session().Hiz == 1) y += 1988;
    const int m = ToInt32(DigitText(month), &ok);
    const int d = ToInt32(DigitText(day), &ok);
    if (y < 1 || y > 9999 || m < 1 || m > 12 || d < 1 || d > 31) return QStringLiteral("RangeOver");
    return ClosingMonth(sime, static_cast<short>(y), static_cast<short>(m), static_cast<short>(d));
}

QString checkPeriod(const QDate& date, short sime)
{
    if (!date.isValid()) return QStringLiteral("RangeOver");
    return ClosingMonth(sime, static_cast<short>(date.year()), static_cast<short>(date.month()),
                        static_cast<short>(date.day()));
}
