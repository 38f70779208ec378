#include <gtest/gtest.h>
#include <map>
#include <tuple>
#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlRecord>
#include <QSqlDatabase>
#include <QTemporaryDir>
#include "entry/Convert.h"
#include "entry/Dates.h"
#include "slips/SlipTax.h"
#include "store/NewCompany.h"
#include "store/Schema.h"
#include "store/Sql.h"
#include "store/demo/DemoCompany.h"
#include "store/demo/DemoMasters.h"

namespace {

const int kYear = 2026;

using Rows = QList<QVariantList>;

// One connection on a demo company: the master file with the year's slips attached.
class DemoStore {
public:
    explicit DemoStore(const QString& dir, int year = kYear, const QString& name = QStringLiteral("DemoTest"))
        : name_(name)
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
        db.setDatabaseName(dir + QStringLiteral("/MASTER.db"));
        ok_ = db.open()
              && execSql(db, QStringLiteral("ATTACH DATABASE ? AS slip"),
                         {dir + QStringLiteral("/%1/SLIP.db").arg(year)}) == ErrorClass::None;
    }
    ~DemoStore()
    {
        { QSqlDatabase::database(name_).close(); }
        QSqlDatabase::removeDatabase(name_);
    }
    bool ok() const { return ok_; }
    QSqlDatabase db() const { return QSqlDatabase::database(name_); }
    QVariant one(const QString& sql) const { return scalar(db(), sql); }
    Rows rows(const QString& sql) const
    {
        Rows out;
        Query q(db(), sql);
        EXPECT_TRUE(q.ok()) << qPrintable(sql) << " " << qPrintable(q.error().text());
        while (q.next()) {
            QVariantList r;
            for (int i = 0; i < q.raw().record().count(); ++i) r << q.value(i);
            out << r;
        }
        return out;
    }
    // Every row of a table in its stored order, as one text.
    QString dump(const QString& table) const
    {
        QString s;
        for (const QVariantList& r : rows(QStringLiteral("SELECT * FROM %1 ORDER BY rowid").arg(table))) {
            for (const QVariant& v : r) s += v.toString() + QLatin1Char('|');
            s += QLatin1Char('\n');
        }
        return s;
    }
private:
    QString name_;
    bool ok_ = false;
};

QString makeDemo(const QTemporaryDir& tmp, const QString& sub, int slips, uint64_t seed, int year = kYear)
{
    const QString dir = tmp.filePath(sub);
    DemoOptions o;
    o.slips = slips;
    o.seed = seed;
    o.year = year;
    QString err;
    EXPECT_TRUE(createDemoCompany(dir, o, &err)) << qPrintable(err);
    return dir;
}

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
        dir_ = makeDemo(*tmp_, QStringLiteral("demo"), 300, 7);
        store_ = new DemoStore(dir_);
    }
    static void TearDownTestSuite()
    {
        delete store_;
        delete tmp_;
    }
    static QTemporaryDir* tmp_;
    static QString dir_;
    static DemoStore* store_;
    const DemoStore& s() const { return *store_; }
    int count(const QString& sql) const { return s().one(sql).toInt(); }
};
QTemporaryDir* DemoCompanyTest::tmp_ = nullptr;
QString DemoCompanyTest::dir_;
DemoStore* DemoCompanyTest::store_ = nullptr;

} // namespace

