#include "ledgers/LedgerBatch.h"
#include <QList>
#include "ledgers/CustomerPosting.h"
#include "ledgers/ProductPosting.h"
#include "ledgers/SupplierPosting.h"

namespace {

// Calendar months of the marked lines in ascending order; a line without a date reads as 0.
QList<int> markedMonths(LedgerRun& run, const QString& table)
{
    QSqlQuery& q = run.query(sqlText(QStringLiteral("SELECT {calendarMonth} AS aGetudo FROM {lines} WHERE ThiFlag=? "
                                                    "GROUP BY {calendarMonth} ORDER BY {calendarMonth}"),
                                     {{"calendarMonth", monthOf(QStringLiteral("Hizuke"))}, {"lines", table}}),
                             {run.flag});
    QList<int> out;
    while (q.next() && out.size() < 13) out << q.value(0).toInt();
    return out;
}

} // namespace

bool PostProductMonths(LedgerRun& run)
{
    run.show(QStringLiteral("商品台帳処理中"));
    // Only the first twelve entries of each list are looked at.
    const QList<int> sales = markedMonths(run, QStringLiteral("Dud")).mid(0, 12);
    const QList<int> purchases = markedMonths(run, QStringLiteral("Dsd")).mid(0, 12);
    int m = run.firstMonth;
    for (int i = 0; i < 12 && run.ok(); ++i, m = nextMonth(m))
        if (sales.contains(m) || purchases.contains(m)) PostProductMonth(run, m);
    return run.ok();
}

bool PostSalesGroups(LedgerRun& run)
{
    run.show(QStringLiteral("売上伝票処理中"));
    for (int mode = 1; mode <= 4 && run.ok(); ++mode) {
        QSqlQuery& q = run.query(QStringLiteral("SELECT Dud.Getudo,Dud.TorCode FROM Dud INNER JOIN Tor ON Dud.TorCode = Tor.Code "
                                                "WHERE ThiFlag=? And Tor.Zeituuchi = ? GROUP BY Dud.Getudo,Dud.TorCode "
                                                "ORDER BY Dud.Getudo,Dud.TorCode"),
                                 {run.flag, mode});
        QList<QPair<int, qint64>> groups;
        while (q.next()) groups << qMakePair(q.value(0).toInt(), q.value(1).toLongLong());
        for (const auto& g : groups) {
            if (!PostCustomerGroup(run, g.first, g.second, mode)) break;
        }
    }
    return run.ok();
}

bool PostPurchaseMonths(LedgerRun& run)
{
    run.show(QStringLiteral("仕入伝票処理中"));
    QSqlQuery& q = run.query(QStringLiteral("SELECT Getudo FROM Dsd WHERE ThiFlag=? GROUP BY Getudo ORDER BY Getudo"),
                             {run.flag});
    QList<int> months;
    while (q.next()) months << q.value(0).toInt();
    for (int m : months)
        if (!PostSupplierMonth(run, m)) break;
    return run.ok();
}

bool runLedgerProcessing(const ProgressFn& progress, QString* error, QList<UnreachedLine>* unreached)
{
    LedgerRun run(progress);
    PostingUnit unit(run.db);
    if (!unit.active()) run.fail(unit.beginError());
    QList<UnreachedLine> passedOver;
    if (run.ok()) {
        // Read before the postings: the marks are still there to tell the lines by.
        passedOver = findUnreachedLines(run);
        PostProductMonths(run);
        PostSalesGroups(run);
        PostPurchaseMonths(run);
        // Marks and negated rows go only once all three ledgers hold the lines.
        for (const char* lines : {"Dud", "Dsd"})
            run.exec(sqlText(QStringLiteral("UPDATE {lines} SET ThiFlag={posted} WHERE ThiFlag=?"),
                             {{"lines", QLatin1String(lines)}, {"posted", rowText(ThiFlag::Posted)}}),
                     {run.flag});
        run.exec(QStringLiteral("DELETE FROM Dur WHERE Dno<0"));
        run.exec(QStringLiteral("DELETE FROM Dud WHERE Dno<0"));
        run.exec(QStringLiteral("DELETE FROM Dsr WHERE Dno<0"));
        run.exec(QStringLiteral("DELETE FROM Dsd WHERE Dno<0"));
    }
    if (!finishUnit(run, unit, error)) return false;
    if (unreached) *unreached = passedOver;
    return true;
}
