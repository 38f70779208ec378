#pragma once
// The three outputs of the page language on Qt: a PDF file, the preview window "printTest"
// and the printer. A report's form picks one (makeReportOutput follows PreviewMode), makes it
// current with printTo() and the documents go there.
#include <QString>
#include <functional>
#include <memory>
#include "pageout/PageOutput.h"

class QPrinter;
class QWidget;

// A PDF file with real text (searchable, copyable) in the IPAex fonts. It is written under a
// temporary name and takes `file`'s name only when finish() succeeds; nullptr and *error when
// the file cannot be made (missing folder, no permission).
std::unique_ptr<PageOutput> makePdfOutput(const QString& file, QString* error = nullptr);

// The preview: every page ends in the modal window "printTest", sized to the page; the clerk
// closes it by the window's own close and the next page comes.
std::unique_ptr<PageOutput> makePreviewOutput(QWidget* parent = nullptr);

// The printer, chosen in the system print dialog (which also offers a PDF file); nullptr when
// the clerk cancelled.
std::unique_ptr<PageOutput> makePrinterOutput(QWidget* parent = nullptr);
// The same on a printer the caller has chosen and keeps (the slip print's question).
std::unique_ptr<PageOutput> makePrinterOutput(QPrinter& printer);

// The preview in PreviewMode, else the printer.
std::unique_ptr<PageOutput> makeReportOutput(QWidget* parent = nullptr);

// For tests and scripts: called with each preview window just before it is shown modally
// (a test grabs it and closes it); and the printer question (true: print on `printer`).
void setPreviewPageHook(std::function<void(QWidget* window)> hook);
void setPrinterChooser(std::function<bool(QPrinter& printer)> chooser);

// The width of a text in twips, in a page font: for measuring without a surface (grids).
double pageTextWidth(const QString& fontName, double points, const QString& text);