TEST_F(DemoCompanyTest, SameSeedGivesTheSameCompany)
{
    ASSERT_TRUE(s().ok());
    QTemporaryDir tmp;
    DemoStore same(makeDemo(tmp, "same", 300, 7), kYear, "DemoSame");
    DemoStore other(makeDemo(tmp, "other", 300, 8), kYear, "DemoOther");
    for (const char* t : {"Dur", "Dud", "Dsr", "Dsd", "Tor", "Nou", "Hin", "Tka", "Nka", "Ska", "Eig"}) {
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
            EXPECT_GE(r[1].toInt(), 1);
            EXPECT_LE(r[1].toInt(), 13);
            if (r[1].toInt() == 13) {
                ++thirteen;
                EXPECT_EQ(d.month(), 3);
                EXPECT_GT(d.day(), sime);
            }
            if (r[3].toInt() == 1 && expected != ClosingMonth(31, d.year(), d.month(), d.day(), kYear, 4, 3))
                ++flagOneDiffers;
        }
    }
    EXPECT_GT(thirteen, 0);
    EXPECT_GT(flagOneDiffers, 0);   // the company's day would have given another month here
    EXPECT_EQ(count("SELECT count(*) FROM Dud WHERE Hizuke < '2026-04-01' OR Hizuke > '2027-03-31'"), 0);
    EXPECT_EQ(count("SELECT count(*) FROM Dsd WHERE Hizuke < '2026-04-01' OR Hizuke > '2027-03-31'"), 0);
}

TEST_F(DemoCompanyTest, LineAmountsAndTaxAreThoseOfTheSlipScreen)
{
    const TaxRates rates = demoTaxRates();
    struct Case { const char* kind; const char* sql; } cases[] = {
        {"sales", "SELECT d.EigCode, d.Dno, d.Hizuke, d.Suu, d.UTanka, d.UGaku, d.STanka, d.sGaku, d.ZeiFlag, d.ZeiGaku, "
                  "t.Zeituuchi, t.HsuType, t.Hsu FROM Dud d JOIN Tor t ON t.Code = d.TorCode ORDER BY d.EigCode, d.Dno, d.Eda"},
        {"purchases", "SELECT d.EigCode, d.Dno, d.Hizuke, d.Suu, d.UTanka, d.UGaku, d.STanka, d.sGaku, d.ZeiFlag, d.ZeiGaku, "
                      "t.Zeituuchi, t.HsuType, t.Hsu FROM Dsd d JOIN Sir t ON t.Code = d.SirCode ORDER BY d.EigCode, d.Dno, d.Eda"},
    };
    std::map<int, int> modes;   // Zeituuchi -> slips
    int insideTaxKept = 0;
    for (const Case& c : cases) {
        const Rows rows = s().rows(c.sql);
        ASSERT_FALSE(rows.isEmpty()) << c.kind;
        for (qsizetype i = 0; i < rows.size();) {
            qsizetype j = i;
            while (j < rows.size() && rows[j][0] == rows[i][0] && rows[j][1] == rows[i][1]) ++j;
            const QDate date = QDate::fromString(rows[i][2].toString(), Qt::ISODate);
            const short mode = static_cast<short>(rows[i][10].toInt());
            const short type = static_cast<short>(rows[i][11].toInt()), hsu = static_cast<short>(rows[i][12].toInt());
            ++modes[mode];
            QList<SlipLineTax> lines;
            for (qsizetype k = i; k < j; ++k) {
                const QVariantList& r = rows[k];
                SlipLineTax l;
                l.ZeiFlag = static_cast<short>(r[8].toInt());
                l.Gaku = lineAmount(r[3].toDouble(), Money::fromStore(r[4]));
                l.sGaku = lineAmount(r[3].toDouble(), Money::fromStore(r[6]));
                EXPECT_EQ(Money::fromStore(r[7]), l.sGaku) << c.kind;
                // What the clerk typed: net plus tax on an inside-tax line, the net otherwise.
                const Money typed = Money::fromStore(r[5]) + (l.ZeiFlag == 2 ? Money::fromStore(r[9]) : Money());
                EXPECT_EQ(typed, l.Gaku) << c.kind << " slip " << r[1].toInt();
                calcLineTax(rates, l, date, type, hsu);
                lines << l;
            }
            calcSlipTax(rates, std::span<SlipLineTax>(lines.data(), lines.size()), mode, date, type, hsu);
            bool firstOutside = true;
            for (qsizetype k = i; k < j; ++k) {
                const QVariantList& r = rows[k];
                const SlipLineTax& l = lines[k - i];
                EXPECT_EQ(Money::fromStore(r[9]), l.Zei) << c.kind << " slip " << r[1].toInt() << " mode " << mode;
                EXPECT_EQ(Money::fromStore(r[5]), l.Net) << c.kind << " slip " << r[1].toInt();
                // The rules by themselves, apart from the routines.
                const Money tax = Money::fromStore(r[9]);
                if (l.ZeiFlag == 3) {
                    EXPECT_EQ(tax, Money());
                }
                if (l.ZeiFlag == 1 && (mode == 1 || mode == 4 || (mode == 2 && !firstOutside))) {
                    EXPECT_EQ(tax, Money());
                }
                if (l.ZeiFlag == 1 && mode == 3) {
                    EXPECT_EQ(tax, CalcTax(rates, true, l.Gaku, type, hsu));
                }
                if (l.ZeiFlag == 1) firstOutside = false;
                if (l.ZeiFlag == 2 && (mode == 1 || mode == 4) && tax != Money()) ++insideTaxKept;
            }
            i = j;
        }
    }
    for (int m = 1; m <= 4; ++m) EXPECT_GT(modes[m], 0) << "Zeituuchi " << m;
    EXPECT_GT(insideTaxKept, 0);
    for (const char* t : {"Dud", "Dsd"})
        EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM %1 WHERE typeof(UTanka) <> 'integer' OR typeof(UGaku) <> 'integer' "
                                       "OR typeof(ZeiGaku) <> 'integer' OR typeof(sGaku) <> 'integer'").arg(t)), 0) << t;
}

