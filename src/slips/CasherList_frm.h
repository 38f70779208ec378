#pragma once
// The list of a partner's deposit or payment slips: number and date, newest first.
#include "slips/QtPickList.h"

class CasherList_frm : public PickListDialog {
    Q_OBJECT
public:
    explicit CasherList_frm(QWidget* parent = nullptr);
    // pickCashSlipFromList's last step.
    static QString pick(const QString& kind, qint64 partner) { return pickFrom<CasherList_frm>(kind, partner); }
};
