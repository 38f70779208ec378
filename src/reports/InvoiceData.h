#pragma once
// What the month's invoices are made of, apart from the drawing: which customers a run takes,
// which of the three documents a customer gets and whether it is due, the statements of their
// lines, and the page lines that place the addressee, the period and the amounts on the
// preprinted form. The amounts at the foot come from the customer ledger, never from the lines.
#include <optional>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include "pageout/VtmlField.h"
#include "store/Money.h"

// The three documents: the invoice of the customer or of one destination, the covering invoice
// of a customer with destinations, and the detail of all its lines.
enum class InvoiceStep { Detail, Summary, AllDetail };

// Whose ledger row and lines a document reads.
struct InvoiceKey {
    qint64 tor = 0;
    qint64 nou = 0;       // 0: the customer itself
    short office = 0;
    short month = 0;      // closing month, 1..12
};

struct InvoicePeriod {
    short month = 0;
    short sime = 0;       // closing day; 31 is the month's end
    int year = 0;         // calendar year of the period
    bool era = false;     // the company shows years in the era
};

struct InvoiceAmounts {
    Money KTotal;
    Money ZeiGaku;
};

// Positions on the preprinted form, in twips.
namespace InvoiceForm {
constexpr int Width = 15600, Height = 8880;
constexpr int NameX = 720, NameY = 720;
constexpr int RefX = 4080, PeriodY = 1200;
constexpr int EraYearX = 720, YearX = 840, MonthX = 2040, DayX = 2760;
constexpr int PageX = 7680, PageY = 240;
constexpr int DataY = 2400, RowPitch = 240, Rows = 21;
constexpr int AmountsY = 7920, KTotalX = 3840, ZeiX = 5640, TotalX = 7200;
constexpr int NameColX = 600, SuuX = 5232, TankaX = 6480, GakuX = 7440;
inline const QString AmountFormat = QStringLiteral("##,###,###");
inline const QString QuantityFormat = QStringLiteral("###,###");
inline const QString LineAmountFormat = QStringLiteral("#,###,##0");
}

// The calendar year of a closing month of the session's fiscal year.
int invoicePeriodYear(short month);
// The period of the run on the session's year and era setting.
InvoicePeriod invoicePeriod(short month, short sime);

// Customers closing on `sime` in code order; with a range only those from `from` to `to`.
QList<qint64> invoiceCustomers(const QSqlDatabase& db, short sime, std::optional<qint64> from,
                               std::optional<qint64> to, QString* error = nullptr);
// The destinations of a customer in code order.
QList<qint64> invoiceDestinations(const QSqlDatabase& db, qint64 tor);

// KTotal and ZeiGaku of the ledger month row; nothing when there is no row.
std::optional<InvoiceAmounts> invoiceAmounts(const QSqlDatabase& db, const InvoiceKey& key);
// A document is printed only when its ledger row exists and KTotal is not 0, whatever the
// customer paid or owes from before.
bool invoiceDue(const QSqlDatabase& db, const InvoiceKey& key);

struct InvoiceStatement {
    QString sql;
    QVariantList binds;
    QStringList moneyColumns;   // read as Money, not as the store's ten-thousandths
};
// The lines of a document. Detail and all detail: one line per product and unit price, the
// name of the first line of the group; the summary: one line per destination.
InvoiceStatement invoiceLines(InvoiceStep step, const InvoiceKey& key);

// The mean unit price of a line that adds several destinations, cut towards minus infinity;
// 0 without a quantity.
qint64 meanUnitPrice(Money amount, qint64 quantity);

struct InvoiceAddressee {
    QString name;
    QString reference;   // "(1001)", or "(1001-2)" for a destination
    bool found = false;
};
// The customer's name, or the destination's on its own invoice.
InvoiceAddressee invoiceAddressee(const QSqlDatabase& db, InvoiceStep step, qint64 tor, qint64 nou);

// "末" for the month's end, else the day.
QString invoiceDayText(short sime);
// The page lines, the same on every page. The covering invoice carries its three amounts
// among them; `background` adds the form's own drawing for plain paper.
QStringList invoicePageLines(InvoiceStep step, const InvoiceAddressee& to, const InvoicePeriod& period,
                             const std::optional<InvoiceAmounts>& amounts, bool background);
// The three amounts as text for the foot: KTotal, ZeiGaku, and both together.
QStringList invoiceAmountTexts(const InvoiceAmounts& amounts);
// The field table of a document.
QList<VtmlField> invoiceFields(InvoiceStep step);

// The company marks an invoice style as plain paper by a name with "白紙" among its further
// styles (zSysFunc 1201..1299): such invoices carry the printed form themselves.
bool isPlainPaperStyle(const QSqlDatabase& db, short style);
