#pragma once
// "BackUp": "バックアップを行います。" and "開始". The copy ends the program.
#include <QWidget>

class QPushButton;

class Backup_frm : public QWidget {
    Q_OBJECT
public:
    Backup_frm();
    QPushButton* startButton() const { return start_; }
    // Copies both files of the year to the backup folder. Mode 1 (the button) says it is done
    // and ends the program; mode 0 (the regular exit) says nothing and leaves the end to its
    // caller. A failure is told in both modes. A company whose master file is not where the
    // copy looks for it is told so and nothing happens.
    Q_INVOKABLE void Backup(int mode);

protected:
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    QPushButton* start_;
};
