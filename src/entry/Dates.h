#pragma once
// Closing months, fiscal-year ranges and the date display in era or Western years.
// Screen boxes are passed as their texts, so all of this runs without widgets.
#include <QDate>
#include <QString>

// The closing month of a date for a partner closing on `sime`: "1".."12", "13" for the
// dates behind the last closing of the fiscal year, or "RangeOver".
QString ClosingMonth(short sime, short year, short month, short day, int nendo, short sTuki,
                     short eTuki);
// The same against the session's target year.
QString ClosingMonth(short sime, short year, short month, short day);

// Closing day of a customer ("TOR") or a supplier (any other kind); 0 when not found.
short PartnerSime(const QString& kind, long code);

// First and last day of the closing period that ends in year/month. When either end is not a
// calendar date, `from` and `to` keep what the caller put in them.
void PeriodOfMonth(short sime, int year, int month, QDate& from, QDate& to);

int LastDayOfMonth(int year, int month);
// year/1/day moved on by month-1 months, so a day past the month's end falls back to its last day.
QDate DateFromParts(int year, int month, int day);

// Any box texts become a date; empty boxes take the current year and the 1st of January.
QDate BoxesToDate(const QString& year, const QString& month, const QString& day);
QDate BoxesToDate(const QString& year, const QString& month, const QString& day, const QDate& today);

struct DateBoxes {
    QString year, month, day, weekday;
};
DateBoxes DateToBoxes(const QDate& date);

bool BoxesAreDate(const QString& year, const QString& month, const QString& day);
int DisplayYear(const QDate& date);
QString NendoText();
QString WeekdayText(const QDate& date);
// Styles -1 (Western yyyy/mm/dd), 0 (y/mm/dd), 1 (y年mm月dd日 (曜)), 2 (mm/dd), 3 (dd), 4 (mmdd).
QString FormatDate(const QDate& date, int style);
QString NextGetudo(const QString& getudo);
