#pragma once
// "伝票番号": the five numbering counters of office 1, set by hand. Unlike the saving of a
// slip, this screen may lower a counter.
#include "entry/QtEntryForm.h"

class SlipDno_frm : public EntryForm {
    Q_OBJECT
public:
    explicit SlipDno_frm(QWidget* parent = nullptr);

    // The menu's check before the form is made: without the row of office 1 it says
    // "Eigマスターのエラーです。" and the screen does not open.
    static bool mayOpen();

    // Writes the five counters onto the re-read row and closes the form.
    void Register(const QString& mode) override;
    // F1 shows the stored counters again.
    void clearDisplay() override;

protected:
    void recFieldKeyDown(int& keyCode, int shift) override;
};
