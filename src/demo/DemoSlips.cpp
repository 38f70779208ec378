#include "demo/DemoSlips.h"
#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <vector>
#include "entry/Dates.h"
#include "slips/SlipTax.h"
#include "store/Schema.h"
#include "store/Sql.h"
#include "demo/DemoBilling.h"
#include "demo/DemoInsert.h"
#include "demo/DemoText.h"

namespace {

// A working day of the fiscal year with its closing month for each closing day, worked out
// once: thousands of slips share a day.
struct Day {
    QDate date;
    QVariant text;
    std::array<short, 32> getudo{};   // by closing day; 0 until asked
};

// Draws an index by weight in logarithmic time.
class Picker {
public:
    template <typename T, typename W>
    Picker(const QList<T>& list, W weightOf)
    {
        int sum = 0;
        for (const T& x : list) cumulative_.push_back(sum += std::max(0, weightOf(x)));
    }
    int pick(DemoRandom& r) const
    {
        if (cumulative_.empty() || cumulative_.back() == 0) return -1;
        const int v = static_cast<int>(r.below(static_cast<uint64_t>(cumulative_.back())));
        return static_cast<int>(std::upper_bound(cumulative_.begin(), cumulative_.end(), v) - cumulative_.begin());
    }
private:
    std::vector<int> cumulative_;
};

struct Line {
    int product = 0;
    short kubun = 0;
    qint32 suu = 0;
    Money price;     // this slip's unit price
    Money sPrice;    // the other side's unit price
    QString name;
};

const int kMaxLines = 6;

const int kLineValues = 15;

// The lines of one slip go in with one statement: one run instead of six. The line number and
// the new line's ledger state are the statement's own.
QString linesSql(const QString& table, const QString& partner, int count)
{
    QString sql = QStringLiteral("INSERT INTO %1 (Dno, EigCode, Hizuke, %2, Getudo, Kubun, HinCode, HinNamae, Suu, "
                                 "UTanka, UGaku, STanka, sGaku, ZeiFlag, ZeiGaku, Eda, ThiFlag) VALUES ")
                      .arg(table, partner);
    for (int e = 0; e < count; ++e)
        sql += QStringLiteral("%1(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, %2, -1)")
                   .arg(e ? QStringLiteral(", ") : QString()).arg(e + 1);
    return sql;
}

struct SlipKind {
    SlipKind(const QSqlDatabase& db, const char* head, const char* headColumns, const char* lines, const char* partner)
        : head(db, QString::fromLatin1(head), QString::fromLatin1(headColumns).split(QLatin1Char(' ')))
    {
        for (int n = 1; n <= kMaxLines; ++n)
            this->lines.push_back(std::make_unique<DemoInsert>(
                db, QString::fromLatin1(lines), linesSql(QString::fromLatin1(lines), QString::fromLatin1(partner), n)));
    }
    DemoInsert head;
    std::vector<std::unique_ptr<DemoInsert>> lines;   // by number of lines - 1
    bool ok() const
    {
        bool all = head.ok();
        for (const auto& l : lines) all = all && l->ok();
        return all;
    }
    QString error() const
    {
        if (!head.ok()) return head.error();
        for (const auto& l : lines)
            if (!l->ok()) return l->error();
        return {};
    }
};

class SlipWriter {
public:
    SlipWriter(QSqlDatabase db, const DemoMasterData& d, DemoRandom& r, DemoBilling& billing)
        : d_(d), r_(r), billing_(billing),
          dur_(db, "Dur", "Dno EigCode Hizuke TanCode TbnCode TorCode TorCodeSei NouCode Tekiyo SNo Kubun", "Dud", "TorCode"),
          dsr_(db, "Dsr", "Dno EigCode Hizuke TanCode SbnCode SirCode Tekiyo SNo Kubun", "Dsd", "SirCode"),
          customers_(d.customers, [](const DemoCustomer& c) { return c.weight; }),
          suppliers_(d.suppliers, [](const DemoSupplier& s) { return s.products.isEmpty() ? 0 : s.weight; })
    {
    }

