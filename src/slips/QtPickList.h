#pragma once
// The window of a partner's slips behind F6 in a number field: one heading row and one row a
// slip. Enter answers the number of the current row, Esc answers "", Left and Right do nothing.
// The two lists differ only in their columns.
#include <QDialog>
#include <QList>
#include <QString>
#include <QStringList>

class QTableWidget;

class PickListDialog : public QDialog {
    Q_OBJECT
public:
    // Fills the list with the partner's slips of `kind` in the session office.
    void Init(const QString& kind, qint64 partner);
    QString answer() const { return answer_; }
    QTableWidget* grid() const { return List; }

protected:
    // `widths` of all columns but the last, which takes the rest.
    PickListDialog(const QStringList& headings, const QList<int>& widths, QWidget* parent);
    // Shows a list of `List`'s kind modally, also when it is empty, and answers its pick.
    template <class List>
    static QString pickFrom(const QString& kind, qint64 partner)
    {
        List f;
        f.Init(kind, partner);
        f.exec();
        return f.answer();
    }
    bool eventFilter(QObject* o, QEvent* e) override;

    QTableWidget* List = nullptr;
    QString answer_;
};
