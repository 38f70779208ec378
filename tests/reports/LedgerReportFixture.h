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
#include "reports/Mei.h"
#include "reports/ReportSupport.h"
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

// The ledger views of a closing month, and of a range of dates.
inline LedgerRange month(const QString& view, qint64 partner, int m, qint64 nou = 0) { return {view, true, partner, nou, m}; }
inline LedgerRange dates(const QString& view, qint64 partner, int sm, int sd, int em, int ed)
{
    return {view, false, partner, 0, 0, sm, sd, em, ed};
}

class PartnerReportTest : public ::testing::Test {
protected:
    TempCompany company{2026, 4};
    ScriptedDialogs dlg;
    void SetUp() override;

public:
    // Sales slips marked for ledger processing; amounts are quantity times price, cost half.
    static void sale(int dno, const QDate& date, qint64 tor, qint64 nou, int getudo, const QList<ReportLine>& lines);
    // Fifteen more lines of customer 2 on May 3rd (slip 30): sixteen rows in May.
    static void sixteenRows();
};
