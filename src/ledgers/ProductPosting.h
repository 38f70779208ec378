#pragma once
// The product ledger: quantities and amounts of sales and purchase lines by the calendar month
// of the line's date, and the stock carried to the end of the fiscal year.
class LedgerRun;

// Adds the marked lines of one calendar month and carries the stock of the touched products.
bool PostProductMonth(LedgerRun& run, int month);

// Clears the month of the run's office and adds all its lines again; later months follow for
// every product of the office. Clears the marks of all sales lines.
bool RebuildProductMonth(LedgerRun& run, int month);
