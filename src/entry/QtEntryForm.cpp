#include "entry/QtEntryForm.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "entry/KeyCodes.h"
#include "entry/QtKeys.h"

EntryForm::EntryForm(QWidget* parent) : QWidget(parent)
{
    bu_.Form = this;
}

void EntryForm::buildForm(const QString& title, const QList<FieldDecl>& fields, bool autoCode, bool withListButton)
{
    fields_ = fields;
    built_ = buildEntryForm(this, title, fields, standardCommands(withListButton));
    for (QLineEdit* b : built_.ebox) b->installEventFilter(this);
    for (QComboBox* c : built_.cbox) c->installEventFilter(this);
    built_.recField->installEventFilter(this);
    for (int i = 0; i < built_.commands.size(); ++i)
        connect(built_.commands[i], &QPushButton::clicked, this, [this, i] { commandClick(i); });
    bu_.formLoad(int(fields.size()), int(built_.ebox.size()), int(built_.cbox.size()), autoCode);
}

QPushButton* EntryForm::Command(int i) const
{
    return i >= 0 && i < built_.commands.size() ? built_.commands[i] : nullptr;
}

QLabel* EntryForm::caption(int field) const
{
    return field >= 0 && field < built_.captions.size() ? built_.captions[field] : nullptr;
}

void EntryForm::Unload()
{
    close();
}

void EntryForm::commandClick(int index)
{
    switch (index) {
    case 0: bu_.Action(QStringLiteral("CLOSE")); break;
    case 1: bu_.Action(QStringLiteral("CLEAR")); break;
    case 2: bu_.Action(QStringLiteral("REGISTER")); break;
    case 3: bu_.Action(QStringLiteral("DELETE")); break;
    default: break;   // the list button only names the key
    }
}

void EntryForm::recFieldKeyDown(int& keyCode, int)
{
    if (keyCode == vbKeyReturn) {
        bu_.Action(QStringLiteral("REGISTER"));
        bu_.Action(QStringLiteral("CLEAR"));
    } else if (keyCode == vbKeyUp) {
        bu_.moveLastItem();
    }
    keyCode = 0;
}

void EntryForm::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (shown_) return;
    shown_ = true;
    for (int i = 0; i < bu_.ItemCount; ++i) {
        if (!bu_.Items[i].Active) continue;
        bu_.focusItem(i);
        break;
    }
}

bool EntryForm::eventFilter(QObject* watched, QEvent* event)
{
    const int e = built_.ebox.indexOf(qobject_cast<QLineEdit*>(watched));
    const int c = built_.cbox.indexOf(qobject_cast<QComboBox*>(watched));
    switch (event->type()) {
    case QEvent::FocusIn:
        if (e >= 0) bu_.eboxGotFocus(e);
        else if (c >= 0) bu_.cboxGotFocus(c);
        break;
    case QEvent::FocusOut: {
        // Another window taking the focus (a message, a list's popup) is not leaving the field.
        const Qt::FocusReason r = static_cast<QFocusEvent*>(event)->reason();
        if (e >= 0 && r != Qt::ActiveWindowFocusReason && r != Qt::PopupFocusReason) {
            // The box finishes its own leaving first (it drops its selection), so that a
            // check may select the text again.
            static_cast<QObject*>(built_.ebox[e])->event(event);
            bu_.DecideEBoxLength(built_.ebox[e]);
            eboxLeft(e);
            return true;
        }
        break;
    }
    case QEvent::KeyPress:
        return keyPress(watched, static_cast<QKeyEvent*>(event));
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

bool EntryForm::keyPress(QObject* watched, QKeyEvent* ev)
{
    const int original = vbKeyCode(ev);
    const int shift = vbShift(ev);
    int keyCode = original;
    if (watched == built_.recField) {
        recFieldKeyDown(keyCode, shift);
        return true;
    }
    const int e = built_.ebox.indexOf(qobject_cast<QLineEdit*>(watched));
    const int c = built_.cbox.indexOf(qobject_cast<QComboBox*>(watched));
    if (e < 0 && c < 0) return false;
    formKeyDown(c >= 0, c >= 0 ? c : e, keyCode, shift);
    if (keyCode != 0) {
        if (c >= 0) bu_.cboxKeyDown(c, keyCode, shift);
        else bu_.eboxKeyDown(e, keyCode, shift);
    }
    // Tab never moves the focus by itself, and a key the handlers changed or used up does
    // not reach the box.
    const bool handled = original == vbKeyTab || original == vbKeyReturn || original == vbKeyUp
                         || original == vbKeyDown || original == vbKeyEscape
                         || (original >= vbKeyF1 && original <= vbKeyF12);
    return keyCode == 0 || keyCode != original || handled;
}
