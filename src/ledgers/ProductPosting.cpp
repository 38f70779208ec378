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

// Scratch row `getudo` of each product: the quantity of its lines of the calendar month.
bool insertQuantities(LedgerRun& run, const LineSource& src, const QString& table, const QString& column,
                      int getudo, int month)
{
    return run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO ThiD (HinCode, EigCode, {quantity}, Getudo) "
                                           "SELECT HinCode, {office}, SUM(Suu), {row} FROM {lines} "
                                           "WHERE {calendarMonth}=? AND {which} GROUP BY {perProduct}"),
                            {{"quantity", column}, {"office", src.eig()}, {"row", rowText(getudo)},
                             {"lines", src.from(table)}, {"calendarMonth", monthOf(QStringLiteral("Hizuke"))},
                             {"which", src.filter()}, {"perProduct", src.group()}}),
                    src.binds(month));
}

// Scratch row `getudo` of each product: the amounts of its lines of the calendar month, by
// line kind 0..3 into the four columns; kinds outside the four count nowhere.
int insertAmounts(LedgerRun& run, const LineSource& src, const QString& table, const QStringList& columns,
                  int getudo, int month)
{
    QStringList byKind;
    for (int k = 0; k < 4; ++k) byKind << QStringLiteral("SUM(CASE WHEN Kubun=%1 THEN UGaku END)").arg(k);
    run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO ThiD (HinCode, EigCode, Getudo, {amounts}) "
                                    "SELECT COALESCE(HinCode, ''), {office}, {row}, {byKind} FROM {lines} "
                                    "WHERE {calendarMonth}=? AND {which} GROUP BY {perProduct}"),
                     {{"amounts", columns.join(QStringLiteral(", "))}, {"office", src.eig()}, {"row", rowText(getudo)},
                      {"byKind", byKind.join(QStringLiteral(", "))}, {"lines", src.from(table)},
                      {"calendarMonth", monthOf(QStringLiteral("Hizuke"))}, {"which", src.filter()},
                      {"perProduct", src.group()}}),
             src.binds(month));
    return run.changes();
}

// Nulls of the scratch rows to zeros, then row -10 of each product: their sums.
bool sumScratchRows(LedgerRun& run)
{
    for (const QString& c : scratchColumns())
        run.exec(sqlText(QStringLiteral("UPDATE ThiD SET {figure}=0 WHERE {figure} IS NULL AND Getudo<0"), {{"figure", c}}));
    QStringList sums;
    for (const QString& c : scratchColumns()) sums << QStringLiteral("SUM(%1)").arg(c);
    return run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO ThiD (HinCode, EigCode, Getudo, {figures}) "
                                           "SELECT HinCode, EigCode, {sum}, {sums} FROM ThiD WHERE Getudo<0 "
                                           "GROUP BY HinCode, EigCode"),
                            {{"figures", scratchColumns().join(QStringLiteral(", "))}, {"sum", rowText(LedgerRow::Sum)},
                             {"sums", sums.join(QStringLiteral(", "))}}));
}

// Products new to the ledger get a head from `Hin` and 13 zero month rows; a code gone from
// `Hin` gets the month rows only.
bool addMissingHeads(LedgerRun& run)
{
    const QString missing = sqlText(QStringLiteral("T.Getudo={sum} AND NOT EXISTS (SELECT 1 FROM Thi "
                                                   "WHERE Thi.HinCode=T.HinCode AND Thi.EigCode=T.EigCode)"),
                                    {{"sum", rowText(LedgerRow::Sum)}});
    QSqlQuery& count = run.query(QStringLiteral("SELECT COUNT(*) FROM ThiD AS T WHERE ") + missing);
    const int total = count.next() ? count.value(0).toInt() : 0;
    if (!run.ok() || total == 0) return run.ok();
    run.exec(sqlText(QStringLiteral("INSERT OR IGNORE INTO ThiD (HinCode, EigCode, Getudo, SSuu, SGaku, SHGaku, SNGaku, "
                                    "SKGaku, STotal, USuu, UGaku, UHGaku, UNGaku, UKGaku, UTotal, ZSuu, TSuu, KSuu) "
                                    "SELECT T.HinCode, T.EigCode, M.m, 0,0,0,0,0,0,0,0,0,0,0,0,0,0,0 "
                                    "FROM ThiD AS T, {months} AS M WHERE {missing}"),
                     {{"months", monthRows()}, {"missing", missing}}));
    run.exec(QStringLiteral("INSERT OR IGNORE INTO Thi (HinCode, HinNamae, HbnCode, Zan, EigCode) "
                            "SELECT T.HinCode, Hin.Namae, Hin.HbnCode, 0, T.EigCode FROM ThiD AS T "
                            "INNER JOIN Hin ON Hin.Code=T.HinCode WHERE ") + missing);
    run.show(QStringLiteral("商品台帳：Step 7 %1 / %1").arg(total));
    return run.ok();
}

