#include "ledgers/CustomerPosting.h"
#include <QList>
#include "ledgers/LedgerRun.h"
#include "ledgers/LedgerSteps.h"

namespace {

struct GroupKey {
    qint64 tor;
    qint64 nou;
    short eig;
};

// The marked lines of the customer in the month, of the session's office, by the slip's
// customer, destination and office.
const char* kGroupLines =
    " FROM Dur INNER JOIN Dud ON Dur.Dno=Dud.Dno AND Dur.EigCode=Dud.EigCode"
    " WHERE Dud.Getudo=? AND Dur.EigCode=? AND Dud.ThiFlag=? AND Dud.TorCode=?"
    " GROUP BY Dur.TorCode, Dur.NouCode, Dur.EigCode";

QVariantList groupBinds(const LedgerRun& run, int month, qint64 tor)
{
    return {month, run.office, run.flag, tor};
}

const QString kSum = rowText(LedgerRow::Sum);

// Row -1 of each destination: the amounts of its lines by line kind.
bool insertAmounts(LedgerRun& run, int month, qint64 tor)
{
    QStringList byKind;
    for (int k = 0; k < 4; ++k) byKind << QStringLiteral("SUM(CASE WHEN Dud.Kubun=%1 THEN Dud.UGaku END)").arg(k);
    return run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO TtoD (TorCode, NouCode, Getudo, EigCode, Gaku, HGaku, "
                                           "NGaku, KGaku) SELECT Dur.TorCode, Dur.NouCode, {amounts}, Dur.EigCode, {byKind}"),
                            {{"amounts", rowText(LedgerRow::LineAmounts)}, {"byKind", byKind.join(QStringLiteral(", "))}})
                        + QLatin1String(kGroupLines),
                    groupBinds(run, month, tor));
}

QList<GroupKey> postedGroups(LedgerRun& run)
{
    QList<GroupKey> out;
    QSqlQuery& q = run.query(sqlText(QStringLiteral("SELECT TorCode, NouCode, EigCode FROM TtoD WHERE Getudo={amounts} "
                                                    "ORDER BY TorCode, NouCode, EigCode"),
                                     {{"amounts", rowText(LedgerRow::LineAmounts)}}));
    while (q.next())
        out << GroupKey{q.value(0).toLongLong(), q.value(1).toLongLong(), static_cast<short>(q.value(2).toInt())};
    return out;
}

// The month row's tax of the destination goes: row -2 brings the whole month's tax anew.
bool zeroMonthTax(LedgerRun& run, const GroupKey& g, int month)
{
    return run.exec(QStringLiteral("UPDATE TtoD SET Zeigaku=0 WHERE TorCode=? AND NouCode=? AND EigCode=? AND Getudo=?"),
                    {g.tor, g.nou, g.eig, month});
}

// Mode 1: the month's tax is replaced by the tax of the whole month's taxed live lines of
// the destination, rounded once per rate; both rates add up in the one row -2.
bool postSalesPerInvoice(LedgerRun& run, int month, qint64 tor)
{
    run.show(QStringLiteral("得意先台帳：Step 1"));
    insertAmounts(run, month, tor);
    const QList<GroupKey> groups = postedGroups(run);
    const QString change = dateText(run.rates.TaxChangeDate);
    int done = 0;
    for (const GroupKey& g : groups) {
        QSqlQuery& q = run.query(QStringLiteral(
            "SELECT MIN(Tor.HsuType), MIN(Tor.Hsu), "
            "COUNT(CASE WHEN Dud.Hizuke<=? THEN 1 END), SUM(CASE WHEN Dud.Hizuke<=? THEN Dud.UGaku END), "
            "COUNT(CASE WHEN Dud.Hizuke>? THEN 1 END), SUM(CASE WHEN Dud.Hizuke>? THEN Dud.UGaku END) "
            "FROM Dud INNER JOIN Tor ON Dud.TorCode=Tor.Code "
            "INNER JOIN Dur ON Dur.EigCode=Dud.EigCode AND Dur.Dno=Dud.Dno "
            "WHERE +Dud.Getudo=? AND Dud.Dno>0 AND Tor.Zeituuchi=1 AND Dud.ZeiFlag=1 "
            "AND Dur.TorCode=? AND Dur.NouCode=? AND Dur.EigCode=?"),
            {change, change, change, change, month, g.tor, g.nou, g.eig});
        if (!q.next()) break;
        const short hsuType = static_cast<short>(q.value(0).toInt());
        const short hsu = static_cast<short>(q.value(1).toInt());
        const bool hasOld = q.value(2).toInt() > 0, hasNew = q.value(4).toInt() > 0;
        Money tax;
        if (hasOld) tax += CalcTax(run.rates, false, Money::fromStore(q.value(3)), hsuType, hsu);
        if (hasNew) tax += CalcTax(run.rates, true, Money::fromStore(q.value(5)), hsuType, hsu);
        if (hasOld || hasNew)
            run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO TtoD (TorCode, NouCode, EigCode, Getudo, ZeiGaku) "
                                            "VALUES (?, ?, ?, {invoiceTax}, ?)"),
                             {{"invoiceTax", rowText(LedgerRow::InvoiceTax)}}),
                     {g.tor, g.nou, g.eig, tax.toStore()});
        zeroMonthTax(run, g, month);
        run.show(QStringLiteral("得意先台帳：Step 1 %1 / %2").arg(++done).arg(groups.size()));
    }
    return run.ok();
}

