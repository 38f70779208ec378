#pragma once
// "請求書発行": the month's invoices of a closing day, or of a range of customers. Seven boxes
// under mBureaucrat (month, closing day, customers from and to, issue date), and "発 行",
// which takes the focus after the last box. The run itself is InvoiceRun.
#include <QWidget>
#include "entry/QtBureaucrat.h"

class QLabel;
class QLineEdit;
class QPushButton;

class Seikyu_frm : public QWidget, public BureaucratForm {
    Q_OBJECT
public:
    enum Box { MonthBox, SimeBox, FromBox, ToBox, YearBox, IssueMonthBox, DayBox, BoxCount };

    explicit Seikyu_frm(QWidget* parent = nullptr);

    QList<QLineEdit*> ebox() const override { return ebox_; }
    QList<QComboBox*> cbox() const override { return {}; }
    QLabel* mode() const override { return mode_; }
    QLabel* message() const override { return controllerMessage_; }
    QWidget* RecField() const override;
    // Nothing to save: F10 and F2 do nothing here.
    void Register(const QString&) override {}
    bool deleteRec() override { return false; }
    void clearDisplay() override;
    void Unload() override { close(); }

    // "発 行": the checks, the printer, the run.
    void issue();

    QLineEdit* box(Box b) const { return ebox_[b]; }
    QLabel* dTorNamae(int i) const { return dTorNamae_[i]; }
    QPushButton* Command() const { return command_; }
    QLabel* helpLine() const { return help_; }
    mBureaucrat& bureaucrat() { return bu_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    bool boxKey(int index, int keyCode, int shift);
    bool commandKey(int keyCode);
    void boxLeft(int index);
    bool lookUpCustomer(int index);

    mBureaucrat bu_;
    QList<QLineEdit*> ebox_;
    QLabel* dTorNamae_[2] = {};
    QLabel* mode_ = nullptr;
    QLabel* controllerMessage_ = nullptr;
    QLabel* help_ = nullptr;
    QPushButton* command_ = nullptr;
    bool shown_ = false;
};
