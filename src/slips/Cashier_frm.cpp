#include "slips/Cashier_frm.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "entry/Convert.h"
#include "entry/KeyCodes.h"
#include "entry/QtChoiceLists.h"
#include "entry/QtFormBuilder.h"
#include "entry/QtKeys.h"
#include "entry/QtListFields.h"
#include "shell/QtScreens.h"
#include "shell/Session.h"
#include "slips/CashRegister.h"
#include "slips/QtSlipScreens.h"

using namespace SlipScreens;

namespace {
Cashier_frm::CashListPicker& cashListHook()
{
    static Cashier_frm::CashListPicker f;
    return f;
}

bool isCashKind(const QString& kind) { return kind == QLatin1String("Dny") || kind == QLatin1String("Dsh"); }
}  // namespace

void Cashier_frm::setCashListPicker(CashListPicker f) { cashListHook() = std::move(f); }

Cashier_frm::Cashier_frm(QWidget* parent) : SlipScreenForm(parent, TanList), ed_(session().MenuKey)
{
    session().CashDate = QDate::currentDate();
    build();
    setKind(ed_.kind());
}

Cashier_frm::~Cashier_frm() = default;

void Cashier_frm::setKind(const QString& kind)
{
    ed_.setKind(kind);
    forgetShownLists();
    showKindCaptions();
    // The lists name their item in their first entry until the controller has read it.
    const char* items[] = {"04", "05", "06", "07"};
    for (int i = 0; i < cbox_.size(); ++i) {
        cbox_[i]->clear();
        cbox_[i]->addItem(QString::fromLatin1(items[i]));
    }
    bu_.formLoad(9, int(ebox_.size()), int(cbox_.size()), false);
    if (!ed_.deposit()) bu_.setVisibleFalse(QStringLiteral("C"), NouList);
    ed_.loadLists();
    clearDisplay();
    if (isVisible()) focusNumber();
}

Cashier_frm* Cashier_frm::openSlip(const QString& kind, long dno)
{
    if (!isCashKind(kind)) return nullptr;
    session().MenuKey = kind;
    auto* f = qobject_cast<Cashier_frm*>(::screen(QStringLiteral("Cashier_frm")));
    if (!f) return nullptr;
    if (f->ed_.kind() != kind) f->setKind(kind);
    f->show();
    f->raise();
    f->activateWindow();
    f->showNumber(dno);
    return f;
}

void Cashier_frm::showNumber(long dno)
{
    focusNumber();
    bu_.CurItem = 0;
    typeNumber(QString::number(dno));
}

// ---- widgets <-> editor

void Cashier_frm::pushHead()
{
    pushPartnerHead();
    ed_.head.NNo = ebox_[NNoBox]->text();
}

void Cashier_frm::pullHead()
{
    const bool was = pulling_;
    pulling_ = true;
    pullPartnerHead();
    setTextIfChanged(ebox_[NNoBox], ed_.head.NNo);
    weekday_->setText(ed_.weekday);
    pulling_ = was;
}

void Cashier_frm::pullPanel()
{
    const CashPanel& p = ed_.panel;
    setTextIfChanged(kurikoshi_, p.Kurikoshi);
    zandaka_->setText(p.Zandaka);
    for (int i = 0; i < CashPanel::MonthCount; ++i) {
        months_[i]->setText(p.Captions[i]);
        refers_[i]->setText(p.Refers[i]);
        results_[i]->setText(p.Results[i]);
    }
}

void Cashier_frm::pullAll()
{
    pullHead();
    pullRows();
    pullPanel();
}

// ---- head

void Cashier_frm::clearDisplay()
{
    ed_.clearHead();
    ed_.clearDisplay();
    pullAll();
    mode_->clear();
}

bool Cashier_frm::listLeft(int index)
{
    if (pulling_ || leaving_) return true;
    pushAll();
    switch (index) {
    case ClassList:
        ed_.classLeft();
        pullHead();
        break;
    case PartnerList:
        if (!ed_.head.Partner) return true;
        ed_.partnerChosen();
        pullHead();
        pullPanel();
        break;
    case NouList:
        // The panel follows the destination: one billed on its own has a ledger of its own.
        ed_.showPartnerMonths();
        pullPanel();
        break;
    default:
        break;
    }
    return true;
}

void Cashier_frm::saveSlip()
{
    pushAll();
    const SlipFocus f = ed_.checkSlip();
    if (f != SlipFocus::None) {
        focusFor(f);
        return;
    }
    if (!ed_.checkCashPeriod()) {
        bu_.focusItem(1);
        return;
    }
    // An amendment saves under the number it was opened with: another number typed over it
    // without Enter would take that slip's rows off instead.
    if (ed_.mode == QLatin1String("EDIT") && ed_.number() != ed_.loadedDno) {
        QApplication::beep();
        focusNumber();
        return;
    }
    const QString mode = ed_.mode.isEmpty() ? QStringLiteral("NEW") : ed_.mode;
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const SlipSaveResult r = ::Register(ed_, mode);
    QApplication::restoreOverrideCursor();
    // A slip that could not be written stays on the screen as typed.
    if (!r.saved) return;
    bu_.clearDisplay();
    clearDisplay();
    bu_.State = QStringLiteral("VIEW");
    focusNumber();
}

