#pragma once
// The company row (Com), the tax rate change kept in UserOP 725 (date) and 726 (new rate),
// and the fiscal period typed on the company form.
#include <QDate>
#include <QSqlDatabase>
#include <QSqlError>
#include <QString>
#include "masters/MasterRows.h"
#include "store/Money.h"

// What leaving the start of the period gives.
struct StartPeriod {
    QString message;   // the refusal; empty when the text is taken
    bool otherYear = false;
    QString start;     // first month of the year, "01".."12"
    QString eKai;      // last day of the period, YYYYMMDD
    QString fin;       // its month
};
// `sKai` must be YYYYMMDD of the target year. The first month is the start's month, or the
// next one when the company closes (`sime`) before the start's day; the period ends a year
// less a day after its start.
StartPeriod checkStartPeriod(const QString& sKai, int nendo, int sime);
// Characters 5 and 6 of a period text: the month it names.
QString periodMonth(const QString& kai);

// The rate change as the form holds it.
struct RateChange {
    QDate changeDate;
    Money zeiritu;         // the rate until then, kept in Com
    QString newRateText;   // the rate from then on, kept as text in UserOP 726
};

// Writes the company row and rows 725/726 together (rows that do not exist are not added);
// then the session takes the change date and both rates. Everything else of the session
// (sTuki, Hiz, Sime, HsuType, Hsu) stays until the next start. False when the store
// refused: nothing is written then.
bool saveCompany(const QSqlDatabase& db, const ColumnValues& com, const RateChange& rates,
                 QSqlError* error = nullptr);
