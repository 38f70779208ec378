#pragma once
// "売上一覧表" / "仕入一覧表": the month's own movement by partner, from the same ledger rows as
// the balance list, without the balance brought forward and the money received.
#include "reports/LedgerReportList.h"

class RepoSales : public PartnerMonthList {
public:
    // Anything but "Kza" lists the customers.
    explicit RepoSales(const QString& code)
        : PartnerMonthList(code == QLatin1String("Kza") ? QStringLiteral("Kza") : QStringLiteral("Uza"), 4) {}

    QStringList heads() const override;
    ReportDocument printDocument() const override;
    Money alphaValue(int n, int r) const override;
    ReportSheet sheet() const override;
    QString sheetName() const override;

protected:
    // uriage, henpin, zei, hTotal.
    QList<Money> screenFigures(int r) const override;
};
