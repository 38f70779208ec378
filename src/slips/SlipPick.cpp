#include "slips/SlipPick.h"
#include <QDate>
#include "entry/Convert.h"
#include "entry/Dates.h"
#include "shell/Session.h"
#include "slips/SlipKinds.h"
#include "store/Sql.h"

QList<SlipListRow> slipListRows(const QString& kind, qint64 partner, short office)
{
    QList<SlipListRow> rows;
    const SlipKind* k = slipKind(kind);
    if (!k) return rows;
    const bool money = k->head.isEmpty();
    const QString partnerColumn = k->partner == QLatin1String("Sir") ? QStringLiteral("SirCode") : QStringLiteral("TorCode");
    // Cancelled slips waiting for the ledger run (Dno < 0) never appear.
    const QString sql = money ? QStringLiteral("SELECT Dno, MIN(Hizuke) AS aHizuke, NULL FROM %1 WHERE %2 = ? AND EigCode = ? "
                                               "AND Dno > 0 GROUP BY Dno ORDER BY aHizuke DESC, Dno DESC")
                              : QStringLiteral("SELECT Dno, Hizuke, Tekiyo FROM %1 WHERE %2 = ? AND EigCode = ? AND Dno > 0 "
                                               "ORDER BY Hizuke DESC");
    const QString date = money ? QStringLiteral("%1 年 %2 月 %3 日 %4") : QStringLiteral("%1 / %2 / %3 %4");
    Query q(session().MasterDb, sql.arg(kind, partnerColumn), {partner, office});
    while (q.next()) {
        const QDate d = QDate::fromString(q.value(1).toString(), Qt::ISODate);
        SlipListRow r;
        r.number = FormatRight(q.value(0).toDouble(), QStringLiteral("######"));
        if (d.isValid()) r.date = date.arg(DisplayYear(d)).arg(d.month()).arg(d.day()).arg(WeekdayText(d));
        r.tekiyo = NullToEmpty(q.value(2)).trimmed();
        rows << r;
    }
    return rows;
}
