#include "ledgers/SupplierPosting.h"
#include "ledgers/LedgerRun.h"
#include "ledgers/LedgerSteps.h"

namespace {

// Row `getudo` of each supplier: the tax per invoice of the run's marked credit purchase lines
// of one rate, rounded by the supplier's own rule.
bool postInvoiceTax(LedgerRun& run, int month, bool newRate, int getudo, const QString& stepText)
{
    QSqlQuery& q = run.query(sqlText(QStringLiteral(
        "SELECT Dsr.SirCode, Dsr.EigCode, MIN(Sir.HsuType) AS aHsuType, MIN(Sir.Hsu) AS aHsu, SUM(Dsd.UGaku) AS tGaku "
        "FROM Dsd INNER JOIN Sir ON Dsd.SirCode=Sir.Code "
        "INNER JOIN Dsr ON Dsr.EigCode=Dsd.EigCode AND Dsr.Dno=Dsd.Dno "
        "WHERE Dsd.Getudo=? AND Dsd.ThiFlag=? AND Sir.Zeituuchi=1 AND Dsr.Kubun=0 AND Dsd.ZeiFlag=1 AND {ofRate} "
        "GROUP BY Dsr.SirCode, Dsr.EigCode"),
        {{"ofRate", newRate ? QStringLiteral("Dsd.Hizuke>?") : QStringLiteral("Dsd.Hizuke<=?")}}),
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
    const QString sum = rowText(LedgerRow::Sum);
    deleteScratch(run, side);

    run.show(QStringLiteral("仕入先台帳：Step 1"));
    // Row -1 of each supplier: the amounts of its lines by line kind.
    QStringList byKind;
    for (int k = 0; k < 4; ++k) byKind << QStringLiteral("SUM(CASE WHEN Kubun=%1 THEN UGaku END)").arg(k);
    run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO TsiD (SirCode, Getudo, EigCode, Gaku, HGaku, NGaku, KGaku) "
                                    "SELECT SirCode, {amounts}, EigCode, {byKind} FROM Dsd WHERE Getudo=? AND ThiFlag=? "
                                    "GROUP BY SirCode, EigCode"),
                     {{"amounts", rowText(LedgerRow::LineAmounts)}, {"byKind", byKind.join(QStringLiteral(", "))}}),
             {month, run.flag});
    if (run.changes() > 0) run.show(QStringLiteral("仕入先台帳：Step 1 %1 / %1").arg(run.changes()));

    // Rows -2 and -3: only the run's own lines are taxed, so the month's tax grows by a
    // separately rounded delta.
    postInvoiceTax(run, month, false, LedgerRow::InvoiceTax, QStringLiteral("仕入先台帳：Step 2 "));
    postInvoiceTax(run, month, true, LedgerRow::LaterInvoiceTax, QStringLiteral("仕入先台帳：Step 3 "));

    run.show(QStringLiteral("仕入先台帳：Step 4"));
    // Row -4: the lines' own tax, for suppliers not taxed per invoice.
    run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO TsiD (SirCode, Zeigaku, Getudo, EigCode) "
                                    "SELECT Dsr.SirCode, SUM(Dsd.ZeiGaku), {lineTax}, Dsr.EigCode "
                                    "FROM Sir INNER JOIN Dsr ON Sir.Code=Dsr.SirCode "
                                    "INNER JOIN Dsd ON Dsd.Dno=Dsr.Dno AND Dsd.EigCode=Dsr.EigCode "
                                    "WHERE Sir.Zeituuchi<>1 AND Dsd.Getudo=? AND Dsd.ZeiFlag IN (1, 4) AND Dsd.ThiFlag=? "
                                    "GROUP BY Dsr.SirCode, Dsr.EigCode"),
                     {{"lineTax", rowText(LedgerRow::LineTax)}}),
             {month, run.flag});

    run.show(QStringLiteral("仕入先台帳：Step 5"));
    // Row -5: the tax of tax-inclusive lines.
    run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO TsiD (SirCode, Zeigaku, Getudo, EigCode) "
                                    "SELECT SirCode, SUM(Zeigaku), {inclusiveTax}, EigCode FROM Dsd "
                                    "WHERE ZeiFlag=2 AND Getudo=? AND ThiFlag=? GROUP BY SirCode, EigCode"),
                     {{"inclusiveTax", rowText(LedgerRow::InclusiveTax)}}),
             {month, run.flag});

    run.show(QStringLiteral("仕入先台帳：Step 6"));
    // Row -6: cash purchases count as paid at once, as Genkin.
    run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO TsiD (SirCode, Genkin, Getudo, EigCode) "
                                    "SELECT Dsr.SirCode, SUM(Dsd.UGaku+Dsd.ZeiGaku), {cash}, Dsr.EigCode "
                                    "FROM Dsd INNER JOIN Dsr ON Dsd.Dno=Dsr.Dno AND Dsd.EigCode=Dsr.EigCode "
                                    "WHERE Dsd.Getudo=? AND Dsd.ThiFlag=? AND Dsr.Kubun=1 GROUP BY Dsr.SirCode, Dsr.EigCode"),
                     {{"cash", rowText(LedgerRow::Cash)}}),
             {month, run.flag});

    // Row -10 of each supplier.
    scratchNullsToZero(run, side);
    sumScratch(run, side);

    // New suppliers: a head from `Sir` (none for a code gone from it) and 13 zero month rows.
    const QString missing = sqlText(QStringLiteral("T.Getudo={sum} AND NOT EXISTS (SELECT 1 FROM Tsi "
                                                   "WHERE Tsi.SirCode=T.SirCode AND Tsi.EigCode=T.EigCode)"),
                                    {{"sum", sum}});
    QSqlQuery& count = run.query(QStringLiteral("SELECT COUNT(*) FROM TsiD AS T WHERE ") + missing);
    const int heads = count.next() ? count.value(0).toInt() : 0;
    if (heads > 0) {
        run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO TsiD (SirCode, EigCode, Getudo, {figures}) "
                                        "SELECT T.SirCode, T.EigCode, M.m, {zeros} FROM TsiD AS T, {months} AS M WHERE {missing}"),
                         {{"figures", zeroFigureColumns()}, {"zeros", zeroFigureValues()}, {"months", monthRows()},
                          {"missing", missing}}));
        run.exec(QStringLiteral("INSERT OR IGNORE INTO Tsi (SirCode, EigCode, SirNamae, SbnCode, SbnNamae, Sime) "
                                "SELECT T.SirCode, T.EigCode, Sir.Namae, Sir.SbnCode, Sbn.Namae, Sir.Sime FROM TsiD AS T "
                                "INNER JOIN Sir ON Sir.Code=T.SirCode LEFT JOIN Sbn ON Sbn.Code=Sir.SbnCode WHERE ")
                     + missing);
        run.show(QStringLiteral("仕入先台帳：Step 7 %1/%1").arg(heads));
    }

    run.show(QStringLiteral("仕入先台帳：Step 8"));
    // Row -10 into the month, then the balances of the year and the heads' Zan.
    totalScratch(run, side);
    addScratchToMonth(run, side, month);
    carryMonths(run, side, true, QStringLiteral("仕入先台帳：Step 8 "));
    headBalanceFromLastMonth(run, side, false);
    carryToRow13(run, side, false);
    return deleteScratch(run, side);
}
