#include "ledgers/LedgerSteps.h"
#include "ledgers/LedgerRun.h"

QString MoneySide::joinKeys(const QString& a, const QString& b) const
{
    QStringList parts;
    for (const QString& k : keys) parts << QStringLiteral("%1.%3=%2.%3").arg(a, b, k);
    return parts.join(QStringLiteral(" AND "));
}

QString MoneySide::keyList(const QString& alias) const
{
    if (alias.isEmpty()) return keys.join(QStringLiteral(", "));
    QStringList parts;
    for (const QString& k : keys) parts << alias + QLatin1Char('.') + k;
    return parts.join(QStringLiteral(", "));
}

const MoneySide& customerSide()
{
    static const MoneySide s{QStringLiteral("TtoD"), QStringLiteral("Tto"),
                             {QStringLiteral("TorCode"), QStringLiteral("NouCode"), QStringLiteral("EigCode")}};
    return s;
}

const MoneySide& supplierSide()
{
    static const MoneySide s{QStringLiteral("TsiD"), QStringLiteral("Tsi"),
                             {QStringLiteral("SirCode"), QStringLiteral("EigCode")}};
    return s;
}

const QStringList& moneyFigures()
{
    static const QStringList f = QStringLiteral(
        "Gaku HGaku NGaku KGaku ZeiGaku KTotal Genkin Kogite Furikomi Tegata Sousai Chousei NTotal")
        .split(QLatin1Char(' '));
    return f;
}

const QStringList& scratchFigures()
{
    static const QStringList f = QStringLiteral(
        "Gaku HGaku NGaku KGaku Zeigaku Genkin Kogite Furikomi Tegata Sousai Chousei")
        .split(QLatin1Char(' '));
    return f;
}

QString zeroFigureColumns()
{
    return QStringLiteral("Zenkaigaku, Gaku, HGaku, NGaku, KGaku, Zeigaku, KTotal, "
                          "Genkin, Kogite, Furikomi, Tegata, Sousai, Chousei, NTotal");
}

QString zeroFigureValues()
{
    return QStringLiteral("0,0,0,0,0,0,0,0,0,0,0,0,0,0");
}

QString leavingBalance(const QString& a)
{
    return sqlText(QStringLiteral("{a}.Zenkaigaku+{a}.KTotal+{a}.Zeigaku-{a}.NTotal"), {{"a", a}});
}

namespace {
const QString kSum = rowText(LedgerRow::Sum);
}

bool deleteScratch(LedgerRun& run, const MoneySide& side)
{
    return run.exec(sqlText(QStringLiteral("DELETE FROM {months} WHERE Getudo<0"), {{"months", side.months}}));
}

bool scratchNullsToZero(LedgerRun& run, const MoneySide& side)
{
    for (const QString& f : scratchFigures())
        run.exec(sqlText(QStringLiteral("UPDATE {months} SET {figure}=0 WHERE {figure} IS NULL AND Getudo<0"),
                         {{"months", side.months}, {"figure", f}}));
    return run.ok();
}

// Row -10 of each head: the sum of its scratch rows, figure by figure.
bool sumScratch(LedgerRun& run, const MoneySide& side)
{
    QStringList sums;
    for (const QString& f : scratchFigures()) sums << QStringLiteral("SUM(%1)").arg(f);
    return run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO {months} ({keys}, Getudo, {figures}) "
                                           "SELECT {keys}, {sum}, {sums} FROM {months} WHERE Getudo<0 GROUP BY {keys}"),
                            {{"months", side.months}, {"keys", side.keyList()},
                             {"figures", scratchFigures().join(QStringLiteral(", "))}, {"sum", kSum},
                             {"sums", sums.join(QStringLiteral(", "))}}));
}

// Row -10: KTotal of the four line kinds, NTotal of the six money kinds.
bool totalScratch(LedgerRun& run, const MoneySide& side)
{
    return run.exec(sqlText(QStringLiteral("UPDATE {months} SET KTotal=Gaku+HGaku+NGaku+KGaku, "
                                           "NTotal=Genkin+Kogite+Furikomi+Tegata+Sousai+Chousei WHERE Getudo={sum}"),
                            {{"months", side.months}, {"sum", kSum}}));
}

