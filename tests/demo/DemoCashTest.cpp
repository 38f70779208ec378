#include <gtest/gtest.h>
#include <array>
#include <map>
#include <tuple>
#include <QDir>
#include <QTemporaryDir>
#include "entry/Dates.h"
#include "ledgers/LedgerCommands.h"
#include "demo/DemoCash.h"
#include "demo/DemoCashPlan.h"
#include "DemoFixture.h"

namespace {

using namespace demotest;

const int kSlips = 1500;
const uint64_t kSeed = 11;
const int kCustomers = 40;

// Runs `velmora batch` or `velmora rebuild` on the company in `dir`.
int runLedgerCommandIn(const QString& dir, const QStringList& args)
{
    const QString back = QDir::currentPath();
    QDir::setCurrent(dir);
    CommandConsole c;
    QStringList err;
    c.out = [](const QString&) {};
    c.err = [&](const QString& s) { err << s; };
    c.readLine = [](QString*) { return false; };
    const int rc = runLedgerCommand(args, c);
    QDir::setCurrent(back);
    EXPECT_EQ(rc, 0) << qPrintable(args.join(' ')) << "\n" << qPrintable(err.join('\n'));
    return rc;
}

// One side of the ledgers and the slips that pay into it.
struct Side {
    const char* slips;      // Dny / Dsh
    const char* head;       // Tto / Tsi
    const char* months;     // TtoD / TsiD
    const char* keys;       // key columns of a head, office last
    const char* amount;     // amount column of the slips
};
const Side kCustomerSide{"Dny", "Tto", "TtoD", "TorCode, NouCode, EigCode", "NGaku"};
const Side kSupplierSide{"Dsh", "Tsi", "TsiD", "SirCode, EigCode", "sGaku"};
const Side kSides[] = {kCustomerSide, kSupplierSide};

QString keysOf(const Side& s, const QString& alias)
{
    QStringList out;
    for (const QString& k : QString::fromLatin1(s.keys).split(QStringLiteral(", ")))
        out << QStringLiteral("%1.%2").arg(alias, k);
    return out.join(QStringLiteral(", "));
}

QString sameKeys(const Side& s, const QString& a, const QString& b)
{
    QStringList out;
    for (const QString& k : QString::fromLatin1(s.keys).split(QStringLiteral(", ")))
        out << QStringLiteral("%1.%3 = %2.%3").arg(a, b, k);
    return out.join(QStringLiteral(" AND "));
}

// What breaks the balance identity on one side: every head has its 13 months, what leaves a
// month is the next month's Zenkaigaku (row 13 after the last) and the head's Zan.
QStringList identityBreaks(const DemoStore& st, const Side& s)
{
    struct Month { qint64 zen = 0, leaving = 0; bool there = false; };
    std::map<QString, std::array<Month, 14>> heads;
    for (const QVariantList& r : st.rows(QStringLiteral("SELECT %1, Getudo, Zenkaigaku, Zenkaigaku + KTotal + Zeigaku - NTotal "
                                                        "FROM %2 d").arg(keysOf(s, "d"), s.months))) {
        const int n = static_cast<int>(r.size());
        QString key;
        for (int i = 0; i < n - 3; ++i) key += r[i].toString() + QLatin1Char('/');
        const int g = r[n - 3].toInt();
        if (g >= 1 && g <= 13) heads[key][static_cast<size_t>(g)] = {r[n - 2].toLongLong(), r[n - 1].toLongLong(), true};
    }
    QStringList breaks;
    for (const QVariantList& r : st.rows(QStringLiteral("SELECT %1, Zan FROM %2 h").arg(keysOf(s, "h"), s.head))) {
        QString key;
        for (int i = 0; i < r.size() - 1; ++i) key += r[i].toString() + QLatin1Char('/');
        const auto& m = heads[key];
        const int fiscal[] = {4, 5, 6, 7, 8, 9, 10, 11, 12, 1, 2, 3, 13};
        for (int i = 0; i < 13; ++i) {
            const Month& cur = m[static_cast<size_t>(fiscal[i])];
            if (!cur.there) breaks << key + QStringLiteral(" no month %1").arg(fiscal[i]);
            else if (i > 0 && cur.zen != m[static_cast<size_t>(fiscal[i - 1])].leaving)
                breaks << key + QStringLiteral(" month %1").arg(fiscal[i]);
        }
        if (r.last().toLongLong() != m[13].zen) breaks << key + QStringLiteral(" Zan");
    }
    return breaks;
}

class DemoCashTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        tmp_ = new QTemporaryDir;
        fresh_ = new DemoStore(makeDemo(*tmp_, "fresh", kSlips, kSeed, kCustomers), "CashFresh");
        const QString dir = makeDemo(*tmp_, "posted", kSlips, kSeed, kCustomers);
        runLedgerCommandIn(dir, {"batch"});
        posted_ = new DemoStore(dir, "CashPosted");
    }
    static void TearDownTestSuite()
    {
        delete fresh_;
        delete posted_;
        delete tmp_;
    }
    static QTemporaryDir* tmp_;
    static DemoStore* fresh_;    // as the demo leaves it
    static DemoStore* posted_;   // after ledger processing in the head office
};
QTemporaryDir* DemoCashTest::tmp_ = nullptr;
DemoStore* DemoCashTest::fresh_ = nullptr;
DemoStore* DemoCashTest::posted_ = nullptr;

} // namespace

