#include "reports/RepoNippou.h"
#include "entry/Convert.h"
#include "entry/Dates.h"
#include "pageout/Grd.h"
#include "pageout/ReportRows.h"
#include "shell/Session.h"

RepoNippou::RepoNippou(const QString& menuKey) : sales_(menuKey == QLatin1String("Uri")) {}

RepoNippou::~RepoNippou() = default;

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
    rows_.reset();
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
    // "+HinCode": a range reads most of its lines, and one pass with a sort beats walking the
    // code index line by line; a partner's own index stays usable.
    sql += QStringLiteral(" GROUP BY +HinCode ORDER BY +HinCode");
    rows_ = bufferedQueryRows(session().MasterDb, sql, binds, error, {QStringLiteral("tUGaku")});
    return rows_ != nullptr;
}

int RepoNippou::count() const { return rows_ ? rows_->count() : 0; }

QString RepoNippou::period() const
{
    return FormatDate(from_, 0) + QStringLiteral("より") + FormatDate(to_, 0) + QStringLiteral("まで");
}

void RepoNippou::setUp(Grd& grd)
{
    grd.GrdInit(5);
    grd.GrdAddColumn({QStringLiteral("コード"), QStringLiteral("@0"), QStringLiteral("S"), QStringLiteral("13"), 0, 120});
    grd.GrdAddColumn({QStringLiteral("名称"), QStringLiteral("aHinNamae"), QStringLiteral("S"), QStringLiteral("30"), 0, 120});
    grd.GrdAddColumn({QStringLiteral("数量"), QStringLiteral("tSuu"), QStringLiteral("N"), QStringLiteral("#,###,###"), 0, 120, 1});
    grd.GrdAddColumn({QStringLiteral("単価"), QStringLiteral("@1"), QStringLiteral("N"), QStringLiteral("#,###,##0.0"), 0, 120});
    grd.GrdAddColumn({QStringLiteral("金額"), QStringLiteral("tUGaku"), QStringLiteral("N"), QStringLiteral("#,###,###"), 0, 120, 1});
    grd.GrdSetHeaders();
}

bool RepoNippou::fill(Grd& grd)
{
    return grd.GrdFill(rows_.get(), this);
}

bool RepoNippou::print(Grd& grd) const
{
    grd.paper = QStringLiteral("15");
    return grd.GrdPrint(title(), period(), 0);
}

QVariant RepoNippou::alpha(short& n)
{
    if (!rows_) return {};
    if (n == 0) {
        QString code = NullToEmpty(rows_->value(QStringLiteral("HinCode")));
        return ZeroStrip(code);
    }
    if (n == 1) {
        const qint64 suu = rows_->value(QStringLiteral("tSuu")).toLongLong();
        return suu == 0 ? 0.0 : variantMoney(rows_->value(QStringLiteral("tUGaku"))) / double(suu);
    }
    return {};
}
