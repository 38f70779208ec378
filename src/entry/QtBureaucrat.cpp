#include "entry/QtBureaucrat.h"

#include <algorithm>
#include <QComboBox>
#include <QFont>
#include <QLabel>
#include <QLineEdit>
#include <QVariant>

#include "entry/ChoiceLists.h"
#include "entry/Convert.h"
#include "entry/FieldTag.h"
#include "entry/KeyCodes.h"
#include "entry/QtListFields.h"
#include "entry/Recordset.h"
#include "store/Session.h"

namespace {
const QString kMsgText = QStringLiteral("↑で戻ります｡リターンキーで次の項目に移動｡");
const QString kMsgList = QStringLiteral("Up,Downで切り替え、↑で戻ります｡リターンキーで次の項目に移動｡Deleteでクリア");
const QString kMsgRec = QStringLiteral("リターンキーで登録、↑で前に戻る。");

template <class T>
T* at(const QList<T*>& list, int i)
{
    return i >= 0 && i < list.size() ? list[i] : nullptr;
}

// The item number in the first entry of a list as designed: "05" or "05*".
int listItemNumber(const QString& first)
{
    QString digits = first.trimmed();
    if (digits.endsWith(QLatin1Char('*'))) digits.chop(1);
    bool ok = false;
    const int n = digits.toInt(&ok);
    return ok && !digits.isEmpty() && n >= 0 && n < mBureaucrat::MaxItems ? n : -1;
}
}  // namespace

qint64 CodeNumber(const QString& text)
{
    const QString digits = DigitText(text);
    // More digits than any code has: a number no row can carry.
    if (digits.size() > 18) return 999999999999999999LL;
    return digits.toLongLong();
}

void mBureaucrat::formLoad(int itemCount, int eboxCount, int cboxCount, bool autoCode)
{
    AutoCode = autoCode;
    ItemCount = std::clamp(itemCount, 0, MaxItems);
    EboxCount = eboxCount;
    CboxCount = cboxCount;
    State = QStringLiteral("VIEW");
    for (int i = 0; i < MaxItems; ++i) {
        Items[i] = EntryItem();
        Items[i].Active = i < ItemCount;
    }
    if (!Form) return;

    QList<std::pair<int, QWidget*>> order;
    const QList<QLineEdit*> eboxes = Form->ebox();
    for (int i = 0; i < std::min<int>(EboxCount, eboxes.size()); ++i) {
        QLineEdit* box = eboxes[i];
        box->setVisible(true);
        // A box whose tag does not follow the grammar is left out of the keyboard order.
        const FieldTag tag = parseTag(box->property("Tag").toString());
        if (!tag.valid) continue;
        EntryItem& it = Items[tag.item];
        it.Index = i;
        it.Kind = QString(QLatin1Char(tag.kind));
        if (tag.kind == 'S') {
            it.Length = tag.maxBytes;
            box->setMaxLength(it.Length);
        } else {
            it.Format = tag.format;
            box->setMaxLength(int(tag.format.size()));
            QFont f = box->font();
            f.setFamily(QStringLiteral("ＭＳ 明朝"));
            box->setFont(f);
            box->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        }
        box->clear();
        order << std::pair<int, QWidget*>(tag.item, box);
    }
    const QList<QComboBox*> lists = Form->cbox();
    for (int i = 0; i < std::min<int>(CboxCount, lists.size()); ++i) {
        QComboBox* list = lists[i];
        list->setVisible(true);
        const QString first = list->count() > 0 ? list->itemText(0) : QString();
        const int item = listItemNumber(first);
        ClearList(list);
        if (item < 0) continue;
        EntryItem& it = Items[item];
        it.Kind = QStringLiteral("C");
        it.Index = i;
        it.Star = first.trimmed().endsWith(QLatin1Char('*'));
        order << std::pair<int, QWidget*>(item, list);
    }
    // An item no control declares (a tag past item 50, a misspelt tag) cannot take the focus.
    for (int i = 0; i < ItemCount; ++i)
        if (Items[i].Kind.isEmpty()) Items[i].Active = false;
    CurItem = 0;
    CurCode = 0;

    std::stable_sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    if (QWidget* rec = Form->RecField()) order << std::pair<int, QWidget*>(MaxItems, rec);
    for (int i = 1; i < order.size(); ++i) QWidget::setTabOrder(order[i - 1].second, order[i].second);
}

void mBureaucrat::makeCBox(const QString& sql, int index) { fillList(sql, index, QStringLiteral("Namae")); }
void mBureaucrat::makeCBoxRyaku(const QString& sql, int index) { fillList(sql, index, QStringLiteral("Ryaku")); }
void mBureaucrat::MakeCBoxNou(const QString& sql, int index) { fillList(sql, index, QStringLiteral("Ryaku")); }

