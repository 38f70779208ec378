#pragma once
// "商品マスター": products. The code is text, so the form finds its rows itself; F10 saves
// and clears the screen.
#include <QVariantMap>
#include "entry/QtEntryForm.h"

class Hin_frm : public EntryForm {
    Q_OBJECT
public:
    explicit Hin_frm(QWidget* parent = nullptr);

    void Register(const QString& mode) override;
    bool deleteRec() override;
    void clearDisplay() override {}
    using EntryForm::Display;
    // Fills the fields from a row of Hin.
    void Display(const QVariantMap& row);

protected:
    void formKeyDown(bool list, int index, int& keyCode, int shift) override;
    void commandClick(int index) override;

private:
    void findProduct();
};
