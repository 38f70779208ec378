#pragma once
// The program's change notes: a list of dated entries and the text of the chosen one.
// Reached by the hidden gesture on the menu's picture; it changes nothing.
#include <QList>
#include <QWidget>

class QListWidget;
class QPlainTextEdit;

struct HistoryNote {
    QString date;   // yyyy-MM-dd
    QString title;
    QString text;
};

const QList<HistoryNote>& historyNotes();

class myHistory_frm : public QWidget {
public:
    myHistory_frm();
    QListWidget* list() const { return list_; }
    QPlainTextEdit* text() const { return text_; }
private:
    QListWidget* list_;
    QPlainTextEdit* text_;
};
