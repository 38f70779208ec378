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
    return QStringLiteral("%1.Zenkaigaku+%1.KTotal+%1.Zeigaku-%1.NTotal").arg(a);
}

bool deleteScratch(LedgerRun& run, const MoneySide& side)
{
    return run.exec(QStringLiteral("DELETE FROM %1 WHERE Getudo<0").arg(side.months));
}

bool scratchNullsToZero(LedgerRun& run, const MoneySide& side)
{
    for (const QString& f : scratchFigures())
        run.exec(QStringLiteral("UPDATE %1 SET %2=0 WHERE %2 IS NULL AND Getudo<0").arg(side.months, f));
    return run.ok();
}

bool sumScratch(LedgerRun& run, const MoneySide& side)
{
    QStringList sums;
    for (const QString& f : scratchFigures()) sums << QStringLiteral("SUM(%1)").arg(f);
    return run.exec(QStringLiteral("INSERT OR IGNORE INTO %1 (%2, Getudo, %3) SELECT %2, -10, %4 FROM %1 "
                                   "WHERE Getudo<0 GROUP BY %2")
                        .arg(side.months, side.keyList(), scratchFigures().join(QStringLiteral(", ")),
                             sums.join(QStringLiteral(", "))));
}

bool totalScratch(LedgerRun& run, const MoneySide& side)
{
    return run.exec(QStringLiteral("UPDATE %1 SET KTotal=Gaku+HGaku+NGaku+KGaku, "
                                   "NTotal=Genkin+Kogite+Furikomi+Tegata+Sousai+Chousei WHERE Getudo=-10")
                        .arg(side.months));
}

// A "+" before a month filter keeps the store from reading a whole month of every key: the few
// rows -10 lead the join, and the month rows are found by their key.
bool addScratchToMonth(LedgerRun& run, const MoneySide& side, int month)
{
    QStringList sets;
    for (const QString& f : moneyFigures()) sets << QStringLiteral("%1=D.%1+T.%1").arg(f);
    return run.exec(QStringLiteral("UPDATE %1 AS D SET %2 FROM %1 AS T WHERE %3 AND T.Getudo=-10 AND +D.Getudo=?")
                        .arg(side.months, sets.join(QStringLiteral(", ")), side.joinKeys(QStringLiteral("T"), QStringLiteral("D"))),
                    {month});
}

bool carryMonths(LedgerRun& run, const MoneySide& side, bool touched, const QString& progressPrefix)
{
    const QString join = side.joinKeys(QStringLiteral("P"), QStringLiteral("D"));
    const QString sql = touched
        ? QStringLiteral("UPDATE %1 AS D SET Zenkaigaku=%2 FROM %1 AS T, %1 AS P WHERE %3 AND T.Getudo=-10 "
                         "AND %4 AND +P.Getudo=? AND +D.Getudo=?")
              .arg(side.months, leavingBalance(QStringLiteral("P")), side.joinKeys(QStringLiteral("T"), QStringLiteral("D")), join)
        : QStringLiteral("UPDATE %1 AS D SET Zenkaigaku=%2 FROM %1 AS P WHERE %3 AND +P.Getudo=? AND D.Getudo=? "
                         "AND D.EigCode=?")
              .arg(side.months, leavingBalance(QStringLiteral("P")), join);
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

bool carryToRow13(LedgerRun& run, const MoneySide& side, bool officeOnly)
{
    QString sql = QStringLiteral("UPDATE %1 AS D SET Zenkaigaku=%2 FROM %1 AS E, %1 AS T WHERE +D.Getudo=13 "
                                 "AND %3 AND +E.Getudo=? AND %4 AND T.Getudo=-10")
                      .arg(side.months, leavingBalance(QStringLiteral("E")),
                           side.joinKeys(QStringLiteral("E"), QStringLiteral("D")),
                           side.joinKeys(QStringLiteral("T"), QStringLiteral("D")));
    QVariantList binds{run.lastMonth};
    if (officeOnly) {
        sql += QStringLiteral(" AND D.EigCode=?");
        binds << run.office;
    }
    return run.exec(sql, binds);
}

bool headBalanceFromLastMonth(LedgerRun& run, const MoneySide& side, bool officeOnly)
{
    QStringList headJoin;
    for (const QString& k : side.keys)
        if (k != QLatin1String("EigCode")) headJoin << QStringLiteral("D.%1=%2.%1").arg(k, side.head);
    QString sql = QStringLiteral("UPDATE %1 SET Zan=%2 FROM %3 AS D, %3 AS T WHERE %4 AND +D.Getudo=? AND %5 "
                                 "AND T.Getudo=-10")
                      .arg(side.head, leavingBalance(QStringLiteral("D")), side.months,
                           headJoin.join(QStringLiteral(" AND ")), side.joinKeys(QStringLiteral("T"), QStringLiteral("D")));
    QVariantList binds{run.lastMonth};
    if (officeOnly) {
        sql += QStringLiteral(" AND %1.EigCode=? AND D.EigCode=?").arg(side.head);
        binds << run.office << run.office;
    }
    return run.exec(sql, binds);
}
