#pragma once
// "一覧": the one lookup list of the system. F6 in a code field opens it on the field's
// table; it pages 15 lines by keyboard, filters by reading and gives the chosen code back.
#include <QDialog>
#include "entry/HelpList.h"

class QLabel;
class QLineEdit;

class Help_frm : public QDialog {
    Q_OBJECT
public:
    explicit Help_frm(QWidget* parent = nullptr);

    // Loads the list of `table`; then show it modally and read Hit() and HitCode().
    void Init(const QString& table, const QString& filter1, const QString& filter2);
    bool Hit() const { return list_.Hit; }
    QString HitCode() const { return list_.HitCode; }
    // An extra condition on Hin, written by the calling form.
    void setHinFilter(const QString& condition) { list_.HinFilter = condition; }
    const HelpList& list() const { return list_; }

    QLineEdit* kana() const { return kana_; }
    QLabel* hCode(int line) const { return cells_[line][0]; }
    QLabel* hKana(int line) const { return cells_[line][1]; }
    QLabel* hRyaku(int line) const { return cells_[line][2]; }
    QLabel* hNamae(int line) const { return cells_[line][3]; }
    QLabel* head(int column) const { return heads_[column]; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void drawPage();
    void reportFailure();

    HelpList list_;
    QLineEdit* kana_ = nullptr;
    QLabel* heads_[4] = {};
    QLabel* cells_[HelpList::PageRows][4] = {};
};

// The window, made once and kept for the run.
Help_frm* HelpForm();
// Registers the window by name and lets postal code lookups choose through it.
void installHelpForm();
