#pragma once
// Saving a sales or purchase slip, amending it and deleting it. A slip is never changed in
// place: an amendment cancels the old slip and saves the new one under the same number. A
// slip the ledgers have not seen just goes; a posted one stays for one more ledger run as its
// own negative image. Each save or delete is one unit of work: all of it lands, or nothing.
#include <QString>

class SlipEditor;

struct SlipSaveResult {
    bool saved = false;
    long dno = 0;                // the number the slip was written under
    bool numberChanged = false;  // the number was taken meanwhile; the clerk has been told
};

// Writes the slip on the editor; `mode` "NEW" or "EDIT" (the old slip is cancelled first).
// Runs after checkSlip and checkPeriod. The editor's number field then holds the real number.
SlipSaveResult Register(SlipEditor& editor, const QString& mode);

// Removes the slip of the number on the editor, or cancels it by its negative image when the
// ledgers have posted it. A number that exists nowhere changes nothing. False when the date
// is outside the target year (told) or the store failed (told).
bool cancelOldSlip(SlipEditor& editor);

