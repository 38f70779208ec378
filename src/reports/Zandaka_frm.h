#pragma once
// "売掛残高一覧" / "買掛残高一覧" (menu words Uza, Kza; UzaDtl lists every destination).
#include "reports/LedgerReportList_frm.h"

class Zandaka_frm : public LedgerReportList_frm {
    Q_OBJECT
public:
    explicit Zandaka_frm(QWidget* parent = nullptr);
};
