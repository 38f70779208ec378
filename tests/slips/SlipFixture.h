#pragma once
// A company with customers, a supplier, products and prices for the slip tests.
// Customer 1 has destination 5 and customer prices; 2 is taxed per delivery slip, 3 per
// invoice, 4 exempt; supplier 1 has its own prices. Tax is 5 percent, cut off to the yen.
#include <gtest/gtest.h>
#include "shell/Session.h"
#include "slips/SlipEditor.h"
#include "store/Sql.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

inline void slipRun(const QString& sql, const QVariantList& b = {})
{
    ASSERT_EQ(execSql(session().MasterDb, sql, b), ErrorClass::None) << qPrintable(sql);
}
inline QVariant slipOne(const QString& sql, const QVariantList& b = {}) { return scalar(session().MasterDb, sql, b); }
inline qint64 yen(qint64 y) { return y * 10000; }

class SlipTest : public ::testing::Test {
protected:
    TempCompany co{2026};
    ScriptedDialogs dlg;

    void SetUp() override
    {
        ASSERT_TRUE(co.open());
        Session& s = session();
        s.EigCode = 1;
        s.Zeiritu = Money::fromYen(5);
        s.TaxRateNew = Money::fromYen(10);
        s.TaxChangeDate = QDate(2099, 12, 31);
        s.SlipDate = QDate(2026, 5, 15);
        slipRun("INSERT INTO Tbn (Code, Namae) VALUES (1, '一般'), (2, '特約')");
        slipRun("INSERT INTO Sbn (Code, Namae) VALUES (1, '問屋')");
        slipRun("INSERT INTO Tan (Code, Namae) VALUES (1, '山田'), (2, '佐藤')");
        const char* tor = "INSERT INTO Tor (Code, TbnCode, Kana, Namae, Tenmei, Zeituuchi, HsuType, Hsu, Sime, TanCode) "
                          "VALUES (?, ?, ?, ?, ?, ?, 1, 1, ?, 2)";
        slipRun(tor, {1, 1, "ﾄｳｷｮｳ", "東京商事", "本店", 3, 31});
        slipRun(tor, {2, 1, "ｵｵｻｶ", "大阪物産", " ", 2, 20});
        slipRun(tor, {3, 2, "ｷｮｳﾄ", "京都屋", " ", 1, 31});
        slipRun(tor, {4, 2, "ﾅﾗ", "奈良堂", " ", 4, 31});
        slipRun("INSERT INTO Nou (TorCode, Code, Namae, Ryaku) VALUES (1, 5, '北倉庫', '北倉庫')");
        slipRun("INSERT INTO Sir (Code, SbnCode, Kana, Namae, Zeituuchi, HsuType, Hsu, Sime, TanCode) "
                "VALUES (1, 1, 'ﾏﾙｲ', '丸井商店', 3, 1, 1, 31, 1)");
        const char* hin = "INSERT INTO Hin (Code, Namae, ZeiFlag, UTanka, STanka) VALUES (?, ?, ?, ?, ?)";
        slipRun(hin, {"0000000001001", "ボールペン", 1, yen(1000), yen(600)});
        slipRun(hin, {"0000000001002", "ノート", 1, yen(2000), yen(1500)});
        slipRun(hin, {"0000000001003", "お茶", 2, yen(1050), yen(700)});
        slipRun(hin, {"0000000001004", "切手", 3, yen(84), yen(84)});
        slipRun(hin, {"0000000001005", "消しゴム", 1, 333300, yen(20)});   // 33.33
        slipRun("INSERT INTO Tka (TorCode, HinCode, Tanka) VALUES (1, '0000000001001', ?), (1, '0000000001002', ?)",
                {yen(900), yen(1900)});
        slipRun("INSERT INTO Nka (TorCode, NouCode, HinCode, Tanka) VALUES (1, 5, '0000000001002', ?)", {yen(1800)});
        slipRun("INSERT INTO Ska (SirCode, HinCode, Tanka) VALUES (1, '0000000001001', ?)", {yen(550)});
    }

    // A fresh screen, the number typed and Enter: a stored slip is shown, else a new one starts.
    static SlipEditor::NumberOutcome load(SlipEditor& ed, const QString& number)
    {
        ed.loadLists();
        ed.clearDisplay();
        ed.clearLines();
        ed.head.Dno = number;
        return ed.enterNumber();
    }

    // Number, date of the session, partner (and destination) as a clerk chooses them.
    static void startSlip(SlipEditor& ed, const QString& number, qint64 partner, std::optional<qint64> nou = {})
    {
        load(ed, number);
        ed.head.Partner = partner;
        ed.partnerChosen();
        ed.head.NouCode = nou;
    }

    // A line typed the way the flow runs: kind, code, then optionally quantity and price.
    static void typeLine(SlipEditor& ed, int row, const QString& code, const QString& suu = {},
                         const QString& tanka = {}, int kind = 0)
    {
        ed.rows[row].fKubun = kind;
        ed.rows[row].fHinCode = code;
        ed.loadProductToLine(row);
        if (!suu.isEmpty()) {
            ed.rows[row].fSuu = suu;
            ed.work(row);
        }
        if (!tanka.isEmpty()) {
            ed.rows[row].fTanka = tanka;
            ed.work(row);
        }
        // Enter on the amount.
        ed.readRowsToLines();
        ed.calcLineTax(row);
        ed.showTotals(1);
    }
};

// A second workstation: its own connection to the same files, the slip file attached.
class SecondStation {
public:
    explicit SecondStation(const TempCompany& co) : name_(QStringLiteral("second-station"))
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
        db.setDatabaseName(co.file(QStringLiteral("MASTER.db")));
        db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=200"));
        db.open();
        execSql(db, QStringLiteral("ATTACH DATABASE ? AS slip"), {co.file(QStringLiteral("2026/SLIP.db"))});
    }
    ~SecondStation()
    {
        QSqlDatabase::database(name_, false).close();
        QSqlDatabase::removeDatabase(name_);
    }
    QSqlDatabase db() const { return QSqlDatabase::database(name_, false); }
    // Runs `f` as this station: the session's connection is swapped for the call.
    template <class F> auto as(F f)
    {
        Session& s = session();
        const QSqlDatabase mine = s.MasterDb;
        s.MasterDb = db();
        auto r = f();
        s.MasterDb = mine;
        return r;
    }
private:
    QString name_;
};

// Readable failures for texts.
inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }
