#pragma once
// `velmora print ledger | balances | sales`: the options of a request to the same report
// classes the screens use. Each run draws on the current page output (--pdf) or writes the
// sheet (--xlsx). False with *error in the system's wording, or with *error empty when the
// report has told the failure itself ("対象がありません。", a failed document).
#include <QString>

struct PrintRequest;

bool runLedgerPrint(const PrintRequest& request, QString* error);
bool runBalancePrint(const PrintRequest& request, QString* error);
bool runSalesPrint(const PrintRequest& request, QString* error);
