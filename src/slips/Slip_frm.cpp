#include "slips/Slip_frm.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "entry/Convert.h"
#include "entry/KeyCodes.h"
#include "entry/QtChoiceLists.h"
#include "entry/QtFormBuilder.h"
#include "entry/QtKeys.h"
#include "entry/QtListFields.h"
#include "shell/Dialogs.h"
#include "shell/MenuPrompts.h"
#include "shell/QtMenuRun.h"
#include "shell/QtScreens.h"
#include "shell/Session.h"
#include "shell/main_menu_frm.h"
#include "slips/QtSlipPrint.h"
#include "slips/QtSlipScreens.h"
#include "slips/SlipRegister.h"

using namespace SlipScreens;

namespace {
Slip_frm::SlipListPicker& slipListHook()
{
    static Slip_frm::SlipListPicker f;
    return f;
}

// The keys the four lists ignore while a saved slip is amended; Enter, the arrows that move
// the focus, Tab and Esc still work.
bool movesOnly(int key)
{
    return key == vbKeyReturn || key == vbKeyUp || key == vbKeyDown || key == vbKeyTab || key == vbKeyEscape;
}
}  // namespace

void Slip_frm::setLookup(Lookup f) { SlipScreens::setLookup(std::move(f)); }
void Slip_frm::setPlainQuestion(PlainQuestion f) { SlipScreens::setPlainQuestion(std::move(f)); }
void Slip_frm::setSlipListPicker(SlipListPicker f) { slipListHook() = std::move(f); }

Slip_frm::Slip_frm(QWidget* parent) : QWidget(parent), ed_(session().MenuKey)
{
    setAttribute(Qt::WA_DeleteOnClose);
    bu_.Form = this;
    session().SlipDate = QDate::currentDate();
    setFont(screenFont());
    setWindowTitle(ed_.title());
    build();

    // The lists name their item in their first entry until the controller has read it.
    const char* items[] = {"04", "05", "06", "07*", "08"};
    for (int i = 0; i < cbox_.size(); ++i) cbox_[i]->addItem(QString::fromLatin1(items[i]));
    bu_.formLoad(11, int(ebox_.size()), int(cbox_.size()), false);
    if (!ed_.sales()) {
        bu_.setVisibleFalse(QStringLiteral("C"), NouList);
        nouCaption_->setVisible(false);
    }
    ed_.loadLists();
    clearDisplay();
    clearLines();
}

Slip_frm::~Slip_frm() = default;

// ---- widgets <-> editor

void Slip_frm::pushHead()
{
    SlipHead& h = ed_.head;
    h.Dno = ebox_[DnoBox]->text();
    h.Year = ebox_[YearBox]->text().trimmed();
    h.Month = ebox_[MonthBox]->text().trimmed();
    h.Day = ebox_[DayBox]->text().trimmed();
    h.SNo = ebox_[SNoBox]->text();
    h.Tekiyo = ebox_[TekiyoBox]->text();
    h.ClassCode = listCode(cbox_[ClassList]);
    h.Partner = listCode(cbox_[PartnerList]);
    h.NouCode = ed_.sales() ? listCode(cbox_[NouList]) : std::nullopt;
    h.Kubun = cbox_[KubunList]->currentIndex();
    h.TanCode = listCode(cbox_[TanList]);
}

void Slip_frm::pullLists()
{
    const QList<ListEntry>* entries[] = {&ed_.classEntries, &ed_.partnerEntries, &ed_.nouEntries, nullptr,
                                         &ed_.tanEntries};
    for (int i = 0; i < 5; ++i) {
        if (!entries[i] || *entries[i] == shown_[i]) continue;
        setListEntries(cbox_[i], *entries[i]);
        shown_[i] = *entries[i];
    }
}

void Slip_frm::pullHead()
{
    pulling_ = true;
    pullLists();
    const SlipHead& h = ed_.head;
    setTextIfChanged(ebox_[DnoBox], h.Dno);
    setTextIfChanged(ebox_[YearBox], h.Year);
    setTextIfChanged(ebox_[MonthBox], h.Month);
    setTextIfChanged(ebox_[DayBox], h.Day);
    setTextIfChanged(ebox_[SNoBox], h.SNo);
    setTextIfChanged(ebox_[TekiyoBox], h.Tekiyo);
    selectCode(cbox_[ClassList], h.ClassCode);
    selectCode(cbox_[PartnerList], h.Partner);
    if (ed_.sales()) selectCode(cbox_[NouList], h.NouCode);
    cbox_[KubunList]->setCurrentIndex(h.Kubun < cbox_[KubunList]->count() ? h.Kubun : -1);
    selectCode(cbox_[TanList], h.TanCode);
    setSettlementColour();
    pulling_ = false;
}

