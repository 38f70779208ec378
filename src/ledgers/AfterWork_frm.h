#pragma once
// "台帳処理": the progress of ledger processing. No keys and no buttons while it runs; the run
// closes it. Lines that no ledger took are listed on it after the run, until the clerk has read
// them (Enter or Esc).
#include <QWidget>
#include "ledgers/AfterWork.h"

class QEventLoop;
class QLabel;
class QPlainTextEdit;
class QPushButton;

class AfterWork_frm : public QWidget, public AfterWorkView {
public:
    AfterWork_frm();
    ~AfterWork_frm() override;
    QLabel* message() const { return message_; }
    QPlainTextEdit* unreached() const { return unreached_; }

    void runStarted() override;
    void showProgress(const QString& text) override;
    void runFinished() override;
    void showUnreached(const QString& report) override;

protected:
    void keyPressEvent(QKeyEvent* e) override;
    void closeEvent(QCloseEvent* e) override;

private:
    QLabel* message_;
    QPlainTextEdit* unreached_;
    QPushButton* confirm_;
    QEventLoop* reading_ = nullptr;
    bool running_ = false;
    bool cursorSet_ = false;
};
