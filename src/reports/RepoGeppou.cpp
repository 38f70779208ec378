#include "reports/RepoGeppou.h"
#include "entry/Convert.h"
#include "entry/Dates.h"
#include "entry/Recordset.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {

const QString kAmount = QStringLiteral("##,###,###");

// One statement for every form of the request: the code column, the join to the heads for a
// destination, the customer condition. The day columns come first, so their dates are the
// first binds.
QString crosstabStatement(const GeppouRequest& r)
{
    const QString code = r.split ? QStringLiteral("Dud.HinCode") : QStringLiteral("SUBSTR(Dud.HinCode,1,11)");
    QString sql = QStringLiteral("SELECT %1 AS aHinCode, Dud.HinNamae AS aNamae, SUM(Dud.Suu) AS tSuuT, "
                                 "SUM(Dud.UGaku) AS tGaku, Dud.UTanka AS UTanka, MIN(Dud.rowid) AS firstLine")
                      .arg(code);
    for (int d = 0; d < RepoGeppou::Days; ++d)
        sql += QStringLiteral(", SUM(CASE WHEN Dud.Hizuke=? THEN Dud.Suu END) AS d%1").arg(d);
    sql += QStringLiteral(" FROM Dud");
    if (r.dest != 0)
        sql += QStringLiteral(" INNER JOIN Dur ON (Dud.EigCode=Dur.EigCode) AND (Dud.Dno=Dur.Dno)");
    sql += QStringLiteral(" WHERE Dud.Hizuke>=? AND Dud.Hizuke<=?");
    if (r.customer != 0) sql += QStringLiteral(" AND Dud.TorCode=?");
    // Cancelled slips keep their negative image until the next ledger run.
    sql += QStringLiteral(" AND Dud.Dno>0");
    if (r.dest != 0) sql += QStringLiteral(" AND Dur.NouCode=?");
    sql += QStringLiteral(" GROUP BY %1, Dud.UTanka ORDER BY %1, Dud.UTanka").arg(code);
    return sql;
}

QString dayText(const QVariant& v)
{
    return v.isNull() ? QString() : QString::number(v.toLongLong());
}

} // namespace

QString RepoGeppou::checkFields(const QString& month, const QString& sime)
{
    if (!HasText(month)) return QStringLiteral("月度が記入されていません。");
    if (!HasText(sime)) return QStringLiteral("締日が記入されていません。");
    return {};
}

bool RepoGeppou::period(int month, int sime, QDate* from, QDate* to)
{
    const Session& s = session();
    const int year = s.Nendo + (month < s.sTuki ? 1 : 0);
    QDate f, t;
    PeriodOfMonth(short(sime), year, month, f, t);
    if (!f.isValid() || !t.isValid()) return false;
    *from = f;
    *to = t;
    return true;
}

int RepoGeppou::periodDays() const
{
    return from_.isValid() ? int(from_.daysTo(to_)) + 1 : 0;
}

bool RepoGeppou::load(const GeppouRequest& r, QString* error)
{
    rows_.clear();
    from_ = to_ = QDate();
    if (!period(r.month, r.sime, &from_, &to_)) return true;
    QVariantList binds;
    for (int d = 0; d < Days; ++d) binds << from_.addDays(d).toString(Qt::ISODate);
    binds << from_.toString(Qt::ISODate) << to_.toString(Qt::ISODate);
    if (r.customer != 0) binds << r.customer;
    if (r.dest != 0) binds << r.dest;
    Query q(session().MasterDb, crosstabStatement(r), binds);
    if (!q.ok()) {
        if (error) *error = StoreErrorText(q.error());
        return false;
    }
    while (q.next()) {
        GeppouRow row{NullToEmpty(q.value(0)), NullToEmpty(q.value(1)), q.value(2).toLongLong(),
                      Money::fromStore(q.value(3)), Money::fromStore(q.value(4)), {}};
        for (int d = 0; d < Days; ++d) row.days[d] = q.value(6 + d);
        rows_ << row;
    }
    return true;
}

SummaryGrid RepoGeppou::emptyGrid()
{
    SummaryGrid g;
    g.columns << SummaryColumn{QStringLiteral("コード"), false, 1000} << SummaryColumn{QStringLiteral("商 品 名"), false, 2000};
    for (int d = 0; d < Days; ++d) g.columns << SummaryColumn{QString(), true, 400};
    g.columns << SummaryColumn{QStringLiteral("数量"), true, 800} << SummaryColumn{QStringLiteral("単価"), true, 800}
              << SummaryColumn{QStringLiteral("金額"), true, 1000};
    return g;
}

SummaryGrid RepoGeppou::grid() const
{
    SummaryGrid g = emptyGrid();
    for (int d = 0; d < periodDays() && d < Days; ++d) g.columns[2 + d].Caption = QString::number(from_.addDays(d).day());
    if (rows_.isEmpty()) return g;
    Money total;
    for (const GeppouRow& r : rows_) {
        QString code = r.aHinCode;
        QStringList cells{ZeroStrip(code), r.aNamae};
        for (int d = 0; d < Days; ++d) cells << dayText(r.days[d]);
        cells << FormatRight(double(r.tSuuT), kAmount) << FormatRight(r.UTanka, kAmount) << FormatRight(r.tGaku, kAmount);
        total += r.tGaku;
        g.rows << cells;
    }
    QStringList last(g.columnCount());
    last[0] = QStringLiteral("合計");
    last[g.columnCount() - 1] = FormatRight(total, kAmount);
    g.rows << last;
    return g;
}

QList<QPair<qint64, qint64>> RepoGeppou::sheets(const GeppouRequest& r, QString* error)
{
    if (r.customer != 0) return {{r.customer, r.dest}};
    QList<QPair<qint64, qint64>> out;
    const QSqlDatabase db = session().MasterDb;
    Query tor(db, QStringLiteral("SELECT Code FROM Tor WHERE Sime=? ORDER BY Code"), {r.sime});
    if (!tor.ok()) {
        if (error) *error = StoreErrorText(tor.error());
        return {};
    }
    while (tor.next()) {
        const qint64 c = tor.value(0).toLongLong();
        if (r.dest == 0) {
            out << qMakePair(c, qint64(0));
            continue;
        }
        Query nou(db, QStringLiteral("SELECT Code FROM Nou WHERE TorCode=? ORDER BY Code"), {c});
        if (!nou.ok()) {
            if (error) *error = StoreErrorText(nou.error());
            return {};
        }
        bool any = false;
        while (nou.next()) {
            out << qMakePair(c, nou.value(0).toLongLong());
            any = true;
        }
        if (!any) out << qMakePair(c, qint64(0));
    }
    return out;
}