TEST(DemoCashDays, CollectionDayFallsOnABankDayAfterTheClosing)
{
    struct Case { QDate closing; short kTuki, kHi; QDate expected; } cases[] = {
        {{2026, 4, 20}, 2, 10, {2026, 5, 8}},    // the 10th is a Sunday: the Friday before
        {{2026, 5, 20}, 3, 15, {2026, 7, 15}},   // two months on
        {{2026, 4, 20}, 1, 25, {2026, 4, 24}},   // this month, the 25th a Saturday
        {{2026, 4, 30}, 1, 31, {2026, 5, 29}},   // the month's end is the closing itself: the next one
        {{2026, 4, 30}, 1, 10, {2026, 5, 8}},    // the 10th before the closing: next month's
        {{2026, 11, 30}, 2, 31, {2026, 12, 30}}, // New Year's Eve is no bank day
        {{2026, 12, 31}, 2, 31, {2027, 1, 29}},  // end of January a Sunday
        {{2027, 2, 28}, 2, 31, {2027, 3, 31}},
        {{2026, 12, 30}, 1, 31, {2027, 1, 4}},   // back would reach the closing: after the holidays
    };
    for (const Case& c : cases)
        EXPECT_EQ(demoCollectionDay(c.closing, c.kTuki, c.kHi), c.expected)
            << qPrintable(c.closing.toString(Qt::ISODate)) << " " << c.kTuki << " " << c.kHi;

    struct Closing { int nendo; short getudo, sime; QDate expected; } closings[] = {
        {2026, 4, 20, {2026, 4, 20}}, {2026, 2, 31, {2027, 2, 28}}, {2027, 2, 31, {2028, 2, 29}},
        {2026, 3, 25, {2027, 3, 25}}, {2026, 12, 31, {2026, 12, 31}},
    };
    for (const Closing& c : closings)
        EXPECT_EQ(demoClosingDay(c.nendo, 4, c.getudo, c.sime), c.expected) << c.getudo << " " << c.sime;
}

