#include "reports/RepoNippou.h"
#include "entry/Convert.h"
#include "entry/Dates.h"
#include "entry/Recordset.h"
#include "shell/Session.h"
#include "store/Sql.h"

RepoNippou::RepoNippou(const QString& menuKey) : sales_(menuKey == QLatin1String("Uri")) {}

QString RepoNippou::title() const
{
    return sales_ ? QStringLiteral("商品別売上集計") : QStringLiteral("商品別仕入集計");
}

QString RepoNippou::partnerLabel() const
{
    return sales_ ? QStringLiteral("得意先") : QStringLiteral("仕入先");
}

QString RepoNippou::partnerTable() const
{
    return sales_ ? QStringLiteral("Tor") : QStringLiteral("Sir");
}

bool RepoNippou::load(const QDate& from, const QDate& to, qint64 partner, QString* error)
{
    rows_.clear();
    current_ = -1;
    from_ = from;
    to_ = to;
    // MIN(rowid) makes the bare HinNamae that of the group's first line, as FIRST() gave it.
    QString sql = QStringLiteral("SELECT HinCode, HinNamae AS aHinNamae, SUM(Suu) AS tSuu, SUM(UGaku) AS tUGaku, "
                                 "MIN(rowid) AS firstLine FROM %1 WHERE Hizuke>=? AND Hizuke<=?")
                      .arg(sales_ ? QStringLiteral("Dud") : QStringLiteral("Dsd"));
    QVariantList binds{from.toString(Qt::ISODate), to.toString(Qt::ISODate)};
    if (partner != 0) {
        sql += sales_ ? QStringLiteral(" AND TorCode=?") : QStringLiteral(" AND SirCode=?");
        binds << partner;
    }
    sql += QStringLiteral(" GROUP BY HinCode ORDER BY HinCode");
    Query q(session().MasterDb, sql, binds);
    if (!q.ok()) {
        if (error) *error = StoreErrorText(q.error());
        return false;
    }
    while (q.next())
        rows_ << NippouRow{NullToEmpty(q.value(0)), NullToEmpty(q.value(1)), q.value(2).toLongLong(),
                           Money::fromStore(q.value(3))};
    return true;
}

QString RepoNippou::period() const
{
    return FormatDate(from_, 0) + QStringLiteral("より") + FormatDate(to_, 0) + QStringLiteral("まで");
}

QList<SummaryColumn> RepoNippou::columns()
{
    return {
        {QStringLiteral("コード"), QStringLiteral("@0"), QStringLiteral("S"), QStringLiteral("13"), 120, false},
        {QStringLiteral("名称"), QStringLiteral("aHinNamae"), QStringLiteral("S"), QStringLiteral("30"), 120, false},
        {QStringLiteral("数量"), QStringLiteral("tSuu"), QStringLiteral("N"), QStringLiteral("#,###,###"), 120, true},
        {QStringLiteral("単価"), QStringLiteral("@1"), QStringLiteral("N"), QStringLiteral("#,###,##0.0"), 120, false},
        {QStringLiteral("金額"), QStringLiteral("tUGaku"), QStringLiteral("N"), QStringLiteral("#,###,###"), 120, true},
    };
}

SummaryGrid RepoNippou::grid()
{
    SummaryGrid g;
    g.columns = columns();
    fillGrid(g, int(rows_.size()), [this](int row, const SummaryColumn& c) -> QVariant {
        current_ = row;
        if (c.Name.startsWith(QLatin1Char('@'))) {
            short n = short(c.Name.mid(1).toInt());
            return alpha(n);
        }
        const NippouRow& r = rows_[row];
        if (c.Name == QLatin1String("aHinNamae")) return r.aHinNamae;
        if (c.Name == QLatin1String("tSuu")) return double(r.tSuu);
        return r.tUGaku.toDouble();
    });
    return g;
}

QVariant RepoNippou::alpha(short& n)
{
    if (current_ < 0 || current_ >= rows_.size()) return {};
    const NippouRow& r = rows_[current_];
    if (n == 0) {
        QString code = r.HinCode;
        return ZeroStrip(code);
    }
    if (n == 1) return r.tSuu == 0 ? 0.0 : r.tUGaku.toDouble() / double(r.tSuu);
    return {};
}
