#include "slips/CasherList_frm.h"

CasherList_frm::CasherList_frm(QWidget* parent)
    : PickListDialog({QStringLiteral("番号"), QStringLiteral("日付")}, {90}, parent)
{
}
