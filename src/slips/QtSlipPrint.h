#pragma once
// F9 on the slip screen after the slip has been saved: the style question, the printer
// question and the printing of the delivery slip.
#include <functional>
#include <QString>

class QPrinter;

// The whole of the F9 tail: only for sales slips with a number above 0. The saved slip stays
// whatever happens here, and SlipStyle is as it was afterwards.
void printAfterSave(const QString& kind, long dno);

// The printer question: true when a printer was chosen, false when the clerk cancelled. It is
// the page output's own question (the system printer dialog; the default printer on the
// offscreen platform).
using PrinterQuestion = std::function<bool(QPrinter& printer)>;
void setPrinterQuestion(PrinterQuestion f);

// The drawing of the delivery slip on the current page output; by default the slip's page of
// Slip_prn in the session's SlipStyle. Tests may put another in; an empty one restores it.
using SlipPageDrawer = std::function<bool(long dno)>;
void setSlipPageDrawer(SlipPageDrawer f);

// The print step, with the session's mark of a print in progress up for its length.
bool PrintSlip(long dno);