TEST_F(DemoCompanyTest, PricesFollowTheirPrecedence)
{
    // A destination looks in Nka only, a customer in Tka, a supplier in Ska; then the product.
    EXPECT_EQ(count("SELECT count(*) FROM Dud d JOIN Dur h ON h.Dno = d.Dno AND h.EigCode = d.EigCode "
                    "JOIN Hin ON Hin.Code = d.HinCode "
                    "LEFT JOIN Tka ON h.NouCode = 0 AND Tka.TorCode = d.TorCode AND Tka.HinCode = d.HinCode "
                    "LEFT JOIN Nka ON h.NouCode <> 0 AND Nka.TorCode = d.TorCode AND Nka.NouCode = h.NouCode AND Nka.HinCode = d.HinCode "
                    "WHERE d.Kubun <> 2 AND (d.UTanka <> COALESCE(Nka.Tanka, Tka.Tanka, Hin.UTanka) OR d.STanka <> Hin.STanka)"),
              0);
    EXPECT_EQ(count("SELECT count(*) FROM Dsd d JOIN Hin ON Hin.Code = d.HinCode "
                    "LEFT JOIN Ska ON Ska.SirCode = d.SirCode AND Ska.HinCode = d.HinCode "
                    "WHERE d.Kubun <> 2 AND (d.UTanka <> COALESCE(Ska.Tanka, Hin.STanka) OR d.STanka <> Hin.UTanka)"),
              0);
    // Each source is used.
    EXPECT_GT(count("SELECT count(*) FROM Dud d JOIN Dur h ON h.Dno = d.Dno AND h.EigCode = d.EigCode "
                    "JOIN Nka ON Nka.TorCode = d.TorCode AND Nka.NouCode = h.NouCode AND Nka.HinCode = d.HinCode"), 0);
    EXPECT_GT(count("SELECT count(*) FROM Dud d JOIN Dur h ON h.Dno = d.Dno AND h.EigCode = d.EigCode AND h.NouCode = 0 "
                    "JOIN Tka ON Tka.TorCode = d.TorCode AND Tka.HinCode = d.HinCode"), 0);
    EXPECT_GT(count("SELECT count(*) FROM Dsd d JOIN Ska ON Ska.SirCode = d.SirCode AND Ska.HinCode = d.HinCode"), 0);
    // Returns have a negative quantity, discounts a negative price and no cost.
    EXPECT_EQ(count("SELECT count(*) FROM Dud WHERE (Kubun = 1 AND Suu >= 0) OR (Kubun = 2 AND (UTanka >= 0 OR sGaku <> 0)) "
                    "OR (Kubun = 0 AND (Suu <= 0 OR UTanka <= 0))"), 0);
    EXPECT_GT(count("SELECT count(*) FROM Dud WHERE Kubun = 1"), 0);
    EXPECT_GT(count("SELECT count(*) FROM Dud WHERE Kubun = 2"), 0);
    EXPECT_GT(count("SELECT count(*) FROM Dsd WHERE Kubun = 1"), 0);
}

