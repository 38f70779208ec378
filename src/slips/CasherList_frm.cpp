#include "slips/CasherList_frm.h"
#include "shell/Session.h"
#include "slips/CashPick.h"

CasherList_frm::CasherList_frm(QWidget* parent)
    : PickListDialog({QStringLiteral("番号"), QStringLiteral("日付")}, {90}, parent)
{
}

void CasherList_frm::Init(const QString& kind, qint64 partner)
{
    QList<QStringList> rows;
    for (const CashListRow& r : cashListRows(kind, partner, session().EigCode)) rows << QStringList{r.number, r.date};
    fill(rows);
}

QString CasherList_frm::pick(const QString& kind, qint64 partner)
{
    CasherList_frm f;
    f.Init(kind, partner);
    f.exec();
    return f.answer();
}
