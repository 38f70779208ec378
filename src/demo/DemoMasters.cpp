#include "demo/DemoMasters.h"
#include <QSet>
#include "store/Sql.h"
#include "demo/DemoInsert.h"
#include "demo/DemoText.h"

namespace {

const int kSuppliers = 30;
const int kProducts = 500;
const int kStaff = 8;
const int kSalesStaff = 6;   // staff 7 and 8 work in the office
// Staff 6 sells from the Osaka office, which also serves the partners of the Kansai and
// Chubu district. A partner deals with one office only.
const short kOsakaStaff = 6;
const short kOsakaDistrict = 8;
const short kOsakaOffice = 2;

short officeOf(short tan, short cku) { return tan == kOsakaStaff || cku == kOsakaDistrict ? kOsakaOffice : 1; }

QStringList cols(const char* names) { return QString::fromLatin1(names).split(QLatin1Char(' '), Qt::SkipEmptyParts); }

struct Builder {
    DemoRandom& r;
    DemoMasterData& d;
    int customerCount;
    QSet<QString> names;
    QList<QList<int>> suppliersOfClass;   // by Hbn code

    QStringList customerRyaku;

    static DemoRows table(const char* name, const char* columns)
    {
        return DemoRows{QString::fromLatin1(name), cols(columns), {}};
    }
    void add(DemoRows& t) { d.tables.append(std::move(t)); }

    template <typename T>
    const T& pick(std::span<const T> list) { return list[r.below(list.size())]; }

    // A company name not used yet: core (surname or shop name) and suffix.
    DemoWord core(std::span<const DemoWord> suffixes, QString* name, QString* kana)
    {
        for (int tries = 0;; ++tries) {
            const DemoWord& c = r.chance(1, 2) ? pick(demoSurnames()) : pick(demoTradeNames());
            const DemoWord& s = pick(suffixes);
            *name = demoU(c.text) + demoU(s.text);
            *kana = demoU(c.kana) + demoU(s.kana);
            if (!names.contains(*name) || tries > 50) {
                names.insert(*name);
                return c;
            }
        }
    }

    QString person()
    {
        // One draw after the other: the order of the operands of + is the compiler's choice.
        const QString surname = demoU(pick(demoSurnames()).text);
        return surname + demoU(pick(demoGivenNames()).text);
    }

    const DemoPlace& place(bool nearOnly)
    {
        for (;;) {
            const DemoPlace& p = pick(demoPlaces());
            if (p.cku != 8 || !nearOnly || r.chance(1, 4)) return p;
        }
    }

    // A branch named after a town lies there.
    const DemoPlace& branchPlace(const QString& branch)
    {
        QString town = branch;
        town.remove(QStringLiteral("店"));
        QList<const DemoPlace*> there;
        for (const DemoPlace& p : demoPlaces())
            if ((demoU(p.city) + demoU(p.town)).contains(town)) there.append(&p);
        return there.isEmpty() ? place(true) : *there[r.below(there.size())];
    }

