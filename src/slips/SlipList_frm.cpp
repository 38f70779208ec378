#include "slips/SlipList_frm.h"

// "適用" is the list's own heading, though the field is captioned "摘要".
SlipList_frm::SlipList_frm(QWidget* parent)
    : PickListDialog({QStringLiteral("番号"), QStringLiteral("日付"), QStringLiteral("適用")}, {80, 190}, parent)
{
}
