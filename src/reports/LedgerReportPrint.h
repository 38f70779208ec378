#pragma once
// The partner reports on paper and in spreadsheets: each draws its document on the current
// page output (PageOutput.h) through the page language, and writes its sheet cell by cell.
#include <QString>

class ListDaichou;
class PartnerMonthList;
class ExcelBook;
struct ReportSheet;

// The ledger, oldest first; afterwards the rows are read newest first again for the screen.
// Nothing is drawn without rows. False when the document failed (told by the page language)
// or the rows could not be read (told here).
bool printLedgerView(ListDaichou& view);
// The month's list as read; nothing without rows.
bool printPartnerList(PartnerMonthList& list);

// The cells and formats of a sheet into an open book.
void writeSheet(const ReportSheet& sheet, ExcelBook& book);
// Headless: the sheet into the file `path`. False with *error in the system's wording.
bool saveSheet(const ReportSheet& sheet, const QString& path, QString* error);
