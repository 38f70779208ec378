#pragma once
// The demo year's deposits and payments, each saved through the deposit screen's own save:
// the rows, the postings to the customer and supplier ledgers and the office counters are
// what a clerk typing them would have left.
#include <QList>
#include <QString>

struct DemoCashSlip;

struct DemoCashCounts {
    int deposits = 0;
    int payments = 0;
    int rows = 0;
};

// Saves `slips` into the company of the master file `masterPath` and the slip file
// `slipPath` (written and closed before), all in one transaction. The session is borrowed for
// the time and given back as it was. On failure `error` says why and nothing of it stays.
bool writeDemoCash(const QString& masterPath, const QString& slipPath, int nendo, short sTuki,
                   const QList<DemoCashSlip>& slips, DemoCashCounts& counts, QString* error);