    void simpleTables();
    void staff();
    void suppliers();
    void products();
    void customers();
    void destinations();
    void supplierPrices();
    void zips();
};

void Builder::simpleTables()
{
    const std::pair<const char*, std::span<const DemoClass>> simple[] = {
        {"Tbn", demoTbn()}, {"Sbn", demoSbn()}, {"Hbn", demoHbn()}, {"Cku", demoCku()}, {"Chi", demoChi()}};
    for (const auto& [name, list] : simple) {
        DemoRows t = table(name, "Code Kana Namae Ryaku");
        int code = 0;
        for (const DemoClass& c : list)
            t.rows.append({++code, demoKana(demoU(c.kana), 10), demoText(demoU(c.text), 20), demoText(demoU(c.ryaku), 10)});
        add(t);
    }
    DemoRows tni = table("Tni", "Code Namae");
    int code = 0;
    for (const char* u : demoUnits()) tni.rows.append({++code, demoText(demoU(u), 20)});
    add(tni);
    DemoRows tek = table("Tek", "Tekiyo");
    tek.rows.append({demoText(QStringLiteral("毎度ありがとうございます。"), 36)});
    add(tek);
}

void Builder::staff()
{
    DemoRows t = table("Tan", "Code Kana Namae Ryaku TanLevel");
    static const int levels[kStaff] = {500, 300, 100, 100, 100, 100, 200, 100};
    QSet<QString> used;
    for (int i = 0; i < kStaff; ++i) {
        const DemoWord* s;
        do s = &pick(demoSurnames()); while (used.contains(demoU(s->text)));
        used.insert(demoU(s->text));
        const DemoWord& g = pick(demoGivenNames());
        t.rows.append({i + 1, demoKana(demoU(s->kana) + demoU(g.kana), 10),
                       demoText(demoU(s->text) + QStringLiteral("　") + demoU(g.text), 20), demoText(demoU(s->text), 10),
                       levels[i]});
    }
    add(t);
}

void Builder::suppliers()
{
    DemoRows t = table("Sir", "Code SbnCode Kana Namae Tenmei Ryaku ChiCode Stantou KeishoCode Tel Fax Yubin "
                               "Addr1 Addr2 Zeituuchi HsuType Hsu Shicode TanCode CkuCode SimeFlag Sime Bank Mise "
                               "Shurui Koza BKana FCode aCode Tesuryo Saito Shiharai");
    suppliersOfClass.resize(demoHbn().size() + 1);
    for (int i = 0; i < kSuppliers; ++i) {
        DemoSupplier s;
        s.code = 3001 + i;
        // One dealer of stamps and revenue stamps; the others share the seven classes of goods.
        const int hbn = i == 0 ? 8 : (i - 1) % 7 + 1;
        suppliersOfClass[hbn].append(i);
        static const int sbnW[] = {50, 35, 10, 5};
        s.sbn = static_cast<short>(hbn == 8 ? 4 : 1 + r.weighted(sbnW));
        s.tan = static_cast<short>(r.range(1, kStaff));
        static const int simeW[] = {30, 20, 50};
        static const short simes[] = {20, 25, 31};
        s.rule.Sime = simes[r.weighted(simeW)];
        static const int zeiW[] = {60, 15, 20, 5};
        s.rule.Zeituuchi = static_cast<short>(1 + r.weighted(zeiW));
        static const int typeW[] = {80, 10, 5, 5};
        static const int hsuW[] = {70, 20, 10};
        s.rule.HsuType = static_cast<short>(1 + r.weighted(typeW));
        s.rule.Hsu = static_cast<short>(1 + r.weighted(hsuW));
        s.simeFlag = static_cast<short>(i < 2 ? 1 + i : (r.chance(6, 10) ? 1 : 2));
        s.weight = r.chance(1, 5) ? r.range(8, 20) : r.range(1, 6);
        s.cashPercent = r.chance(1, 10) ? 50 : 3;

        static const char* const prefixes[] = {"株式会社", "株式会社", "株式会社", "株式会社", "有限会社", ""};
        QString name, kana;
        const DemoWord c = core(demoSupplierSuffixes(), &name, &kana);
        const QString full = demoU(prefixes[r.below(6)]) + name;
        const DemoPlace& p = place(false);
        s.office = officeOf(s.tan, p.cku);
        const QString tel = demoPhone(r, p.area);
        const DemoWord& bank = pick(demoBanks());
        const DemoWord& branch = pick(demoBankBranches());
        static const int shiW[] = {10, 2, 70, 15, 2, 1};
        s.shicode = static_cast<short>(1 + r.weighted(shiW));
        const int fCode = r.range(1, 3), aCode = r.range(1, 2);
        s.tesuryo = static_cast<short>(r.range(1, 2));
        s.saito = static_cast<short>(r.chance(1, 4) ? 90 : 0);
        t.rows.append({s.code, s.sbn, demoKana(kana, 10), demoText(full, 20), demoText(QString(), 20),
                       demoText(name, 10), r.range(1, 9), demoText(person(), 10), 2, tel, demoFax(tel),
                       demoYubin(p.zip), demoText(demoU(p.city) + demoU(p.town), 30),
                       demoText(demoStreet(r, demoU(c.text)), 30), s.rule.Zeituuchi, s.rule.HsuType, s.rule.Hsu,
                       s.shicode, s.tan, p.cku, s.simeFlag, s.rule.Sime, demoText(demoU(bank.text), 20),
                       demoText(demoU(branch.text), 20), r.chance(4, 5) ? 1 : 2, demoDigits(r, 7),
                       demoKana(kana, 20), fCode, aCode, s.tesuryo, s.saito, s.code});
        d.suppliers.append(s);
    }
    add(t);
}

// JAN-13 check digit of twelve digits.
QString withCheckDigit(const QString& twelve)
{
    int sum = 0;
    for (int i = 0; i < 12; ++i) sum += (twelve[i].unicode() - u'0') * (i % 2 ? 3 : 1);
    return twelve + QString::number((10 - sum % 10) % 10);
}

void Builder::products()
{
    struct Base { const DemoItem* item; QString variant; int percent; int pack; };
    QList<Base> list;
    for (const DemoItem& it : demoItems())
        for (const QString& v : demoU(it.variants).split(QLatin1Char('|'))) {
            const int colon = static_cast<int>(v.lastIndexOf(QLatin1Char(':')));
            list.append({&it, v.left(colon), v.mid(colon + 1).toInt(), 1});
        }
    // Packs of ten (or a dozen, or a case of 24) fill the range up to its size.
    const qsizetype singles = list.size();
    for (qsizetype i = 0; list.size() < kProducts; i = (i + 1) % singles)
        if (list[i].item->hbn != 8 && list[i].pack == 1 && r.chance(3, 5)) {
            Base b = list[i];
            b.pack = b.item->hbn == 3 || b.item->hbn == 6 ? 12 : (b.item->hbn == 4 || b.item->hbn == 5 ? 24 : 10);
            list.append(b);
        }

    DemoRows t = table("Hin", "Code HbnCode Kana Namae Ryaku ZeiFlag UTanka STanka ZaiFlag");
    QSet<QString> codes;
    for (qsizetype j = 0; j < list.size(); ++j) {
        const Base& b = list[j];
        DemoProduct p;
        p.hbn = b.item->hbn;
        QString name = demoU(b.item->name) + QLatin1Char(' ') + b.variant;
        if (b.pack > 1) name += QStringLiteral("×%1").arg(b.pack);
        p.name = CutToBytes(name, 30);
        const int maker = suppliersOfClass[p.hbn][r.below(suppliersOfClass[p.hbn].size())];
        const int seq = static_cast<int>(j) + 1;
        QString code;
        if (seq % 60 == 29) {
            static const char* const letters[] = {"BN", "JM", "NZ", "SK", "IN", "SS", "HS", "IS"};
            code = QStringLiteral("%1-%2").arg(QLatin1String(letters[p.hbn - 1])).arg(seq, 3, 10, QLatin1Char('0'));
        } else if (r.chance(3, 5)) {
            code = withCheckDigit(QStringLiteral("49%1%2").arg(45100 + maker * 37, 5, 10, QLatin1Char('0'))
                                      .arg(seq, 5, 10, QLatin1Char('0')));
        } else {
            code = QString::number(p.hbn * 10000 + seq);
        }
        p.code = ZeroPad13(code);
        codes.insert(p.code);

        if (p.hbn == 8) {
            // Stamps are sold at face value and bought a little below it, free of tax.
            p.zeiFlag = 3;
            p.uTanka = Money::fromRaw(Money::Scale * b.item->price * b.percent / 100);
            p.sTanka = demoRound(Money::fromRaw(p.uTanka.raw() * r.range(97, 99) / 100), Money::Scale / 100);
        } else {
            p.zeiFlag = r.chance(12, 100) ? 2 : 1;
            Money u = Money::fromRaw(Money::Scale * b.item->price * b.percent / 100 * b.pack);
            if (b.pack > 1) u = Money::fromRaw(u.raw() * 95 / 100);
            u = demoRound(u, u >= Money::fromYen(1000) ? 10 * Money::Scale : Money::Scale);
            if (u < Money::fromYen(100) && r.chance(3, 10)) u += Money::fromRaw(Money::Scale / 2);
            p.uTanka = u;
            p.sTanka = demoPercent(u, r.range(60, 80));
        }
        if (p.sTanka >= p.uTanka) p.sTanka = p.uTanka - Money::fromRaw(Money::Scale / 100);
        t.rows.append({p.code, p.hbn, demoKana(demoU(b.item->kana), 10), demoText(p.name, 30),
                       demoText(demoU(b.item->name), 10), p.zeiFlag, p.uTanka.toStore(), p.sTanka.toStore(),
                       p.hbn == 8 ? 0 : 1});
        d.suppliers[maker].products.append(static_cast<int>(d.products.size()));
        d.products.append(p);
    }
    add(t);
}

void Builder::customers()
{
    DemoRows t = table("Tor", "Code TbnCode Kana Namae Ryaku Tenmei ChiCode Ttantou KeishoCode Tel Fax Yubin "
                               "Addr1 Addr2 TanCode RCode Zeituuchi HsuType Hsu Sime Shicode KTuki KHi UMax "
                               "CkuCode Seikyu BankCode");
    // Twelve customers carry every rounding unit with every mode and every way of tax between
    // them; the others mostly bill tax per invoice, rounded down to the yen.
    QList<int> forced;
    while (forced.size() < 12) {
        const int i = static_cast<int>(r.below(customerCount));
        if (!forced.contains(i)) forced.append(i);
    }
    DemoRows tka = table("Tka", "TorCode HinCode Tanka");
    for (int i = 0; i < customerCount; ++i) {
        DemoCustomer c;
        c.code = 1001 + i;
        static const int tbnW[] = {30, 15, 15, 25, 15};
        c.tbn = static_cast<short>(1 + r.weighted(tbnW));
        c.tan = static_cast<short>(r.range(1, kSalesStaff));
        static const int simeW[] = {35, 15, 50};
        static const short simes[] = {20, 25, 31};
        c.rule.Sime = simes[r.weighted(simeW)];
        const int k = static_cast<int>(forced.indexOf(i));
        if (k >= 0) {
            c.rule.HsuType = static_cast<short>(1 + k % 4);
            c.rule.Hsu = static_cast<short>(1 + k / 4);
            c.rule.Zeituuchi = static_cast<short>(1 + (k % 4 + k / 4) % 4);
        } else {
            static const int zeiW[] = {75, 10, 10, 5};
            static const int typeW[] = {80, 10, 5, 5};
            static const int hsuW[] = {70, 20, 10};
            c.rule.Zeituuchi = static_cast<short>(1 + r.weighted(zeiW));
            c.rule.HsuType = static_cast<short>(1 + r.weighted(typeW));
            c.rule.Hsu = static_cast<short>(1 + r.weighted(hsuW));
        }
        c.weight = r.chance(1, 10) ? r.range(20, 40) : r.range(1, 10);
        static const int shiW[] = {10, 2, 70, 15, 2, 1};
        c.shicode = static_cast<short>(1 + r.weighted(shiW));
        c.cashPercent = c.shicode == 1 ? 60 : 3;

        const bool small = c.tbn == 1 || c.tbn == 3;
        const int pre = small ? r.weighted({50, 25, 25}) : r.weighted({15, 15, 70});
        static const char* const prefixes[] = {"", "有限会社", "株式会社"};
        QString name, kana;
        const DemoWord co = core(demoCustomerSuffixes(c.tbn), &name, &kana);
        const DemoPlace& p = place(true);
        c.office = officeOf(c.tan, p.cku);
        // The Osaka office sells on account only: ledger processing books every cash sale in
        // the office that runs it, and would put Osaka's cash into the head office's ledger.
        if (c.office != 1) c.cashPercent = 0;
        const QString tel = demoPhone(r, p.area);
        static const int kHiW[] = {20, 10, 20, 20, 30};
        static const short kHis[] = {10, 15, 20, 25, 31};
        static const int ktW[] = {10, 75, 15};
        static const int rankW[] = {40, 30, 15, 10, 5};
        c.kTuki = static_cast<short>(1 + r.weighted(ktW));
        c.kHi = kHis[r.weighted(kHiW)];
        t.rows.append({c.code, c.tbn, demoKana(kana, 10), demoText(demoU(prefixes[pre]) + name, 20),
                       demoText(name, 10), demoText(r.chance(3, 10) ? demoU(pick(demoShopNames()).text) : QString(), 20),
                       r.range(1, 9), demoText(r.chance(4, 5) ? person() : QString(), 10),
                       small && r.chance(1, 3) ? 1 : 2, tel, r.chance(7, 10) ? demoFax(tel) : QStringLiteral(" "),
                       demoYubin(p.zip), demoText(demoU(p.city) + demoU(p.town), 30),
                       demoText(demoStreet(r, demoU(co.text)), 30), c.tan, 1 + r.weighted(rankW),
                       c.rule.Zeituuchi, c.rule.HsuType, c.rule.Hsu, c.rule.Sime, c.shicode, c.kTuki, c.kHi,
                       Money::fromYen(r.chance(3, 10) ? 0 : 10000LL * r.range(5, 300)).toStore(), p.cku, 0,
                       r.range(1, 3)});

        // The customer's own prices, a little under the list price.
        const int n = r.range(8, 40);
        while (c.tkaProducts.size() < n) {
            const int j = static_cast<int>(r.below(d.products.size()));
            if (c.tka.contains(j) || (d.products[j].hbn == 8 && !r.chance(1, 10))) continue;
            c.tka.insert(j, demoPercent(d.products[j].uTanka, r.range(85, 97)));
            c.tkaProducts.append(j);
            tka.rows.append({c.code, d.products[j].code, c.tka[j].toStore()});
        }
        customerRyaku.append(CutToBytes(name, 10));
        d.customers.append(c);
    }
    d.priceRows += static_cast<int>(tka.rows.size());

    // A few branches are billed to another customer of the same closing day.
    const int seikyuColumn = static_cast<int>(t.columns.indexOf(QStringLiteral("Seikyu")));
    for (int made = 0, tries = 0; made < 5 && tries < 200; ++tries) {
        const int child = static_cast<int>(r.below(customerCount));
        const int parent = static_cast<int>(r.below(customerCount));
        DemoCustomer& c = d.customers[child];
        const DemoCustomer& p = d.customers[parent];
        if (child == parent || c.seikyu || p.seikyu || p.rule.Sime != c.rule.Sime) continue;
        bool isParent = false;
        for (const DemoCustomer& o : d.customers) isParent = isParent || o.seikyu == c.code;
        if (isParent) continue;
        c.seikyu = p.code;
        t.rows[child][seikyuColumn] = p.code;
        ++made;
    }
    add(t);
    add(tka);
}

void Builder::destinations()
{
    DemoRows t = table("Nou", "TorCode Code Kana Namae Ryaku Tenmei ChiCode Ntantou KeishoCode Yubin Addr1 Addr2 "
                               "Tel Fax SeiFlag CkuCode");
    DemoRows nka = table("Nka", "TorCode NouCode HinCode Tanka");
    for (DemoCustomer& c : d.customers) {
        const bool chain = c.tbn == 2 || c.tbn == 4;
        if (!r.chance(chain ? 6 : 2, 10)) continue;
        const int n = r.range(1, chain ? 5 : 2);
        QSet<int> used;
        for (int k = 1; k <= n; ++k) {
            int b;
            do b = static_cast<int>(r.below(demoBranches().size())); while (used.contains(b));
            used.insert(b);
            const DemoWord& br = demoBranches()[b];
            DemoDestination dest;
            dest.torCode = c.code;
            dest.code = k;
            const DemoPlace& p = branchPlace(demoU(br.text));
            const QString tel = demoPhone(r, p.area);
            // The invoice mostly goes to the customer; a few branches settle their own. Their
            // sales stay in the customer's own ledger row while their money does not, so the
            // customer's balance keeps them: few, as in a real book.
            dest.seiFlag = d.destinations.isEmpty() ? 2 : (d.destinations.size() == 1 ? 1 : (r.chance(1, 20) ? 2 : 1));
            const QString owner = customerRyaku[c.code - 1001];
            t.rows.append({c.code, k, demoKana(demoU(br.kana), 10), demoText(owner + demoU(br.text), 20),
                           demoText(demoU(br.text), 10), demoText(QString(), 20), r.range(1, 9),
                           demoText(r.chance(1, 2) ? person() : QString(), 10), 2, demoYubin(p.zip),
                           demoText(demoU(p.city) + demoU(p.town), 30), demoText(demoStreet(r, QString()), 30),
                           tel, demoFax(tel), dest.seiFlag, p.cku});
            const int m = r.range(3, 12);
            while (dest.nkaProducts.size() < m) {
                // Mostly the customer's own lines, sometimes a product of the branch alone.
                const int j = !c.tkaProducts.isEmpty() && r.chance(7, 10)
                                  ? c.tkaProducts[r.below(c.tkaProducts.size())]
                                  : static_cast<int>(r.below(d.products.size()));
                if (dest.nka.contains(j)) continue;
                dest.nka.insert(j, demoPercent(d.products[j].uTanka, r.range(85, 98)));
                dest.nkaProducts.append(j);
                nka.rows.append({c.code, k, d.products[j].code, dest.nka[j].toStore()});
            }
            c.destinations.append(static_cast<int>(d.destinations.size()));
            d.destinations.append(dest);
        }
    }
    d.priceRows += static_cast<int>(nka.rows.size());
    add(t);
    add(nka);
}

void Builder::supplierPrices()
{
    DemoRows ska = table("Ska", "SirCode HinCode Tanka");
    for (DemoSupplier& s : d.suppliers)
        for (int j : s.products)
            if (r.chance(6, 10)) {
                s.ska.insert(j, demoPercent(d.products[j].sTanka, r.range(92, 99)));
                ska.rows.append({s.code, d.products[j].code, s.ska[j].toStore()});
            }
    d.priceRows += static_cast<int>(ska.rows.size());
    add(ska);
}

void Builder::zips()
{
    DemoRows zip = table("Zip", "Code Addr");
    DemoRows zip7 = table("Zip7", "Code Addr");
    QSet<QString> seen;
    for (const DemoPlace& p : demoPlaces()) {
        const QString z = demoU(p.zip);
        const QString city = demoU(p.city);
        zip7.rows.append({z.toInt(), demoText(city + demoU(p.town), 60)});
        // The old codes: three digits for the city, five for the town.
        if (!seen.contains(z.left(3) + city)) {
            seen.insert(z.left(3) + city);
            zip.rows.append({z.left(3).toInt(), demoText(city, 60)});
        }
        zip.rows.append({z.left(5).toInt(), demoText(city + demoU(p.town), 60)});
    }
    for (const DemoZip& s : demoSharedZips()) zip7.rows.append({demoU(s.zip).toInt(), demoText(demoU(s.addr), 60)});
    add(zip);
    add(zip7);
}

} // namespace