void mBureaucrat::fillList(const QString& sql, int index, const QString& textField)
{
    QComboBox* list = Form ? at(Form->cbox(), index) : nullptr;
    if (!list) return;
    ClearList(list);
    for (const ListEntry& e : FillEntries(session().MasterDb, sql, {}, textField, QStringLiteral("Code")))
        list->addItem(e.text, QVariant(e.code));
    list->setCurrentIndex(-1);
}

void mBureaucrat::clearDisplay()
{
    if (!Form) return;
    const QList<QLineEdit*> eboxes = Form->ebox();
    const QList<QComboBox*> lists = Form->cbox();
    for (int i = 0; i < ItemCount; ++i) {
        const EntryItem& it = Items[i];
        if (!it.Active) continue;
        if (it.Kind == QLatin1String("C")) {
            if (QComboBox* list = at(lists, it.Index)) list->setCurrentIndex(it.Star && list->count() > 0 ? 0 : -1);
        } else if (!it.Kind.isEmpty()) {
            if (QLineEdit* box = at(eboxes, it.Index)) box->clear();
        }
    }
    focusItem(0);
}

void mBureaucrat::focusItem(int item)
{
    if (!Form || item < 0 || item >= MaxItems) return;
    const EntryItem& it = Items[item];
    QWidget* w = nullptr;
    if (it.Kind == QLatin1String("C")) w = at(Form->cbox(), it.Index);
    else if (!it.Kind.isEmpty()) w = at(Form->ebox(), it.Index);
    if (!w || !w->isVisibleTo(w->window()) || !w->isEnabled()) return;
    w->setFocus(Qt::OtherFocusReason);
    // The focus event sets the item too; this keeps the order right before the window is active.
    if (w->window()->focusWidget() == w) CurItem = item;
}

int mBureaucrat::itemOf(bool list, int index) const
{
    for (int i = 0; i < MaxItems; ++i) {
        const EntryItem& it = Items[i];
        if (it.Index != index || it.Kind.isEmpty()) continue;
        if ((it.Kind == QLatin1String("C")) == list) return i;
    }
    return -1;
}

qint64 mBureaucrat::NextCode()
{
    Recordset* rs = Form ? Form->myrs() : nullptr;
    if (!rs) return 1;
    rs->Requery();
    if (rs->isEmpty()) return 1;
    rs->MoveLast();
    return rs->keys().last() + 1;
}

bool mBureaucrat::NextItem()
{
    ++CurItem;
    while (CurItem < ItemCount && !Items[CurItem].Active) ++CurItem;
    if (CurItem < ItemCount) return true;
    CurItem = ItemCount;
    setMessage(kMsgRec);
    if (Form && Form->RecField()) Form->RecField()->setFocus(Qt::OtherFocusReason);
    return false;
}

void mBureaucrat::PrevItem()
{
    if (CurItem <= 0) return;
    --CurItem;
    while (CurItem > 0 && !Items[CurItem].Active) --CurItem;
}

void mBureaucrat::moveLastItem()
{
    for (int i = ItemCount - 1; i >= 0; --i) {
        if (!Items[i].Active) continue;
        CurItem = i;
        focusItem(i);
        return;
    }
}

void mBureaucrat::setVisibleFalse(const QString& kind, int index)
{
    if (!Form) return;
    const bool list = kind != QLatin1String("E");
    const int item = itemOf(list, index);
    if (item >= 0) Items[item].Active = false;
    QWidget* w = list ? static_cast<QWidget*>(at(Form->cbox(), index)) : static_cast<QWidget*>(at(Form->ebox(), index));
    if (w) w->setVisible(false);
}

QString mBureaucrat::CutToLength(QLineEdit* box)
{
    return ::CutToBytes(box);
}

void mBureaucrat::DecideEBoxLength(QLineEdit* box)
{
    if (!box) return;
    const QString cut = CutToLength(box);
    if (cut != box->text()) box->setText(cut);
}

void mBureaucrat::normalise(int item)
{
    if (!Form || item < 0 || item >= ItemCount) return;
    const EntryItem& it = Items[item];
    QLineEdit* box = at(Form->ebox(), it.Index);
    if (!box || it.Kind == QLatin1String("C")) return;
    if (it.Kind == QLatin1String("N")) box->setText(FormatRight(ToNum(box->text()), it.Format));
    else if (it.Kind == QLatin1String("S")) DecideEBoxLength(box);
}

void mBureaucrat::setMode(const QString& caption)
{
    if (Form && Form->mode()) Form->mode()->setText(caption);
}

void mBureaucrat::setMessage(const QString& text)
{
    if (Form && Form->message()) Form->message()->setText(text);
}