TEST_F(DemoCashTest, SlipsAreWhatTheDepositScreenWrites)
{
    const DemoStore& s = *fresh_;
    const QDate first(kYear, 4, 1), last(kYear + 1, 3, 31);
    struct Case { const char* table; const char* partner; const char* cls; const char* amount; const char* master;
                  const char* sime; } cases[] = {
        {"Dny", "TorCode", "TbnCode", "NGaku", "Tor", "m.Sime"},
        // A supplier's own closing day counts for its payments only when it is flagged to.
        {"Dsh", "SirCode", "SbnCode", "sGaku", "Sir", "CASE WHEN m.SimeFlag = 2 THEN m.Sime ELSE (SELECT Sime FROM Com) END"},
    };
    for (const Case& c : cases) {
        const Rows rows = s.rows(QStringLiteral("SELECT x.EigCode, x.Dno, x.Eda, x.Hizuke, x.%2, x.Getudo, x.Kubun, x.%4, "
                                                "x.%3 = m.%3 AND x.TanCode = m.TanCode, %6 FROM %1 x "
                                                "JOIN %5 m ON m.Code = x.%2 ORDER BY x.EigCode, x.Dno, x.Eda")
                                     .arg(c.table, c.partner, c.cls, c.amount, c.master, c.sime));
        EXPECT_EQ(rows.size(), s.count(QStringLiteral("SELECT count(*) FROM %1").arg(c.table))) << c.table;
        ASSERT_GT(rows.size(), 100) << c.table;
        int slips = 0, withTwoRows = 0;
        for (qsizetype i = 0; i < rows.size(); ++i) {
            const QVariantList& r = rows[i];
            const bool firstRow = i == 0 || r[0] != rows[i - 1][0] || r[1] != rows[i - 1][1];
            if (firstRow) {
                ++slips;
                EXPECT_EQ(r[2].toInt(), 1) << c.table << " " << r[1].toInt();
            } else {
                ++withTwoRows;
                EXPECT_EQ(r[2].toInt(), rows[i - 1][2].toInt() + 1) << c.table << " " << r[1].toInt();
                for (int col : {3, 4, 5}) EXPECT_EQ(r[col], rows[i - 1][col]) << c.table << " " << r[1].toInt();
            }
            const QDate d = QDate::fromString(r[3].toString(), Qt::ISODate);
            EXPECT_TRUE(d >= first && d <= last && d.dayOfWeek() <= 5) << c.table << " " << qPrintable(r[3].toString());
            EXPECT_EQ(r[5].toString(), ClosingMonth(static_cast<short>(r[9].toInt()), d.year(), d.month(), d.day(), kYear, 4, 3))
                << c.table << " " << qPrintable(r[3].toString());
            EXPECT_TRUE(r[6].toInt() >= 1 && r[6].toInt() <= 6) << c.table;
            EXPECT_GT(r[7].toLongLong(), 0) << c.table;
            EXPECT_TRUE(r[8].toBool()) << c.table << " class and staff of the partner";
        }
        EXPECT_GT(withTwoRows, 0) << c.table;
        EXPECT_LT(slips, rows.size()) << c.table;
    }
    // A deposit of its own only for a destination billed on its own.
    EXPECT_EQ(s.count("SELECT count(*) FROM Dny d WHERE NouCode <> 0 AND NOT EXISTS "
                      "(SELECT 1 FROM Nou n WHERE n.TorCode = d.TorCode AND n.Code = d.NouCode AND n.SeiFlag = 2)"), 0);
}

TEST_F(DemoCashTest, LedgersHoldTheMoneyBeforeLedgerProcessing)
{
    const DemoStore& s = *fresh_;
    const char* columns[] = {"Genkin", "Kogite", "Furikomi", "Tegata", "Sousai", "Chousei"};
    for (const Side& side : kSides) {
        const QString match = sameKeys(side, "x", "d") + QStringLiteral(" AND x.Getudo = d.Getudo");
        for (int k = 1; k <= 6; ++k)
            EXPECT_EQ(s.count(QStringLiteral("SELECT count(*) FROM %1 d WHERE d.%2 <> coalesce((SELECT sum(x.%3) FROM %4 x "
                                             "WHERE %5 AND x.Kubun = ?), 0)")
                                  .arg(side.months, columns[k - 1], side.amount, side.slips, match),
                              {k}),
                      0)
                << side.slips << " kind " << k;
        EXPECT_EQ(s.count(QStringLiteral("SELECT count(*) FROM %1 x WHERE NOT EXISTS (SELECT 1 FROM %2 d WHERE %3)")
                              .arg(side.slips, side.months, match)),
                  0)
            << side.slips << ": money without its ledger month";
        // No sale or purchase has reached the ledgers yet; money alone moves the balances.
        EXPECT_EQ(s.count(QStringLiteral("SELECT count(*) FROM %1 WHERE KTotal <> 0 OR Zeigaku <> 0 OR "
                                         "NTotal <> Genkin + Kogite + Furikomi + Tegata + Sousai + Chousei").arg(side.months)),
                  0)
            << side.months;
        // Money dated behind the year's last closing waits on row 13, outside the balance.
        EXPECT_EQ(s.count(QStringLiteral("SELECT count(*) FROM %1 h WHERE Zan <> -(SELECT coalesce(sum(x.%2), 0) FROM %3 x "
                                         "WHERE %4 AND x.Getudo BETWEEN 1 AND 12)")
                              .arg(side.head, side.amount, side.slips, sameKeys(side, "x", "h"))),
                  0)
            << side.head;
        EXPECT_TRUE(identityBreaks(s, side).isEmpty()) << side.months;
    }
}

