#pragma once
// The list of a partner's deposit or payment slips: number and date, newest first.
#include "slips/QtPickList.h"

class CasherList_frm : public PickListDialog {
    Q_OBJECT
public:
    explicit CasherList_frm(QWidget* parent = nullptr);
    // Fills the list with the partner's slips of the session office.
    void Init(const QString& kind, qint64 partner);
    // pickCashSlipFromList's last step: shows the list modally, also when it is empty.
    static QString pick(const QString& kind, qint64 partner);
};
