#include <gtest/gtest.h>
#include <map>
#include <tuple>
#include <QCryptographicHash>
#include <QDirIterator>
#include <QSqlDatabase>
#include <QSqlRecord>
#include <QTemporaryDir>
#include "entry/Dates.h"
#include "slips/SlipTax.h"
#include "store/NewCompany.h"
#include "store/Sql.h"
#include "demo/DemoCompany.h"
#include "demo/DemoMasters.h"
#include "DemoFixture.h"

namespace {

using namespace demotest;

// File names, sizes, times and contents under a folder.
QString snapshot(const QString& dir)
{
    QStringList out;
    QDirIterator it(dir, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QFileInfo f(it.next());
        QString line = f.filePath() + QLatin1Char(' ') + QString::number(f.size()) + QLatin1Char(' ')
                       + f.lastModified().toString(Qt::ISODateWithMs);
        QFile file(f.filePath());
        if (f.isFile() && file.open(QIODevice::ReadOnly))
            line += QLatin1Char(' ') + QString::fromLatin1(QCryptographicHash::hash(file.readAll(), QCryptographicHash::Md5).toHex());
        out << line;
    }
    out.sort();
    return out.join(QLatin1Char('\n'));
}

class DemoCompanyTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        tmp_ = new QTemporaryDir;
        store_ = new DemoStore(makeDemo(*tmp_, QStringLiteral("demo"), 300, 7), QStringLiteral("DemoTest"));
    }
    static void TearDownTestSuite()
    {
        delete store_;
        delete tmp_;
    }
    static QTemporaryDir* tmp_;
    static DemoStore* store_;
    const DemoStore& s() const { return *store_; }
    int count(const QString& sql) const { return s().count(sql); }
};
QTemporaryDir* DemoCompanyTest::tmp_ = nullptr;
DemoStore* DemoCompanyTest::store_ = nullptr;

} // namespace

TEST_F(DemoCompanyTest, SameSeedGivesTheSameCompany)
{
    ASSERT_TRUE(s().ok());
    QTemporaryDir tmp;
    DemoStore same(makeDemo(tmp, "same", 300, 7), "DemoSame");
    DemoStore other(makeDemo(tmp, "other", 300, 8), "DemoOther");
    for (const char* t : {"Dur", "Dud", "Dsr", "Dsd", "Dny", "Dsh", "Tto", "TtoD", "Tsi", "TsiD", "Tor", "Nou", "Sir", "Hin",
                          "Tka", "Nka", "Ska", "Eig"}) {
        const QString mine = s().dump(t);
        EXPECT_GT(mine.size(), 0) << t;
        EXPECT_EQ(same.dump(t), mine) << t;
        EXPECT_NE(other.dump(t), mine) << t;
    }
}

TEST_F(DemoCompanyTest, GetudoIsTheClosingMonthWithThePartnersClosingDay)
{
    // Sales take the customer's day; purchases the supplier's own day whatever its flag says,
    // as the slip screen does.
    struct Case { const char* kind; const char* sql; } cases[] = {
        {"Dud", "SELECT d.Hizuke, d.Getudo, t.Sime, 2 FROM Dud d JOIN Tor t ON t.Code = d.TorCode"},
        {"Dsd", "SELECT d.Hizuke, d.Getudo, t.Sime, t.SimeFlag FROM Dsd d JOIN Sir t ON t.Code = d.SirCode"},
    };
    int thirteen = 0, flagOneDiffers = 0;
    for (const Case& c : cases) {
        const Rows rows = s().rows(c.sql);
        EXPECT_EQ(rows.size(), count(QStringLiteral("SELECT count(*) FROM %1").arg(c.kind))) << c.kind;
        for (const QVariantList& r : rows) {
            const QDate d = QDate::fromString(r[0].toString(), Qt::ISODate);
            const short sime = static_cast<short>(r[2].toInt());
            const QString expected = ClosingMonth(sime, d.year(), d.month(), d.day(), kYear, 4, 3);
            ASSERT_EQ(r[1].toString(), expected) << c.kind << " " << qPrintable(r[0].toString()) << " sime " << sime;
            if (r[1].toInt() == 13) ++thirteen;
            if (r[3].toInt() == 1 && expected != ClosingMonth(31, d.year(), d.month(), d.day(), kYear, 4, 3))
                ++flagOneDiffers;
        }
    }
    EXPECT_GT(thirteen, 0);
    EXPECT_GT(flagOneDiffers, 0);   // the company's day would have given another month here
}