    bool ok() const { return dur_.ok() && dsr_.ok(); }
    QString error() const { return dur_.ok() ? dsr_.error() : dur_.error(); }
    // A slip of a partner drawn by its weight, in the partner's own office.
    bool sale(Day& day, DemoSlipCounts& counts, DemoCounters& counters);
    bool purchase(Day& day, DemoSlipCounts& counts, DemoCounters& counters);
    QString failure;

private:
    short getudo(Day& day, short sime);
    int quantityLimit(const DemoProduct& p, bool sales) const;
    void planLines(QList<Line>& lines, bool sales, const std::function<int()>& product,
                   const std::function<Money(int)>& price);
    // `nou`: the slip's destination; `cash`: a cash slip.
    bool writeLines(SlipKind& kind, qint32 dno, short office, Day& day, qint32 partner, qint32 nou, bool cash,
                    const DemoPartnerRule& rule, QList<Line>& lines);
    QVariant remark(bool returns);

    const DemoMasterData& d_;
    DemoRandom& r_;
    DemoBilling& billing_;
    SlipKind dur_;
    SlipKind dsr_;
    Picker customers_;
    Picker suppliers_;
    const TaxRates rates_ = demoTaxRates();
    std::vector<SlipLineTax> tax_;
};

short SlipWriter::getudo(Day& day, short sime)
{
    short& g = day.getudo[static_cast<size_t>(sime)];
    if (g == 0) {
        const short eTuki = static_cast<short>(d_.sTuki == 1 ? 12 : d_.sTuki - 1);
        const QString m = ClosingMonth(sime, static_cast<short>(day.date.year()), static_cast<short>(day.date.month()),
                                       static_cast<short>(day.date.day()), d_.nendo, d_.sTuki, eTuki);
        bool isNumber = false;
        const int v = m.toInt(&isNumber);
        g = isNumber ? static_cast<short>(v) : -1;   // -1: the date lies outside the year
    }
    return g;
}

int SlipWriter::quantityLimit(const DemoProduct& p, bool sales) const
{
    const int factor = sales ? 1 : 3;   // the company buys in larger lots than it sells
    if (p.uTanka >= Money::fromYen(5000)) return 3 * factor;
    if (p.uTanka >= Money::fromYen(1000)) return 10 * factor;
    if (p.uTanka >= Money::fromYen(300)) return 24 * factor;
    return 60 * factor;
}

// One to six lines, now and then a returned line or a whole slip of returns, and a discount
// at the end of some slips.
void SlipWriter::planLines(QList<Line>& lines, bool sales, const std::function<int()>& product,
                           const std::function<Money(int)>& price)
{
    static const int countW[] = {3, 4, 8, 15, 25, 45};
    const int n = 1 + r_.weighted(countW);
    const bool returns = r_.chance(2, 100);
    const bool discount = !returns && n >= 2 && r_.chance(4, 100);
    lines.clear();
    for (int i = 0; i < n - (discount ? 1 : 0); ++i) {
        Line l;
        // A product already on the slip is drawn again, within reason.
        for (int tries = 0; tries < 4; ++tries) {
            l.product = product();
            bool dup = false;
            for (const Line& o : lines) dup = dup || o.product == l.product;
            if (!dup) break;
        }
        const DemoProduct& p = d_.products[l.product];
        const int limit = quantityLimit(p, sales);
        l.suu = limit >= 24 && r_.chance(1, 2) ? 10 * r_.range(1, limit / 10) : r_.range(1, limit);
        if (returns || r_.chance(3, 100)) {
            l.kubun = 1;
            l.suu = -r_.range(1, std::min(limit, 5));
        }
        l.price = price(l.product);
        l.sPrice = sales ? p.sTanka : p.uTanka;
        l.name = p.name;
        lines.append(l);
    }
    if (discount) {
        Money sum;
        for (const Line& l : lines) sum += lineAmount(l.suu, l.price);
        Money cut = demoRound(Money::fromRaw(sum.raw() * r_.range(3, 10) / 100), 10 * Money::Scale);
        if (cut < Money::fromYen(10)) cut = Money::fromYen(10);
        Line l;
        l.product = lines.first().product;
        l.kubun = 2;
        l.suu = 1;
        l.price = -cut;
        l.name = CutToBytes(QStringLiteral("値引 ") + d_.products[l.product].name, 30);
        lines.append(l);
    }
}

bool SlipWriter::writeLines(SlipKind& kind, qint32 dno, short office, Day& day, qint32 partner, qint32 nou,
                            bool cash, const DemoPartnerRule& rule, QList<Line>& lines)
{
    tax_.resize(static_cast<size_t>(lines.size()));
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const Line& l = lines[i];
        SlipLineTax& t = tax_[static_cast<size_t>(i)];
        t = SlipLineTax{};
        t.ZeiFlag = d_.products[l.product].zeiFlag;
        t.Gaku = lineAmount(l.suu, l.price);
        t.sGaku = lineAmount(l.suu, l.sPrice);
        calcLineTax(rates_, t, day.date, rule.HsuType, rule.Hsu);
    }
    calcSlipTax(rates_, tax_, rule.Zeituuchi, day.date, rule.HsuType, rule.Hsu);
    const short g = getudo(day, rule.Sime);
    const bool sales = &kind == &dur_;
    const DemoLedgerMonth at{office, partner, nou, g};
    for (const SlipLineTax& t : tax_) {
        if (sales) billing_.addSale(at, rule, cash, day.date, t);
        else billing_.addPurchase(at, rule, cash, day.date, t);
    }
    DemoInsert& ins = *kind.lines[static_cast<size_t>(lines.size() - 1)];
    const QVariant vDno(dno), vOffice(office), vPartner(partner), vGetudo(g);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const Line& l = lines[i];
        const SlipLineTax& t = tax_[static_cast<size_t>(i)];
        const int b = static_cast<int>(i) * kLineValues + 5;
        ins.set(b - 5, vDno);
        ins.set(b - 4, vOffice);
        ins.set(b - 3, day.text);
        ins.set(b - 2, vPartner);
        ins.set(b - 1, vGetudo);
        ins.set(b, l.kubun);
        ins.set(b + 1, d_.products[l.product].code);
        ins.set(b + 2, l.name);
        ins.set(b + 3, l.suu);
        ins.set(b + 4, l.price.toStore());
        ins.set(b + 5, t.Net.toStore());
        ins.set(b + 6, l.sPrice.toStore());
        ins.set(b + 7, t.sGaku.toStore());
        ins.set(b + 8, t.ZeiFlag);
        ins.set(b + 9, t.Zei.toStore());
    }
    return ins.exec();
}