TaxRates demoTaxRates()
{
    return TaxRates{Money::fromYen(8), Money::fromYen(10), QDate(2019, 9, 30)};
}

QString demoCompanyName() { return QStringLiteral("株式会社丸八商事"); }

QMap<short, QString> demoOffices()
{
    return {{1, QStringLiteral("本社")}, {2, QStringLiteral("大阪営業所")}};
}

DemoMasterData buildDemoMasters(DemoRandom& rnd, int nendo, short sTuki, int customers)
{
    DemoMasterData d;
    d.nendo = nendo;
    d.sTuki = sTuki;
    Builder b{rnd, d, customers, {}, {}, {}};
    b.simpleTables();
    b.staff();
    b.suppliers();
    b.products();
    b.customers();
    b.destinations();
    b.supplierPrices();
    b.zips();
    return d;
}

bool writeDemoMasters(QSqlDatabase db, const DemoMasterData& d, const DemoCounters& counters, QString* error)
{
    auto fail = [&](const QString& m) { if (error) *error = m; return false; };
    QSqlError e;
    QVariantList com = {demoCompanyName(), demoU("本社"), demoU("丸八商事"), demoU("03-3861-2451"),
                        demoU("03-3861-2452"), demoU("101-0032"), demoU("東京都千代田区岩本町"),
                        demoU("2-11-7 丸八ビル 3F"), 38, 31, 10, 1, 1, 1, 2};
    for (int k : {80, 75, 70, 65, 60}) com << Money::fromYen(k).toStore();
    com << demoTaxRates().Zeiritu.toStore();
    const char* banks[4][3] = {{"みずほ銀行", "岩本町支店", "1234567"}, {"三井住友銀行", "神田支店", "7654321"},
                               {"城南信用金庫", "本店", "0123456"}, {"", "", ""}};
    QStringList set = {"Kaisya", "Tenmei", "Ryaku", "Tel", "Fax", "Yubin", "Addr1", "Addr2", "Ki", "Sime", "sDate",
                       "Zeituuchi", "HsuType", "Hsu", "Hiz", "Kake1", "Kake2", "Kake3", "Kake4", "Kake5", "Zeiritu"};
    for (int i = 0; i < 4; ++i) {
        set << QStringLiteral("Bank%1").arg(i + 1) << QStringLiteral("Mise%1").arg(i + 1)
            << QStringLiteral("shurui%1").arg(i + 1) << QStringLiteral("koza%1").arg(i + 1);
        com << EmptyToSpace(demoU(banks[i][0])) << EmptyToSpace(demoU(banks[i][1])) << (i < 3 ? (i == 1 ? 2 : 1) : 0)
            << EmptyToSpace(demoU(banks[i][2]));
    }
    if (execSql(db, QStringLiteral("UPDATE Com SET %1=?").arg(set.join(QStringLiteral("=?, "))), com, &e) != ErrorClass::None)
        return fail(QStringLiteral("Com: ") + e.text());
    // The first start finds 725 and leaves the rates as they are.
    if (execSql(db, QStringLiteral("INSERT INTO UserOP (Code, contents) VALUES (725, ?), (726, ?)"),
                {demoTaxRates().TaxChangeDate.toString(QStringLiteral("yyyyMMdd")), demoTaxRates().TaxRateNew.toText()},
                &e) != ErrorClass::None)
        return fail(QStringLiteral("UserOP: ") + e.text());

    const QMap<short, QString> offices = demoOffices();
    for (auto it = offices.begin(); it != offices.end(); ++it) {
        const QVariantList v = {it.value(), counters.DurNo.value(it.key(), 1), counters.DsrNo.value(it.key(), 1), it.key()};
        const QString sql = it.key() == 1
            ? QStringLiteral("UPDATE Eig SET Namae=?, DurNo=?, DsrNo=? WHERE Code=?")
            : QStringLiteral("INSERT INTO Eig (Namae, DurNo, DsrNo, Code, DshNo, DnyNo, SeikyuNo) VALUES (?, ?, ?, ?, 1, 1, 1)");
        if (execSql(db, sql, v, &e) != ErrorClass::None) return fail(QStringLiteral("Eig: ") + e.text());
    }

    for (const DemoRows& t : d.tables) {
        DemoInsert ins(db, t.table, t.columns);
        for (const QVariantList& row : t.rows)
            if (!ins.insert(row)) break;
        if (!ins.ok()) return fail(ins.error());
    }
    return true;
}