TEST_F(DemoCompanyTest, LineTaxIsRecomputedPerSlip)
{
    const TaxRates rates = demoTaxRates();
    std::map<int, int> modes;   // Zeituuchi -> slips, sales and purchases together
    for (const char* sql : {"SELECT d.EigCode, d.Dno, d.Hizuke, d.Suu, d.UTanka, d.UGaku, d.ZeiFlag, d.ZeiGaku, "
                            "t.Zeituuchi, t.HsuType, t.Hsu FROM Dud d JOIN Tor t ON t.Code = d.TorCode ORDER BY d.EigCode, d.Dno, d.Eda",
                            "SELECT d.EigCode, d.Dno, d.Hizuke, d.Suu, d.UTanka, d.UGaku, d.ZeiFlag, d.ZeiGaku, "
                            "t.Zeituuchi, t.HsuType, t.Hsu FROM Dsd d JOIN Sir t ON t.Code = d.SirCode ORDER BY d.EigCode, d.Dno, d.Eda"}) {
        const Rows rows = s().rows(sql);
        ASSERT_FALSE(rows.isEmpty()) << sql;
        for (qsizetype i = 0; i < rows.size();) {
            qsizetype j = i;
            while (j < rows.size() && rows[j][0] == rows[i][0] && rows[j][1] == rows[i][1]) ++j;
            const QDate date = QDate::fromString(rows[i][2].toString(), Qt::ISODate);
            const short mode = static_cast<short>(rows[i][8].toInt());
            const short type = static_cast<short>(rows[i][9].toInt()), hsu = static_cast<short>(rows[i][10].toInt());
            ++modes[mode];
            QList<SlipLineTax> lines;
            for (qsizetype k = i; k < j; ++k) {
                SlipLineTax l;
                l.ZeiFlag = static_cast<short>(rows[k][6].toInt());
                l.Gaku = lineAmount(rows[k][3].toDouble(), Money::fromStore(rows[k][4]));
                calcLineTax(rates, l, date, type, hsu);
                lines << l;
            }
            calcSlipTax(rates, std::span<SlipLineTax>(lines.data(), lines.size()), mode, date, type, hsu);
            for (qsizetype k = i; k < j; ++k) {
                EXPECT_EQ(Money::fromStore(rows[k][7]), lines[k - i].Zei) << "slip " << rows[k][1].toInt() << " mode " << mode;
                EXPECT_EQ(Money::fromStore(rows[k][5]), lines[k - i].Net) << "slip " << rows[k][1].toInt();
            }
            i = j;
        }
    }
    for (int m = 1; m <= 4; ++m) EXPECT_GT(modes[m], 0) << "Zeituuchi " << m;
}

TEST_F(DemoCompanyTest, HeadsAndLinesAgree)
{
    for (const auto& [head, line, partner] : {std::tuple{"Dur", "Dud", "TorCode"}, std::tuple{"Dsr", "Dsd", "SirCode"}}) {
        const QString h = QString::fromLatin1(head), l = QString::fromLatin1(line), p = QString::fromLatin1(partner);
        EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM %2 d LEFT JOIN %1 h ON h.Dno = d.Dno AND h.EigCode = d.EigCode "
                                       "WHERE h.Dno IS NULL OR h.Hizuke <> d.Hizuke OR h.%3 <> d.%3").arg(h, l, p)), 0) << head;
        // Every slip has lines numbered from 1 without a gap, all in one month.
        EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM %1 h LEFT JOIN (SELECT Dno, EigCode, count(*) n, min(Eda) lo, "
                                       "max(Eda) hi, count(DISTINCT Getudo) g FROM %2 GROUP BY Dno, EigCode) x "
                                       "ON x.Dno = h.Dno AND x.EigCode = h.EigCode "
                                       "WHERE x.n IS NULL OR x.lo <> 1 OR x.hi <> x.n OR x.g <> 1").arg(h, l)), 0) << head;
    }
    EXPECT_EQ(count("SELECT count(*) FROM Dur") + count("SELECT count(*) FROM Dsr"), 300);
}

