#include "reports/RepoSales_frm.h"
#include "reports/RepoSales.h"

RepoSales_frm::RepoSales_frm(QWidget* parent)
    : LedgerReportList_frm([](const QString& code) { return new RepoSales(code); },
                           {QStringLiteral("Uza"), QStringLiteral("Kza")},
                           QStringLiteral("０ の場合は締めに関係なく表示します。"), QStringLiteral("販売一覧表"), parent)
{
}
