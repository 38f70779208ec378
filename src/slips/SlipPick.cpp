#include "slips/SlipPick.h"
#include <QDate>
#include "entry/Convert.h"
#include "entry/Dates.h"
#include "shell/Session.h"
#include "store/Sql.h"

QList<SlipListRow> slipListRows(const QString& kind, qint64 partner, short office)
{
    QList<SlipListRow> rows;
    const bool purchase = kind == QLatin1String("Dsr");
    if (!purchase && kind != QLatin1String("Dur")) return rows;
    // Cancelled slips waiting for the ledger run (Dno < 0) never appear.
    Query q(session().MasterDb,
            QStringLiteral("SELECT Dno, Hizuke, Tekiyo FROM %1 WHERE %2 = ? AND EigCode = ? AND Dno > 0 "
                           "ORDER BY Hizuke DESC")
                .arg(kind, purchase ? QStringLiteral("SirCode") : QStringLiteral("TorCode")),
            {partner, office});
    while (q.next()) {
        const QDate d = QDate::fromString(q.value(1).toString(), Qt::ISODate);
        SlipListRow r;
        r.number = FormatRight(q.value(0).toDouble(), QStringLiteral("######"));
        if (d.isValid())
            r.date = QStringLiteral("%1 / %2 / %3 %4").arg(DisplayYear(d)).arg(d.month()).arg(d.day()).arg(WeekdayText(d));
        r.tekiyo = NullToEmpty(q.value(2)).trimmed();
        rows << r;
    }
    return rows;
}
