#pragma once
// The steps that the customer and the supplier ledgers share: scratch rows to zeros and sums,
// the month totals, the addition to the month and the carry of balances.
#include <QString>
#include <QStringList>

class LedgerRun;

// One of the two money ledgers: `TtoD`/`Tto` keyed by customer and destination, or
// `TsiD`/`Tsi` keyed by supplier.
struct MoneySide {
    QString months;      // "TtoD" / "TsiD"
    QString head;        // "Tto" / "Tsi"
    QStringList keys;    // key columns without Getudo
    // "a.k1=b.k1 AND a.k2=b.k2 ..." over the key columns.
    QString joinKeys(const QString& a, const QString& b) const;
    QString keyList(const QString& alias = {}) const;
};
const MoneySide& customerSide();
const MoneySide& supplierSide();

// The thirteen figures that a scratch row -10 adds to its month, and the eleven read from
// slips (neither total among them).
const QStringList& moneyFigures();
const QStringList& scratchFigures();

bool deleteScratch(LedgerRun& run, const MoneySide& side);
// Nulls to zeros on the scratch rows, one statement per figure.
bool scratchNullsToZero(LedgerRun& run, const MoneySide& side);
// Rows -10: the sums of the scratch rows per key.
bool sumScratch(LedgerRun& run, const MoneySide& side);
// KTotal and NTotal of the rows -10 from their parts.
bool totalScratch(LedgerRun& run, const MoneySide& side);
// Adds each row -10 to the row Getudo=m of its key.
bool addScratchToMonth(LedgerRun& run, const MoneySide& side, int month);
// Eleven steps from the first month: Zenkaigaku of each month is what left the one before.
// touched: only keys with a row -10; otherwise all keys of the run's office.
bool carryMonths(LedgerRun& run, const MoneySide& side, bool touched, const QString& progressPrefix);
// Row 13 of the keys with a row -10 gets what leaves the last month; with officeOnly the keys
// of the run's office only.
bool carryToRow13(LedgerRun& run, const MoneySide& side, bool officeOnly);
// Zan of the heads of the keys with a row -10 from their last month. The head is found by its
// partner (and destination) alone, not by its office; with officeOnly both sides are held to the
// run's office.
bool headBalanceFromLastMonth(LedgerRun& run, const MoneySide& side, bool officeOnly);
// The fourteen zero figures of a new month row, as an insert column list and its values.
QString zeroFigureColumns();
QString zeroFigureValues();
// The balance that leaves a month row of alias a.
QString leavingBalance(const QString& a);
