#include "ledgers/AfterWork.h"

// Intentionally empty until the ledger batch exists: there are no ledger postings to bring
// up to date yet, so there is nothing to do and nothing that can fail.
bool ActionAfterWork(bool interactive)
{
    (void)interactive;
    return true;
}
