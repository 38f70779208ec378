#pragma once
// "台帳処理": the progress of ledger processing. No keys, no buttons; the run closes it.
#include <QWidget>
#include "ledgers/AfterWork.h"

class QLabel;

class AfterWork_frm : public QWidget, public AfterWorkView {
public:
    AfterWork_frm();
    ~AfterWork_frm() override;
    QLabel* message() const { return message_; }

    void runStarted() override;
    void showProgress(const QString& text) override;
    void runFinished() override;

protected:
    void keyPressEvent(QKeyEvent* e) override;
    void closeEvent(QCloseEvent* e) override;

private:
    QLabel* message_;
    bool running_ = false;
    bool cursorSet_ = false;
};
