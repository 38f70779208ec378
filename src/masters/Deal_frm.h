#pragma once
// "得意先マスター登録" / "仕入先マスター登録": one form for customers and suppliers, chosen by
// the session's MenuKey ("Tor" / "Sir") when the form opens. The common fields come first;
// the field set of the other kind is taken out of the keyboard order and hidden.
#include "entry/QtEntryForm.h"
#include "entry/Recordset.h"

struct DealKind;

class Deal_frm : public EntryForm {
    Q_OBJECT
public:
    explicit Deal_frm(QWidget* parent = nullptr);

    Recordset* myrs() override { return &myrs_; }
    void Register(const QString& mode) override;
    bool deleteRec() override;
    void clearDisplay() override;
    void Display() override;

    // Before the form opens: with no class registered it says so, closes the form and
    // answers true.
    bool CheckTbnSbn();
    qint64 nextFreeCode() const;
    QString MenuKey() const;
    QLabel* BankLabel() const;       // beside the bank index
    QLabel* SeikyuLabel() const;     // beside the customer to bill
    QLabel* ShiharaiLabel() const;   // beside the supplier to pay

protected:
    void formKeyDown(bool list, int index, int& keyCode, int shift) override;
    void eboxLeft(int index) override;
    void recFieldKeyDown(int& keyCode, int shift) override;
    void commandClick(int index) override;
    void showEvent(QShowEvent* event) override;

private:
    // The checks before saving; a refusal is told and the focus goes to its field.
    bool checkBeforeSave();
    // Puts a customer's stored closing day back when another was typed; true when it did.
    bool guardSime();
    void fillSideLabel(int ebox);
    void listLookUp(int cbox);
    void fillLists();

    const DealKind* kind_ = nullptr;
    Recordset myrs_;
    bool checked_ = false;
};
