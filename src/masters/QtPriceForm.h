#pragma once
// The shape of both price forms: the partner on top (with the destination for Nka), product
// and price below it, and the grid of all this partner's prices. Enter on the confirmation
// field stores the price and goes back to the product, so a run of prices goes quickly.
#include "entry/QtEntryForm.h"
#include "masters/PriceRules.h"

class QTableWidget;

class PriceForm : public EntryForm {
    Q_OBJECT
public:
    void Register(const QString& mode) override;
    bool deleteRec() override { return false; }
    void clearDisplay() override;
    // Fills the grid for the partner on the screen.
    void showPriceList();

    const PriceKind& kind() const { return *kind_; }
    QTableWidget* List() const { return list_; }
    QLabel* sTorNamae() const;
    QLabel* sNouNamae() const;   // PriceNka_frm only
    QLabel* sHinNamae() const;

protected:
    PriceForm(const PriceKind* kind, QWidget* parent);
    void formKeyDown(bool list, int index, int& keyCode, int shift) override;
    void recFieldKeyDown(int& keyCode, int shift) override;

private:
    PricePartner partner() const;
    QString storedHinCode() const;
    void eraseRow(int row);

    const PriceKind* kind_;
    int nouBox_ = -1;   // boxes by role
    int hinBox_ = 1;
    int priceBox_ = 2;
    QTableWidget* list_ = nullptr;
};
