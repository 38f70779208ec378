#include "reports/InvoiceReport.h"

#include "pageout/ReportRows.h"
#include "pageout/Vtml.h"
#include "reports/InvoicePaper.h"

InvoiceReport::InvoiceReport(const QSqlDatabase& db, InvoiceStep step, const InvoiceKey& key,
                             const InvoicePeriod& period, bool plainPaper)
    : db_(db), step_(step), key_(key), period_(period), plainPaper_(plainPaper)
{
    // The covering invoice and the detail of all lines read the customer's own ledger row.
    if (step_ != InvoiceStep::Detail) key_.nou = 0;
}

InvoiceReport::~InvoiceReport() = default;

bool InvoiceReport::print(bool* printed, QString* error)
{
    *printed = false;
    if (!invoiceDue(db_, key_)) return true;
    const InvoiceAddressee to = invoiceAddressee(db_, step_, key_.tor, key_.nou);

    VtmlClear();
    PbSetNoHeadRule(true);
    PbSetNoTotals(true);
    for (const VtmlField& f : invoiceFields(step_)) VtmlAddField(f);
    const InvoiceStatement lines = invoiceLines(step_, key_);
    rows_ = queryRows(db_, lines.sql, lines.binds, lines.moneyColumns);
    PbSetRows(rows_.get());
    PbSetForm(this);
    const std::optional<InvoiceAmounts> amounts =
        step_ == InvoiceStep::Summary ? invoiceAmounts(db_, key_) : std::nullopt;
    for (const QString& l : invoicePageLines(step_, to, period_, amounts, plainPaper_)) VtmlAddLine(l);
    const bool ok = VtmlPrint();
    PbSetRows(nullptr);
    PbSetForm(nullptr);
    rows_.reset();
    // VtmlPrint has told the clerk; the message stays for a caller without a screen.
    if (!ok) {
        if (error) *error = vtmlLastError();
        return false;
    }
    *printed = true;
    return true;
}

QVariant InvoiceReport::alpha(short& n)
{
    if (n != 0 || !rows_) return QString();
    return QVariant(qlonglong(meanUnitPrice(variantMoney(rows_->value(QStringLiteral("tUGaku"))),
                                            rows_->value(QStringLiteral("tSuu")).toLongLong())));
}

void InvoiceReport::NoTotalAction()
{
    if (!PbDataEnded()) return;
    const std::optional<InvoiceAmounts> a = invoiceAmounts(db_, key_);
    if (!a) return;
    using namespace InvoiceForm;
    const QStringList t = invoiceAmountTexts(*a);
    const int xs[] = {KTotalX, ZeiX, TotalX};
    for (int i = 0; i < 3; ++i) {
        PbSetX(xs[i]);
        PbSetY(AmountsY);
        PbText(t[i]);
    }
}

void InvoiceReport::BKGRD()
{
    if (plainPaper_) drawInvoicePaper(db_, key_.tor);
}
