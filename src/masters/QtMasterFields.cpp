#include "masters/QtMasterFields.h"

#include <algorithm>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "entry/Convert.h"
#include "entry/FieldTag.h"
#include "entry/Help_frm.h"
#include "entry/QtEntryForm.h"
#include "shell/Dialogs.h"
#include "entry/QtListFields.h"

namespace {
QGridLayout* gridOf(QLayout* layout, QWidget* w, int* row)
{
    if (!layout) return nullptr;
    if (auto* grid = qobject_cast<QGridLayout*>(layout)) {
        const int i = grid->indexOf(w);
        if (i >= 0) {
            int r = 0, c = 0, rs = 0, cs = 0;
            grid->getItemPosition(i, &r, &c, &rs, &cs);
            *row = r;
            return grid;
        }
    }
    for (int i = 0; i < layout->count(); ++i)
        if (QGridLayout* g = gridOf(layout->itemAt(i)->layout(), w, row)) return g;
    return nullptr;
}
}  // namespace

QWidget* FieldWidget(const EntryForm& form, int field)
{
    QLabel* cap = form.caption(field);
    return cap ? cap->buddy() : nullptr;
}

bool FieldActive(EntryForm& form, int field)
{
    QWidget* w = FieldWidget(form, field);
    if (!w) return false;
    mBureaucrat& bu = form.bureaucrat();
    auto* list = qobject_cast<QComboBox*>(w);
    const int item = list ? bu.itemOf(true, int(form.cbox().indexOf(list)))
                          : bu.itemOf(false, int(form.ebox().indexOf(qobject_cast<QLineEdit*>(w))));
    return item >= 0 && bu.Items[item].Active;
}

bool ReadFields(EntryForm& form, const QString& table, ColumnValues& out, const QStringList& skip)
{
    const QList<FieldDecl>& fields = form.fields();
    for (int i = 0; i < fields.size(); ++i) {
        const FieldDecl& d = fields[i];
        if (d.column.isEmpty() || skip.contains(d.column, Qt::CaseInsensitive) || !FieldActive(form, i)) continue;
        QWidget* w = FieldWidget(form, i);
        if (auto* list = qobject_cast<QComboBox*>(w)) {
            out << ColumnValue{d.column, ListCode(list).value_or(0)};
            continue;
        }
        auto* box = qobject_cast<QLineEdit*>(w);
        const std::optional<QVariant> v = StoreValue(table, d.column, box ? CutToBytes(box) : QString());
        if (!v) {
            // Said where it was typed, rather than written as 0 or dropped without a word.
            Tell(d.caption.trimmed() + QStringLiteral("に不適切な数値です。"));
            if (box) {
                box->setFocus();
                box->selectAll();
            }
            return false;
        }
        out << ColumnValue{d.column, *v};
    }
    return true;
}

void ShowFields(EntryForm& form, const QString& table, const std::function<QVariant(const QString&)>& value,
                const QStringList& skip)
{
    const QList<FieldDecl>& fields = form.fields();
    for (int i = 0; i < fields.size(); ++i) {
        const FieldDecl& d = fields[i];
        if (d.column.isEmpty() || skip.contains(d.column, Qt::CaseInsensitive) || !FieldActive(form, i)) continue;
        QWidget* w = FieldWidget(form, i);
        const QVariant v = value(d.column);
        if (auto* list = qobject_cast<QComboBox*>(w)) {
            FindListCode(list, NullToZero(v).toInt());
            continue;
        }
        auto* box = qobject_cast<QLineEdit*>(w);
        if (!box) continue;
        const FieldTag tag = parseTag(d.tag);
        if (tag.kind == 'N') {
            box->setText(IsMoneyColumn(table, d.column) ? FormatRight(Money::fromStore(v), tag.format)
                                                        : FormatRight(NullToZero(v).toDouble(), tag.format));
        } else if (IsNumberColumn(table, d.column)) {
            box->setText(FormatRight(NullToZero(v).toDouble(), QStringLiteral("##")));
        } else {
            box->setText(NullToEmpty(v));
        }
    }
}

void FitHelpLine(EntryForm& form)
{
    QLabel* help = form.message();
    if (!help) return;
    const QString longest = QStringLiteral("Up,Downで切り替え、↑で戻ります｡リターンキーで次の項目に移動｡Deleteでクリア");
    help->setMinimumWidth(help->fontMetrics().horizontalAdvance(longest) + 2 * help->frameWidth() + 12);
}

void ClearFieldsFrom(EntryForm& form, int fromField)
{
    mBureaucrat& bu = form.bureaucrat();
    for (int i = fromField; i < form.fields().size(); ++i) {
        QWidget* w = FieldWidget(form, i);
        if (auto* list = qobject_cast<QComboBox*>(w)) {
            const int item = bu.itemOf(true, int(form.cbox().indexOf(list)));
            const bool star = item >= 0 && bu.Items[item].Star;
            list->setCurrentIndex(star && list->count() > 0 ? 0 : -1);
        } else if (auto* box = qobject_cast<QLineEdit*>(w)) {
            box->clear();
        }
    }
}

QLabel* SideLabel(const EntryForm& form, int field)
{
    QWidget* w = FieldWidget(form, field);
    int row = -1;
    QGridLayout* grid = w ? gridOf(form.layout(), w, &row) : nullptr;
    if (!grid) return nullptr;
    QLayoutItem* item = grid->itemAtPosition(row, 2);
    return item ? qobject_cast<QLabel*>(item->widget()) : nullptr;
}

void PlaceRows(const EntryForm& form, const QList<int>& fields)
{
    struct Row { QWidget* cells[3] = {}; };
    QList<Row> rows;
    QList<int> numbers;
    QGridLayout* grid = nullptr;
    for (int f : fields) {
        QWidget* w = FieldWidget(form, f);
        int row = -1;
        QGridLayout* g = w ? gridOf(form.layout(), w, &row) : nullptr;
        if (!g || (grid && g != grid)) return;
        grid = g;
        Row r;
        for (int c = 0; c < 3; ++c)
            if (QLayoutItem* item = grid->itemAtPosition(row, c)) r.cells[c] = item->widget();
        rows << r;
        numbers << row;
    }
    if (!grid) return;
    std::sort(numbers.begin(), numbers.end());
    for (const Row& r : rows)
        for (QWidget* w : r.cells)
            if (w) grid->removeWidget(w);
    for (int i = 0; i < rows.size(); ++i) {
        const Row& r = rows[i];
        if (r.cells[0]) grid->addWidget(r.cells[0], numbers[i], 0);
        if (r.cells[1]) grid->addWidget(r.cells[1], numbers[i], 1, Qt::AlignLeft);
        if (r.cells[2]) grid->addWidget(r.cells[2], numbers[i], 2);
    }
}

void HideFieldRow(const EntryForm& form, int field)
{
    if (QLabel* cap = form.caption(field)) cap->setVisible(false);
    if (QLabel* side = SideLabel(form, field)) side->setVisible(false);
}

std::optional<QString> LookUp(QWidget* form, const QString& table, const QString& filter1, const QString& filter2)
{
    Help_frm* help = HelpForm();
    help->Init(table, filter1, filter2);
    help->exec();
    if (form) form->activateWindow();   // the list has no owner; the keyboard comes back here
    if (!help->Hit()) return std::nullopt;
    return help->HitCode();
}
