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

Cashier_frm::Cashier_frm(QWidget* parent) : QWidget(parent), ed_(session().MenuKey)
{
    setAttribute(Qt::WA_DeleteOnClose);
    bu_.Form = this;
    session().CashDate = QDate::currentDate();
    setFont(screenFont());
    build();
    setKind(ed_.kind());
}

Cashier_frm::~Cashier_frm() = default;

void Cashier_frm::setKind(const QString& kind)
{
    ed_.setKind(kind);
    for (auto& s : shown_) s.clear();
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
    ebox_[DnoBox]->setText(QString::number(dno));
    int key = vbKeyReturn;
    numberEnter(key);
    if (key != 0) bu_.eboxKeyDown(DnoBox, key, 0);
}

// ---- widgets <-> editor

void Cashier_frm::pushHead()
{
    CashHead& h = ed_.head;
    h.Dno = ebox_[DnoBox]->text();
    h.Year = ebox_[YearBox]->text().trimmed();
    h.Month = ebox_[MonthBox]->text().trimmed();
    h.Day = ebox_[DayBox]->text().trimmed();
    h.NNo = ebox_[NNoBox]->text();
    h.ClassCode = listCode(cbox_[ClassList]);
    h.Partner = listCode(cbox_[PartnerList]);
    h.NouCode = ed_.deposit() ? listCode(cbox_[NouList]) : std::nullopt;
    h.TanCode = listCode(cbox_[TanList]);
}

void Cashier_frm::pullLists()
{
    const QList<ListEntry>* entries[] = {&ed_.classEntries, &ed_.partnerEntries, &ed_.nouEntries, &ed_.tanEntries};
    for (int i = 0; i < 4; ++i) {
        if (*entries[i] == shown_[i] && cbox_[i]->count() == entries[i]->size()) continue;
        setListEntries(cbox_[i], *entries[i]);
        shown_[i] = *entries[i];
    }
}

