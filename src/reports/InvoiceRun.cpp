#include "reports/InvoiceRun.h"

#include "entry/Convert.h"
#include "pageout/Vtml.h"
#include "reports/InvoiceReport.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {
// The chosen style holds for the run only.
class StyleForRun {
public:
    StyleForRun() : old_(session().SeiStyle) {}
    ~StyleForRun() { session().SeiStyle = old_; }
private:
    short old_;
};

// Only a run over a range of customers switches the shrink off, customer by customer.
class ShrinkOffFor {
public:
    explicit ShrinkOffFor(bool on) : on_(on) { if (on_) VtmlSetShrinkOff(true); }
    ~ShrinkOffFor() { if (on_) VtmlSetShrinkOff(false); }
private:
    bool on_;
};
}  // namespace

InvoiceRun::InvoiceRun(const QSqlDatabase& db) : db_(db) {}

InvoiceRunOutcome InvoiceRun::IssueInvoices(const InvoiceRunRequest& request)
{
    error_.clear();
    customers_ = documents_ = 0;
    if (!HasText(request.month) || !HasText(request.sime)) return InvoiceRunOutcome::Empty;
    bool ok = true;
    const short month = ToInt16(DigitText(request.month), &ok);
    const short sime = ToInt16(DigitText(request.sime), &ok);

    StyleForRun style;
    if (chooseStyle && scalar(db_, QStringLiteral("SELECT Code FROM zSysFunc WHERE Code = 395")).isValid()) {
        const int answer = chooseStyle();
        if (answer == -1) return InvoiceRunOutcome::Cancelled;
        session().SeiStyle = short(answer);
    }
    plainPaper_ = isPlainPaperStyle(db_, session().SeiStyle);
    period_ = invoicePeriod(month, sime);

    const bool range = HasText(request.from);
    std::optional<qint64> from, to;
    if (range) {
        from = DigitText(request.from).toLongLong();
        to = HasText(request.to) ? DigitText(request.to).toLongLong() : *from;
    }
    QString err;
    const QList<qint64> customers = invoiceCustomers(db_, sime, from, to, &err);
    if (!err.isEmpty()) {
        error_ = QStringLiteral("エラー：") + err;
        Tell(error_);
        return InvoiceRunOutcome::Failed;
    }
    for (int i = 0; i < customers.size(); ++i) {
        if (progress) progress(i, int(customers.size()));
        const ShrinkOffFor shrinkOff(range);
        if (!PrintCustomerInvoices(customers[i], month)) return InvoiceRunOutcome::Failed;
    }
    return InvoiceRunOutcome::Done;
}

bool InvoiceRun::PrintCustomerInvoices(qint64 customer, short month)
{
    if (!scalar(db_, QStringLiteral("SELECT Code FROM Tor WHERE Code = ?"), {customer}).isValid()) return true;
    const int before = documents_;
    const QList<qint64> destinations = invoiceDestinations(db_, customer);
    bool ok = true;
    if (destinations.isEmpty()) {
        ok = printStep(InvoiceStep::Detail, customer, 0, month);
    } else {
        ok = printStep(InvoiceStep::Summary, customer, 0, month) && printStep(InvoiceStep::AllDetail, customer, 0, month);
        for (qsizetype i = 0; ok && i < destinations.size(); ++i)
            ok = printStep(InvoiceStep::Detail, customer, destinations[i], month);
    }
    if (documents_ > before) ++customers_;
    return ok;
}

bool InvoiceRun::printStep(InvoiceStep step, qint64 tor, qint64 nou, short month)
{
    InvoiceReport report(db_, step, InvoiceKey{tor, nou, session().EigCode, month}, period_, plainPaper_);
    bool printed = false;
    if (!report.print(&printed, &error_)) return false;
    if (printed) ++documents_;
    return true;
}
