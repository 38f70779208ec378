#pragma once
// F9 on the slip screen after the slip has been saved: the style question, the printer
// question and the hand-over to the page that draws the delivery slip.
#include <functional>
#include <QString>

class QPrinter;

// The whole of the F9 tail: only for sales slips with a number above 0. The saved slip stays
// whatever happens here, and SlipStyle is as it was afterwards.
void printAfterSave(const QString& kind, long dno);

// The printer question: true when a printer was chosen, false when the clerk cancelled.
// The system printer dialog by default; it is not shown on the offscreen platform, where the
// default printer is taken.
using PrinterQuestion = std::function<bool(QPrinter& printer)>;
void setPrinterQuestion(PrinterQuestion f);

// The drawing of the delivery slip, installed by the page output. It gets the slip number,
// reads the slip rows, chooses its layout by the session's SlipStyle and prints on `printer`.
using SlipPageDrawer = std::function<bool(long dno, QPrinter& printer)>;
void setSlipPageDrawer(SlipPageDrawer f);
bool slipPageDrawerInstalled();

// The print step. Without an installed drawer it says that delivery slips cannot be printed
// yet and returns false: nothing is pretended.
bool PrintSlip(long dno, QPrinter& printer);
