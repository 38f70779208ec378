#include "ledgers/SupplierPosting.h"
#include "ledgers/LedgerRun.h"
#include "ledgers/LedgerSteps.h"

namespace {

// Tax per invoice of the run's marked credit purchase lines of one rate, into row `getudo`.
bool postInvoiceTax(LedgerRun& run, int month, bool newRate, int getudo, const QString& stepText)
{
    const QString dateTest = newRate ? QStringLiteral("Dsd.Hizuke>?") : QStringLiteral("Dsd.Hizuke<=?");
    QSqlQuery& q = run.query(QStringLiteral(
        "SELECT Dsr.SirCode, Dsr.EigCode, MIN(Sir.HsuType) AS aHsuType, MIN(Sir.Hsu) AS aHsu, SUM(Dsd.UGaku) AS tGaku "
        "FROM Dsd INNER JOIN Sir ON Dsd.SirCode=Sir.Code "
        "INNER JOIN Dsr ON Dsr.EigCode=Dsd.EigCode AND Dsr.Dno=Dsd.Dno "
        "WHERE Dsd.Getudo=? AND Dsd.ThiFlag=? AND Sir.Zeituuchi=1 AND Dsr.Kubun=0 AND Dsd.ZeiFlag=1 AND %1 "
        "GROUP BY Dsr.SirCode, Dsr.EigCode").arg(dateTest),
        {month, run.flag, dateText(run.rates.TaxChangeDate)});
    struct Row { QVariant sir, eig; Money tax; };
    QList<Row> rows;
    while (q.next())
        rows << Row{q.value(0), q.value(1),
                    CalcTax(run.rates, newRate, Money::fromStore(q.value(4)), static_cast<short>(q.value(2).toInt()),
                            static_cast<short>(q.value(3).toInt()))};
    int done = 0;
    for (const Row& r : rows) {
        run.exec(QStringLiteral("INSERT OR IGNORE INTO TsiD (SirCode, Getudo, EigCode, ZeiGaku) VALUES (?, ?, ?, ?)"),
                 {r.sir, getudo, r.eig, r.tax.toStore()});
        run.show(stepText + QStringLiteral("%1 / %2").arg(++done).arg(rows.size()));
    }
    return run.ok();
}

} // namespace

bool PostSupplierMonth(LedgerRun& run, int month)
{
    const MoneySide& side = supplierSide();
    deleteScratch(run, side);

    run.show(QStringLiteral("仕入先台帳：Step 1"));
    QStringList sums;
    for (int k = 0; k < 4; ++k) sums << QStringLiteral("SUM(CASE WHEN Kubun=%1 THEN UGaku END)").arg(k);
    run.exec(QStringLiteral("INSERT OR IGNORE INTO TsiD (SirCode, Getudo, EigCode, Gaku, HGaku, NGaku, KGaku) "
                            "SELECT SirCode, -1, EigCode, %1 FROM Dsd WHERE Getudo=? AND ThiFlag=? "
                            "GROUP BY SirCode, EigCode").arg(sums.join(QStringLiteral(", "))),
             {month, run.flag});
    if (run.changes() > 0) run.show(QStringLiteral("仕入先台帳：Step 1 %1 / %1").arg(run.changes()));

    // Only the run's own lines are taxed: the month's tax grows by a separately rounded delta.
    postInvoiceTax(run, month, false, -2, QStringLiteral("仕入先台帳：Step 2 "));
    postInvoiceTax(run, month, true, -3, QStringLiteral("仕入先台帳：Step 3 "));

    run.show(QStringLiteral("仕入先台帳：Step 4"));
    run.exec(QStringLiteral("INSERT OR IGNORE INTO TsiD (SirCode, Zeigaku, Getudo, EigCode) "
                            "SELECT Dsr.SirCode, SUM(Dsd.ZeiGaku), -4, Dsr.EigCode "
                            "FROM Sir INNER JOIN Dsr ON Sir.Code=Dsr.SirCode "
                            "INNER JOIN Dsd ON Dsd.Dno=Dsr.Dno AND Dsd.EigCode=Dsr.EigCode "
                            "WHERE Sir.Zeituuchi<>1 AND Dsd.Getudo=? AND Dsd.ZeiFlag IN (1, 4) AND Dsd.ThiFlag=? "
                            "GROUP BY Dsr.SirCode, Dsr.EigCode"),
             {month, run.flag});

    run.show(QStringLiteral("仕入先台帳：Step 5"));
    run.exec(QStringLiteral("INSERT OR IGNORE INTO TsiD (SirCode, Zeigaku, Getudo, EigCode) "
                            "SELECT SirCode, SUM(Zeigaku), -5, EigCode FROM Dsd WHERE ZeiFlag=2 AND Getudo=? AND ThiFlag=? "
                            "GROUP BY SirCode, EigCode"),
             {month, run.flag});

    run.show(QStringLiteral("仕入先台帳：Step 6"));
    run.exec(QStringLiteral("INSERT OR IGNORE INTO TsiD (SirCode, Genkin, Getudo, EigCode) "
                            "SELECT Dsr.SirCode, SUM(Dsd.UGaku+Dsd.ZeiGaku), -6, Dsr.EigCode "
                            "FROM Dsd INNER JOIN Dsr ON Dsd.Dno=Dsr.Dno AND Dsd.EigCode=Dsr.EigCode "
                            "WHERE Dsd.Getudo=? AND Dsd.ThiFlag=? AND Dsr.Kubun=1 GROUP BY Dsr.SirCode, Dsr.EigCode"),
             {month, run.flag});

    scratchNullsToZero(run, side);
    sumScratch(run, side);

    // New suppliers: a head from `Sir` (none for a code gone from it) and 13 zero month rows.
    const QString missing = QStringLiteral(
        "T.Getudo=-10 AND NOT EXISTS (SELECT 1 FROM Tsi WHERE Tsi.SirCode=T.SirCode AND Tsi.EigCode=T.EigCode)");
    QSqlQuery& count = run.query(QStringLiteral("SELECT COUNT(*) FROM TsiD AS T WHERE ") + missing);
    const int heads = count.next() ? count.value(0).toInt() : 0;
    if (heads > 0) {
        run.exec(QStringLiteral("INSERT OR IGNORE INTO TsiD (SirCode, EigCode, Getudo, %1) "
                                "SELECT T.SirCode, T.EigCode, M.m, %2 FROM TsiD AS T, %3 AS M WHERE %4")
                     .arg(zeroFigureColumns(), zeroFigureValues(), monthRows(), missing));
        run.exec(QStringLiteral("INSERT OR IGNORE INTO Tsi (SirCode, EigCode, SirNamae, SbnCode, SbnNamae, Sime) "
                                "SELECT T.SirCode, T.EigCode, Sir.Namae, Sir.SbnCode, Sbn.Namae, Sir.Sime FROM TsiD AS T "
                                "INNER JOIN Sir ON Sir.Code=T.SirCode LEFT JOIN Sbn ON Sbn.Code=Sir.SbnCode WHERE ")
                     + missing);
        run.show(QStringLiteral("仕入先台帳：Step 7 %1/%1").arg(heads));
    }

    run.show(QStringLiteral("仕入先台帳：Step 8"));
    totalScratch(run, side);
    addScratchToMonth(run, side, month);
    carryMonths(run, side, true, QStringLiteral("仕入先台帳：Step 8 "));
    headBalanceFromLastMonth(run, side, false);
    carryToRow13(run, side, false);
    return deleteScratch(run, side);
}
