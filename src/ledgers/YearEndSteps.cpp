#include "ledgers/YearEndSteps.h"
#include <utility>
#include <QStringList>
#include "ledgers/LedgerRun.h"
#include "store/Schema.h"

namespace {

const QStringList kProductFlows{
    QStringLiteral("SSuu"), QStringLiteral("SGaku"), QStringLiteral("SHGaku"), QStringLiteral("SNGaku"),
    QStringLiteral("SKGaku"), QStringLiteral("STotal"), QStringLiteral("USuu"), QStringLiteral("UGaku"),
    QStringLiteral("UHGaku"), QStringLiteral("UNGaku"), QStringLiteral("UKGaku"), QStringLiteral("UTotal")};
const QStringList kProductStock{QStringLiteral("ZSuu"), QStringLiteral("TSuu"), QStringLiteral("KSuu")};
// The thirteen money figures of a customer or supplier month besides the balance brought in.
const QStringList kPartnerFlows{
    QStringLiteral("Gaku"), QStringLiteral("HGaku"), QStringLiteral("NGaku"), QStringLiteral("KGaku"),
    QStringLiteral("Zeigaku"), QStringLiteral("KTotal"), QStringLiteral("Genkin"), QStringLiteral("Kogite"),
    QStringLiteral("Furikomi"), QStringLiteral("Tegata"), QStringLiteral("Sousai"), QStringLiteral("Chousei"),
    QStringLiteral("NTotal")};

// One month ledger as the year-end sees it: its table, head, old-year link and key columns.
struct MonthLedger {
    QString table, head, old;
    QStringList keys;
    QStringList figures;
};

const QList<MonthLedger>& monthLedgers()
{
    static const QList<MonthLedger> ledgers{
        {QStringLiteral("ThiD"), QStringLiteral("Thi"), QStringLiteral("ThiDOld"),
         {QStringLiteral("HinCode"), QStringLiteral("EigCode")}, kProductFlows + kProductStock},
        {QStringLiteral("TtoD"), QStringLiteral("Tto"), QStringLiteral("TtoDOld"),
         {QStringLiteral("TorCode"), QStringLiteral("NouCode"), QStringLiteral("EigCode")},
         QStringList{QStringLiteral("Zenkaigaku")} + kPartnerFlows},
        {QStringLiteral("TsiD"), QStringLiteral("Tsi"), QStringLiteral("TsiDOld"),
         {QStringLiteral("SirCode"), QStringLiteral("EigCode")}, QStringList{QStringLiteral("Zenkaigaku")} + kPartnerFlows},
    };
    return ledgers;
}

// "a.K1=T.K1 AND a.K2=T.K2" for the keys of a ledger.
QString sameHead(const MonthLedger& l, const QString& alias, const QString& table)
{
    QStringList parts;
    for (const QString& k : l.keys) parts << QStringLiteral("%1.%2=%3.%2").arg(alias, k, table);
    return parts.join(QStringLiteral(" AND "));
}

// "C1=a.C1, C2=a.C2" or "C1=0, C2=0".
QString assignments(const QStringList& columns, const QString& from)
{
    QStringList parts;
    for (const QString& c : columns)
        parts << (from.isEmpty() ? c + QStringLiteral("=0") : QStringLiteral("%1=%2.%1").arg(c, from));
    return parts.join(QStringLiteral(", "));
}

// What a customer or supplier month hands to the next: the identity of the balances, a
// missing figure read as 0.
QString balanceOf(const QString& alias)
{
    return QStringLiteral("COALESCE(%1.Zenkaigaku,0)+COALESCE(%1.KTotal,0)+COALESCE(%1.Zeigaku,0)-COALESCE(%1.NTotal,0)")
        .arg(alias);
}

void carryProducts(LedgerRun& run, const MonthLedger& l, int first, int last)
{
    QStringList zeros;
    for (int i = 0; i < l.figures.size(); ++i) zeros << QStringLiteral("0");
    run.exec(QStringLiteral("INSERT OR IGNORE INTO ThiD (HinCode, EigCode, Getudo, %1) "
                            "SELECT Thi.HinCode, Thi.EigCode, months.m, %2 FROM Thi, %3 AS months")
                 .arg(l.figures.join(QStringLiteral(", ")), zeros.join(QStringLiteral(", ")), monthRows()));
    // The old year's last month opens the new year, its flows included.
    run.exec(QStringLiteral("UPDATE ThiD SET %1 FROM ThiDOld AS ThiD13 WHERE %2 AND ThiD13.Getudo=? AND ThiD.Getudo=?")
                 .arg(assignments(l.figures, QStringLiteral("ThiD13")), sameHead(l, QStringLiteral("ThiD13"), l.table)),
             {last, first});
    run.exec(QStringLiteral("UPDATE ThiD SET ZSuu=F.ZSuu, TSuu=F.TSuu, KSuu=0 FROM ThiD AS F "
                            "WHERE %1 AND F.Getudo=? AND ThiD.Getudo<>?")
                 .arg(sameHead(l, QStringLiteral("F"), l.table)),
             {first, first});
    run.exec(QStringLiteral("UPDATE ThiD SET %1 WHERE Getudo<>?").arg(assignments(kProductFlows, {})), {first});
}

void carryPartners(LedgerRun& run, const MonthLedger& l, int first)
{
    // The old row 13 (open items and the balance carried) becomes the first month.
    run.exec(QStringLiteral("UPDATE %1 SET %2 FROM %3 AS Row13 WHERE %4 AND Row13.Getudo=13 AND %1.Getudo=?")
                 .arg(l.table, assignments(l.figures, QStringLiteral("Row13")), l.old,
                      sameHead(l, QStringLiteral("Row13"), l.table)),
             {first});
    run.exec(QStringLiteral("UPDATE %1 SET Zenkaigaku=%2, %3 FROM %1 AS F WHERE %4 AND F.Getudo=? AND %1.Getudo<>?")
                 .arg(l.table, balanceOf(QStringLiteral("F")), assignments(kPartnerFlows, {}),
                      sameHead(l, QStringLiteral("F"), l.table)),
             {first, first});
    run.exec(QStringLiteral("UPDATE %1 SET Zan=%2 FROM %3 AS F WHERE %4 AND F.Getudo=?")
                 .arg(l.head, balanceOf(QStringLiteral("F")), l.table, sameHead(l, QStringLiteral("F"), l.head)),
             {first});
}

// Leaves only the rows of `table` that meet `keep`. The closed year is nearly all of the file:
// what stays is set aside and put back into the emptied table, which is far quicker than
// deleting the rest row by row with every index.
void keepOnly(LedgerRun& run, const QString& table, const QString& keep)
{
    run.exec(QStringLiteral("CREATE TEMP TABLE yearend_kept AS SELECT * FROM %1 WHERE %2").arg(table, keep));
    run.exec(QStringLiteral("DELETE FROM %1").arg(table));
    run.exec(QStringLiteral("INSERT INTO %1 SELECT * FROM temp.yearend_kept").arg(table));
    run.exec(QStringLiteral("DROP TABLE temp.yearend_kept"));
}

} // namespace

