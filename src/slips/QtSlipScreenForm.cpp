#include "slips/QtSlipScreenForm.h"

#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "entry/KeyCodes.h"
#include "entry/QtChoiceLists.h"
#include "entry/QtFormBuilder.h"
#include "entry/QtKeys.h"
#include "entry/QtListFields.h"
#include "shell/Session.h"
#include "slips/QtSlipScreens.h"

using SlipScreens::framed;

SlipScreenForm::SlipScreenForm(QWidget* parent, int tanList) : QWidget(parent), tanList_(tanList)
{
    setAttribute(Qt::WA_DeleteOnClose);
    bu_.Form = this;
    setFont(screenFont());
}

// ---- layout

QVBoxLayout* SlipScreenForm::buildFrame()
{
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(14, 10, 14, 10);
    outer->setSpacing(8);
    auto* top = new QHBoxLayout;
    title_ = new QLabel(this);
    title_->setFont(screenFont(16));
    office_ = framed(this, Qt::AlignCenter);
    office_->setText(session().EigNamae.trimmed());
    office_->setMinimumWidth(140);
    mode_ = framed(this, Qt::AlignCenter);
    mode_->setMinimumWidth(70);
    top->addWidget(title_);
    top->addStretch(1);
    top->addWidget(office_);
    top->addWidget(mode_);
    outer->addLayout(top);
    return outer;
}

QHBoxLayout* SlipScreenForm::buildHeadFields(QWidget* w, const QList<const char*>& tags, const QList<int>& widths,
                                             const QList<int>& listWidths)
{
    const int half = halfWidth();
    for (int i = 0; i < tags.size(); ++i) {
        auto* b = new QLineEdit(w);
        b->setProperty("Tag", QString::fromLatin1(tags[i]));
        b->setFixedWidth(half * widths[i] + 12);
        b->installEventFilter(this);
        ebox_ << b;
    }
    for (int width : listWidths) {
        auto* c = new QComboBox(w);
        c->setFixedWidth(half * width + 30);
        c->installEventFilter(this);
        cbox_ << c;
    }
    auto* date = new QHBoxLayout;
    weekday_ = SlipScreens::addDateRow(date, w, ebox_[YearItem], ebox_[YearItem + 1], ebox_[DayBox]);
    return date;
}

void SlipScreenForm::addButtons(QVBoxLayout* v, QWidget* w, const QStringList& names, QPushButton** commands)
{
    auto* buttons = new QHBoxLayout;
    for (int i = 0; i < names.size(); ++i) {
        commands[i] = new QPushButton(names[i], w);
        commands[i]->setFocusPolicy(Qt::NoFocus);
        buttons->addWidget(commands[i]);
    }
    v->addLayout(buttons);
    message_ = framed(w);
    v->addWidget(message_);
}

int SlipScreenForm::halfWidth() const { return QFontMetrics(font()).horizontalAdvance(QLatin1Char('0')); }

// ---- head

void SlipScreenForm::pushPartnerHead()
{
    PartnerHead& h = headEditor().partnerHead();
    h.Dno = ebox_[NumberBox]->text();
    h.Year = ebox_[YearItem]->text().trimmed();
    h.Month = ebox_[YearItem + 1]->text().trimmed();
    h.Day = ebox_[DayBox]->text().trimmed();
    h.ClassCode = SlipScreens::listCode(cbox_[ClassItem]);
    h.Partner = SlipScreens::listCode(cbox_[PartnerItem]);
    h.NouCode = headEditor().customers() ? SlipScreens::listCode(cbox_[NouItem]) : std::nullopt;
    h.TanCode = SlipScreens::listCode(cbox_[tanList_]);
}

void SlipScreenForm::pullLists()
{
    const SlipHeadEditor& ed = headEditor();
    const QList<ListEntry>* entries[] = {&ed.classEntries, &ed.partnerEntries, &ed.nouEntries, &ed.tanEntries};
    const int lists[] = {ClassItem, PartnerItem, NouItem, tanList_};
    for (int i = 0; i < 4; ++i) {
        QComboBox* list = cbox_[lists[i]];
        if (*entries[i] == shown_[i] && list->count() == entries[i]->size()) continue;
        setListEntries(list, *entries[i]);
        shown_[i] = *entries[i];
    }
}

void SlipScreenForm::forgetShownLists()
{
    for (QList<ListEntry>& s : shown_) s.clear();
}

void SlipScreenForm::pullPartnerHead()
{
    pullLists();
    const PartnerHead& h = headEditor().partnerHead();
    SlipScreens::setTextIfChanged(ebox_[NumberBox], h.Dno);
    SlipScreens::setTextIfChanged(ebox_[YearItem], h.Year);
    SlipScreens::setTextIfChanged(ebox_[YearItem + 1], h.Month);
    SlipScreens::setTextIfChanged(ebox_[DayBox], h.Day);
    SlipScreens::selectCode(cbox_[ClassItem], h.ClassCode);
    SlipScreens::selectCode(cbox_[PartnerItem], h.Partner);
    if (headEditor().customers()) SlipScreens::selectCode(cbox_[NouItem], h.NouCode);
    SlipScreens::selectCode(cbox_[tanList_], h.TanCode);
}

void SlipScreenForm::numberEnter(int& keyCode)
{
    pushHead();
    const SlipHeadEditor::NumberOutcome outcome = headEditor().enterNumber();
    if (outcome == SlipHeadEditor::NumberOutcome::Unchanged) return;
    if (outcome == SlipHeadEditor::NumberOutcome::New) {
        bu_.clearDisplay();
        bu_.State = QStringLiteral("NEW");
        pullAll();
        mode_->setText(QStringLiteral("新規"));
        return;
    }
    bu_.State = QStringLiteral("EDIT");
    pullAll();
    mode_->setText(QStringLiteral("参照"));
    ebox_[NumberBox]->selectAll();
    keyCode = 0;
}