// The month row of each touched head gets its row -10 added, figure by figure. A "+" before a
// month filter keeps the store from reading a whole month of every key: the few rows -10 lead
// the join, and the month rows are found by their key.
bool addScratchToMonth(LedgerRun& run, const MoneySide& side, int month)
{
    QStringList sets;
    for (const QString& f : moneyFigures()) sets << QStringLiteral("%1=D.%1+T.%1").arg(f);
    return run.exec(sqlText(QStringLiteral("UPDATE {months} AS D SET {sets} FROM {months} AS T "
                                           "WHERE {sameHead} AND T.Getudo={sum} AND +D.Getudo=?"),
                            {{"months", side.months}, {"sets", sets.join(QStringLiteral(", "))},
                             {"sameHead", side.joinKeys(QStringLiteral("T"), QStringLiteral("D"))}, {"sum", kSum}}),
                    {month});
}

// Zenkaigaku of each month from the second on: what left the month before (P).
bool carryMonths(LedgerRun& run, const MoneySide& side, bool touched, const QString& progressPrefix)
{
    const QString sql = touched
        ? sqlText(QStringLiteral("UPDATE {months} AS D SET Zenkaigaku={leaving} FROM {months} AS T, {months} AS P "
                                 "WHERE {touchedHead} AND T.Getudo={sum} AND {sameHeadBefore} AND +P.Getudo=? AND +D.Getudo=?"),
                  {{"months", side.months}, {"leaving", leavingBalance(QStringLiteral("P"))},
                   {"touchedHead", side.joinKeys(QStringLiteral("T"), QStringLiteral("D"))}, {"sum", kSum},
                   {"sameHeadBefore", side.joinKeys(QStringLiteral("P"), QStringLiteral("D"))}})
        : sqlText(QStringLiteral("UPDATE {months} AS D SET Zenkaigaku={leaving} FROM {months} AS P "
                                 "WHERE {sameHeadBefore} AND +P.Getudo=? AND D.Getudo=? AND D.EigCode=?"),
                  {{"months", side.months}, {"leaving", leavingBalance(QStringLiteral("P"))},
                   {"sameHeadBefore", side.joinKeys(QStringLiteral("P"), QStringLiteral("D"))}});
    int prev = run.firstMonth;
    for (int i = 0; i < 11 && run.ok(); ++i) {
        const int cur = nextMonth(prev);
        QVariantList binds{prev, cur};
        if (!touched) binds << run.office;
        run.exec(sql, binds);
        run.show(progressPrefix + QString::number(cur));
        prev = cur;
    }
    return run.ok();
}

// Row 13 of each touched head: Zenkaigaku is what leaves the last month (E).
bool carryToRow13(LedgerRun& run, const MoneySide& side, bool officeOnly)
{
    QString sql = sqlText(QStringLiteral("UPDATE {months} AS D SET Zenkaigaku={leaving} FROM {months} AS E, {months} AS T "
                                         "WHERE +D.Getudo={carried} AND {sameHeadLast} AND +E.Getudo=? AND {touchedHead} "
                                         "AND T.Getudo={sum}"),
                          {{"months", side.months}, {"leaving", leavingBalance(QStringLiteral("E"))},
                           {"carried", rowText(LedgerRow::CarriedOut)},
                           {"sameHeadLast", side.joinKeys(QStringLiteral("E"), QStringLiteral("D"))},
                           {"touchedHead", side.joinKeys(QStringLiteral("T"), QStringLiteral("D"))}, {"sum", kSum}});
    QVariantList binds{run.lastMonth};
    if (officeOnly) {
        sql += QStringLiteral(" AND D.EigCode=?");
        binds << run.office;
    }
    return run.exec(sql, binds);
}

// Zan of each touched head: what leaves its last month (D).
bool headBalanceFromLastMonth(LedgerRun& run, const MoneySide& side, bool officeOnly)
{
    QStringList headJoin;
    for (const QString& k : side.keys)
        if (k != QLatin1String("EigCode")) headJoin << QStringLiteral("D.%1=%2.%1").arg(k, side.head);
    QString sql = sqlText(QStringLiteral("UPDATE {head} SET Zan={leaving} FROM {months} AS D, {months} AS T "
                                         "WHERE {headOfLast} AND +D.Getudo=? AND {touchedHead} AND T.Getudo={sum}"),
                          {{"head", side.head}, {"leaving", leavingBalance(QStringLiteral("D"))}, {"months", side.months},
                           {"headOfLast", headJoin.join(QStringLiteral(" AND "))},
                           {"touchedHead", side.joinKeys(QStringLiteral("T"), QStringLiteral("D"))}, {"sum", kSum}});
    QVariantList binds{run.lastMonth};
    if (officeOnly) {
        sql += sqlText(QStringLiteral(" AND {head}.EigCode=? AND D.EigCode=?"), {{"head", side.head}});
        binds << run.office << run.office;
    }
    return run.exec(sql, binds);
}
