#pragma once
// "納入先マスター": the delivery destinations of a customer, numbered per customer from 1.
// The form finds its rows itself: customer first, then the destination code.
#include "entry/QtEntryForm.h"

class Nou_frm : public EntryForm {
    Q_OBJECT
public:
    explicit Nou_frm(QWidget* parent = nullptr);

    void Register(const QString& mode) override;
    bool deleteRec() override;
    void clearDisplay() override;

    QLabel* TorLabel() const;
    qint64 nextFreeNouCode() const;

protected:
    void formKeyDown(bool list, int index, int& keyCode, int shift) override;
    void eboxLeft(int index) override;

private:
    qint64 torCode() const;
    // Enter in the destination field: the row on show, or a new one.
    void findDestination();
};
