// `velmora print invoices` and `velmora print slip`: the invoice run of a closing day and the
// delivery slip of a sales slip, drawn by the same report classes as the screens, into a PDF.
#include "app/PrintInvoices.h"
#include <optional>

#include "pageout/PrintRegistry.h"
#include "reports/InvoiceRun.h"
#include "reports/SeikyuRules.h"
#include "shell/Session.h"
#include "slips/Slip_prn.h"

namespace {

bool fail(QString* error, const QString& message)
{
    if (error) *error = message;
    return false;
}

// A whole number of at most `digits` digits, or nothing when the option is not given.
bool numberOption(const PrintRequest& r, const QString& name, int digits, std::optional<qint64>* out, QString* error)
{
    if (!r.options.contains(name)) return true;
    const QString text = r.options.value(name).trimmed();
    bool ok = !text.isEmpty() && text.size() <= digits;
    for (QChar c : text) ok = ok && c >= QLatin1Char('0') && c <= QLatin1Char('9');
    if (!ok) return fail(error, QStringLiteral("--%1 には数字を指定してください。").arg(name));
    *out = text.toLongLong();
    return true;
}

// The style of the run, put back afterwards.
class StyleFor {
public:
    StyleFor(short& value, const std::optional<qint64>& style) : value_(value), old_(value)
    {
        if (style) value_ = short(*style);
    }
    ~StyleFor() { value_ = old_; }
private:
    short& value_;
    short old_;
};

// The command has made the PDF current; a failure of a document or of the run's statements
// has been told already (to standard error), so *error stays empty then.
bool printInvoices(const PrintRequest& r, QString* error)
{
    std::optional<qint64> month, sime, from, to, style;
    if (!numberOption(r, QStringLiteral("month"), 2, &month, error) || !numberOption(r, QStringLiteral("sime"), 2, &sime, error)
        || !numberOption(r, QStringLiteral("from"), 9, &from, error) || !numberOption(r, QStringLiteral("to"), 9, &to, error)
        || !numberOption(r, QStringLiteral("style"), 4, &style, error))
        return false;
    const SeikyuCheck check = checkSeikyu(month ? QString::number(*month) : QString(), sime ? QString::number(*sime) : QString());
    if (check.refusal != SeikyuRefusal::None) return fail(error, check.message);
    if (to && !from) return fail(error, QStringLiteral("--to には --from も指定してください。"));
    if (r.checkOnly) return true;

    InvoiceRunRequest request;
    request.month = QString::number(*month);
    request.sime = QString::number(*sime);
    if (from) request.from = QString::number(*from);
    if (to) request.to = QString::number(*to);
    request.issueDate = QDate::currentDate();

    const StyleFor styleFor(session().SeiStyle, style);
    InvoiceRun run(session().MasterDb);
    return run.IssueInvoices(request) == InvoiceRunOutcome::Done;
}

bool printSlip(const PrintRequest& r, QString* error)
{
    std::optional<qint64> dno, style;
    if (!numberOption(r, QStringLiteral("dno"), 9, &dno, error) || !numberOption(r, QStringLiteral("style"), 4, &style, error))
        return false;
    if (!dno || *dno <= 0) return fail(error, QStringLiteral("--dno に伝票No.を指定してください。"));
    if (r.checkOnly) return true;
    const StyleFor styleFor(session().SlipStyle, style);
    Slip_prn prn(session().MasterDb);
    return prn.PrintSlip(long(*dno), nullptr);
}

}  // namespace

void registerInvoicePrints()
{
    PrintReportEntry invoices;
    invoices.name = QStringLiteral("invoices");
    invoices.usage = QStringLiteral("--month M --sime D [--from C --to C] [--style N]  締日の請求書 (一回分を一つのPDFに)");
    invoices.options = {QStringLiteral("month"), QStringLiteral("sime"), QStringLiteral("from"), QStringLiteral("to"),
                        QStringLiteral("style")};
    invoices.required = {QStringLiteral("month"), QStringLiteral("sime")};
    invoices.run = printInvoices;
    registerPrintReport(invoices);

    PrintReportEntry slip;
    slip.name = QStringLiteral("slip");
    slip.usage = QStringLiteral("--dno N [--style N]  売上伝票の納品書");
    slip.options = {QStringLiteral("dno"), QStringLiteral("style")};
    slip.required = {QStringLiteral("dno")};
    slip.run = printSlip;
    registerPrintReport(slip);
}