void Cashier_frm::pullHead()
{
    const bool was = pulling_;
    pulling_ = true;
    pullLists();
    const CashHead& h = ed_.head;
    setTextIfChanged(ebox_[DnoBox], h.Dno);
    setTextIfChanged(ebox_[YearBox], h.Year);
    setTextIfChanged(ebox_[MonthBox], h.Month);
    setTextIfChanged(ebox_[DayBox], h.Day);
    setTextIfChanged(ebox_[NNoBox], h.NNo);
    selectCode(cbox_[ClassList], h.ClassCode);
    selectCode(cbox_[PartnerList], h.Partner);
    if (ed_.deposit()) selectCode(cbox_[NouList], h.NouCode);
    selectCode(cbox_[TanList], h.TanCode);
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

void Cashier_frm::focusNumber()
{
    bu_.focusItem(0);
    // The counter offered is replaced by the first digit typed.
    ebox_[DnoBox]->selectAll();
}

void Cashier_frm::numberEnter(int& keyCode)
{
    pushHead();
    const CashSlipEditor::NumberOutcome outcome = ed_.enterNumber();
    if (outcome == CashSlipEditor::NumberOutcome::Unchanged) return;
    if (outcome == CashSlipEditor::NumberOutcome::New) {
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

void Cashier_frm::listLeft(int index)
{
    if (pulling_ || leaving_) return;
    pushAll();
    switch (index) {
    case ClassList:
        ed_.classLeft();
        pullHead();
        break;
    case PartnerList:
        if (!ed_.head.Partner) return;
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
}

// Enter or Down on a list, or a pick of the lookup that stands for them: what leaving the list
// does happens here, since after the lookup window the focus may move without leaving it.
void Cashier_frm::listForward(int index, int keyCode, int shift)
{
    listLeft(index);
    leaving_ = true;
    bu_.cboxKeyDown(index, keyCode, shift);
    leaving_ = false;
}

void Cashier_frm::focusFor(SlipFocus f)
{
    switch (f) {
    case SlipFocus::Number: focusNumber(); break;
    case SlipFocus::Year: bu_.focusItem(1); break;
    case SlipFocus::Partner: bu_.focusItem(5); break;
    case SlipFocus::Nou: bu_.focusItem(6); break;
    case SlipFocus::FirstRowKind: focusCell(dKubun, 0); break;
    case SlipFocus::None: break;
    }
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
    const CashSaveResult r = ::Register(ed_, mode);
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

void Cashier_frm::lookupInList(int index)
{
    pushHead();
    const bool partner = index == PartnerList, hadClass = ed_.head.ClassCode.has_value();
    const bool picked = pickIntoList(cbox_[index], partner ? ed_.partnerLookup() : ed_.classLookup(), [&] {
        // The whole list first, so that the picked partner is in it.
        if (!partner || hadClass) return;
        ed_.head.Partner.reset();
        ed_.classLeft();
        pullLists();
    });
    if (!picked) return;
    // A pick acts as Enter on the list.
    bu_.Typed.clear();
    listForward(index, vbKeyReturn, 0);
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

void Cashier_frm::Unload() { close(); }

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
    const int e = ebox_.indexOf(qobject_cast<QLineEdit*>(watched));
    const int c = cbox_.indexOf(qobject_cast<QComboBox*>(watched));
    switch (event->type()) {
    case QEvent::FocusIn:
        if (g != gridOf_.constEnd()) {
            if (auto* b = qobject_cast<QLineEdit*>(watched)) b->selectAll();
        } else if (watched == kurikoshi_) {
            kurikoshi_->selectAll();
        } else if (e >= 0) {
            // Two mode captions only, as on the slip screen: an amended slip stays "参照".
            const QString caption = mode_->text();
            bu_.eboxGotFocus(e);
            mode_->setText(ed_.mode == QLatin1String("EDIT") ? QStringLiteral("参照") : caption);
        } else if (c >= 0) {
            bu_.cboxGotFocus(c);
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
    case QEvent::KeyPress:
        return keyPress(watched, static_cast<QKeyEvent*>(event));
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

bool Cashier_frm::keyPress(QObject* watched, QKeyEvent* ev)
{
    const int key = vbKeyCode(ev);
    const int shift = vbShift(ev);
    if (key >= vbKeyF1 && key <= vbKeyF12) {
        doFunctionKey(key);
        return true;
    }
    const auto g = gridOf_.constFind(watched);
    if (g != gridOf_.constEnd()) return gridKey(g->first, g->second, key);
    if (watched == kurikoshi_) {
        if (key == vbKeyReturn) carryOverEnter();
        else if (key == vbKeyEscape) bu_.Action(QStringLiteral("CLOSE"));
        else return key == vbKeyUp || key == vbKeyDown || key == vbKeyTab;
        return true;
    }
    const int e = ebox_.indexOf(qobject_cast<QLineEdit*>(watched));
    const int c = cbox_.indexOf(qobject_cast<QComboBox*>(watched));
    if (e >= 0) return headKey(false, e, key, shift);
    if (c >= 0) return headKey(true, c, key, shift);
    return false;
}

bool Cashier_frm::headKey(bool isList, int index, int key, int shift)
{
    int keyCode = key;
    const bool forward = key == vbKeyReturn || key == vbKeyDown || (key == vbKeyTab && shift != vbShiftMask);
    if (!isList && index == DnoBox && (key == vbKeyReturn || (key == vbKeyTab && shift != vbShiftMask))) {
        numberEnter(keyCode);
    } else if (!isList && index == NNoBox && forward) {
        // The last head field leads into the rows.
        ebox_[NNoBox]->setText(FormatRight(ToNum(ebox_[NNoBox]->text()), CashFormat::Dno));
        focusCell(dKubun, 0);
        return true;
    } else if (isList && forward) {
        QComboBox* list = cbox_[index];
        // A code typed on the keypad chooses first; a partner is needed to go on.
        if (key == vbKeyReturn && !bu_.Typed.isEmpty() && bu_.Typed.size() <= 9) FindListCode(list, bu_.Typed.toInt());
        if (index == PartnerList && list->currentIndex() < 0) {
            bu_.Typed.clear();
            QApplication::beep();
            return true;
        }
        listForward(index, keyCode, shift);
        return true;
    }
    if (keyCode != 0) {
        if (isList) bu_.cboxKeyDown(index, keyCode, shift);
        else bu_.eboxKeyDown(index, keyCode, shift);
    }
    if (!isList && index >= YearBox && index <= DayBox && forward) {
        pushHead();
        ed_.refreshWeekday();
        weekday_->setText(ed_.weekday);
    }
    const bool handled = key == vbKeyTab || key == vbKeyReturn || key == vbKeyUp || key == vbKeyDown
                         || key == vbKeyEscape;
    return keyCode == 0 || keyCode != key || handled;
}

void Cashier_frm::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (shownOnce_) return;
    shownOnce_ = true;
    focusNumber();
}

void Cashier_frm::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    showCaller(this);
}