void Slip_frm::pullLabels()
{
    weekday_->setText(ed_.weekday);
    sime_->setText(ed_.simeText);
    zei_->setText(ed_.zeiNotice);
    const QString* t[] = {&ed_.totals.net, &ed_.totals.zei, &ed_.totals.total, &ed_.totals.profit, &ed_.totals.rate};
    for (int i = 0; i < 5; ++i) totals_[i]->setText(t[i]->trimmed());
}

void Slip_frm::pullAll()
{
    pullHead();
    pullLabels();
    pullRows();
}

void Slip_frm::setSettlementColour()
{
    // Cash slips stand out.
    cbox_[KubunList]->setStyleSheet(cbox_[KubunList]->currentIndex() == 1
                                        ? QStringLiteral("QComboBox { background-color: #ffe0c0; }")
                                        : QString());
}

// ---- head

void Slip_frm::clearDisplay()
{
    ed_.clearDisplay();
    QComboBox* k = cbox_[KubunList];
    k->clear();
    k->addItems(ed_.settlementTexts());
    pullHead();
    pullLabels();
    mode_->clear();
}

void Slip_frm::clearLines()
{
    ed_.clearLines();
    pullRows();
    lastRow_ = 0;
    tip_->hide();
}

void Slip_frm::numberEnter(int& keyCode)
{
    pushHead();
    const SlipEditor::NumberOutcome outcome = ed_.enterNumber();
    if (outcome == SlipEditor::NumberOutcome::Unchanged) return;
    if (outcome == SlipEditor::NumberOutcome::New) {
        bu_.clearDisplay();
        bu_.State = QStringLiteral("NEW");
        pullAll();
        mode_->setText(QStringLiteral("新規"));
        return;
    }
    bu_.State = QStringLiteral("EDIT");
    pullAll();
    mode_->setText(QStringLiteral("参照"));
    ebox_[DnoBox]->selectAll();
    keyCode = 0;
}

void Slip_frm::listLeft(int index)
{
    if (pulling_ || leaving_) return;
    // The grid may hold text typed without Enter; it is read back before anything redraws it.
    pushHead();
    pushRows();
    switch (index) {
    case ClassList:
        ed_.classLeft();
        pullHead();
        break;
    case PartnerList:
        if (!ed_.head.Partner) return;
        if (ed_.sales() && ed_.head.NouCode) return;
        if (!ed_.partnerChosen()) {
            pullAll();
            bu_.focusItem(1);
            return;
        }
        pullAll();
        break;
    case KubunList:
        setSettlementColour();
        break;
    default:
        break;
    }
}

void Slip_frm::officeChange()
{
    ChangeOffice();
    // The menu shows the office too, and must not go on showing the old one.
    if (main_menu_frm* menu = main_menu_frm::instance()) menu->refreshHeader();
    clearDisplay();
    office_->setText(session().EigNamae.trimmed());
    bu_.Action(QStringLiteral("CLEAR"));
    clearLines();
    focusNumber();
}

void Slip_frm::focusNumber()
{
    bu_.focusItem(0);
    // The counter offered is replaced by the first digit typed.
    ebox_[DnoBox]->selectAll();
}

void Slip_frm::focusFor(SlipFocus f)
{
    switch (f) {
    case SlipFocus::Number: focusNumber(); break;
    case SlipFocus::Year: bu_.focusItem(1); break;
    case SlipFocus::Partner: bu_.focusItem(5); break;
    case SlipFocus::Nou: bu_.focusItem(6); break;
    case SlipFocus::FirstRowKind: focusCell(fKubun, 0); break;
    case SlipFocus::None: break;
    }
}

