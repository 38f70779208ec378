#include "reports/Zandaka_frm.h"
#include "reports/Zandaka.h"

Zandaka_frm::Zandaka_frm(QWidget* parent)
    : LedgerReportList_frm([](const QString& code) { return new Zandaka(code); },
                           {QStringLiteral("Uza"), QStringLiteral("UzaDtl"), QStringLiteral("Kza")},
                           QStringLiteral("０ の場合は締めに関係なく表示します"), QString(), parent)
{
}