void mBureaucrat::eboxKeyDown(int index, int& keyCode, int shift)
{
    if (!Form) return;
    if (keyCode == vbKeyTab) keyCode = shift == vbShiftMask ? vbKeyUp : vbKeyReturn;

    Recordset* rs = Form->myrs();
    if (index == 0 && AutoCode && rs && (keyCode == vbKeyReturn || keyCode == vbKeyDown)) {
        QLineEdit* box = at(Form->ebox(), 0);
        qint64 number = box ? CodeNumber(box->text()) : 0;
        if (number == 0) {
            const qint64 next = NextCode();
            if (next > 0 && box) {
                box->setText(QString::number(next));
                number = next;
            }
        }
        if (number != CurCode) {
            if (rs->FindFirst(number)) {
                State = QStringLiteral("EDIT");
                Form->Display();
                setMode(QStringLiteral("参照"));
                if (box) box->selectAll();
                CurCode = number;
                keyCode = 0;
                return;
            }
            State = QStringLiteral("NEW");
            const qint64 remembered = number;
            clearDisplay();
            if (box) box->setText(QString::number(remembered));
            setMode(QStringLiteral("新規"));
            CurCode = number;
        }
    }

    switch (keyCode) {
    case vbKeyReturn:
    case vbKeyDown:
        normalise(CurItem);
        if (NextItem()) focusItem(CurItem);
        return;
    case vbKeyUp:
        normalise(CurItem);
        PrevItem();
        focusItem(CurItem);
        return;
    case vbKeyEscape: Action(QStringLiteral("CLOSE")); keyCode = 0; return;
    case vbKeyF1: Action(QStringLiteral("CLEAR")); keyCode = 0; return;
    case vbKeyF10: Action(QStringLiteral("REGISTER")); keyCode = 0; return;
    case vbKeyF2: Action(QStringLiteral("DELETE")); keyCode = 0; return;
    default: return;
    }
}

void mBureaucrat::cboxKeyDown(int index, int& keyCode, int shift)
{
    if (!Form) return;
    if (keyCode == vbKeyTab) keyCode = shift == vbShiftMask ? vbKeyUp : vbKeyReturn;
    if (keyCode >= vbKeyNumpad0 && keyCode <= vbKeyNumpad9) Typed += QChar(u'0' + (keyCode - vbKeyNumpad0));
    QComboBox* list = at(Form->cbox(), index);
    if (!Typed.isEmpty() && keyCode == vbKeyReturn && list) {
        if (Typed.size() > 9) list->setCurrentIndex(-1);
        else FindListCode(list, Typed.toInt());
    }
    switch (keyCode) {
    case vbKeyReturn:
    case vbKeyDown:
        if (NextItem()) focusItem(CurItem);
        break;
    case vbKeyUp:
        PrevItem();
        focusItem(CurItem);
        break;
    case vbKeyDelete:
        if (list) {
            const int item = itemOf(true, index);
            list->setCurrentIndex(item >= 0 && Items[item].Star && list->count() > 0 ? 0 : -1);
        }
        break;
    case vbKeyEscape: Action(QStringLiteral("CLOSE")); keyCode = 0; break;
    case vbKeyF1: Action(QStringLiteral("CLEAR")); keyCode = 0; break;
    case vbKeyF10: Action(QStringLiteral("REGISTER")); keyCode = 0; break;
    // No deleting from a list: the key goes nowhere.
    case vbKeyF2: keyCode = 0; break;
    default: break;
    }
    // The list's own selection must not move with the arrows; Page Up/Down still switch it.
    if (keyCode == vbKeyUp || keyCode == vbKeyDown) keyCode = 0;
}

void mBureaucrat::eboxGotFocus(int index)
{
    setMessage(kMsgText);
    const int item = itemOf(false, index);
    if (item >= 0) CurItem = item;
    if (Form) SelectAll(at(Form->ebox(), index));
    if (State == QLatin1String("EDIT") && index >= 1) setMode(QStringLiteral("修正"));
}

void mBureaucrat::cboxGotFocus(int index)
{
    setMessage(kMsgList);
    Typed.clear();
    const int item = itemOf(true, index);
    if (item >= 0) CurItem = item;
}

void mBureaucrat::Action(const QString& command)
{
    if (!Form) return;
    if (command == QLatin1String("CLEAR")) {
        clearDisplay();
        if (AutoCode) CurCode = 0;
        else Form->clearDisplay();
    } else if (command == QLatin1String("CLOSE")) {
        Form->Unload();
    } else if (command == QLatin1String("REGISTER")) {
        if (AutoCode) {
            Recordset* rs = Form->myrs();
            QLineEdit* box = at(Form->ebox(), 0);
            const bool found = rs && box && rs->FindFirst(CodeNumber(box->text()));
            Form->Register(found ? QStringLiteral("EDIT") : QStringLiteral("NEW"));
            clearDisplay();
        } else {
            Form->Register(State);
        }
        setMode(QStringLiteral("参照"));
        State = QStringLiteral("VIEW");
        CurCode = 0;
    } else if (command == QLatin1String("DELETE")) {
        if (Form->deleteRec()) {
            clearDisplay();
            CurCode = 0;
        }
    }
}