TEST_F(DemoCashTest, BalanceIdentityHoldsAfterLedgerProcessing)
{
    for (const Side& side : kSides) {
        const QStringList breaks = identityBreaks(*posted_, side);
        EXPECT_TRUE(breaks.isEmpty()) << side.months << ": " << qPrintable(breaks.mid(0, 10).join(", "));
        EXPECT_GT(posted_->count(QStringLiteral("SELECT count(*) FROM %1 WHERE KTotal <> 0").arg(side.months)), 0);
    }

    // The Osaka office's sales come in by rebuilding its ledgers; the balances then are what
    // its customers owe, the last closings still open.
    QTemporaryDir tmp;
    const QString dir = makeDemo(tmp, "rebuilt", kSlips, kSeed, kCustomers);
    runLedgerCommandIn(dir, {"batch"});
    runLedgerCommandIn(dir, {"rebuild", "--from", "4", "--to", "3", "--office", "2"});
    DemoStore rebuilt(dir, "CashRebuilt");
    for (const Side& side : kSides) {
        const QStringList breaks = identityBreaks(rebuilt, side);
        EXPECT_TRUE(breaks.isEmpty()) << side.months << ": " << qPrintable(breaks.mid(0, 10).join(", "));
    }
    const int osaka = rebuilt.count("SELECT count(*) FROM Tto WHERE EigCode = 2 AND NouCode = 0");
    EXPECT_GT(osaka, 0);
    EXPECT_GE(rebuilt.count("SELECT count(*) FROM Tto WHERE EigCode = 2 AND NouCode = 0 AND Zan > 0") * 4, osaka * 3);
}

