#pragma once
// Slip numbers. The office counter in Eig is only a hint for the screen; the key of the slip
// table owns uniqueness.
#include <QDate>
#include <QString>

class QSqlError;

// The counter of `kind` ("Dur", "Dsr", "Dny", "Dsh", "Seikyu") for the office; 0 when the office
// row (or the counter) is missing.
long GetNextDno(const QString& kind, short office);
// Writes `candidate` only when the stored counter is lower: the counter is never lowered here,
// and a missing office row changes nothing. False on a store failure, which `error` then holds.
bool RaiseNextDno(const QString& kind, short office, long candidate, QSqlError* error = nullptr);
// The highest number the office has in the kind's table, plus one; 1 for none.
long nextFreeDno(const QString& kind, short office);

// The closing month of a slip date for a partner's closing day, as text, or "RangeOver".
// The boxes are typed texts; in era mode 1988 is added to the year first.
QString checkPeriod(const QString& year, const QString& month, const QString& day, short sime);
QString checkPeriod(const QDate& date, short sime);
