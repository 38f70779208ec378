#include "ledgers/RebuildMonths.h"
#include <QList>
#include "ledgers/CustomerPosting.h"
#include "ledgers/LedgerRun.h"
#include "ledgers/LedgerSteps.h"

namespace {

// How one side reads its slips: the customer side by the slip head's customer and destination,
// the supplier side by the line's supplier.
struct SlipSide {
    const MoneySide& side;
    QString partner;      // grouping columns of the source, e.g. "Dur.TorCode, Dur.NouCode"
    QString lines;        // FROM ... for amounts and stored tax
    QString lineOffice;   // office filter of the lines
    QString taxLines;     // FROM ... with the partner master and the head, for the tax per invoice
    QString lineTaxLines; // FROM ... with the partner master, for the lines' own tax
    QString head;         // "Dur" / "Dsr"
    QString money;        // deposit or payment table
    QString moneyAmount;  // its amount column
    QString moneyKeys;    // its partner columns
};

const SlipSide& customerSlips()
{
    static const SlipSide s{customerSide(), QStringLiteral("Dur.TorCode, Dur.NouCode"),
        QStringLiteral(" FROM Dur INNER JOIN Dud ON Dur.Dno=Dud.Dno AND Dur.EigCode=Dud.EigCode"),
        QStringLiteral("Dur.EigCode=?"),
        QStringLiteral(" FROM Dud INNER JOIN Tor ON Dud.TorCode=Tor.Code "
                       "INNER JOIN Dur ON Dur.EigCode=Dud.EigCode AND Dur.Dno=Dud.Dno"),
        QStringLiteral(" FROM Tor INNER JOIN Dud ON Tor.Code=Dud.TorCode "
                       "INNER JOIN Dur ON Dur.EigCode=Dud.EigCode AND Dur.Dno=Dud.Dno"),
        QStringLiteral("Dur"), QStringLiteral("Dny"), QStringLiteral("NGaku"), QStringLiteral("TorCode, NouCode")};
    return s;
}

const SlipSide& supplierSlips()
{
    static const SlipSide s{supplierSide(), QStringLiteral("Dsd.SirCode"),
        QStringLiteral(" FROM Dsr INNER JOIN Dsd ON Dsr.Dno=Dsd.Dno AND Dsr.EigCode=Dsd.EigCode"),
        QStringLiteral("Dsd.EigCode=?"),
        QStringLiteral(" FROM Dsd INNER JOIN Sir ON Dsd.SirCode=Sir.Code "
                       "INNER JOIN Dsr ON Dsr.EigCode=Dsd.EigCode AND Dsr.Dno=Dsd.Dno"),
        QStringLiteral(" FROM Dsd INNER JOIN Sir ON Dsd.SirCode=Sir.Code"),
        QStringLiteral("Dsr"), QStringLiteral("Dsh"), QStringLiteral("SGaku"), QStringLiteral("SirCode")};
    return s;
}

QString line(const SlipSide& s) { return s.head == QLatin1String("Dur") ? QStringLiteral("Dud") : QStringLiteral("Dsd"); }
QString master(const SlipSide& s) { return s.head == QLatin1String("Dur") ? QStringLiteral("Tor") : QStringLiteral("Sir"); }

// Inserts one scratch row per partner from `select` (partner columns first, then the figures).
int insertScratch(LedgerRun& run, const SlipSide& s, const QString& columns, const QString& values,
                  const QString& from, const QString& where, int month)
{
    run.exec(QStringLiteral("INSERT OR IGNORE INTO %1 (%2, EigCode, %3) SELECT %4, ?, %5%6 WHERE %7.Getudo=? AND %8 "
                            "GROUP BY %4")
                 .arg(s.side.months, s.side.keyList().remove(QStringLiteral(", EigCode")), columns, s.partner, values,
                      from, line(s), where),
             {run.office, month, run.office});
    return run.changes();
}

// Tax per invoice of one rate over all credit lines of the month of mode 1 partners.
bool insertInvoiceTax(LedgerRun& run, const SlipSide& s, int month, bool newRate, int getudo, const QString& step)
{
    const QString l = line(s);
    QSqlQuery& q = run.query(QStringLiteral("SELECT %1, MIN(%2.HsuType), MIN(%2.Hsu), SUM(%3.UGaku)%4 WHERE %3.Getudo=? "
                                            "AND %3.EigCode=? AND %2.Zeituuchi=1 AND %5.Kubun=0 AND %3.ZeiFlag=1 "
                                            "AND %3.Hizuke%6? GROUP BY %1")
                                 .arg(s.partner, master(s), l, s.taxLines, s.head, newRate ? QStringLiteral(">") : QStringLiteral("<=")),
                             {month, run.office, dateText(run.rates.TaxChangeDate)});
    const int keys = s.side.keys.size() - 1;
    struct Row { QVariantList key; Money tax; };
    QList<Row> rows;
    while (q.next()) {
        Row r;
        for (int i = 0; i < keys; ++i) r.key << q.value(i);
        r.tax = CalcTax(run.rates, newRate, Money::fromStore(q.value(keys + 2)), static_cast<short>(q.value(keys).toInt()),
                        static_cast<short>(q.value(keys + 1).toInt()));
        rows << r;
    }
    const QString keyList = s.side.keyList().remove(QStringLiteral(", EigCode"));
    const QString marks = keys == 2 ? QStringLiteral("?, ?") : QStringLiteral("?");
    int done = 0;
    for (const Row& r : rows) {
        run.exec(QStringLiteral("INSERT OR IGNORE INTO %1 ( %2, Getudo, EigCode, ZeiGaku ) VALUES (%3, ?, ?, ?)")
                     .arg(s.side.months, keyList, marks),
                 r.key + QVariantList{getudo, run.office, r.tax.toStore()});
        run.show(QStringLiteral("%1 / %2 ").arg(++done).arg(rows.size()) + step);
    }
    return run.ok();
}

bool collectMonth(LedgerRun& run, const SlipSide& s, int month, const QString& textPrefix)
{
    const QString l = line(s);
    const MoneySide& side = s.side;
    deleteScratch(run, side);
    run.exec(QStringLiteral("UPDATE %1 Set Gaku=0,HGaku=0,NGaku=0,KGaku=0,Zeigaku=0,KTotal=0,"
                            "Genkin=0,Kogite=0,Furikomi=0,Tegata=0,Sousai=0,Chousei=0,NTotal=0 "
                            "WHERE EigCode=? AND Getudo=?").arg(side.months),
             {run.office, month});
    run.show(s.head == QLatin1String("Dur") ? QStringLiteral("売上伝票より集計中") : QStringLiteral("仕入伝票より集計中"));

    QStringList sums;
    for (int k = 0; k < 4; ++k) sums << QStringLiteral("SUM(CASE WHEN %1.Kubun=%2 THEN %1.UGaku END)").arg(l).arg(k);
    const int groups = insertScratch(run, s, QStringLiteral("Getudo, Gaku, HGaku, NGaku, KGaku"),
                                     QStringLiteral("-1, ") + sums.join(QStringLiteral(", ")), s.lines, s.lineOffice, month);
    if (groups > 0) run.show(QStringLiteral("%1 / %1 Step1").arg(groups));
    insertInvoiceTax(run, s, month, false, -2, QStringLiteral("Step2"));
    insertInvoiceTax(run, s, month, true, -3, QStringLiteral("Step3"));

    run.show(textPrefix + QStringLiteral("4"));
    insertScratch(run, s, QStringLiteral("Getudo, Zeigaku"), QStringLiteral("-4, SUM(%1.ZeiGaku)").arg(l),
                  s.lineTaxLines, s.lineOffice + QStringLiteral(" AND %1.Zeituuchi<>1 AND %2.ZeiFlag IN (1, 4)").arg(master(s), l),
                  month);
    run.show(textPrefix + QStringLiteral("5"));
    insertScratch(run, s, QStringLiteral("Getudo, Zeigaku"), QStringLiteral("-5, SUM(%1.Zeigaku)").arg(l), s.lines,
                  s.lineOffice + QStringLiteral(" AND %1.ZeiFlag=2").arg(l), month);
    run.show(textPrefix + QStringLiteral("6"));
    insertScratch(run, s, QStringLiteral("Getudo, Genkin"), QStringLiteral("-6, SUM(%1.UGaku+%1.ZeiGaku)").arg(l), s.lines,
                  s.lineOffice + QStringLiteral(" AND %1.Kubun=1").arg(s.head), month);

    run.show(textPrefix + QStringLiteral("8"));
    QStringList money;
    for (int k = 1; k <= 6; ++k) money << QStringLiteral("SUM(CASE WHEN Kubun=%1 THEN %2 END)").arg(k).arg(s.moneyAmount);
    run.exec(QStringLiteral("INSERT OR IGNORE INTO %1 (%2, EigCode, Getudo, Genkin, Kogite, Furikomi, Tegata, Sousai, Chousei) "
                            "SELECT %2, ?, -8, %3 FROM %4 WHERE Getudo=? AND EigCode=? GROUP BY %2")
                 .arg(side.months, s.moneyKeys, money.join(QStringLiteral(", ")), s.money),
             {run.office, month, run.office});

    scratchNullsToZero(run, side);
    run.show(textPrefix + QStringLiteral("9"));
    sumScratch(run, side);
    totalScratch(run, side);
    return addScratchToMonth(run, side, month);
}

} // namespace

