#include "ledgers/RecoveryMenu.h"
#include "entry/Convert.h"
#include "ledgers/Recovery.h"

int monthBoxValue(const QString& text)
{
    bool ok = true;
    const int v = ToInt16(text, &ok);
    return ok ? v : 0;
}

MonthBoxes checkMonthBoxes(const QString& first, const QString& last)
{
    if (!isRebuildMonth(monthBoxValue(first))) return MonthBoxes::BadFirst;
    if (!isRebuildMonth(monthBoxValue(last))) return MonthBoxes::BadLast;
    return MonthBoxes::Ok;
}

bool isRepairNullsKey(const QString& text) { return text.trimmed() == QLatin1String("~"); }
