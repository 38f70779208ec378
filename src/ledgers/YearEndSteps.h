#pragma once
// The statements of the year-end update, each on the connection of the run it is given
// (LedgerRun::db): the plain table names reach the file the step is about. After a failure
// the run skips every further statement and keeps the first error.
class LedgerRun;

#include <QString>

// Old year (in `schema`, or the plain names): a row 13 for every head of ThiD, TtoD and TsiD
// that has none, copied with all its figures from the last month. Heads that have a row 13
// keep it as it is.
void CopyLastMonthToRow13(LedgerRun& run, int lastMonth, const QString& schema = {});

// The rows that CopyLastMonthToRow13 adds to `table` ("ThiD", "TtoD" or "TsiD") of `schema`,
// as a SELECT of whole rows in the table's column order. `lastMonth` is put in as written
// (a number, or "?" to bind it).
QString missingRows13(const QString& table, const QString& schema, const QString& lastMonth);

// New year: slip heads with a line of the closed year go; only lines, deposits and payments
// of closing month 13 stay (those of a removed head stay without it). Other slip tables stay.
void RemoveClosedSlips(LedgerRun& run);

// New year: the lines, deposits and payments of month 13 move to the first month.
void MoveOpenSlips(LedgerRun& run, int firstMonth);

// Every counter of every office back to 1.
void ResetSlipNumbers(LedgerRun& run);

// New year, with ThiDOld, TtoDOld and TsiDOld linked to the old year: the product ledger
// starts from the old last month, the customer and supplier ledgers from the old row 13, and
// every later month carries the first month's balance.
void CarryLedgers(LedgerRun& run, int firstMonth, int lastMonth);

// Com: SKai and EKai a year later as numbers (month and day unchanged, 29 February kept as
// it comes), Ki + 1.
void AdvanceCompanyYear(LedgerRun& run);
