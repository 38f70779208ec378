#pragma once
// "会社マスター": the one row of Com, the tax rate change of UserOP 725/726, and the session
// values that follow from them. It opens with the row on screen; it has no code field, it
// cannot be cleared, and saving closes it.
#include "entry/QtEntryForm.h"

class Kaisya_frm : public EntryForm {
    Q_OBJECT
public:
    explicit Kaisya_frm(QWidget* parent = nullptr);

    void Register(const QString& mode) override;
    bool deleteRec() override;
    void clearDisplay() override;
    void Display() override;

    QLabel* start() const;      // first month of the period
    QLabel* fin() const;        // last month
    QLabel* weekday() const;    // of the rate change date
    QLineEdit* item(int i) const;
    bool saved() const { return saved_; }

protected:
    void formKeyDown(bool list, int index, int& keyCode, int shift) override;
    void eboxLeft(int index) override;
    void recFieldKeyDown(int& keyCode, int shift) override;
    void commandClick(int index) override;

private:
    void saveAndClose();
    bool applyStartPeriod();
    int itemOfBox(int index) const;

    bool saved_ = false;
    QString checkedSKai_;   // the start date the months and the end date were last worked out from
};