// Modes 2 and 3: row -4 of each destination, the stored tax of its lines; mode 4 has no tax
// in the month, so the month row's tax of the posted destinations goes to 0.
bool postSalesOtherModes(LedgerRun& run, int month, qint64 tor, int mode)
{
    run.show(QStringLiteral("得意先台帳：Step 1"));
    insertAmounts(run, month, tor);
    const QString amounts = rowText(LedgerRow::LineAmounts);
    if (mode == 4) {
        run.exec(sqlText(QStringLiteral("UPDATE TtoD AS D SET Zeigaku=0 FROM TtoD AS T WHERE T.TorCode=D.TorCode "
                                        "AND T.NouCode=D.NouCode AND T.EigCode=D.EigCode AND T.Getudo={amounts} "
                                        "AND +D.Getudo=?"),
                         {{"amounts", amounts}}),
                 {month});
    } else {
        QString sql = sqlText(QStringLiteral("INSERT OR IGNORE INTO TtoD (TorCode, NouCode, Getudo, EigCode, Zeigaku) "
                                             "SELECT Dur.TorCode, Dur.NouCode, {lineTax}, Dur.EigCode, SUM(Dud.ZeiGaku)"),
                              {{"lineTax", rowText(LedgerRow::LineTax)}})
                      + QLatin1String(kGroupLines);
        sql.replace(QStringLiteral(" GROUP BY"), QStringLiteral(" AND Dud.ZeiFlag IN (1, 4) GROUP BY"));
        run.exec(sql, groupBinds(run, month, tor));
    }
    QSqlQuery& n = run.query(sqlText(QStringLiteral("SELECT COUNT(*) FROM TtoD WHERE Getudo={amounts}"), {{"amounts", amounts}}));
    const int groups = n.next() ? n.value(0).toInt() : 0;
    if (groups > 0) run.show(QStringLiteral("得意先台帳：Step 1 %1 / %1").arg(groups));
    return run.ok();
}

// Heads and 13 zero month rows for keys new to the ledger: first the customer's own head when
// a destination brings a customer that has no head at all, then every missing exact head.
bool addMissingHeads(LedgerRun& run)
{
    const QString ownMissing = sqlText(QStringLiteral("T.Getudo={sum} AND T.NouCode<>0 AND NOT EXISTS (SELECT 1 FROM Tto "
                                                      "WHERE Tto.TorCode=T.TorCode AND Tto.EigCode=T.EigCode)"),
                                       {{"sum", kSum}});
    run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO TtoD (TorCode, NouCode, EigCode, Getudo, {figures}) "
                                    "SELECT DISTINCT T.TorCode, 0, T.EigCode, M.m, {zeros} FROM TtoD AS T, {months} AS M "
                                    "WHERE {missing}"),
                     {{"figures", zeroFigureColumns()}, {"zeros", zeroFigureValues()}, {"months", monthRows()},
                      {"missing", ownMissing}}));
    run.exec(QStringLiteral("INSERT OR IGNORE INTO Tto (TorCode, NouCode, EigCode, TorNamae, TbnCode, TbnNamae, NouNamae, "
                            "Sime, Nendo, SeiFlag) "
                            "SELECT T.TorCode, 0, T.EigCode, Tor.Namae, Tor.TbnCode, Tbn.Namae, ' ', Tor.Sime, ?, "
                            "(SELECT Nou.SeiFlag FROM Nou WHERE Nou.TorCode=T.TorCode ORDER BY Nou.Code LIMIT 1) "
                            "FROM TtoD AS T LEFT JOIN Tor ON Tor.Code=T.TorCode LEFT JOIN Tbn ON Tbn.Code=Tor.TbnCode "
                            "WHERE ") + ownMissing,
             {run.nendo});

    const QString missing = sqlText(QStringLiteral("T.Getudo={sum} AND NOT EXISTS (SELECT 1 FROM Tto WHERE Tto.TorCode=T.TorCode "
                                                   "AND Tto.NouCode=T.NouCode AND Tto.EigCode=T.EigCode)"),
                                    {{"sum", kSum}});
    QSqlQuery& count = run.query(QStringLiteral("SELECT COUNT(*) FROM TtoD AS T WHERE ") + missing);
    const int total = count.next() ? count.value(0).toInt() : 0;
    if (!run.ok() || total == 0) return run.ok();
    run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO TtoD (TorCode, NouCode, EigCode, Getudo, {figures}) "
                                    "SELECT T.TorCode, T.NouCode, T.EigCode, M.m, {zeros} FROM TtoD AS T, {months} AS M "
                                    "WHERE {missing}"),
                     {{"figures", zeroFigureColumns()}, {"zeros", zeroFigureValues()}, {"months", monthRows()},
                      {"missing", missing}}));
    run.exec(QStringLiteral("INSERT OR IGNORE INTO Tto (TorCode, NouCode, EigCode, TorNamae, TbnCode, TbnNamae, NouNamae, "
                            "Sime, Nendo, SeiFlag) "
                            "SELECT T.TorCode, T.NouCode, T.EigCode, Tor.Namae, Tor.TbnCode, Tbn.Namae, "
                            "CASE WHEN T.NouCode<>0 THEN Nou.Namae ELSE ' ' END, Tor.Sime, ?, "
                            "CASE WHEN T.NouCode<>0 THEN Nou.SeiFlag ELSE 0 END "
                            "FROM TtoD AS T LEFT JOIN Tor ON Tor.Code=T.TorCode LEFT JOIN Tbn ON Tbn.Code=Tor.TbnCode "
                            "LEFT JOIN Nou ON Nou.TorCode=T.TorCode AND Nou.Code=T.NouCode WHERE ") + missing,
             {run.nendo});
    run.show(QStringLiteral("得意先台帳：Step 7 %1/%1").arg(total));
    return run.ok();
}

