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

// Row `getudo` of each partner of the run's office: `values` over the month's lines of
// `from`, under the partner columns.
int insertScratch(LedgerRun& run, const SlipSide& s, const QString& columns, const QString& values,
                  const QString& from, const QString& where, int month)
{
    run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO {months} ({partnerKeys}, EigCode, {columns}) "
                                    "SELECT {partner}, ?, {values}{from} WHERE {lines}.Getudo=? AND {where} GROUP BY {partner}"),
                     {{"months", s.side.months}, {"partnerKeys", s.side.keyList().remove(QStringLiteral(", EigCode"))},
                      {"columns", columns}, {"partner", s.partner}, {"values", values}, {"from", from},
                      {"lines", line(s)}, {"where", where}}),
             {run.office, month, run.office});
    return run.changes();
}

// Row `getudo` of each partner of mode 1: the tax per invoice of one rate over all credit
// lines of the month.
bool insertInvoiceTax(LedgerRun& run, const SlipSide& s, int month, bool newRate, int getudo, const QString& step)
{
    QSqlQuery& q = run.query(sqlText(QStringLiteral("SELECT {partner}, MIN({master}.HsuType), MIN({master}.Hsu), "
                                                    "SUM({lines}.UGaku){from} WHERE {lines}.Getudo=? AND {lines}.EigCode=? "
                                                    "AND {master}.Zeituuchi=1 AND {head}.Kubun=0 AND {lines}.ZeiFlag=1 "
                                                    "AND {lines}.Hizuke{ofRate}? GROUP BY {partner}"),
                                     {{"partner", s.partner}, {"master", master(s)}, {"lines", line(s)}, {"from", s.taxLines},
                                      {"head", s.head}, {"ofRate", newRate ? QStringLiteral(">") : QStringLiteral("<=")}}),
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
    const QString insert = sqlText(QStringLiteral("INSERT OR IGNORE INTO {months} ( {partnerKeys}, Getudo, EigCode, ZeiGaku ) "
                                                  "VALUES ({marks}, ?, ?, ?)"),
                                   {{"months", s.side.months},
                                    {"partnerKeys", s.side.keyList().remove(QStringLiteral(", EigCode"))},
                                    {"marks", keys == 2 ? QStringLiteral("?, ?") : QStringLiteral("?")}});
    int done = 0;
    for (const Row& r : rows) {
        run.exec(insert, r.key + QVariantList{getudo, run.office, r.tax.toStore()});
        run.show(QStringLiteral("%1 / %2 ").arg(++done).arg(rows.size()) + step);
    }
    return run.ok();
}

// The month of the run's office read again from all its slips: the month row is cleared, the
// scratch rows -1 .. -8 are filled from the lines and the money slips, and row -10 of each
// partner is added to the month row.
bool collectMonth(LedgerRun& run, const SlipSide& s, int month, const QString& textPrefix)
{
    const QString l = line(s);
    const MoneySide& side = s.side;
    deleteScratch(run, side);
    run.exec(sqlText(QStringLiteral("UPDATE {months} Set Gaku=0,HGaku=0,NGaku=0,KGaku=0,Zeigaku=0,KTotal=0,"
                                    "Genkin=0,Kogite=0,Furikomi=0,Tegata=0,Sousai=0,Chousei=0,NTotal=0 "
                                    "WHERE EigCode=? AND Getudo=?"),
                     {{"months", side.months}}),
             {run.office, month});
    run.show(s.head == QLatin1String("Dur") ? QStringLiteral("売上伝票より集計中") : QStringLiteral("仕入伝票より集計中"));

    QStringList byKind;
    for (int k = 0; k < 4; ++k) byKind << QStringLiteral("SUM(CASE WHEN %1.Kubun=%2 THEN %1.UGaku END)").arg(l).arg(k);
    const int groups = insertScratch(run, s, QStringLiteral("Getudo, Gaku, HGaku, NGaku, KGaku"),
                                     rowText(LedgerRow::LineAmounts) + QStringLiteral(", ") + byKind.join(QStringLiteral(", ")),
                                     s.lines, s.lineOffice, month);
    if (groups > 0) run.show(QStringLiteral("%1 / %1 Step1").arg(groups));
    insertInvoiceTax(run, s, month, false, LedgerRow::InvoiceTax, QStringLiteral("Step2"));
    insertInvoiceTax(run, s, month, true, LedgerRow::LaterInvoiceTax, QStringLiteral("Step3"));

    run.show(textPrefix + QStringLiteral("4"));
    insertScratch(run, s, QStringLiteral("Getudo, Zeigaku"),
                  sqlText(QStringLiteral("{lineTax}, SUM({lines}.ZeiGaku)"),
                          {{"lineTax", rowText(LedgerRow::LineTax)}, {"lines", l}}),
                  s.lineTaxLines,
                  s.lineOffice + sqlText(QStringLiteral(" AND {master}.Zeituuchi<>1 AND {lines}.ZeiFlag IN (1, 4)"),
                                         {{"master", master(s)}, {"lines", l}}),
                  month);
    run.show(textPrefix + QStringLiteral("5"));
    insertScratch(run, s, QStringLiteral("Getudo, Zeigaku"),
                  sqlText(QStringLiteral("{inclusiveTax}, SUM({lines}.Zeigaku)"),
                          {{"inclusiveTax", rowText(LedgerRow::InclusiveTax)}, {"lines", l}}),
                  s.lines, s.lineOffice + sqlText(QStringLiteral(" AND {lines}.ZeiFlag=2"), {{"lines", l}}), month);
    run.show(textPrefix + QStringLiteral("6"));
    insertScratch(run, s, QStringLiteral("Getudo, Genkin"),
                  sqlText(QStringLiteral("{cash}, SUM({lines}.UGaku+{lines}.ZeiGaku)"),
                          {{"cash", rowText(LedgerRow::Cash)}, {"lines", l}}),
                  s.lines, s.lineOffice + sqlText(QStringLiteral(" AND {head}.Kubun=1"), {{"head", s.head}}), month);

    run.show(textPrefix + QStringLiteral("8"));
    // Row -8: the money of the deposit or payment slips by money kind 1..6.
    QStringList byMoneyKind;
    for (int k = 1; k <= 6; ++k) byMoneyKind << QStringLiteral("SUM(CASE WHEN Kubun=%1 THEN %2 END)").arg(k).arg(s.moneyAmount);
    run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO {months} ({partnerKeys}, EigCode, Getudo, Genkin, Kogite, Furikomi, "
                                    "Tegata, Sousai, Chousei) SELECT {partnerKeys}, ?, {money}, {byMoneyKind} FROM {moneySlips} "
                                    "WHERE Getudo=? AND EigCode=? GROUP BY {partnerKeys}"),
                     {{"months", side.months}, {"partnerKeys", s.moneyKeys}, {"money", rowText(LedgerRow::Money)},
                      {"byMoneyKind", byMoneyKind.join(QStringLiteral(", "))}, {"moneySlips", s.money}}),
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
    run.exec(sqlText(QStringLiteral("UPDATE TtoD AS D SET {added} FROM (SELECT TorCode, {sums} FROM TtoD "
                                    "WHERE Getudo={sum} AND NouCode<>0 GROUP BY TorCode) AS S "
                                    "WHERE D.TorCode=S.TorCode AND D.NouCode=0 AND D.EigCode=? AND D.Getudo=?"),
                     {{"added", sets.join(QStringLiteral(", "))}, {"sums", sums.join(QStringLiteral(", "))},
                      {"sum", rowText(LedgerRow::Sum)}}),
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
