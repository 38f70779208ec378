#pragma once
// A year of sales and purchase slips for the demo company, stored as the slip screen stores
// them: prices by the price tables, amounts, tax by the partner's rule, closing months.
#include <QSqlDatabase>
#include <QString>
#include "demo/DemoMasters.h"

class DemoBilling;
class DemoRandom;

struct DemoSlipCounts {
    int sales = 0;
    int salesLines = 0;
    int purchases = 0;
    int purchaseLines = 0;
};

// Writes `slips` slips spread over the fiscal year of `data` into the slip file `db`, inside
// the caller's transaction. `counters` gets the next number of each office, `billing` what
// each line adds to its partner's bill.
bool writeDemoSlips(QSqlDatabase db, const DemoMasterData& data, int slips, DemoRandom& rnd,
                    DemoSlipCounts& counts, DemoCounters& counters, DemoBilling& billing, QString* error);
