#pragma once
// A company with slips written straight into the store for the product summaries, the
// monthly copy and the cut-off list. The year starts in April 2026; office 1 is the
// session's. Amounts are given in yen.
#include <gtest/gtest.h>
#include <QDate>
#include <QList>
#include <QString>
#include "reports/ReportSupport.h"
#include "shell/Session.h"
#include "store/Money.h"
#include "store/Sql.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

struct Ln {
    QString hin;
    QString name;
    qint64 suu = 1;
    double tanka = 0;    // unit price
    int kubun = 0;       // 0 sales, 1 returns, 2 discount, 3 expenses
    double cost = 0;     // unit cost
};

class SummaryCompany : public ::testing::Test {
protected:
    TempCompany co{2026};
    ScriptedDialogs dlg;

    void SetUp() override
    {
        ASSERT_TRUE(co.open());
        useFiscal2026();
        exec("INSERT INTO Tbn (Code, Namae) VALUES (1, '一般')");
        exec("INSERT INTO Sbn (Code, Namae) VALUES (1, '問屋')");
        exec("INSERT INTO Tan (Code, Namae) VALUES (1, '山田'), (2, '佐藤'), (3, '鈴木')");
        const char* tor = "INSERT INTO Tor (Code, TbnCode, Kana, Namae, Sime) VALUES (?, 1, ?, ?, ?)";
        exec(tor, {1, "ﾄｳｷｮｳ", "東京商事", 31});
        exec(tor, {2, "ｵｵｻｶ", "大阪物産", 20});
        exec(tor, {3, "ｷｮｳﾄ", "京都屋", 31});
        exec(tor, {4, "ﾅﾗ", "奈良堂", 31});
        exec("INSERT INTO Nou (TorCode, Code, Kana, Namae, Ryaku) VALUES (1, 5, 'ｷﾀ', '北倉庫', '北倉庫'), "
            "(1, 6, 'ﾐﾅﾐ', '南倉庫', '南倉庫')");
        const char* sir = "INSERT INTO Sir (Code, SbnCode, Kana, Namae, Sime, SimeFlag) VALUES (?, 1, ?, ?, 31, 2)";
        exec(sir, {1, "ﾏﾙｲ", "丸井商店"});
        exec(sir, {7, "ﾔﾏﾄ", "大和製作所"});
    }

    // A sales slip: head and lines. A negative number is a cancelled slip's image.
    static void sale(int dno, const QDate& date, qint64 tor, const QList<Ln>& lines, qint64 nou = 0, int tan = 1,
                     int eig = 1)
    {
        exec("INSERT INTO Dur (Dno, EigCode, Hizuke, TanCode, TbnCode, TorCode, TorCodeSei, NouCode, Tekiyo, SNo, Kubun) "
            "VALUES (?, ?, ?, ?, 1, ?, ?, ?, ' ', 0, 0)",
            {dno, eig, date.toString(Qt::ISODate), tan, tor, tor, nou});
        writeLines("Dud", "TorCode", dno, date, tor, lines, eig);
    }
    static void purchase(int dno, const QDate& date, qint64 sir, const QList<Ln>& lines, int eig = 1)
    {
        exec("INSERT INTO Dsr (Dno, EigCode, Hizuke, TanCode, SbnCode, SirCode, Tekiyo, SNo, Kubun) "
            "VALUES (?, ?, ?, 1, 1, ?, ' ', 0, 0)",
            {dno, eig, date.toString(Qt::ISODate), sir});
        writeLines("Dsd", "SirCode", dno, date, sir, lines, eig);
    }

private:
    static void writeLines(const QString& table, const QString& partner, int dno, const QDate& date, qint64 code,
                           const QList<Ln>& lines, int eig)
    {
        int eda = 0;
        for (const Ln& l : lines) {
            exec(QStringLiteral("INSERT INTO %1 (Dno, Eda, EigCode, Kubun, Hizuke, %2, HinCode, HinNamae, Suu, UTanka, "
                               "UGaku, STanka, sGaku, ZeiFlag, ZeiGaku, Getudo, ThiFlag) "
                               "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 1, 0, 1, -1)")
                    .arg(table, partner),
                {dno, ++eda, eig, l.kubun, date.toString(Qt::ISODate), code, l.hin, l.name, l.suu, yen(l.tanka),
                 yen(l.suu * l.tanka), yen(l.cost), yen(l.suu * l.cost)});
        }
    }
};