TEST_F(DemoCompanyTest, HeadsAndLinesAgree)
{
    for (const auto& [head, line, partner] : {std::tuple{"Dur", "Dud", "TorCode"}, std::tuple{"Dsr", "Dsd", "SirCode"}}) {
        const QString h = QString::fromLatin1(head), l = QString::fromLatin1(line), p = QString::fromLatin1(partner);
        EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM %2 d LEFT JOIN %1 h ON h.Dno = d.Dno AND h.EigCode = d.EigCode "
                                       "WHERE h.Dno IS NULL OR h.Hizuke <> d.Hizuke OR h.%3 <> d.%3").arg(h, l, p)), 0) << head;
        // Every slip has lines numbered from 1 without a gap, at most six.
        EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM %1 h LEFT JOIN (SELECT Dno, EigCode, count(*) n, min(Eda) lo, "
                                       "max(Eda) hi, count(DISTINCT Getudo) g FROM %2 GROUP BY Dno, EigCode) x "
                                       "ON x.Dno = h.Dno AND x.EigCode = h.EigCode "
                                       "WHERE x.n IS NULL OR x.lo <> 1 OR x.hi <> x.n OR x.n > 6 OR x.g <> 1").arg(h, l)), 0) << head;
        EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM %1 WHERE ThiFlag <> -1 OR Dno <= 0").arg(l)), 0) << line;
        EXPECT_GT(count(QStringLiteral("SELECT count(*) FROM %1 WHERE Kubun = 1").arg(h)), 0) << "cash " << head;
    }
    EXPECT_EQ(count("SELECT count(*) FROM Dur") + count("SELECT count(*) FROM Dsr"), 300);
    const double perSlip = s().one("SELECT (SELECT count(*) FROM Dud) + (SELECT count(*) FROM Dsd)").toDouble() / 300;
    EXPECT_GT(perSlip, 4.3);
    EXPECT_LT(perSlip, 5.5);
    // Sales to destinations bill the customer's billing customer.
    EXPECT_EQ(count("SELECT count(*) FROM Dur h JOIN Tor t ON t.Code = h.TorCode "
                    "WHERE h.TorCodeSei <> CASE t.Seikyu WHEN 0 THEN t.Code ELSE t.Seikyu END"), 0);
    EXPECT_EQ(count("SELECT count(*) FROM Dur h LEFT JOIN Nou n ON n.TorCode = h.TorCode AND n.Code = h.NouCode "
                    "WHERE h.NouCode <> 0 AND n.Code IS NULL"), 0);
    EXPECT_GT(count("SELECT count(*) FROM Dur WHERE NouCode <> 0"), 0);
    EXPECT_GT(count("SELECT count(*) FROM Dur WHERE TorCodeSei <> TorCode"), 0);
}

TEST_F(DemoCompanyTest, SlipFileKeepsEveryIndexOfTheTemplate)
{
    // The slip tables are filled without their indexes, which are made again at the end.
    int indexes = 0;
    for (const TableDef& t : storeTables()) {
        if (t.file != StoreFile::Slip) continue;
        for (const QString& st : createStatements(t)) {
            if (!st.startsWith("CREATE INDEX")) continue;
            ++indexes;
            EXPECT_EQ(scalar(s().db(), "SELECT count(*) FROM slip.sqlite_master WHERE type = 'index' AND name = ?",
                             {st.section(' ', 2, 2)}).toInt(), 1) << qPrintable(st);
        }
    }
    EXPECT_GT(indexes, 10);
}

