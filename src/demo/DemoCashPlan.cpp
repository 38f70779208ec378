#include "demo/DemoCashPlan.h"
#include <algorithm>
#include <array>
#include <tuple>
#include <QHash>
#include "slips/CashSlipEditor.h"
#include "demo/DemoRandom.h"

namespace {

const short kTransfer = 3, kNote = 4, kAdjustment = 6;
const qint64 kWidestRow = 99999999;     // the widest amount a deposit row takes
const qint64 kSmallestNote = 100000;    // less than this comes by transfer even from a payer of bills

// How one payer settles: where and when the money comes, and how often it slips.
struct Habit {
    short way = kTransfer;
    short kTuki = 2;
    short kHi = 31;
    bool feeDeducted = false;   // a transfer comes short of the bank's fee, booked as an adjustment
    int noteDays = 120;
    int skipPercent = 0;        // paid together with the next bill
    int latePercent = 0;        // a month late
    int shortPercent = 0;       // part of it, the rest left open
};

// One ledger row that takes money, with its bills by closing month.
struct Payer {
    DemoCashSlip slip;          // the head fields of its slips
    short sime = 31;
    Habit habit;
    std::array<Money, 13> bills{};   // by Getudo 1..12
};

bool bankHoliday(const QDate& d)
{
    return d.dayOfWeek() >= 6 || (d.month() == 1 && d.day() <= 3) || (d.month() == 12 && d.day() == 31);
}

QDate dayOfMonth(const QDate& anyDay, short day)
{
    return QDate(anyDay.year(), anyDay.month(), std::min<int>(day, anyDay.daysInMonth()));
}

QString monthsText(const QList<short>& months)
{
    if (months.size() == 1) return QStringLiteral("%1月分").arg(months.first());
    const QChar joint = months.size() == 2 ? QChar(u'・') : QChar(u'～');
    return QStringLiteral("%1%2%3月分").arg(months.first()).arg(joint).arg(months.last());
}

QList<DemoCashRow> rowsFor(const Habit& h, qint64 yen, const QString& label, const QDate& date)
{
    short kind = h.way;
    // An adjustment is no way of paying, and a small sum is not worth a bill.
    if (kind == kAdjustment || (kind == kNote && yen < kSmallestNote)) kind = kTransfer;
    QString text = label;
    if (kind == kNote) text += QStringLiteral(" 期日") + date.addDays(h.noteDays).toString(QStringLiteral("yyyy/MM/dd"));
    qint64 fee = kind == kTransfer && h.feeDeducted ? (yen < 30000 ? 440 : 660) : 0;
    if (yen <= fee * 10) fee = 0;
    QList<DemoCashRow> rows;
    qint64 left = yen - fee;
    const int most = CashSlipEditor::RowCount - (fee ? 1 : 0);
    while (left > 0 && rows.size() < most) {
        const qint64 part = std::min(left, kWidestRow);
        rows << DemoCashRow{kind, text, part};
        left -= part;
    }
    if (fee) rows << DemoCashRow{kAdjustment, QStringLiteral("振込手数料"), fee};
    return rows;
}

// The payer's bills in the order of the year, each paid on its day unless it slips.
void planPayer(const Payer& p, int nendo, short sTuki, const QDate& yearEnd, DemoRandom& r, QList<DemoCashSlip>& out)
{
    const Habit& h = p.habit;
    Money owed;
    QList<short> months;
    short g = sTuki;
    for (int i = 0; i < 12; ++i, g = static_cast<short>(g % 12 + 1)) {
        const Money bill = p.bills[static_cast<size_t>(g)];
        if (bill == Money()) continue;
        owed += bill;
        months << g;
        // A month of returns leaves a credit, which the next bill's payment takes off.
        if (owed <= Money()) continue;
        if (r.chance(h.skipPercent, 100)) continue;
        const bool late = r.chance(h.latePercent, 100);
        const QDate day = demoCollectionDay(demoClosingDay(nendo, sTuki, g, p.sime),
                                            static_cast<short>(h.kTuki + (late ? 1 : 0)), h.kHi);
        qint64 yen = owed.truncYen();
        QString label = monthsText(months);
        if (r.chance(h.shortPercent, 100) && yen >= 20000) {
            yen = yen * r.range(50, 90) / 100 / 1000 * 1000;
            label += QStringLiteral(" 内金");
        }
        owed = Money();
        months.clear();
        if (day > yearEnd) continue;     // falls due in the next year: still open
        DemoCashSlip slip = p.slip;
        slip.date = day;
        slip.rows = rowsFor(h, yen, label, day);
        if (!slip.rows.isEmpty()) out << slip;
    }
}

// Bills of one side gathered by the row that pays them.
template <typename PayerOf>
void gather(const DemoBills& bills, PayerOf payerOf, std::map<std::tuple<short, qint32, qint32>, Payer>& payers)
{
    for (const auto& [at, bill] : bills) {
        if (at.getudo < 1 || at.getudo > 12) continue;   // behind the year's last closing
        Payer p = payerOf(at);
        auto it = payers.try_emplace({p.slip.office, p.slip.partner, p.slip.nou}, p).first;
        it->second.bills[static_cast<size_t>(at.getudo)] += bill;
    }
}

} // namespace

