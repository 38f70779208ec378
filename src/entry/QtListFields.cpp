#include "entry/QtListFields.h"

#include <QComboBox>
#include <QLineEdit>

#include "entry/Convert.h"

std::optional<int> ListCode(const QComboBox* list)
{
    if (!list || list->currentIndex() < 0) return std::nullopt;
    return list->itemData(list->currentIndex(), Qt::UserRole).toInt();
}

void FindListCode(QComboBox* list, int code)
{
    if (!list) return;
    // Compared as numbers: the data may have been stored as int or as a 64-bit value.
    for (int i = 0; i < list->count(); ++i) {
        bool ok = false;
        const int data = list->itemData(i, Qt::UserRole).toInt(&ok);
        if (ok && data == code) {
            list->setCurrentIndex(i);
            return;
        }
    }
    list->setCurrentIndex(-1);
}

void ClearList(QComboBox* list)
{
    if (list) list->clear();
}

void SelectAll(QLineEdit* box)
{
    if (box) box->selectAll();
}

QString CutToBytes(const QLineEdit* box)
{
    return box ? CutToBytes(box->text(), box->maxLength()) : QString();
}

QString CopyIfEmpty(const QLineEdit* source, QLineEdit* target)
{
    if (!target) return QString();
    const QString text = CopyIfEmpty(source ? source->text() : QString(), target->text(),
                                     target->maxLength());
    if (text != target->text()) target->setText(text);
    return text;
}
