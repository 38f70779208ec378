#pragma once
// The list of a partner's slips: Enter answers the number of the current row, Esc answers "".
#include <QDialog>
#include <QString>

class QTableWidget;

class SlipList_frm : public QDialog {
    Q_OBJECT
public:
    explicit SlipList_frm(QWidget* parent = nullptr);
    // Fills the list with the partner's slips of the session office.
    void Init(const QString& kind, qint64 partner);
    QString answer() const { return answer_; }
    // pickSlipFromList's second half: shows the list modally, also when it is empty.
    static QString pick(const QString& kind, qint64 partner);

protected:
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    QTableWidget* List = nullptr;
    QString answer_;
};
