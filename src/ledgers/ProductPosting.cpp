#include "ledgers/ProductPosting.h"
#include <QStringList>
#include "ledgers/LedgerRun.h"

namespace {

const QStringList& scratchColumns()
{
    static const QStringList c = QStringLiteral("SSuu SGaku SHGaku SNGaku SKGaku USuu UGaku UHGaku UNGaku UKGaku")
                                     .split(QLatin1Char(' '));
    return c;
}

// Which lines a pass reads: the batch the marked ones of any office, the rebuild all lines
// of the run's office (written under that office).
struct LineSource {
    bool rebuild;
    const LedgerRun& run;
    QString eig() const { return rebuild ? QStringLiteral("?") : QStringLiteral("EigCode"); }
    QString filter() const { return rebuild ? QStringLiteral("EigCode=?") : QStringLiteral("ThiFlag=?"); }
    QString group() const { return rebuild ? QStringLiteral("HinCode") : QStringLiteral("HinCode, EigCode"); }
    // A month of the whole office is read in file order: walking it through the product index
    // would visit the lines one by one at random.
    QString from(const QString& table) const { return rebuild ? table + QStringLiteral(" NOT INDEXED") : table; }
    QVariantList binds(int month) const
    {
        QVariantList b;
        if (rebuild) b << run.office;
        b << month << (rebuild ? QVariant(run.office) : QVariant(run.flag));
        return b;
    }
};

bool insertQuantities(LedgerRun& run, const LineSource& src, const QString& table, const QString& column,
                      int getudo, int month)
{
    return run.exec(QStringLiteral("INSERT OR IGNORE INTO ThiD (HinCode, EigCode, %1, Getudo) "
                                   "SELECT HinCode, %2, SUM(Suu), %3 FROM %4 WHERE %5=? AND %6 GROUP BY %7")
                        .arg(column, src.eig(), QString::number(getudo), src.from(table), monthOf(QStringLiteral("Hizuke")),
                             src.filter(), src.group()),
                    src.binds(month));
}

// Amounts by line kind 0..3 into the four columns; kinds outside the four count nowhere.
int insertAmounts(LedgerRun& run, const LineSource& src, const QString& table, const QStringList& columns,
                  int getudo, int month)
{
    QStringList sums;
    for (int k = 0; k < 4; ++k) sums << QStringLiteral("SUM(CASE WHEN Kubun=%1 THEN UGaku END)").arg(k);
    run.exec(QStringLiteral("INSERT OR IGNORE INTO ThiD (HinCode, EigCode, Getudo, %1) "
                            "SELECT COALESCE(HinCode, ''), %2, %3, %4 FROM %5 WHERE %6=? AND %7 GROUP BY %8")
                 .arg(columns.join(QStringLiteral(", ")), src.eig(), QString::number(getudo),
                      sums.join(QStringLiteral(", ")), src.from(table), monthOf(QStringLiteral("Hizuke")), src.filter(),
                      src.group()),
             src.binds(month));
    return run.changes();
}

bool sumScratchRows(LedgerRun& run)
{
    for (const QString& c : scratchColumns())
        run.exec(QStringLiteral("UPDATE ThiD SET %1=0 WHERE %1 IS NULL AND Getudo<0").arg(c));
    QStringList sums;
    for (const QString& c : scratchColumns()) sums << QStringLiteral("SUM(%1)").arg(c);
    return run.exec(QStringLiteral("INSERT OR IGNORE INTO ThiD (HinCode, EigCode, Getudo, %1) "
                                   "SELECT HinCode, EigCode, -10, %2 FROM ThiD WHERE Getudo<0 GROUP BY HinCode, EigCode")
                        .arg(scratchColumns().join(QStringLiteral(", ")), sums.join(QStringLiteral(", "))));
}

// Products new to the ledger get a head from `Hin` and 13 zero month rows; a code gone from
// `Hin` gets the month rows only.
bool addMissingHeads(LedgerRun& run)
{
    const QString missing = QStringLiteral(
        "T.Getudo=-10 AND NOT EXISTS (SELECT 1 FROM Thi WHERE Thi.HinCode=T.HinCode AND Thi.EigCode=T.EigCode)");
    QSqlQuery& count = run.query(QStringLiteral("SELECT COUNT(*) FROM ThiD AS T WHERE ") + missing);
    const int total = count.next() ? count.value(0).toInt() : 0;
    if (!run.ok() || total == 0) return run.ok();
    run.exec(QStringLiteral("INSERT OR IGNORE INTO ThiD (HinCode, EigCode, Getudo, SSuu, SGaku, SHGaku, SNGaku, SKGaku, "
                            "STotal, USuu, UGaku, UHGaku, UNGaku, UKGaku, UTotal, ZSuu, TSuu, KSuu) "
                            "SELECT T.HinCode, T.EigCode, M.m, 0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 FROM ThiD AS T, %1 AS M WHERE %2")
                 .arg(monthRows(), missing));
    run.exec(QStringLiteral("INSERT OR IGNORE INTO Thi (HinCode, HinNamae, HbnCode, Zan, EigCode) "
                            "SELECT T.HinCode, Hin.Namae, Hin.HbnCode, 0, T.EigCode FROM ThiD AS T "
                            "INNER JOIN Hin ON Hin.Code=T.HinCode WHERE ") + missing);
    run.show(QStringLiteral("商品台帳：Step 7 %1 / %1").arg(total));
    return run.ok();
}

bool addToMonth(LedgerRun& run, int month, bool withStock)
{
    QStringList sets;
    for (const QString& c : QStringLiteral("SSuu SGaku SHGaku SNGaku SKGaku STotal USuu UGaku UHGaku UNGaku UKGaku")
                                .split(QLatin1Char(' ')))
        sets << QStringLiteral("%1=D.%1+T.%1").arg(c);
    // The month's UTotal grows by the run's purchase total: that is this statement's own rule.
    sets << QStringLiteral("UTotal=D.UTotal+T.STotal");
    if (withStock)
        sets << QStringLiteral("ZSuu=D.ZSuu+T.SSuu-T.USuu") << QStringLiteral("TSuu=D.TSuu+T.SSuu-T.USuu");
    return run.exec(QStringLiteral("UPDATE ThiD AS D SET %1 FROM ThiD AS T WHERE T.HinCode=D.HinCode "
                                   "AND T.EigCode=D.EigCode AND T.Getudo=-10 AND +D.Getudo=?")
                        .arg(sets.join(QStringLiteral(", "))),
                    {month});
}

// Stock of each later month: what the month before left plus the month's own movement.
bool chainStock(LedgerRun& run, int month, bool touchedOnly)
{
    const QString set = QStringLiteral("UPDATE ThiD AS D SET TSuu=P.TSuu+D.SSuu-D.USuu, ZSuu=P.TSuu+D.SSuu-D.USuu, "
                                       "KSuu=0 FROM ThiD AS P");
    const QString sql = touchedOnly
        ? set + QStringLiteral(", ThiD AS T WHERE P.HinCode=D.HinCode AND P.EigCode=D.EigCode AND T.HinCode=D.HinCode "
                               "AND T.EigCode=D.EigCode AND T.Getudo=-10 AND +P.Getudo=? AND +D.Getudo=?")
        : set + QStringLiteral(" WHERE P.HinCode=D.HinCode AND P.EigCode=D.EigCode AND +P.Getudo=? AND D.Getudo=? "
                               "AND D.EigCode=?");
    for (int prev = month; prev != run.lastMonth && run.ok();) {
        const int cur = nextMonth(prev);
        QVariantList binds{prev, cur};
        if (!touchedOnly) binds << run.office;
        run.exec(sql, binds);
        run.show(touchedOnly ? QStringLiteral("商品台帳：Step 8 ") + QString::number(cur)
                             : QString::number(cur) + QStringLiteral(" Step8"));
        prev = cur;
    }
    return run.ok();
}

// Steps shared by the posting and the rebuild: scratch rows from the lines, then their sums.
bool collectLines(LedgerRun& run, const LineSource& src, int month)
{
    const auto text = [&](const QString& batch, const QString& rebuild) {
        run.show(src.rebuild ? rebuild : batch);
    };
    text(QStringLiteral("商品台帳：Step 1"), QStringLiteral("Step1"));
    insertQuantities(run, src, QStringLiteral("Dud"), QStringLiteral("USuu"), -1, month);
    text(QStringLiteral("商品台帳：Step 2"), QStringLiteral("Step2"));
    insertQuantities(run, src, QStringLiteral("Dsd"), QStringLiteral("SSuu"), -2, month);
    const int sales = insertAmounts(run, src, QStringLiteral("Dud"),
                                    {QStringLiteral("UGaku"), QStringLiteral("UHGaku"), QStringLiteral("UNGaku"),
                                     QStringLiteral("UKGaku")}, -3, month);
    if (sales > 0)
        text(QStringLiteral("商品台帳：Step 3"), QStringLiteral("%1 / %1 Step3").arg(sales));
    // The purchase amounts are the lines' UGaku too: on Dsd that is the buying amount.
    const int purchases = insertAmounts(run, src, QStringLiteral("Dsd"),
                                        {QStringLiteral("SGaku"), QStringLiteral("SHGaku"), QStringLiteral("SNGaku"),
                                         QStringLiteral("SKGaku")}, -4, month);
    if (purchases > 0)
        text(QStringLiteral("商品台帳：Step 4 %1 / %1").arg(purchases), QStringLiteral("%1 / %1 Step4").arg(purchases));
    return sumScratchRows(run);
}

bool totalScratch(LedgerRun& run)
{
    return run.exec(QStringLiteral("UPDATE ThiD SET STotal=SGaku+SHGaku+SNGaku+SKGaku, "
                                   "UTotal=UGaku+UHGaku+UNGaku+UKGaku WHERE Getudo=-10"));
}

} // namespace