QVariant SlipWriter::remark(bool returns)
{
    if (returns) return QStringLiteral("返品");
    if (!r_.chance(8, 100)) return QStringLiteral(" ");
    return demoU(demoRemarks()[r_.below(demoRemarks().size())]);
}

bool SlipWriter::sale(Day& day, DemoSlipCounts& counts, DemoCounters& counters)
{
    const DemoCustomer& c = d_.customers[customers_.pick(r_)];
    const short office = c.office;
    // The slip screen asks a customer with destinations for one of them.
    const DemoDestination* dest = nullptr;
    if (!c.destinations.isEmpty()) dest = &d_.destinations[c.destinations[r_.below(c.destinations.size())]];
    if (getudo(day, c.rule.Sime) < 1) {
        failure = QStringLiteral("対象年度の範囲内ではありません。");
        return false;
    }
    QList<Line> lines;
    planLines(lines, true,
              [&] {
                  // Mostly what the customer (or the branch) buys regularly.
                  if (dest && !dest->nkaProducts.isEmpty() && r_.chance(6, 10))
                      return dest->nkaProducts[r_.below(dest->nkaProducts.size())];
                  if (!c.tkaProducts.isEmpty() && r_.chance(6, 10))
                      return c.tkaProducts[r_.below(c.tkaProducts.size())];
                  return static_cast<int>(r_.below(d_.products.size()));
              },
              [&](int j) {
                  // A branch looks at its own prices only: the customer's do not reach it.
                  if (dest) return dest->nka.value(j, d_.products[j].uTanka);
                  return c.tka.value(j, d_.products[j].uTanka);
              });
    bool returns = true;
    for (const Line& l : lines) returns = returns && l.kubun == 1;

    const qint32 dno = counters.DurNo.value(office, 1);
    counters.DurNo[office] = dno + 1;
    DemoInsert& h = dur_.head;
    h.set(0, dno);
    h.set(1, office);
    h.set(2, day.text);
    h.set(3, c.tan);
    h.set(4, c.tbn);
    h.set(5, c.code);
    h.set(6, c.seikyu ? c.seikyu : c.code);
    h.set(7, dest ? dest->code : 0);
    h.set(8, remark(returns));
    h.set(9, 0);
    const bool cash = r_.chance(c.cashPercent, 100);
    h.set(10, cash ? 1 : 0);
    if (!h.exec() || !writeLines(dur_, dno, office, day, c.code, dest ? dest->code : 0, cash, c.rule, lines))
        return false;
    ++counts.sales;
    counts.salesLines += static_cast<int>(lines.size());
    return true;
}