bool Slip_frm::saveSlip(bool print)
{
    pushAll();
    const SlipFocus f = ed_.checkSlip();
    pullAll();
    if (f != SlipFocus::None) {
        focusFor(f);
        return false;
    }
    if (!ed_.checkPeriod()) {
        bu_.focusItem(1);
        return false;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const SlipSaveResult r = ::Register(ed_, ed_.mode);
    QApplication::restoreOverrideCursor();
    pullAll();
    // A slip that could not be written stays on the screen as typed.
    if (!r.saved) return false;
    if (print) printAfterSave(ed_.kind(), r.dno);
    bu_.clearDisplay();
    clearDisplay();
    clearLines();
    bu_.State = QStringLiteral("VIEW");
    focusNumber();
    return true;
}

void Slip_frm::Register(const QString&) { saveSlip(false); }

void Slip_frm::deleteByKey()
{
    if (Ask(QStringLiteral("この伝票を削除してもよろしいですか？"), QStringLiteral("はい"), QStringLiteral("取消")))
        deleteShownSlip();
}

// Both delete paths end alike; only their questions differ.
void Slip_frm::deleteShownSlip()
{
    pushHead();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool done = cancelOldSlip(ed_);
    QApplication::restoreOverrideCursor();
    if (!done) return;
    bu_.Action(QStringLiteral("CLEAR"));
    clearLines();
    focusNumber();
}

void Slip_frm::deleteByButton()
{
    if (askPlain(QStringLiteral("Norbrin Data"), QStringLiteral("この伝票を削除してよろしいですか？"), true))
        deleteShownSlip();
}

void Slip_frm::lookupInList(int index)
{
    pushHead();
    const bool partner = index == PartnerList, hadClass = ed_.head.ClassCode.has_value();
    const bool picked = pickIntoList(cbox_[index], partner ? ed_.partnerLookup() : ed_.classLookup(), [&] {
        if (!partner || hadClass) return;
        ed_.head.Partner.reset();
        ed_.classLeft();
        pullLists();
    });
    if (!picked) return;
    // A pick acts as Enter on the list. Leaving it is done here: after the lookup window the
    // focus may move on without the list ever being told.
    bu_.Typed.clear();
    listLeft(index);
    if (focusWidget() != cbox_[index]) return;   // a refused date took the focus
    leaving_ = true;
    int key = vbKeyReturn;
    bu_.cboxKeyDown(index, key, 0);
    leaving_ = false;
}

void Slip_frm::pickSlipFromList()
{
    const QString partner = runLookup({ed_.partnerTable(), QStringLiteral("ALL"), QString()});
    if (partner.isEmpty() || !slipListHook()) return;
    const QString number = slipListHook()(ed_.kind(), partner.toLongLong());
    if (number.isEmpty()) return;
    ebox_[DnoBox]->setText(number);
    int key = vbKeyReturn;
    numberEnter(key);
    if (key != 0) bu_.eboxKeyDown(DnoBox, key, 0);
}

void Slip_frm::doFunctionKey(int keyCode)
{
    QWidget* fw = QApplication::focusWidget();
    const auto g = gridOf_.constFind(fw);
    const int row = g != gridOf_.constEnd() ? g->second : -1;
    switch (keyCode) {
    case vbKeyF1:
        bu_.Action(QStringLiteral("CLEAR"));
        clearDisplay();
        clearLines();
        focusNumber();
        break;
    case vbKeyF2: deleteByKey(); break;
    case vbKeyF3: if (row >= 0) lineDelete(row); break;
    case vbKeyF4: if (row >= 0) lineInsert(row); break;
    case vbKeyF6:
        if (fw == ebox_[DnoBox]) pickSlipFromList();
        else if (fw == cbox_[ClassList]) lookupInList(ClassList);
        else if (fw == cbox_[PartnerList]) lookupInList(PartnerList);
        else if (row >= 0) productLookup(row);
        break;
    case vbKeyF9: saveSlip(true); break;
    case vbKeyF10: saveSlip(false); break;
    default: break;
    }
}

void Slip_frm::Unload() { close(); }

// ---- events

bool Slip_frm::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == office_) {
        if (event->type() == QEvent::MouseButtonPress && static_cast<QMouseEvent*>(event)->button() == Qt::RightButton) {
            officeChange();
            return true;
        }
        return QWidget::eventFilter(watched, event);
    }
    const auto g = gridOf_.constFind(watched);
    const int e = ebox_.indexOf(qobject_cast<QLineEdit*>(watched));
    const int c = cbox_.indexOf(qobject_cast<QComboBox*>(watched));
    switch (event->type()) {
    case QEvent::FocusIn:
        if (g != gridOf_.constEnd()) gridFocusIn(g->first, g->second);
        else {
            tip_->hide();
            if (e >= 0) {
                // The slip screen has two mode captions only: the controller's "修正" never shows,
                // a saved slip stays "参照" while it is amended.
                const QString caption = mode_->text();
                bu_.eboxGotFocus(e);
                mode_->setText(ed_.mode == QLatin1String("EDIT") ? QStringLiteral("参照") : caption);
            } else if (c >= 0) {
                bu_.cboxGotFocus(c);
            }
        }
        break;
    case QEvent::FocusOut: {
        // A message or a list's popup taking the focus is not leaving the field.
        const Qt::FocusReason r = static_cast<QFocusEvent*>(event)->reason();
        if (r == Qt::ActiveWindowFocusReason || r == Qt::PopupFocusReason) break;
        if (g != gridOf_.constEnd()) gridLeft(g->first, g->second);
        else if (e >= 0) bu_.DecideEBoxLength(ebox_[e]);
        else if (c >= 0) listLeft(c);
        break;
    }
    case QEvent::Wheel:
        if (c >= 0 && c <= KubunList && ed_.mode == QLatin1String("EDIT")) return true;
        break;
    case QEvent::KeyPress:
        return keyPress(watched, static_cast<QKeyEvent*>(event));
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

bool Slip_frm::keyPress(QObject* watched, QKeyEvent* ev)
{
    const int key = vbKeyCode(ev);
    const int shift = vbShift(ev);
    const auto g = gridOf_.constFind(watched);
    const bool inGrid = g != gridOf_.constEnd();
    if (key >= vbKeyF1 && key <= vbKeyF12) {
        // The grid's kind list passes every function key but F7.
        if (!(inGrid && g->first == fKubun && key == vbKeyF7)) doFunctionKey(key);
        return true;
    }
    if (inGrid) return gridKey(g->first, g->second, key, shift);
    const int e = ebox_.indexOf(qobject_cast<QLineEdit*>(watched));
    const int c = cbox_.indexOf(qobject_cast<QComboBox*>(watched));
    if (e >= 0) return headKey(false, e, key, shift);
    if (c >= 0) {
        if (ed_.mode == QLatin1String("EDIT") && c <= KubunList && !movesOnly(key)) return true;
        return headKey(true, c, key, shift);
    }
    return false;
}

bool Slip_frm::headKey(bool isList, int index, int key, int shift)
{
    int keyCode = key;
    const bool forward = key == vbKeyReturn || key == vbKeyDown || (key == vbKeyTab && shift != vbShiftMask);
    if (!isList && index == DnoBox && (key == vbKeyReturn || (key == vbKeyTab && shift != vbShiftMask))) {
        numberEnter(keyCode);
    } else if (!isList && index == TekiyoBox && forward) {
        bu_.DecideEBoxLength(ebox_[TekiyoBox]);
        focusCell(fKubun, 0);
        return true;
    } else if (isList && index == PartnerList && forward) {
        // A code typed on the keypad chooses first; nothing chosen keeps the focus here.
        QComboBox* list = cbox_[PartnerList];
        if (key == vbKeyReturn && !bu_.Typed.isEmpty() && bu_.Typed.size() <= 9) FindListCode(list, bu_.Typed.toInt());
        if (list->currentIndex() < 0) {
            bu_.Typed.clear();
            QApplication::beep();
            return true;
        }
    }
    if (keyCode != 0) {
        if (isList) bu_.cboxKeyDown(index, keyCode, shift);
        else bu_.eboxKeyDown(index, keyCode, shift);
    }
    if (!isList && index >= YearBox && index <= DayBox && forward) {
        pushHead();
        ed_.refreshWeekday();
        pullLabels();
    }
    const bool handled = key == vbKeyTab || key == vbKeyReturn || key == vbKeyUp || key == vbKeyDown
                         || key == vbKeyEscape;
    return keyCode == 0 || keyCode != key || handled;
}

void Slip_frm::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (shownOnce_) return;
    shownOnce_ = true;
    focusNumber();
}

void Slip_frm::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    showCaller(this);
}