QString missingRows13(const QString& table, const QString& schema, const QString& lastMonth)
{
    const MonthLedger* l = nullptr;
    for (const MonthLedger& m : monthLedgers())
        if (m.table == table) l = &m;
    const TableDef* def = findTableDef(table);
    if (!l || !def) return {};
    // The head's key, the month and its figures; what the month does not hand on stays empty.
    QStringList columns;
    for (const ColumnDef& c : def->columns) {
        if (c.name == QLatin1String("Getudo")) columns << QStringLiteral("13");
        else if (l->keys.contains(c.name, Qt::CaseInsensitive) || l->figures.contains(c.name, Qt::CaseInsensitive)) columns << QStringLiteral("L.") + c.name;
        else columns << QStringLiteral("NULL");
    }
    const QString from = (schema.isEmpty() ? QString() : schema + QLatin1Char('.')) + table;
    return QStringLiteral("SELECT %1 FROM %2 AS L WHERE L.Getudo=%3 AND NOT EXISTS "
                          "(SELECT 1 FROM %2 AS R WHERE R.Getudo=13 AND %4)")
        .arg(columns.join(QStringLiteral(", ")), from, lastMonth, sameHead(*l, QStringLiteral("R"), QStringLiteral("L")));
}

void CopyLastMonthToRow13(LedgerRun& run, int lastMonth, const QString& schema)
{
    const QString prefix = schema.isEmpty() ? QString() : schema + QLatin1Char('.');
    for (const MonthLedger& l : monthLedgers())
        run.exec(QStringLiteral("INSERT INTO %1%2 ").arg(prefix, l.table) + missingRows13(l.table, schema, QStringLiteral("?")),
                 {lastMonth});
}

void RemoveClosedSlips(LedgerRun& run)
{
    // A head goes when it has a line of a closed month (or was marked gone already); a line,
    // deposit or payment stays only in month 13 (or without a month, which no closing
    // reached). Heads first, while their lines are still there to be asked.
    for (const auto& [head, lines] : {std::pair{"Dsr", "Dsd"}, std::pair{"Dur", "Dud"}})
        keepOnly(run, QLatin1String(head),
                 QStringLiteral("Kubun IS NOT -1 AND NOT EXISTS (SELECT 1 FROM %1 WHERE %1.EigCode=%2.EigCode "
                                "AND %1.Dno=%2.Dno AND %1.Getudo<>13)")
                     .arg(QLatin1String(lines), QLatin1String(head)));
    for (const char* lines : {"Dsd", "Dud", "Dsh", "Dny"})
        keepOnly(run, QLatin1String(lines), QStringLiteral("Getudo IS NULL OR Getudo=13"));
}

void MoveOpenSlips(LedgerRun& run, int firstMonth)
{
    for (const char* lines : {"Dsd", "Dud", "Dsh", "Dny"})
        run.exec(QStringLiteral("UPDATE %1 SET Getudo=? WHERE Getudo=13").arg(QLatin1String(lines)), {firstMonth});
}

void ResetSlipNumbers(LedgerRun& run)
{
    run.exec(QStringLiteral("UPDATE Eig SET DurNo=1, DsrNo=1, DshNo=1, DnyNo=1, SeikyuNo=1"));
}

void CarryLedgers(LedgerRun& run, int firstMonth, int lastMonth)
{
    const QList<MonthLedger>& l = monthLedgers();
    carryProducts(run, l[0], firstMonth, lastMonth);
    carryPartners(run, l[1], firstMonth);
    carryPartners(run, l[2], firstMonth);
}

void AdvanceCompanyYear(LedgerRun& run)
{
    // Eight digits YYYYMMDD: a year later is 10000 more.
    run.exec(QStringLiteral("UPDATE Com SET SKai=CAST(CAST(trim(SKai) AS INTEGER)+10000 AS TEXT), "
                            "EKai=CAST(CAST(trim(EKai) AS INTEGER)+10000 AS TEXT), Ki=COALESCE(Ki,0)+1"));
}