// The destinations' rows -10 roll up into the customer's own month row (NouCode 0): every
// figure is added, and its tax is set to the sum of the destinations' tax.
bool rollUpDestinations(LedgerRun& run, int month)
{
    const QStringList added = QStringLiteral("Gaku HGaku NGaku KGaku KTotal Genkin Kogite Furikomi Tegata Sousai Chousei NTotal")
                                  .split(QLatin1Char(' '));
    QStringList sums, sets;
    for (const QString& f : added) {
        sums << QStringLiteral("SUM(%1)").arg(f);
        sets << QStringLiteral("%1=%1+?").arg(f);
    }
    QSqlQuery& q = run.query(sqlText(QStringLiteral("SELECT TorCode, EigCode, {sums} FROM TtoD WHERE Getudo={sum} "
                                                    "AND NouCode<>0 GROUP BY TorCode, EigCode ORDER BY TorCode"),
                                     {{"sums", sums.join(QStringLiteral(", "))}, {"sum", kSum}}));
    struct RollUp { qint64 tor; short eig; QVariantList sums; };
    QList<RollUp> rows;
    while (q.next()) {
        RollUp r{q.value(0).toLongLong(), static_cast<short>(q.value(1).toInt()), {}};
        for (int i = 0; i < added.size(); ++i) r.sums << Money::fromStore(q.value(2 + i)).toStore();
        rows << r;
    }
    for (const RollUp& r : rows) {
        if (!run.ok()) break;
        const Money tax = SumDeliveryTax(run, r.tor, month);
        run.exec(sqlText(QStringLiteral("UPDATE TtoD SET {added}, ZeiGaku=? WHERE TorCode=? AND NouCode=0 AND EigCode=? "
                                        "AND Getudo=?"),
                         {{"added", sets.join(QStringLiteral(", "))}}),
                 r.sums + QVariantList{tax.toStore(), r.tor, r.eig, month});
    }
    return run.ok();
}

bool postCustomerBalances(LedgerRun& run, int month, qint64 tor)
{
    const MoneySide& side = customerSide();
    run.show(QStringLiteral("得意先台帳：Step 6"));
    // Row -6: cash sales count as received at once, as Genkin; written under the session's office.
    run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO TtoD (TorCode, NouCode, Getudo, Genkin, EigCode) "
                                    "SELECT Dur.TorCode, Dur.NouCode, {cash}, SUM(Dud.UGaku+Dud.ZeiGaku), ? "
                                    "FROM Dud INNER JOIN Dur ON Dud.Dno=Dur.Dno AND Dud.EigCode=Dur.EigCode "
                                    "WHERE Dud.Getudo=? AND Dud.ThiFlag=? AND Dur.Kubun=1 AND Dud.TorCode=? "
                                    "GROUP BY Dur.TorCode, Dur.NouCode, Dur.EigCode"),
                     {{"cash", rowText(LedgerRow::Cash)}}),
             {run.office, month, run.flag, tor});
    // Row -10 of each destination and heads for new ones.
    scratchNullsToZero(run, side);
    sumScratch(run, side);
    addMissingHeads(run);
    run.show(QStringLiteral("得意先台帳：Step 9"));
    // Into the month row, up to the customer's own row, then the balances of the year.
    totalScratch(run, side);
    addScratchToMonth(run, side, month);
    rollUpDestinations(run, month);
    carryMonths(run, side, true, QStringLiteral("得意先台帳：Step 9 "));
    CarryCustomerOwnRows(run, false, QString());
    headBalanceFromLastMonth(run, side, false);
    carryToRow13(run, side, false);
    return deleteScratch(run, side);
}

} // namespace