bool SlipWriter::purchase(Day& day, DemoSlipCounts& counts, DemoCounters& counters)
{
    const int si = suppliers_.pick(r_);
    if (si < 0) return sale(day, counts, counters);
    const DemoSupplier& s = d_.suppliers[si];
    const short office = s.office;
    // The slip screen takes the supplier's own closing day, whatever its flag says.
    if (getudo(day, s.rule.Sime) < 1) {
        failure = QStringLiteral("対象年度の範囲内ではありません。");
        return false;
    }
    QList<Line> lines;
    planLines(lines, false, [&] { return s.products[r_.below(s.products.size())]; },
              [&](int j) { return s.ska.value(j, d_.products[j].sTanka); });
    bool returns = true;
    for (const Line& l : lines) returns = returns && l.kubun == 1;

    const qint32 dno = counters.DsrNo.value(office, 1);
    counters.DsrNo[office] = dno + 1;
    DemoInsert& h = dsr_.head;
    h.set(0, dno);
    h.set(1, office);
    h.set(2, day.text);
    h.set(3, s.tan);
    h.set(4, s.sbn);
    h.set(5, s.code);
    h.set(6, remark(returns));
    h.set(7, 0);
    const bool cash = r_.chance(s.cashPercent, 100);
    h.set(8, cash ? 1 : 0);
    if (!h.exec() || !writeLines(dsr_, dno, office, day, s.code, 0, cash, s.rule, lines)) return false;
    ++counts.purchases;
    counts.purchaseLines += static_cast<int>(lines.size());
    return true;
}

// Working days of the fiscal year: no Sundays and no New Year holidays.
QList<Day> workingDays(int nendo, short sTuki)
{
    QList<Day> days;
    const QDate first(nendo, sTuki, 1);
    const QDate end = first.addMonths(12);
    for (QDate dt = first; dt < end; dt = dt.addDays(1)) {
        if (dt.dayOfWeek() == Qt::Sunday) continue;
        if ((dt.month() == 1 && dt.day() <= 3) || (dt.month() == 12 && dt.day() == 31)) continue;
        Day day;
        day.date = dt;
        day.text = dt.toString(Qt::ISODate);
        days.append(day);
    }
    return days;
}

bool fillSlips(QSqlDatabase db, const DemoMasterData& data, int slips, DemoRandom& rnd, DemoSlipCounts& counts,
               DemoCounters& counters, DemoBilling& billing, QString* error)
{
    auto fail = [&](const QString& m) { if (error) *error = m; return false; };
    SlipWriter w(db, data, rnd, billing);
    if (!w.ok()) return fail(w.error());
    QList<Day> days = workingDays(data.nendo, data.sTuki);
    for (short office : demoOffices().keys()) {
        counters.DurNo[office] = 1;
        counters.DsrNo[office] = 1;
    }
    const qsizetype nDays = days.size();
    for (int i = 0; i < slips; ++i) {
        // Spread evenly over the year, so the numbers rise with the dates.
        Day& day = days[static_cast<qsizetype>(static_cast<qint64>(i) * nDays / slips)];
        const bool ok = rnd.chance(70, 100) ? w.sale(day, counts, counters) : w.purchase(day, counts, counters);
        if (!ok) return fail(w.failure.isEmpty() ? w.error() : w.failure);
    }
    return true;
}

} // namespace

bool writeDemoSlips(QSqlDatabase db, const DemoMasterData& data, int slips, DemoRandom& rnd,
                    DemoSlipCounts& counts, DemoCounters& counters, DemoBilling& billing, QString* error)
{
    auto fail = [&](const QString& m) { if (error) *error = m; return false; };
    if (data.customers.isEmpty() || data.products.isEmpty()) return fail(QStringLiteral("マスターがありません。"));
    // The indexes are built once at the end, from sorted keys, instead of row by row.
    QStringList indexes;
    for (const char* t : {"Dur", "Dud", "Dsr", "Dsd"})
        for (const QString& st : createStatements(*findTableDef(QString::fromLatin1(t))))
            if (st.startsWith(QLatin1String("CREATE INDEX"))) indexes << st;
    for (const QString& st : indexes) {
        QSqlError e;
        if (execSql(db, QStringLiteral("DROP INDEX %1").arg(st.section(QLatin1Char(' '), 2, 2)), {}, &e) != ErrorClass::None)
            return fail(e.text());
    }
    if (!fillSlips(db, data, slips, rnd, counts, counters, billing, error)) return false;
    for (const QString& st : indexes) {
        QSqlError e;
        if (execSql(db, st, {}, &e) != ErrorClass::None) return fail(e.text());
    }
    return true;
}