void SlipScreenForm::typeNumber(const QString& number)
{
    ebox_[NumberBox]->setText(number);
    int key = vbKeyReturn;
    numberEnter(key);
    if (key != 0) bu_.eboxKeyDown(NumberBox, key, 0);
}

void SlipScreenForm::focusNumber()
{
    bu_.focusItem(0);
    // The counter offered is replaced by the first digit typed.
    ebox_[NumberBox]->selectAll();
}

void SlipScreenForm::focusFor(SlipFocus f)
{
    switch (f) {
    case SlipFocus::Number: focusNumber(); break;
    case SlipFocus::Year: bu_.focusItem(1); break;
    case SlipFocus::Partner: bu_.focusItem(5); break;
    case SlipFocus::Nou: bu_.focusItem(6); break;
    case SlipFocus::FirstRowKind: focusFirstRow(); break;
    case SlipFocus::None: break;
    }
}

void SlipScreenForm::lookupInList(int index)
{
    pushHead();
    SlipHeadEditor& ed = headEditor();
    const bool partner = index == PartnerItem, hadClass = ed.partnerHead().ClassCode.has_value();
    const bool picked = SlipScreens::pickIntoList(cbox_[index], partner ? ed.partnerLookup() : ed.classLookup(), [&] {
        // The whole list first, so that the picked partner is in it.
        if (!partner || hadClass) return;
        ed.partnerHead().Partner.reset();
        ed.classLeft();
        pullLists();
    });
    if (!picked) return;
    // A pick acts as Enter on the list. Leaving it is done here: after the lookup window the
    // focus may move on without the list ever being told.
    bu_.Typed.clear();
    leaveList(index, vbKeyReturn, 0);
}

void SlipScreenForm::leaveList(int index, int keyCode, int shift)
{
    if (!listLeft(index)) return;
    leaving_ = true;
    bu_.cboxKeyDown(index, keyCode, shift);
    leaving_ = false;
}

bool SlipScreenForm::partnerMissing(int index, int key)
{
    QComboBox* list = cbox_[index];
    if (key == vbKeyReturn && !bu_.Typed.isEmpty() && bu_.Typed.size() <= 9) FindListCode(list, bu_.Typed.toInt());
    if (index != PartnerItem || list->currentIndex() >= 0) return false;
    bu_.Typed.clear();
    QApplication::beep();
    return true;
}

bool SlipScreenForm::headKey(bool isList, int index, int key, int shift)
{
    int keyCode = key;
    const bool forward = key == vbKeyReturn || key == vbKeyDown || (key == vbKeyTab && shift != vbShiftMask);
    if (!isList && index == NumberBox && (key == vbKeyReturn || (key == vbKeyTab && shift != vbShiftMask)))
        numberEnter(keyCode);
    else if (ownHeadKey(isList, index, key, shift, forward))
        return true;
    if (keyCode != 0) {
        if (isList) bu_.cboxKeyDown(index, keyCode, shift);
        else bu_.eboxKeyDown(index, keyCode, shift);
    }
    if (!isList && index >= YearItem && index <= DayBox && forward) {
        pushHead();
        headEditor().refreshWeekday();
        weekday_->setText(headEditor().weekday);
    }
    const bool handled = key == vbKeyTab || key == vbKeyReturn || key == vbKeyUp || key == vbKeyDown
                         || key == vbKeyEscape;
    return keyCode == 0 || keyCode != key || handled;
}

// ---- events

bool SlipScreenForm::leftByTheClerk(QEvent* event)
{
    // A message or a list's popup taking the focus is not leaving the field.
    const Qt::FocusReason r = static_cast<QFocusEvent*>(event)->reason();
    return r != Qt::ActiveWindowFocusReason && r != Qt::PopupFocusReason;
}

bool SlipScreenForm::eventFilter(QObject* watched, QEvent* event)
{
    const int e = ebox_.indexOf(qobject_cast<QLineEdit*>(watched));
    const int c = cbox_.indexOf(qobject_cast<QComboBox*>(watched));
    if (e < 0 && c < 0) return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::FocusIn:
        if (e >= 0) {
            // Two mode captions only: the controller's "修正" never shows, a saved slip stays
            // "参照" while it is amended.
            const QString caption = mode_->text();
            bu_.eboxGotFocus(e);
            mode_->setText(headEditor().mode == QLatin1String("EDIT") ? QStringLiteral("参照") : caption);
        } else {
            bu_.cboxGotFocus(c);
        }
        break;
    case QEvent::FocusOut:
        if (!leftByTheClerk(event)) break;
        if (e >= 0) bu_.DecideEBoxLength(ebox_[e]);
        else listLeft(c);
        break;
    case QEvent::KeyPress: {
        auto* k = static_cast<QKeyEvent*>(event);
        const int key = vbKeyCode(k);
        if (key >= vbKeyF1 && key <= vbKeyF12) {
            doFunctionKey(key);
            return true;
        }
        return c >= 0 ? headKey(true, c, key, vbShift(k)) : headKey(false, e, key, vbShift(k));
    }
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void SlipScreenForm::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (shownOnce_) return;
    shownOnce_ = true;
    focusNumber();
}

void SlipScreenForm::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    SlipScreens::showCaller(this);
}