Money SumDeliveryTax(LedgerRun& run, qint64 TorCode, int month)
{
    QSqlQuery& q = run.query(QStringLiteral("SELECT NouCode, sum(Zeigaku) AS tZeigaku FROM TtoD WHERE TorCode=? AND Getudo=? "
                                            "GROUP BY NouCode"),
                             {TorCode, month});
    QList<QPair<qint64, Money>> rows;
    while (q.next()) rows << qMakePair(q.value(0).toLongLong(), Money::fromStore(q.value(1)));
    if (rows.size() == 1) return rows.first().second;
    Money sum;
    for (const auto& r : rows)
        if (r.first != 0) sum += r.second;
    return sum;
}

bool CarryCustomerOwnRows(LedgerRun& run, bool officeOnly, const QString& progressPrefix)
{
    QString list = sqlText(QStringLiteral("SELECT TorCode,EigCode FROM TtoD WHERE Getudo={sum} AND NouCode<>0"), {{"sum", kSum}});
    if (officeOnly) list += QStringLiteral(" AND EigCode=?");
    list += QStringLiteral(" GROUP BY TorCode,EigCode ORDER BY EigCode,TorCode");
    QSqlQuery& q = run.query(list, officeOnly ? QVariantList{run.office} : QVariantList{});
    QList<QPair<qint64, short>> customers;
    while (q.next()) customers << qMakePair(q.value(0).toLongLong(), static_cast<short>(q.value(1).toInt()));

    // The own row's Zenkaigaku of each month from the second on: what left the month before.
    const QString carry = sqlText(QStringLiteral("UPDATE TtoD AS D SET Zenkaigaku={leaving} FROM TtoD AS P "
                                                 "WHERE P.TorCode=D.TorCode AND P.NouCode=D.NouCode AND P.EigCode=D.EigCode "
                                                 "AND P.Getudo=? AND D.Getudo=? AND D.TorCode=? AND D.NouCode=0 AND D.EigCode=?"),
                                  {{"leaving", leavingBalance(QStringLiteral("P"))}});
    for (const auto& c : customers) {
        int prev = run.firstMonth;
        for (int i = 0; i < 11 && run.ok(); ++i) {
            const int cur = nextMonth(prev);
            run.exec(carry, {prev, cur, c.first, c.second});
            if (!progressPrefix.isEmpty()) run.show(progressPrefix + QString::number(cur));
            prev = cur;
        }
        // The own head's Zan: what leaves the last month; row 13 carries it into the next year.
        run.exec(sqlText(QStringLiteral("UPDATE Tto SET Zan={leaving} FROM TtoD AS E WHERE E.TorCode=Tto.TorCode "
                                        "AND E.NouCode=0 AND E.EigCode=Tto.EigCode AND E.Getudo=? AND Tto.TorCode=? "
                                        "AND Tto.NouCode=0 AND Tto.EigCode=?"),
                         {{"leaving", leavingBalance(QStringLiteral("E"))}}),
                 {run.lastMonth, c.first, c.second});
        run.exec(sqlText(QStringLiteral("UPDATE TtoD SET Zenkaigaku=Tto.Zan FROM Tto WHERE Tto.TorCode=TtoD.TorCode "
                                        "AND Tto.NouCode=0 AND Tto.EigCode=TtoD.EigCode AND TtoD.TorCode=? "
                                        "AND TtoD.NouCode=0 AND TtoD.EigCode=? AND TtoD.Getudo={carried}"),
                         {{"carried", rowText(LedgerRow::CarriedOut)}}),
                 {c.first, c.second});
    }
    return run.ok();
}

bool PostCustomerGroup(LedgerRun& run, int month, qint64 TorCode, int Zeituuchi)
{
    deleteScratch(run, customerSide());
    switch (Zeituuchi) {
    case 1: postSalesPerInvoice(run, month, TorCode); break;
    case 2:
    case 3:
    case 4: postSalesOtherModes(run, month, TorCode, Zeituuchi); break;
    default: return run.ok();
    }
    return postCustomerBalances(run, month, TorCode);
}