TEST_F(DemoCompanyTest, OfficeCountersFollowTheHighestNumber)
{
    const Rows offices = s().rows("SELECT Code FROM Eig ORDER BY Code");
    ASSERT_GE(offices.size(), 2);
    for (const auto& [counter, table] : {std::pair{"DurNo", "Dur"}, {"DsrNo", "Dsr"}, {"DnyNo", "Dny"}, {"DshNo", "Dsh"}})
        for (const QVariantList& o : offices) {
            const int code = o[0].toInt();
            EXPECT_GT(s().count(QStringLiteral("SELECT count(*) FROM %1 WHERE EigCode = ?").arg(table), {code}), 0)
                << table << " " << code;
            EXPECT_EQ(s().count(QStringLiteral("SELECT %1 FROM Eig WHERE Code = ?").arg(counter), {code}),
                      s().count(QStringLiteral("SELECT coalesce(max(Dno), 0) + 1 FROM %1 WHERE EigCode = ?").arg(table), {code}))
                << counter << " " << code;
        }
}

TEST_F(DemoCompanyTest, ASaleOfACustomerWithDestinationsNamesOneOfThem)
{
    // The slip screen refuses such a slip without its destination.
    EXPECT_EQ(count("SELECT count(*) FROM Dur WHERE NouCode = 0 AND TorCode IN (SELECT TorCode FROM Nou)"), 0);
    EXPECT_EQ(count("SELECT count(*) FROM Dur d WHERE NouCode <> 0 AND NOT EXISTS "
                    "(SELECT 1 FROM Nou n WHERE n.TorCode = d.TorCode AND n.Code = d.NouCode)"), 0);
    EXPECT_GT(count("SELECT count(*) FROM Dur WHERE NouCode <> 0"), 0);
    EXPECT_GT(count("SELECT count(*) FROM Dur WHERE NouCode = 0"), 0);
}

TEST_F(DemoCompanyTest, APartnerDealsWithOneOffice)
{
    // Ledger processing sets a partner's balance from the months of the office that runs it,
    // so a partner in two offices would carry the other office's balance.
    for (const char* sql : {"SELECT TorCode AS p, EigCode FROM Dur UNION SELECT TorCode, EigCode FROM Dny",
                            "SELECT SirCode AS p, EigCode FROM Dsr UNION SELECT SirCode, EigCode FROM Dsh"})
        EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM (SELECT p FROM (%1) GROUP BY p HAVING count(*) > 1)").arg(sql)), 0)
            << sql;
    // The Osaka office sells on account only: its cash would be booked in the head office.
    EXPECT_EQ(count("SELECT count(*) FROM Dur WHERE EigCode <> 1 AND Kubun = 1"), 0);
}

TEST_F(DemoCompanyTest, ReadingsAreHalfWidthKatakana)
{
    for (const char* col : {"Tor.Kana", "Sir.Kana", "Sir.BKana", "Nou.Kana", "Hin.Kana", "Tbn.Kana", "Sbn.Kana",
                            "Hbn.Kana", "Cku.Kana", "Chi.Kana", "Tan.Kana"}) {
        const QString c = QString::fromLatin1(col);
        const Rows rows = s().rows(QStringLiteral("SELECT %1 FROM %2").arg(c.section('.', 1), c.section('.', 0, 0)));
        ASSERT_FALSE(rows.isEmpty()) << col;
        for (const QVariantList& r : rows) {
            const QString k = r[0].toString();
            EXPECT_FALSE(k.trimmed().isEmpty()) << col;
            for (QChar ch : k)
                ASSERT_TRUE(ch.unicode() >= 0xFF61 && ch.unicode() <= 0xFF9F) << col << " " << qPrintable(k);
        }
    }
}

TEST(DemoCompany, RefusesAFolderThatHoldsAStore)
{
    QTemporaryDir tmp;
    const QString demo = makeDemo(tmp, "demo", 20, 1);
    NewCompanyOptions n;
    n.year = kYear;
    const QString plain = tmp.filePath("plain");
    ASSERT_TRUE(createCompany(plain, n, nullptr));
    for (const QString& dir : {demo, plain}) {
        const QString before = snapshot(dir);
        DemoOptions o;
        o.year = kYear + 1;
        QString err;
        EXPECT_FALSE(createDemoCompany(dir, o, &err));
        EXPECT_TRUE(err.contains("すでに")) << qPrintable(err);
        EXPECT_EQ(snapshot(dir), before);
    }
}