TEST_F(DemoCashTest, PartnersPayWhatTheyWereBilled)
{
    const DemoStore& s = *posted_;
    // The month's bill of a ledger row: sales (purchases) with tax less cash sales; the cash
    // column also holds deposits in cash, which are put back.
    using Key = std::tuple<qint64, qint64, int>;   // partner, destination, office
    std::map<Key, std::map<int, qint64>> bills;
    for (const QVariantList& r : s.rows("SELECT d.TorCode, d.NouCode, d.EigCode, d.Getudo, "
                                        "d.KTotal + d.Zeigaku - d.Genkin + (SELECT coalesce(sum(x.NGaku), 0) FROM Dny x "
                                        "WHERE x.TorCode = d.TorCode AND x.NouCode = d.NouCode AND x.EigCode = d.EigCode "
                                        "AND x.Getudo = d.Getudo AND x.Kubun = 1), coalesce(n.SeiFlag, 0) "
                                        "FROM TtoD d LEFT JOIN Nou n ON n.TorCode = d.TorCode AND n.Code = d.NouCode "
                                        "WHERE d.Getudo BETWEEN 1 AND 12 AND d.EigCode = 1")) {
        const qint64 tor = r[0].toLongLong(), nou = r[1].toLongLong();
        const int office = r[2].toInt(), g = r[3].toInt();
        const qint64 bill = r[4].toLongLong();
        bills[{tor, nou, office}][g] += bill;
        // The customer's own row adds up every destination; one billed on its own pays apart.
        if (r[5].toInt() == 2) bills[{tor, 0, office}][g] -= bill;
    }
    for (const QVariantList& r : s.rows("SELECT d.SirCode, d.EigCode, d.Getudo, d.KTotal + d.Zeigaku - d.Genkin + "
                                        "(SELECT coalesce(sum(x.sGaku), 0) FROM Dsh x WHERE x.SirCode = d.SirCode "
                                        "AND x.EigCode = d.EigCode AND x.Getudo = d.Getudo AND x.Kubun = 1) "
                                        "FROM TsiD d WHERE d.Getudo BETWEEN 1 AND 12"))
        bills[{-r[0].toLongLong(), 0, r[1].toInt()}][r[2].toInt()] = r[3].toLongLong();

    // Most slips pay one month's bill to the yen; the others pay part of one, two months
    // at once, or less the transfer fee.
    int slips = 0, exact = 0;
    for (const QVariantList& r : s.rows("SELECT TorCode, NouCode, EigCode, sum(NGaku) FROM Dny WHERE EigCode = 1 "
                                        "GROUP BY EigCode, Dno UNION ALL SELECT -SirCode, 0, EigCode, sum(sGaku) FROM Dsh "
                                        "GROUP BY EigCode, Dno")) {
        ++slips;
        const auto& months = bills[{r[0].toLongLong(), r[1].toLongLong(), r[2].toInt()}];
        for (const auto& [g, bill] : months)
            if (bill == r[3].toLongLong()) {
                ++exact;
                break;
            }
    }
    ASSERT_GT(slips, 200);
    EXPECT_GE(exact * 100, slips * 90) << exact << " of " << slips;

    // Deposits for most customers with sales on account before the year's last quarter.
    const int buyers = s.count("SELECT count(DISTINCT TorCode) FROM Dur h WHERE Kubun = 0 AND EXISTS (SELECT 1 FROM Dud d "
                               "WHERE d.Dno = h.Dno AND d.EigCode = h.EigCode AND d.Getudo BETWEEN 4 AND 12)");
    const int payers = s.count("SELECT count(DISTINCT TorCode) FROM Dny");
    EXPECT_GE(payers * 10, buyers * 9) << payers << " of " << buyers;

    // The last closing is paid next year by those who pay a month on or later: it is still
    // owed, less the credit of months of returns.
    const Rows heads = s.rows("SELECT h.TorCode, h.Zan FROM Tto h JOIN Tor t ON t.Code = h.TorCode WHERE h.EigCode = 1 "
                              "AND h.NouCode = 0 AND t.KTuki >= 2 AND t.Seikyu = 0");
    int open = 0, more = 0;
    for (const QVariantList& r : heads) {
        const auto& months = bills[{r[0].toLongLong(), 0, 1}];
        const qint64 last = months.count(3) ? months.at(3) : 0;
        if (last <= 0) continue;
        qint64 credit = 0;
        for (const auto& [g, bill] : months) credit += std::min<qint64>(bill, 0);
        ++open;
        EXPECT_GE(r[1].toLongLong(), last + credit) << r[0].toLongLong();
        more += r[1].toLongLong() > last;
    }
    EXPECT_GT(open, 10);
    EXPECT_GT(more, 0);   // a short or late payment, or a month before, stays too
}

TEST_F(DemoCashTest, AFailedSlipLeavesTheStoreAsItWas)
{
    QTemporaryDir tmp;
    const QString dir = makeDemo(tmp, "failing", 200, 3, 12);
    const QString master = dir + QStringLiteral("/MASTER.db"), slip = dir + QStringLiteral("/%1/SLIP.db").arg(kYear);
    auto state = [&] {
        DemoStore st(dir, "CashFailing");
        QString s;
        for (const char* t : {"Dny", "Dsh", "Tto", "TtoD", "Tsi", "TsiD", "Eig"}) s += st.dump(t);
        return s;
    };
    const QString before = state();
    DemoCashSlip good{true, QDate(kYear, 6, 10), 1, 1001, 0, 1, 1, {{3, QStringLiteral("5月分"), 10000}}};
    DemoCashSlip outside = good;
    outside.date = QDate(kYear + 1, 4, 10);   // past the year's end
    DemoCashCounts counts;
    QString error;
    EXPECT_FALSE(writeDemoCash(master, slip, kYear, 4, {good, outside}, counts, &error));
    EXPECT_EQ(error, QStringLiteral("対象年度の範囲内ではありません。"));
    EXPECT_EQ(state(), before);

    EXPECT_TRUE(writeDemoCash(master, slip, kYear, 4, {good}, counts, &error)) << qPrintable(error);
    EXPECT_NE(state(), before);
}
