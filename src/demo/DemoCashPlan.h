#pragma once
// When and how the demo company's partners settle their bills: customers pay each closing's
// bill on their collection day by their usual way of paying, the company pays its suppliers at
// the end of the month after; now and then a bill is paid late, short or together with the
// next one, and what falls due after the year's end stays open.
#include <QDate>
#include <QList>
#include <QString>
#include "demo/DemoBilling.h"

class DemoRandom;

struct DemoCashRow {
    short kubun = 0;   // money kind 1..6: 現金, 小切手, 振込, 手形, 相殺, 調整
    QString text;
    qint64 yen = 0;
};

// One deposit (customer) or payment (supplier) slip as a clerk would type it.
struct DemoCashSlip {
    bool deposit = true;
    QDate date;
    short office = 0;
    qint32 partner = 0;
    qint32 nou = 0;            // a destination billed on its own, else 0
    short partnerClass = 0;
    short tan = 0;
    QList<DemoCashRow> rows;
};

// The day of a closing month of the fiscal year on which a partner of closing day `sime`
// (31: the month's end) closes.
QDate demoClosingDay(int nendo, short sTuki, short getudo, short sime);
// The day the money of a closing comes in: `kTuki` months on (1: the closing's own month) on
// day `kHi` (31: the month's end), a month later when that is not after the closing, and
// moved to the bank day before when it is a holiday (after it, when that would reach back to
// the closing).
QDate demoCollectionDay(const QDate& closing, short kTuki, short kHi);

// The deposits and payments of the year that pay `customerBills` and `supplierBills`, in
// date order. A customer pays its own bills and those of its destinations billed through it;
// a destination billed on its own pays its own.
QList<DemoCashSlip> planDemoCash(const DemoMasterData& data, const DemoBills& customerBills,
                                 const DemoBills& supplierBills, DemoRandom& rnd);
