#pragma once
// Money received and paid goes to the customer and supplier ledgers at once, row by row,
// when a deposit or payment slip is saved, amended or deleted. Each call is one unit of work
// (a part of the caller's transaction when the caller holds one); on failure nothing of it
// stays and `error` gets "エラー：" with the number and text.
#include <QString>
#include "store/Money.h"

// The thirteen figures of a ledger month row, in the order of the row. The deposit screen fills
// Genkin to Chousei, signed as the change (an amendment posts the old amounts reversed).
struct LedgerAmounts {
    Money Gaku, HGaku, NGaku, KGaku, ZeiGaku, KTotal;
    Money Genkin, Kogite, Furikomi, Tegata, Sousai, Chousei, NTotal;
};

// One customer posting: the destination's row and, unless the destination bills itself
// (SeiFlag 2), the customer's own row too.
bool PostCustomer(qint64 TorCode, qint64 NouCode, const LedgerAmounts& amounts, const QString& month,
                  short EigCode, short SeiFlag, QString* error = nullptr);

// One ledger row: kind "TTO" for customers, anything else for suppliers. The head and its
// 13 month rows are made on first use; the month's money is added and the balances carried.
// The roll-up marker is passed along by PostCustomer and changes nothing here.
bool PostLedger(const QString& kind, qint64 code, qint64 NouCode, const LedgerAmounts& amounts,
                const QString& month, short EigCode, short SeiFlag, int rollUp, QString* error = nullptr);

// Carries the balance month by month from the first month of the year over one head's rows
// and sets the head's Zan from the last month.
bool CarryBalance(const QString& kind, qint64 code, qint64 NouCode, short EigCode, QString* error = nullptr);
