#pragma once
// "売掛残高一覧" / "買掛残高一覧": the closing balances of one month, one row per partner, with
// seven sums. UzaDtl lists every destination; only the customers' own rows add to the sums,
// since they already hold their destinations' month.
#include "reports/LedgerReportList.h"

class Zandaka : public PartnerMonthList {
public:
    explicit Zandaka(const QString& code) : PartnerMonthList(code, 7) {}

    QStringList heads() const override;
    ReportDocument printDocument() const override;
    Money alphaValue(int n, int r) const override;
    ReportSheet sheet() const override;
    QString sheetName() const override;

protected:
    void addRow(int r) override;
    // zenkai, nyukin, kurikosi, uriage, henpin, zei, hTotal as the screen has them.
    QList<Money> screenFigures(int r) const override;
};
