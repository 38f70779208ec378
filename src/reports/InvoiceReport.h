#pragma once
// One invoice document on the page output: the page lines and field table of InvoiceData over
// the step's lines, with the mean unit price of the all-detail step and the amounts at the
// foot of the last page. The same object serves the printer, the preview and the PDF.
#include <memory>
#include <QSqlDatabase>
#include "pageout/ReportForm.h"
#include "reports/InvoiceData.h"

class ReportRows;

class InvoiceReport : public ReportForm {
public:
    InvoiceReport(const QSqlDatabase& db, InvoiceStep step, const InvoiceKey& key, const InvoicePeriod& period,
                  bool plainPaper);
    ~InvoiceReport() override;

    // Draws the document on the current page output. A step that is not due draws nothing and
    // *printed says so. False with *error when the document could not be drawn.
    bool print(bool* printed, QString* error);

    // @0: the mean unit price of a line over all destinations.
    QVariant alpha(short& n) override;
    // The three amounts of the ledger, on the last page only.
    void NoTotalAction() override;
    // The printed form itself, on plain paper.
    void BKGRD() override;

private:
    QSqlDatabase db_;
    InvoiceStep step_;
    InvoiceKey key_;
    InvoicePeriod period_;
    bool plainPaper_;
    std::unique_ptr<ReportRows> rows_;
};
