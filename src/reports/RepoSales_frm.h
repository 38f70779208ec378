#pragma once
// "販売一覧表": the month's sales by customer (Uza) or purchases by supplier (Kza).
#include "reports/LedgerReportList_frm.h"

class RepoSales_frm : public LedgerReportList_frm {
    Q_OBJECT
public:
    explicit RepoSales_frm(QWidget* parent = nullptr);
};
