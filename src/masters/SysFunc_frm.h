#pragma once
// "System Function": the installer's screen on zSysFunc, reached only by a hidden gesture.
#include "entry/QtEntryForm.h"
#include "entry/Recordset.h"

class SysFunc_frm : public EntryForm {
    Q_OBJECT
public:
    explicit SysFunc_frm(QWidget* parent = nullptr);

    void Register(const QString& mode) override;
    bool deleteRec() override;
    void clearDisplay() override {}

protected:
    // The form finds its rows itself.
    void formKeyDown(bool list, int index, int& keyCode, int shift) override;

private:
    void showRow();
    Recordset rows_;
};