TEST_F(DemoCompanyTest, OfficeCountersFollowTheHighestNumber)
{
    const Rows offices = s().rows("SELECT Code, DurNo, DsrNo FROM Eig ORDER BY Code");
    ASSERT_GE(offices.size(), 1);
    EXPECT_EQ(offices[0][0].toInt(), 1);
    auto of = [&](const char* sql, const QVariant& office) { return scalar(s().db(), sql, {office}).toInt(); };
    for (const QVariantList& o : offices) {
        const int code = o[0].toInt();
        EXPECT_EQ(o[1].toInt(), of("SELECT coalesce(max(Dno), 0) + 1 FROM Dur WHERE EigCode = ?", code)) << "office " << code;
        EXPECT_EQ(o[2].toInt(), of("SELECT coalesce(max(Dno), 0) + 1 FROM Dsr WHERE EigCode = ?", code)) << "office " << code;
        // Numbers run from 1 without a gap.
        EXPECT_EQ(o[1].toInt() - 1, of("SELECT count(*) FROM Dur WHERE EigCode = ?", code)) << "office " << code;
        EXPECT_EQ(o[2].toInt() - 1, of("SELECT count(*) FROM Dsr WHERE EigCode = ?", code)) << "office " << code;
    }
    EXPECT_GE(offices.size(), 2);
    EXPECT_GT(of("SELECT count(*) FROM Dur WHERE EigCode = ?", 2), 0);
    EXPECT_EQ(count("SELECT count(*) FROM Dur WHERE EigCode NOT IN (SELECT Code FROM Eig)"), 0);
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

TEST_F(DemoCompanyTest, TextsFitTheirWidthsAndAreNeverEmpty)
{
    for (const TableDef& t : storeTables()) {
        if (t.name == QLatin1String("zSysFunc")) continue;   // the template's own rows (an empty password)
        for (const ColumnDef& c : t.columns) {
            if (c.type != 'T') continue;
            for (const QVariantList& r : s().rows(QStringLiteral("SELECT %1 FROM %2 WHERE %1 IS NOT NULL").arg(c.name, t.name))) {
                const QString v = r[0].toString();
                ASSERT_FALSE(v.isEmpty()) << qPrintable(t.name + "." + c.name);
                ASSERT_LE(SjisLength(v), c.width) << qPrintable(t.name + "." + c.name + " " + v);
            }
        }
    }
}

TEST_F(DemoCompanyTest, MastersHoldEveryKindOfPartnerAndProduct)
{
    EXPECT_EQ(count("SELECT count(*) FROM Tor"), 100);
    EXPECT_EQ(count("SELECT count(*) FROM Sir"), 30);
    EXPECT_EQ(count("SELECT count(*) FROM Hin"), 500);
    EXPECT_EQ(s().one("SELECT group_concat(Sime) FROM (SELECT DISTINCT Sime FROM Tor ORDER BY Sime)").toString(), "20,25,31");
    EXPECT_EQ(count("SELECT count(DISTINCT Zeituuchi) FROM Tor WHERE Zeituuchi BETWEEN 1 AND 4"), 4);
    EXPECT_GT(count("SELECT count(*) FROM Tor WHERE Zeituuchi = 1"), 50);
    EXPECT_EQ(count("SELECT count(*) FROM (SELECT DISTINCT HsuType, Hsu FROM Tor WHERE HsuType BETWEEN 1 AND 4 AND Hsu BETWEEN 1 AND 3)"), 12);
    // A customer billed elsewhere is billed by one that bills itself and closes on the same day.
    EXPECT_GT(count("SELECT count(*) FROM Tor WHERE Seikyu <> 0"), 0);
    EXPECT_EQ(count("SELECT count(*) FROM Tor c LEFT JOIN Tor p ON p.Code = c.Seikyu "
                    "WHERE c.Seikyu <> 0 AND (p.Code IS NULL OR p.Seikyu <> 0 OR p.Sime <> c.Sime)"), 0);
    EXPECT_EQ(count("SELECT count(*) FROM (SELECT TorCode FROM Nou GROUP BY TorCode HAVING min(Code) <> 1 OR max(Code) <> count(*))"), 0);
    EXPECT_EQ(count("SELECT count(DISTINCT SeiFlag) FROM Nou WHERE SeiFlag IN (1, 2)"), 2);
    EXPECT_EQ(count("SELECT count(DISTINCT SimeFlag) FROM Sir WHERE SimeFlag IN (1, 2)"), 2);
    EXPECT_EQ(count("SELECT count(DISTINCT ZeiFlag) FROM Hin WHERE ZeiFlag IN (1, 2, 3)"), 3);
    EXPECT_EQ(count("SELECT count(*) FROM Hin WHERE NOT (UTanka > STanka AND STanka > 0)"), 0);
    // Codes are in stored form; a few hold letters and stay as typed.
    int letters = 0;
    for (const QVariantList& r : s().rows("SELECT Code FROM Hin")) {
        QString code = r[0].toString();
        const QString stored = code;
        EXPECT_EQ(ZeroPad13(code), stored);
        if (stored.contains(QRegularExpression("[A-Z]"))) ++letters;
        else EXPECT_EQ(stored.size(), 13);
    }
    EXPECT_GT(letters, 0);
    EXPECT_LT(letters, 20);
    for (const char* price : {"Tka", "Nka", "Ska"}) {
        EXPECT_GT(count(QStringLiteral("SELECT count(*) FROM %1").arg(price)), 0) << price;
        EXPECT_EQ(count(QStringLiteral("SELECT count(*) FROM %1 p LEFT JOIN Hin ON Hin.Code = p.HinCode "
                                       "WHERE Hin.Code IS NULL OR p.Tanka <= 0").arg(price)), 0) << price;
    }
    EXPECT_GT(count("SELECT count(*) FROM Zip WHERE Code < 1000"), 0);
    EXPECT_GT(count("SELECT count(*) FROM Zip WHERE Code BETWEEN 10000 AND 99999"), 0);
    EXPECT_GT(count("SELECT count(*) FROM (SELECT Code FROM Zip7 GROUP BY Code HAVING count(*) > 1)"), 0);
    // The first start finds the tax rows and leaves them.
    EXPECT_EQ(s().one("SELECT contents FROM UserOP WHERE Code = 725").toString(), "20190930");
    EXPECT_EQ(s().one("SELECT contents FROM UserOP WHERE Code = 726").toString(), "10");
    EXPECT_EQ(s().one("SELECT Zeiritu FROM Com").toLongLong(), 80000);
    EXPECT_EQ(s().one("SELECT SKai || EKai || sTuki FROM Com").toString(), "20260401202703314");
    EXPECT_EQ(count("SELECT count(*) FROM Com"), 1);
    EXPECT_GT(count("SELECT count(*) FROM zSysFunc WHERE Code > 20000"), 0);   // made as a new company is
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

TEST(DemoCompany, BadOptionsLeaveNothingBehind)
{
    QTemporaryDir tmp;
    struct Case { int slips; int year; } cases[] = {{-1, kYear}, {10, 99999}};
    for (const Case& c : cases) {
        DemoOptions o;
        o.slips = c.slips;
        o.year = c.year;
        QString err;
        EXPECT_FALSE(createDemoCompany(tmp.filePath("bad"), o, &err)) << c.slips;
        EXPECT_FALSE(err.isEmpty());
        EXPECT_FALSE(QFileInfo::exists(tmp.filePath("bad"))) << c.slips;
    }
}

TEST(DemoCompany, NoSlipsStillGivesTheMastersOfTheCurrentYear)
{
    QTemporaryDir tmp;
    const int year = fiscalYearOf(QDate::currentDate(), 4);
    const QString dir = makeDemo(tmp, "empty", 0, 3, 0);
    DemoStore st(dir, year, "DemoEmpty");
    ASSERT_TRUE(st.ok());
    EXPECT_EQ(st.one("SELECT SKai FROM Com").toString(), QString::number(year) + "0401");
    EXPECT_EQ(st.one("SELECT count(*) FROM Dur").toInt() + st.one("SELECT count(*) FROM Dsd").toInt(), 0);
    EXPECT_EQ(st.one("SELECT count(*) FROM Tor").toInt(), 100);
    EXPECT_EQ(st.one("SELECT DurNo || DsrNo FROM Eig WHERE Code = 1").toString(), "11");
}
