#pragma once
// Data recovery ("データ復旧メニュー"): months of the ledgers rebuilt from the slips for the
// session's office, master names carried into the ledger heads, nulls repaired. Each call is one
// unit of work: on failure nothing of it stays and `error` gets "エラー：" with the number and text.
#include <QList>
#include <QString>
#include "ledgers/LedgerRun.h"

enum class RebuildKind { ALL, THI, TTO, TSI };
// "ALL", "THI", "TTO", "TSI" (any case); false for anything else.
bool parseRebuildKind(const QString& text, RebuildKind* kind);

// A month box holds 1..12.
bool isRebuildMonth(int month);
// From `from` to `to` inclusive, wrapping 12 to 1: 11..2 is 11, 12, 1, 2. Empty when either
// is not a month.
QList<int> rebuildMonths(int from, int to);

// Rebuilds each month of the range, for ALL in the order product, customer, supplier.
// A month outside 1..12 runs nothing and gives false with `error` left alone.
bool rebuildLedgers(RebuildKind kind, int fromMonth, int toMonth, const ProgressFn& progress, QString* error);

enum class MasterNames { Products, Customers, Suppliers };
// Names and classes of the masters into the ledger heads (buttons 4, 5, 6).
bool refreshMasterNames(MasterNames which, const ProgressFn& progress, QString* error);

// Nulls to zeros in every ledger month row ("~" in the first month box).
bool RepairNulls(QString* error = nullptr);

// After the year-end update: the first month of the year rebuilt in all three ledgers.
bool AfterNenjiKosin(const ProgressFn& progress = {}, QString* error = nullptr);