bool PostProductMonth(LedgerRun& run, int month)
{
    run.exec(QStringLiteral("DELETE FROM ThiD WHERE Getudo<0"));
    collectLines(run, LineSource{false, run}, month);
    addMissingHeads(run);
    run.show(QStringLiteral("商品台帳：Step 8"));
    totalScratch(run);
    addToMonth(run, month, true);
    chainStock(run, month, true);
    run.exec(QStringLiteral("UPDATE Thi SET Zan=D.TSuu FROM ThiD AS D, ThiD AS T WHERE D.HinCode=Thi.HinCode "
                            "AND D.EigCode=Thi.EigCode AND +D.Getudo=? AND T.HinCode=Thi.HinCode "
                            "AND T.EigCode=Thi.EigCode AND T.Getudo=-10"),
             {run.lastMonth});
    return run.exec(QStringLiteral("DELETE FROM ThiD WHERE Getudo<0"));
}

bool RebuildProductMonth(LedgerRun& run, int month)
{
    run.exec(QStringLiteral("DELETE FROM ThiD WHERE Getudo<0"));
    run.exec(QStringLiteral("UPDATE ThiD SET Ssuu=0,Usuu=0,Sgaku=0,Ugaku=0,SHgaku=0,UHgaku=0,"
                            "SNgaku=0,UNgaku=0,SKgaku=0,UKgaku=0,STotal=0,UTotal=0 WHERE EigCode=? AND Getudo=?"),
             {run.office, month});
    run.show(QStringLiteral("売上伝票より集計中"));
    run.exec(QStringLiteral("UPDATE Dud SET ThiFlag=0 WHERE ThiFlag<>0"));
    collectLines(run, LineSource{true, run}, month);
    totalScratch(run);
    // The month's own stock is not derived again here; the later months follow from it.
    addToMonth(run, month, false);
    chainStock(run, month, false);
    run.exec(QStringLiteral("DELETE FROM ThiD WHERE Getudo<0"));
    return run.exec(QStringLiteral("UPDATE Dud SET ThiFlag=0 WHERE ThiFlag<>0"));
}
