#pragma once
// "オプション": the options a user may set, the backup folder and the backup at exit.
#include "entry/QtEntryForm.h"

class Opt_frm : public EntryForm {
    Q_OBJECT
public:
    explicit Opt_frm(QWidget* parent = nullptr);

    // Writes both rows and closes the form, whatever the state.
    void Register(const QString& mode) override;

protected:
    void recFieldKeyDown(int& keyCode, int shift) override;
};
