#pragma once
// The page language interpreter and the report data driver. One interpreter in the process,
// one document at a time; its state is global as reports expect (Zoubun and RowsPerPage keep
// their values from the previous document).
//
// A report: VtmlClear(); VtmlAddField(...) for each column; PbSetRows(rows); PbSetForm(form);
// VtmlAddLine(...) for each line; VtmlPrint(). VtmlPrint draws on the current page output
// (PageOutput.h). A failure (a line or field out of bounds, an overflow, a tag without its
// arguments, a column not in the rows, a surface error) stops the document: VtmlPrint tells
// the clerk why through Tell ("エラー：" and the text, in the system's wording) and returns
// false; vtmlLastError() keeps the message for a caller that needs it (the print command).
// The caller must not tell it again. The page under way is dropped, so nothing is drawn half:
// a document that fails before its first page ends draws nothing. VtmlAddLine and
// VtmlAddField past their bounds fail the document at once; VtmlPrint then says so.
#include <memory>
#include <QString>
#include <QVariant>
#include "pageout/VtmlField.h"
#include "store/Money.h"

class ReportRows;
class ReportForm;
class PageSurface;
class QDate;

void VtmlClear();
bool VtmlAddField(const VtmlField& f);   // false past index 20 (the document is then failed)
bool VtmlAddLine(const QString& line);   // false past index 1000 (the document is then failed)
bool VtmlPrint();
const QString& vtmlLastError();

// The rows and the report form of the document (not owned; they outlive VtmlPrint).
void PbSetRows(ReportRows* rows);
void PbSetForm(ReportForm* form);

// Drawing from a callback.
void PbText(const QString& text);
void PbSetX(double x);
void PbSetY(double y);
double PbCurX();
double PbCurY();

// Totals (indices 0 to 20) and the report flags, reset by VtmlClear.
Money PbPageTotal(int i);
Money PbRunningTotal(int i);
void PbSetPageTotal(int i, Money v);
void PbSetRunningTotal(int i, Money v);
void PbSetNoHeadRule(bool on);
void PbSetNoTotals(bool on);
void PbSetGroupField(const QString& column);
bool PbDataEnded();
int VtmlPageNo();

// The installation flags (zSysFunc 823, 184; they set the session's ShrinkMode and
// KeepPageSetup, which start-up has read) and the report's ShrinkOff.
void VtmlSetShrinkMode(bool on);
void VtmlSetKeepPageSetup(bool on);
void VtmlSetShrinkOff(bool on);
bool VtmlShrinkOff();
// The date that DATE draws; an invalid date (the default) means today. For tests.
void VtmlSetToday(const QDate& date);

// Fixed-width number text: the number in the pattern, behind 20 blanks, cut from the right to
// the pattern's length.
QString FixedNumberText(double value, const QString& pattern);
QString FixedNumberText(Money value, const QString& pattern);
// The same for a cell's value: Money, a number, or a text that stands for a number ("1,200");
// any other text keeps its characters, flush right in the pattern's width.
QString FixedValueText(const QVariant& value, const QString& pattern);
// The numeric pattern language of the reports: '#', '0' and ',' (entry/Convert.h).
QString FormatNumber(double value, const QString& pattern);
