#pragma once
// The five numbering counters of an office, set by hand on "伝票番号". The screen works on
// office 1 whatever office the session is in, and unlike the saving of a slip it may lower a
// counter.
#include <array>
#include <QString>

struct SlipCounter {
    QString caption;   // "仕入伝票No." ..
    QString column;    // DsrNo ..
    qint64 value = 0;
};

// In the order of the screen: purchases, sales, payments, deposits, invoices.
using SlipCounters = std::array<SlipCounter, 5>;

SlipCounters slipCounterFields();
// False when office 1 has no row.
bool readSlipCounters(SlipCounters& counters);
// Writes all five onto the re-read row in one unit of work. A missing row says
// "Eigマスターのエラーです。", a store failure its error; false then and nothing changes.
bool writeSlipCounters(const SlipCounters& counters);
