#pragma once
// A small wholesaler after ledger processing and deposits, for the partner reports. Fiscal
// year 2026 from April, office 1, tax 10 percent per invoice, all amounts in yen:
//
//   customer 1 東京商事 (closes at month end) with destination 5 北倉庫 (billed through the
//     customer) and destination 6 南支店 (billed on its own):
//       slip 1  05-10 to 5: 10 ボールペン at 1,000          slip 3  05-12 to 5: return of 1,000
//       slip 2  05-12 to 6: 3 ノート at 2,000
//       deposit 1  05-12 現金 3,000 to the customer     deposit 2  05-22 振込 2,000 to 6
//   customer 2 大阪物産 (closes on the 20th):
//       slip 4  05-25 (June) 4,000                      slip 5  05-15 (May) 1,500
//   customer 3 京都屋 (month end): slip 6  04-20 5,000, deposit 3  05-15 振込 3,000
//   supplier 1 丸井商店: purchase 1  05-08 2 lines (700 and 300), payment 1  05-30 現金 1,000
#include <gtest/gtest.h>
#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <memory>
#include "store/Money.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

struct ReportLine {
    qint64 suu;
    qint64 tankaYen;
    int kubun = 0;
    QString hin = QStringLiteral("0000000001001");
    QString name = QStringLiteral("ボールペン");
};

class PartnerBooks {
public:
    PartnerBooks();
    ~PartnerBooks();
    QSqlDatabase db() const;

    void exec(const QString& sql, const QVariantList& binds = {}) const;
    QVariant one(const QString& sql, const QVariantList& binds = {}) const;

    // Slips marked for ledger processing; amounts are quantity times price.
    void sale(int dno, const QDate& date, qint64 tor, qint64 nou, int getudo, const QList<ReportLine>& lines) const;
    void purchase(int dno, const QDate& date, qint64 sir, int getudo, const QList<ReportLine>& lines) const;
    // Deposits and payments as the deposit screen saves them: the rows, then the ledger posting.
    void deposit(int dno, const QDate& date, qint64 tor, qint64 nou, int getudo, int kubun, qint64 yen,
                 const QString& text) const;
    void payment(int dno, const QDate& date, qint64 sir, int getudo, int kubun, qint64 yen, const QString& text) const;
    void batch() const;

private:
    std::unique_ptr<TempCompany> company_;
};

static inline QVariant yen(qint64 y) { return Money::fromYen(y).toStore(); }
static inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }

class PartnerReportTest : public ::testing::Test {
protected:
    std::unique_ptr<PartnerBooks> books;
    ScriptedDialogs dlg;
    void SetUp() override { books = std::make_unique<PartnerBooks>(); }
    void TearDown() override { books.reset(); }
};