QDate demoClosingDay(int nendo, short sTuki, short getudo, short sime)
{
    const QDate first(getudo >= sTuki ? nendo : nendo + 1, getudo, 1);
    return dayOfMonth(first, sime);
}

QDate demoCollectionDay(const QDate& closing, short kTuki, short kHi)
{
    const QDate month = QDate(closing.year(), closing.month(), 1).addMonths(std::max(0, kTuki - 1));
    QDate due = dayOfMonth(month, kHi);
    if (due <= closing) due = dayOfMonth(month.addMonths(1), kHi);
    QDate bank = due;
    while (bankHoliday(bank)) bank = bank.addDays(-1);
    if (bank > closing) return bank;
    while (bankHoliday(due)) due = due.addDays(1);
    return due;
}

QList<DemoCashSlip> planDemoCash(const DemoMasterData& data, const DemoBills& customerBills,
                                 const DemoBills& supplierBills, DemoRandom& rnd)
{
    QHash<qint32, const DemoCustomer*> customers;
    QHash<qint32, bool> feeDeducted;
    for (const DemoCustomer& c : data.customers) {
        customers.insert(c.code, &c);
        // About a third of those who pay by transfer leave the bank's fee to us.
        feeDeducted.insert(c.code, rnd.chance(35, 100));
    }
    QHash<QPair<qint32, qint32>, short> seiFlags;
    for (const DemoDestination& d : data.destinations) seiFlags.insert({d.torCode, d.code}, d.seiFlag);
    QHash<qint32, const DemoSupplier*> suppliers;
    for (const DemoSupplier& s : data.suppliers) suppliers.insert(s.code, &s);

    std::map<std::tuple<short, qint32, qint32>, Payer> depositors, payees;
    gather(customerBills, [&](const DemoLedgerMonth& at) {
        const DemoCustomer& c = *customers.value(at.partner);
        // A branch billed through its customer is paid for by the customer; a customer billed
        // through another pays as that one does.
        const DemoCustomer& payer = c.seikyu && customers.contains(c.seikyu) ? *customers.value(c.seikyu) : c;
        Payer p;
        p.slip = DemoCashSlip{true, {}, at.office, c.code, seiFlags.value({c.code, at.nou}) == 2 ? at.nou : 0,
                              c.tbn, c.tan, {}};
        p.sime = c.rule.Sime;
        p.habit.way = payer.shicode;
        p.habit.kTuki = payer.kTuki;
        p.habit.kHi = payer.kHi;
        p.habit.feeDeducted = feeDeducted.value(payer.code);
        p.habit.skipPercent = 3;
        p.habit.latePercent = 4;
        p.habit.shortPercent = 4;
        return p;
    }, depositors);
    gather(supplierBills, [&](const DemoLedgerMonth& at) {
        const DemoSupplier& s = *suppliers.value(at.partner);
        Payer p;
        p.slip = DemoCashSlip{false, {}, at.office, s.code, 0, s.sbn, s.tan, {}};
        // Purchases close on the supplier's own day; the company pays at the end of the next month.
        p.sime = s.rule.Sime;
        p.habit.way = s.shicode;
        p.habit.feeDeducted = s.tesuryo == 1;
        if (s.saito > 0) p.habit.noteDays = s.saito;
        p.habit.skipPercent = 1;
        p.habit.latePercent = 1;
        p.habit.shortPercent = 2;
        return p;
    }, payees);

    const QDate yearEnd = QDate(data.nendo, data.sTuki, 1).addMonths(12).addDays(-1);
    QList<DemoCashSlip> out;
    for (auto* side : {&depositors, &payees})
        for (const auto& [key, p] : *side) planPayer(p, data.nendo, data.sTuki, yearEnd, rnd, out);
    std::stable_sort(out.begin(), out.end(), [](const DemoCashSlip& a, const DemoCashSlip& b) {
        return std::tuple(a.date, !a.deposit, a.office, a.partner, a.nou)
               < std::tuple(b.date, !b.deposit, b.office, b.partner, b.nou);
    });
    return out;
}