void Cashier_frm::Register(const QString&) { saveSlip(); }

void Cashier_frm::deleteSlip()
{
    if (!askPlain(QStringLiteral("Norbrin Data"), QStringLiteral("この伝票を削除してよろしいですか？"), true)) return;
    pushHead();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool done = reverseCashSlip(ed_);
    QApplication::restoreOverrideCursor();
    if (!done) return;
    bu_.Action(QStringLiteral("CLEAR"));
    focusNumber();
}

void Cashier_frm::pickCashSlipFromList()
{
    const QString cls = runLookup(ed_.classLookup());
    if (cls.isEmpty()) return;
    const QString partner = runLookup({ed_.partnerTable(), cls, QString()});
    if (partner.isEmpty() || !cashListHook()) return;
    const QString number = cashListHook()(ed_.kind(), partner.toLongLong());
    if (number.isEmpty()) return;
    showNumber(number.toLong());
}

void Cashier_frm::carryOverEnter()
{
    pushHead();
    if (!ed_.head.Partner) {
        QApplication::beep();
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool done = saveCarryOver(ed_, kurikoshi_->text());
    QApplication::restoreOverrideCursor();
    if (done) pullPanel();
    kurikoshi_->selectAll();
}

void Cashier_frm::doFunctionKey(int keyCode)
{
    QWidget* fw = QApplication::focusWidget();
    const auto g = gridOf_.constFind(fw);
    const bool inGrid = g != gridOf_.constEnd();
    switch (keyCode) {
    case vbKeyF1:
        bu_.Action(QStringLiteral("CLEAR"));
        focusNumber();
        break;
    case vbKeyF2: deleteSlip(); break;
    // Bound unlike the slip screen, and on purpose: the kind deletes with F3, the text and
    // the amount insert with it.
    case vbKeyF3:
        if (inGrid) (g->first == dKubun) ? rowDelete(g->second) : rowInsert(g->second);
        break;
    case vbKeyF4:
        if (inGrid) (g->first == dKubun) ? rowInsert(g->second) : rowDelete(g->second);
        break;
    case vbKeyF6:
        if (fw == ebox_[DnoBox]) pickCashSlipFromList();
        else if (fw == cbox_[ClassList]) lookupInList(ClassList);
        else if (fw == cbox_[PartnerList]) lookupInList(PartnerList);
        break;
    case vbKeyF10: saveSlip(); break;
    default: break;
    }
}

// ---- events

bool Cashier_frm::event(QEvent* e)
{
    // One screen serves both kinds: opened from the menu for the other one while nothing is
    // typed, it becomes that one.
    if (e->type() == QEvent::WindowActivate) {
        const QString want = session().MenuKey;
        if (isCashKind(want) && want != ed_.kind() && ed_.mode.isEmpty()) setKind(want);
    }
    return QWidget::event(e);
}

bool Cashier_frm::eventFilter(QObject* watched, QEvent* event)
{
    const auto g = gridOf_.constFind(watched);
    if (g == gridOf_.constEnd() && watched != kurikoshi_) return SlipScreenForm::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::FocusIn:
        if (auto* b = qobject_cast<QLineEdit*>(watched)) b->selectAll();
        break;
    case QEvent::FocusOut:
        if (g != gridOf_.constEnd() && leftByTheClerk(event)) gridLeft(g->first, g->second);
        break;
    case QEvent::KeyPress: {
        const int key = vbKeyCode(static_cast<QKeyEvent*>(event));
        if (key >= vbKeyF1 && key <= vbKeyF12) {
            doFunctionKey(key);
            return true;
        }
        if (g != gridOf_.constEnd()) return gridKey(g->first, g->second, key);
        if (key == vbKeyReturn) carryOverEnter();
        else if (key == vbKeyEscape) bu_.Action(QStringLiteral("CLOSE"));
        else return key == vbKeyUp || key == vbKeyDown || key == vbKeyTab;
        return true;
    }
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

bool Cashier_frm::ownHeadKey(bool isList, int index, int key, int shift, bool forward)
{
    if (!forward) return false;
    if (!isList && index == NNoBox) {
        // The last head field leads into the rows.
        ebox_[NNoBox]->setText(FormatRight(ToNum(ebox_[NNoBox]->text()), CashFormat::Dno));
        focusCell(dKubun, 0);
        return true;
    }
    if (!isList) return false;
    // Leaving a list happens here, not on its focus-out: after the lookup window the focus may
    // move without the list being left.
    if (!partnerMissing(index, key)) leaveList(index, key, shift);
    return true;
}
