#pragma once
// The list of a partner's slips: number, date and remark, newest first.
#include "slips/QtPickList.h"

class SlipList_frm : public PickListDialog {
    Q_OBJECT
public:
    explicit SlipList_frm(QWidget* parent = nullptr);
    // pickSlipFromList's second half.
    static QString pick(const QString& kind, qint64 partner) { return pickFrom<SlipList_frm>(kind, partner); }
};
