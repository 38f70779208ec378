#pragma once
// Saving, amending and deleting a deposit or payment slip, and typing a partner's carried
// balance. Unlike sales and purchases these reach the customer and supplier ledgers at once:
// each save, amendment, deletion and carried balance is one unit of work, the rows and every
// ledger figure they move landing together or not at all. No message waits for the clerk
// while the write lock is held.
#include <QString>
#include "slips/SlipRegister.h"   // SlipSaveResult

class CashSlipEditor;

// Writes the slip on the editor, `mode` "NEW" or "EDIT" (the stored rows are taken off the
// ledger and removed first). Runs after checkSlip and checkCashPeriod. The rows are written
// from the top to the first without a kind or an amount, none at all included: the posting
// (which makes the partner's ledger when missing) and a new number's counter follow all the
// same. Leaves the editor in "EDIT" with the real number in its number field.
SlipSaveResult Register(CashSlipEditor& editor, const QString& mode);

// Takes the stored rows of the number on the editor off the ledger of their own month and
// partner and deletes them. A number with no rows changes nothing. False when the store
// failed (told).
bool reverseCashSlip(CashSlipEditor& editor);

// The balance brought into the year for the partner (and destination) on the editor: written
// to the first month and carried through the year to the balance. Tells "繰越しを登録しました。"
// and shows the panel again. False when nothing was stored.
bool saveCarryOver(CashSlipEditor& editor, const QString& typed);
