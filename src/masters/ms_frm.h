#pragma once
// The simple masters: code, reading, name and short name of a class, district or rank
// table, chosen by the session's MenuKey when the form opens.
#include "entry/QtEntryForm.h"
#include "entry/Recordset.h"

struct SimpleMasterKind;

class ms_frm : public EntryForm {
    Q_OBJECT
public:
    explicit ms_frm(QWidget* parent = nullptr);

    Recordset* myrs() override { return &myrs_; }
    void Register(const QString& mode) override;
    bool deleteRec() override;
    void Display() override;

    QString MenuKey() const { return menuKey_; }

protected:
    // The staff form is the same form on its own table.
    ms_frm(const QString& menuKey, QWidget* parent);
    void formKeyDown(bool list, int index, int& keyCode, int shift) override;
    void eboxLeft(int index) override;

private:
    void load(const QString& menuKey);

    QString menuKey_;
    const SimpleMasterKind* kind_ = nullptr;
    Recordset myrs_;
};
