#pragma once
// The list of a partner's slips: number, date and remark, newest first.
#include "slips/QtPickList.h"

class SlipList_frm : public PickListDialog {
    Q_OBJECT
public:
    explicit SlipList_frm(QWidget* parent = nullptr);
    // Fills the list with the partner's slips of the session office.
    void Init(const QString& kind, qint64 partner);
    // pickSlipFromList's second half: shows the list modally, also when it is empty.
    static QString pick(const QString& kind, qint64 partner);
};
