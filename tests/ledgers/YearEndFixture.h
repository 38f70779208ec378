#pragma once
// A company at the end of its fiscal year 2026 (April to March), posted by ledger processing:
// closed and open slips of both kinds, deposits and payments, and ledger rows with the figures
// the year-end carries. Amounts in yen.
#include "LedgerFixture.h"

class ClosingYear : public LedgerCompany {
public:
    // With `marker` the company keeps a master per year (2026/MASTER.db) and the file NENDO.
    explicit ClosingYear(bool marker = false);
    // Opens the store again as a start of the program would (the marker, then Com.SKai).
    bool reopen();
    // The hook points of a clean first run, in order.
    static QList<int> stepsOfACleanRun(bool marker);
};

// Product codes of the fixture.
inline const QString kP1 = QStringLiteral("0000000000001");
inline const QString kP2 = QStringLiteral("0000000000002");
