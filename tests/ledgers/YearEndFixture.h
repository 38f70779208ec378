#pragma once
// A company at the end of its fiscal year 2026 (April to March), posted by ledger processing:
// closed and open slips of both kinds, deposits and payments, and ledger rows with the figures
// the year-end carries. Amounts in yen.
#include "LedgerFixture.h"
#include "ledgers/YearEnd.h"

class ClosingYear : public LedgerCompany {
public:
    // With `marker` the company keeps a master per year (2026/MASTER.db) and the file NENDO.
    explicit ClosingYear(bool marker = false);
    // Opens the store again as a start of the program would (the marker, then Com.SKai).
    bool reopen();
};

// Sets the year-end's test hook for the lifetime of the object.
struct ScopedYearEndHook {
    YearEndHook prev;
    explicit ScopedYearEndHook(YearEndHook h) { prev = setYearEndHook(std::move(h)); }
    ~ScopedYearEndHook() { setYearEndHook(prev); }
};

// Fails the run at every passage of `step`.
inline YearEndHook failingAt(YearEndStep step)
{
    return [step](YearEndStep at) { return at == step ? StepFate::Fail : StepFate::Go; };
}

// Product codes of the fixture.
inline const QString kP1 = QStringLiteral("0000000000001");
inline const QString kP2 = QStringLiteral("0000000000002");
