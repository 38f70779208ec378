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
// the focus, Tab, Esc and the function keys still work.
bool movesOnly(int key)
{
    return key == vbKeyReturn || key == vbKeyUp || key == vbKeyDown || key == vbKeyTab || key == vbKeyEscape
           || (key >= vbKeyF1 && key <= vbKeyF12);
}
}  // namespace

void Slip_frm::setLookup(Lookup f) { SlipScreens::setLookup(std::move(f)); }
void Slip_frm::setPlainQuestion(PlainQuestion f) { SlipScreens::setPlainQuestion(std::move(f)); }
void Slip_frm::setSlipListPicker(SlipListPicker f) { slipListHook() = std::move(f); }

Slip_frm::Slip_frm(QWidget* parent) : SlipScreenForm(parent, TanList), ed_(session().MenuKey)
{
    session().SlipDate = QDate::currentDate();
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
    pushPartnerHead();
    SlipHead& h = ed_.head;
    h.SNo = ebox_[SNoBox]->text();
    h.Tekiyo = ebox_[TekiyoBox]->text();
    h.Kubun = cbox_[KubunList]->currentIndex();
}

void Slip_frm::pullHead()
{
    pulling_ = true;
    pullPartnerHead();
    const SlipHead& h = ed_.head;
    setTextIfChanged(ebox_[SNoBox], h.SNo);
    setTextIfChanged(ebox_[TekiyoBox], h.Tekiyo);
    cbox_[KubunList]->setCurrentIndex(h.Kubun < cbox_[KubunList]->count() ? h.Kubun : -1);
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

bool Slip_frm::listLeft(int index)
{
    if (pulling_ || leaving_) return true;
    // The grid may hold text typed without Enter; it is read back before anything redraws it.
    pushHead();
    pushRows();
    switch (index) {
    case ClassList:
        ed_.classLeft();
        pullHead();
        break;
    case PartnerList:
        if (!ed_.head.Partner) return true;
        if (ed_.sales() && ed_.head.NouCode) return true;
        if (!ed_.partnerChosen()) {
            pullAll();
            bu_.focusItem(1);
            return false;
        }
        pullAll();
        break;
    case KubunList:
        setSettlementColour();
        break;
    default:
        break;
    }
    return true;
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

void Slip_frm::pickSlipFromList()
{
    const QString partner = runLookup({ed_.partnerTable(), QStringLiteral("ALL"), QString()});
    if (partner.isEmpty() || !slipListHook()) return;
    const QString number = slipListHook()(ed_.kind(), partner.toLongLong());
    if (!number.isEmpty()) typeNumber(number);
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
    if (g == gridOf_.constEnd()) {
        if (event->type() == QEvent::FocusIn) tip_->hide();
        const int c = cbox_.indexOf(qobject_cast<QComboBox*>(watched));
        // The four lists of a saved slip are not changed by keys nor by the wheel.
        if (c >= 0 && c <= KubunList && ed_.mode == QLatin1String("EDIT")) {
            if (event->type() == QEvent::Wheel) return true;
            if (event->type() == QEvent::KeyPress && !movesOnly(vbKeyCode(static_cast<QKeyEvent*>(event)))) return true;
        }
        return SlipScreenForm::eventFilter(watched, event);
    }
    switch (event->type()) {
    case QEvent::FocusIn:
        gridFocusIn(g->first, g->second);
        break;
    case QEvent::FocusOut:
        if (leftByTheClerk(event)) gridLeft(g->first, g->second);
        break;
    case QEvent::KeyPress: {
        auto* k = static_cast<QKeyEvent*>(event);
        const int key = vbKeyCode(k);
        if (key >= vbKeyF1 && key <= vbKeyF12) {
            // The grid's kind list passes every function key but F7.
            if (!(g->first == fKubun && key == vbKeyF7)) doFunctionKey(key);
            return true;
        }
        return gridKey(g->first, g->second, key, vbShift(k));
    }
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

bool Slip_frm::ownHeadKey(bool isList, int index, int key, int, bool forward)
{
    if (!forward) return false;
    if (!isList && index == TekiyoBox) {
        bu_.DecideEBoxLength(ebox_[TekiyoBox]);
        focusCell(fKubun, 0);
        return true;
    }
    return isList && index == PartnerList && partnerMissing(index, key);
}
