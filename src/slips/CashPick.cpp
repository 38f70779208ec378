#include "slips/CashPick.h"
#include <QDate>
#include "entry/Convert.h"
#include "entry/Dates.h"
#include "shell/Session.h"
#include "store/Sql.h"

QList<CashListRow> cashListRows(const QString& kind, qint64 partner, short office)
{
    QList<CashListRow> rows;
    const bool payment = kind == QLatin1String("Dsh");
    if (!payment && kind != QLatin1String("Dny")) return rows;
    Query q(session().MasterDb,
            QStringLiteral("SELECT Dno, MIN(Hizuke) AS aHizuke FROM %1 WHERE %2 = ? AND EigCode = ? AND Dno > 0 "
                           "GROUP BY Dno ORDER BY aHizuke DESC, Dno DESC")
                .arg(kind, payment ? QStringLiteral("SirCode") : QStringLiteral("TorCode")),
            {partner, office});
    while (q.next()) {
        const QDate d = QDate::fromString(q.value(1).toString(), Qt::ISODate);
        CashListRow r;
        r.number = FormatRight(q.value(0).toDouble(), QStringLiteral("######"));
        if (d.isValid())
            r.date = QStringLiteral("%1 年 %2 月 %3 日 %4").arg(DisplayYear(d)).arg(d.month()).arg(d.day()).arg(WeekdayText(d));
        rows << r;
    }
    return rows;
}
