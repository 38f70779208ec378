#pragma once
// The target year change: the store is reopened for another fiscal year until the end of the
// run. The marker file and Com.SKai stay as they are, so the next start returns to their year.
#include <QList>

// Years from 2000 up to the latest year folder that have <year>/SLIP.db, in order.
QList<int> AvailableYears();

enum class YearChange {
    Changed,   // the session works on the new year
    Restored,  // the new year could not be opened; the old one is open again
    Lost,      // neither could be opened: the run cannot go on
};
// Closes the master, opens it again for `year` and attaches that year's slip file. The
// session's other values (rates, months, date style) stay those of the start.
YearChange ChangeTargetYear(int year);
