#pragma once
// The window of a partner's slips behind F6 in a number field: one heading row and one row a
// slip. Enter answers the number of the current row, Esc answers "", Left and Right do nothing.
#include <QDialog>
#include <QList>
#include <QString>
#include <QStringList>

class QTableWidget;

class PickListDialog : public QDialog {
    Q_OBJECT
public:
    QString answer() const { return answer_; }
    QTableWidget* grid() const { return List; }

protected:
    // `widths` of all columns but the last, which takes the rest.
    PickListDialog(const QStringList& headings, const QList<int>& widths, QWidget* parent);
    // One row of texts a slip, the number first; the first row becomes the current one.
    void fill(const QList<QStringList>& rows);
    bool eventFilter(QObject* o, QEvent* e) override;

    QTableWidget* List = nullptr;
    QString answer_;
};
