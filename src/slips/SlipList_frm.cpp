#include "slips/SlipList_frm.h"
#include "shell/Session.h"
#include "slips/SlipPick.h"

// "適用" is the list's own heading, though the field is captioned "摘要".
SlipList_frm::SlipList_frm(QWidget* parent)
    : PickListDialog({QStringLiteral("番号"), QStringLiteral("日付"), QStringLiteral("適用")}, {80, 190}, parent)
{
}

void SlipList_frm::Init(const QString& kind, qint64 partner)
{
    QList<QStringList> rows;
    for (const SlipListRow& r : slipListRows(kind, partner, session().EigCode))
        rows << QStringList{r.number, r.date, r.tekiyo};
    fill(rows);
}

QString SlipList_frm::pick(const QString& kind, qint64 partner)
{
    SlipList_frm f;
    f.Init(kind, partner);
    f.exec();
    return f.answer();
}
