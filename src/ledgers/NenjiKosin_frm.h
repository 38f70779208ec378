#pragma once
// "年次更新": the caution, "実行する" and "中止する". The update runs without further
// questions; on success the alert says so and the program ends.
#include <QWidget>

class QLabel;
class QPushButton;

class NenjiKosin_frm : public QWidget {
public:
    NenjiKosin_frm();
    QLabel* title() const { return title_; }
    QLabel* caution() const { return caution_; }
    QPushButton* executeButton() const { return execute_; }
    QPushButton* cancelButton() const { return cancel_; }
    // "実行する": ExecuteUpdate with the running text shown.
    void ExecuteUpdate();

protected:
    bool eventFilter(QObject* o, QEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    void closeEvent(QCloseEvent* e) override;

private:
    QLabel* title_;
    QLabel* caution_;
    QPushButton* execute_;
    QPushButton* cancel_;
    bool running_ = false;
};
