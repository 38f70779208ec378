#pragma once
// The target year change: a list of the years that have a slip file; "設定" reopens the store
// for the chosen year until the end of the run.
#include <QWidget>

class QComboBox;

// Hin_frm keeps a record set on the master file: it goes before the file is closed.
void UnloadHinForm();
class QPushButton;

class Nendo_frm : public QWidget {
public:
    Nendo_frm();
    QComboBox* list() const { return cbox_; }
    // "設定": switch to the selected year, then close.
    void apply();

protected:
    bool eventFilter(QObject* o, QEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    QComboBox* cbox_;
    QPushButton* set_;
    QPushButton* cancel_;
};
