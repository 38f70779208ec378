#pragma once
// The list of a partner's deposit or payment slips: Enter answers the number of the current
// row, Esc answers "".
#include <QDialog>
#include <QString>

class QTableWidget;

class CasherList_frm : public QDialog {
    Q_OBJECT
public:
    explicit CasherList_frm(QWidget* parent = nullptr);
    // Fills the list with the partner's slips of the session office, newest first.
    void Init(const QString& kind, qint64 partner);
    QString answer() const { return answer_; }
    QTableWidget* grid() const { return List; }
    // pickCashSlipFromList's last step: shows the list modally, also when it is empty.
    static QString pick(const QString& kind, qint64 partner);

protected:
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    QTableWidget* List = nullptr;
    QString answer_;
};
