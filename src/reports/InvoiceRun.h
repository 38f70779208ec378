#pragma once
// The invoice run of a closing day: every customer closing on that day (or a range of them)
// in code order, each with its own invoice, or with a covering invoice, a detail of all its
// lines and one invoice per destination. Every document goes to the current page output, so
// one PDF holds the whole run in run order. Nothing in the store is written, and invoices carry
// no number: the office's invoice counter stays as it is.
#include <functional>
#include <QDate>
#include <QSqlDatabase>
#include <QString>
#include "reports/InvoiceData.h"

struct InvoiceRunRequest {
    QString month;      // target month as typed, 1..12
    QString sime;       // closing day as typed, 1..31
    QString from, to;   // customer codes as typed; empty from: every customer of the day
    QDate issueDate;    // built from the issue date boxes; no layout prints it
};

enum class InvoiceRunOutcome {
    Done,        // every due document drawn (possibly none)
    Empty,       // month or closing day empty: the form beeps
    Cancelled,   // Esc in the style question
    Failed       // a document could not be drawn; error() says why
};

class InvoiceRun {
public:
    explicit InvoiceRun(const QSqlDatabase& db);

    // The style question, asked when the company lists invoice styles (zSysFunc 395): the
    // chosen number, or -1 for Esc. Without it the session's style stays.
    std::function<int()> chooseStyle;
    // Called before each customer, with its place in the run.
    std::function<void(int done, int total)> progress;

    InvoiceRunOutcome IssueInvoices(const InvoiceRunRequest& request);
    // The documents of one customer; false when one could not be drawn.
    bool PrintCustomerInvoices(qint64 customer, short month);

    const QString& error() const { return error_; }
    // Customers that got at least one document, and the documents drawn.
    int customers() const { return customers_; }
    int documents() const { return documents_; }

private:
    bool printStep(InvoiceStep step, qint64 tor, qint64 nou, short month);

    QSqlDatabase db_;
    InvoicePeriod period_;
    bool plainPaper_ = false;
    QString error_;
    int customers_ = 0;
    int documents_ = 0;
};
