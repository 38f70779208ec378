#pragma once
// What each partner owes for a closing month, added up while the demo writes its slips the
// way the ledger run will add them: the amounts, the month's tax by the partner's mode, less
// what cash slips settled at once. The demo's deposits and payments pay these figures, so a
// partner that pays in full ends the month at nothing, to the yen.
#include <compare>
#include <map>
#include <QDate>
#include <QtGlobal>
#include "ledgers/Tax.h"
#include "store/Money.h"
#include "demo/DemoMasters.h"

struct SlipLineTax;

// One ledger row in one closing month.
struct DemoLedgerMonth {
    short office = 0;
    qint32 partner = 0;
    qint32 nou = 0;       // the slips' delivery destination, 0 for none; always 0 for suppliers
    short getudo = 0;
    auto operator<=>(const DemoLedgerMonth&) const = default;
};

using DemoBills = std::map<DemoLedgerMonth, Money>;

class DemoBilling {
public:
    explicit DemoBilling(const TaxRates& rates) : rates_(rates) {}
    // One line as it is stored; `cash` when its slip is a cash slip.
    void addSale(const DemoLedgerMonth& at, const DemoPartnerRule& rule, bool cash, const QDate& date,
                 const SlipLineTax& line);
    void addPurchase(const DemoLedgerMonth& at, const DemoPartnerRule& rule, bool cash, const QDate& date,
                     const SlipLineTax& line);
    // The month's amounts and tax less its cash sales (purchases), by ledger row.
    DemoBills customerBills() const { return bills(sales_); }
    DemoBills supplierBills() const { return bills(purchases_); }

private:
    struct Sums {
        DemoPartnerRule rule;
        Money amount;      // every line
        Money cash;        // lines of cash slips with their tax, settled at once
        Money lineTax;     // the lines' own tax where the mode takes it
        Money invoiceOld, invoiceNew;   // taxed per invoice, by rate
        bool anyOld = false, anyNew = false;
    };
    Sums& sums(std::map<DemoLedgerMonth, Sums>& in, const DemoLedgerMonth& at, const DemoPartnerRule& rule);
    void addInvoiceTaxed(Sums& s, const QDate& date, Money net);
    DemoBills bills(const std::map<DemoLedgerMonth, Sums>& in) const;

    TaxRates rates_;
    std::map<DemoLedgerMonth, Sums> sales_, purchases_;
};