// The month row of each touched product gets its row -10 added; with the stock, the month's
// movement (bought less sold) goes into ZSuu and TSuu too.
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
    return run.exec(sqlText(QStringLiteral("UPDATE ThiD AS D SET {sets} FROM ThiD AS T WHERE T.HinCode=D.HinCode "
                                           "AND T.EigCode=D.EigCode AND T.Getudo={sum} AND +D.Getudo=?"),
                            {{"sets", sets.join(QStringLiteral(", "))}, {"sum", rowText(LedgerRow::Sum)}}),
                    {month});
}

// Stock of each later month: what the month before (P) left plus the month's own movement.
bool chainStock(LedgerRun& run, int month, bool touchedOnly)
{
    const QString set = QStringLiteral("UPDATE ThiD AS D SET TSuu=P.TSuu+D.SSuu-D.USuu, ZSuu=P.TSuu+D.SSuu-D.USuu, "
                                       "KSuu=0 FROM ThiD AS P");
    const QString sql = touchedOnly
        ? set + sqlText(QStringLiteral(", ThiD AS T WHERE P.HinCode=D.HinCode AND P.EigCode=D.EigCode "
                                       "AND T.HinCode=D.HinCode AND T.EigCode=D.EigCode AND T.Getudo={sum} "
                                       "AND +P.Getudo=? AND +D.Getudo=?"),
                        {{"sum", rowText(LedgerRow::Sum)}})
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

// Steps shared by the posting and the rebuild: scratch rows -1 to -4 of each product from the
// month's lines, then row -10 with their sums.
bool collectLines(LedgerRun& run, const LineSource& src, int month)
{
    const auto text = [&](const QString& batch, const QString& rebuild) {
        run.show(src.rebuild ? rebuild : batch);
    };
    text(QStringLiteral("商品台帳：Step 1"), QStringLiteral("Step1"));
    insertQuantities(run, src, QStringLiteral("Dud"), QStringLiteral("USuu"), LedgerRow::SoldQuantity, month);
    text(QStringLiteral("商品台帳：Step 2"), QStringLiteral("Step2"));
    insertQuantities(run, src, QStringLiteral("Dsd"), QStringLiteral("SSuu"), LedgerRow::BoughtQuantity, month);
    const int sales = insertAmounts(run, src, QStringLiteral("Dud"),
                                    {QStringLiteral("UGaku"), QStringLiteral("UHGaku"), QStringLiteral("UNGaku"),
                                     QStringLiteral("UKGaku")}, LedgerRow::SalesAmounts, month);
    if (sales > 0)
        text(QStringLiteral("商品台帳：Step 3"), QStringLiteral("%1 / %1 Step3").arg(sales));
    // The purchase amounts are the lines' UGaku too: on Dsd that is the buying amount.
    const int purchases = insertAmounts(run, src, QStringLiteral("Dsd"),
                                        {QStringLiteral("SGaku"), QStringLiteral("SHGaku"), QStringLiteral("SNGaku"),
                                         QStringLiteral("SKGaku")}, LedgerRow::BoughtAmounts, month);
    if (purchases > 0)
        text(QStringLiteral("商品台帳：Step 4 %1 / %1").arg(purchases), QStringLiteral("%1 / %1 Step4").arg(purchases));
    return sumScratchRows(run);
}

// Row -10: the totals of the purchase and the sales amounts.
bool totalScratch(LedgerRun& run)
{
    return run.exec(sqlText(QStringLiteral("UPDATE ThiD SET STotal=SGaku+SHGaku+SNGaku+SKGaku, "
                                           "UTotal=UGaku+UHGaku+UNGaku+UKGaku WHERE Getudo={sum}"),
                            {{"sum", rowText(LedgerRow::Sum)}}));
}

} // namespace

bool PostProductMonth(LedgerRun& run, int month)
{
    run.exec(QStringLiteral("DELETE FROM ThiD WHERE Getudo<0"));
    // Rows -1 .. -4 and -10 of the marked lines of the month; heads for new products.
    collectLines(run, LineSource{false, run}, month);
    addMissingHeads(run);
    run.show(QStringLiteral("商品台帳：Step 8"));
    // Row -10 into the month, then the stock of the later months.
    totalScratch(run);
    addToMonth(run, month, true);
    chainStock(run, month, true);
    // Zan of each touched product's head: the stock at the end of the last month.
    run.exec(sqlText(QStringLiteral("UPDATE Thi SET Zan=D.TSuu FROM ThiD AS D, ThiD AS T WHERE D.HinCode=Thi.HinCode "
                                    "AND D.EigCode=Thi.EigCode AND +D.Getudo=? AND T.HinCode=Thi.HinCode "
                                    "AND T.EigCode=Thi.EigCode AND T.Getudo={sum}"),
                     {{"sum", rowText(LedgerRow::Sum)}}),
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
    // Every sales mark goes, before and after: the rebuild reads all lines of the office.
    run.exec(QStringLiteral("UPDATE Dud SET ThiFlag=0 WHERE ThiFlag<>0"));
    collectLines(run, LineSource{true, run}, month);
    totalScratch(run);
    // The month's own stock is not derived again here; the later months follow from it.
    addToMonth(run, month, false);
    chainStock(run, month, false);
    run.exec(QStringLiteral("DELETE FROM ThiD WHERE Getudo<0"));
    return run.exec(QStringLiteral("UPDATE Dud SET ThiFlag=0 WHERE ThiFlag<>0"));
}