bool RebuildCustomerMonth(LedgerRun& run, int month)
{
    const MoneySide& side = customerSide();
    collectMonth(run, customerSlips(), month, QStringLiteral("Step "));
    // Destinations roll up into the customer's own row, tax included.
    QStringList sums, sets;
    for (const QString& f : moneyFigures()) {
        sums << QStringLiteral("SUM(%1) AS %1").arg(f);
        sets << QStringLiteral("%1=D.%1+S.%1").arg(f);
    }
    run.exec(QStringLiteral("UPDATE TtoD AS D SET %1 FROM (SELECT TorCode, %2 FROM TtoD WHERE Getudo=-10 AND NouCode<>0 "
                            "GROUP BY TorCode) AS S WHERE D.TorCode=S.TorCode AND D.NouCode=0 AND D.EigCode=? "
                            "AND D.Getudo=?")
                 .arg(sets.join(QStringLiteral(", ")), sums.join(QStringLiteral(", "))),
             {run.office, month});
    run.show(QStringLiteral("台帳書込み　Step11"));
    carryMonths(run, side, false, QStringLiteral("台帳書込み　Step11-"));
    CarryCustomerOwnRows(run, true, QString());
    headBalanceFromLastMonth(run, side, true);
    carryToRow13(run, side, true);
    return deleteScratch(run, side);
}

bool RebuildSupplierMonth(LedgerRun& run, int month)
{
    const MoneySide& side = supplierSide();
    collectMonth(run, supplierSlips(), month, QStringLiteral("Step"));
    run.show(QStringLiteral("台帳書込み　Step10"));
    carryMonths(run, side, false, QStringLiteral("台帳書込み　Step10-"));
    headBalanceFromLastMonth(run, side, true);
    carryToRow13(run, side, true);
    return deleteScratch(run, side);
}
