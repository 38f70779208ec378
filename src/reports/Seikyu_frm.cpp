#include "reports/Seikyu_frm.h"

#include <QApplication>
#include <QFocusEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "entry/Convert.h"
#include "entry/Dates.h"
#include "entry/KeyCodes.h"
#include "entry/QtFormBuilder.h"
#include "entry/QtKeys.h"
#include "masters/QtMasterFields.h"
#include "pageout/QtPageOutputs.h"
#include "reports/InvoiceRun.h"
#include "reports/SeikyuRules.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "slips/SlipSelect_frm.h"

namespace {
QLabel* label(const QString& text, QWidget* parent)
{
    auto* l = new QLabel(text, parent);
    l->setTextFormat(Qt::PlainText);
    return l;
}

// Restores the cursor however the run ends.
struct WaitCursor {
    bool on = false;
    void show()
    {
        if (!on) QApplication::setOverrideCursor(Qt::WaitCursor);
        on = true;
    }
    ~WaitCursor()
    {
        if (on) QApplication::restoreOverrideCursor();
    }
};
}  // namespace

Seikyu_frm::Seikyu_frm(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("Seikyu_frm"));
    setAttribute(Qt::WA_DeleteOnClose);
    setFont(screenFont());
    setWindowTitle(QStringLiteral("請求書発行"));
    bu_.Form = this;
    const int half = QFontMetrics(font()).horizontalAdvance(QLatin1Char('0'));

    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(16, 12, 16, 12);
    outer->setSpacing(10);
    QLabel* title = label(QStringLiteral("請求書発行"), this);
    title->setFont(screenFont(16));
    outer->addWidget(title);
    auto* rule = new QFrame(this);
    rule->setFrameShape(QFrame::HLine);
    rule->setFrameShadow(QFrame::Sunken);
    outer->addWidget(rule);

    const char* tags[BoxCount] = {"00_N##", "01_N##", "02_N######", "03_N######", "04_N####", "05_N##", "06_N##"};
    for (int i = 0; i < BoxCount; ++i) {
        auto* b = new QLineEdit(this);
        b->setProperty("Tag", QString::fromLatin1(tags[i]));
        b->setFixedWidth(half * (i == FromBox || i == ToBox ? 8 : i == YearBox ? 6 : 4) + 8);
        b->installEventFilter(this);
        ebox_ << b;
    }
    for (QLabel*& l : dTorNamae_) {
        l = label(QString(), this);
        l->setMinimumWidth(half * 24);
    }
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    auto row = [&](int r, const QString& caption, QWidget* w, QWidget* after) {
        grid->addWidget(label(caption, this), r, 0);
        grid->addWidget(w, r, 1, Qt::AlignLeft);
        grid->addWidget(after, r, 2, Qt::AlignLeft);
    };
    row(0, QStringLiteral("対象月度"), ebox_[MonthBox], label(QStringLiteral("月度"), this));
    row(1, QStringLiteral("締日"), ebox_[SimeBox], label(QStringLiteral("日"), this));
    row(2, QStringLiteral("得意先"), ebox_[FromBox], dTorNamae_[0]);
    row(3, QStringLiteral("　　～"), ebox_[ToBox], dTorNamae_[1]);
    auto* date = new QWidget(this);
    auto* dl = new QHBoxLayout(date);
    dl->setContentsMargins(0, 0, 0, 0);
    const std::pair<Box, const char*> parts[] = {{YearBox, "年"}, {IssueMonthBox, "月"}, {DayBox, "日"}};
    for (const auto& [b, unit] : parts) {
        dl->addWidget(ebox_[b]);
        dl->addWidget(label(QString::fromUtf8(unit), this));
    }
    dl->addStretch(1);
    grid->addWidget(label(QStringLiteral("発行日"), this), 4, 0);
    grid->addWidget(date, 4, 1, 1, 2);
    grid->setColumnStretch(2, 1);
    outer->addLayout(grid, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    command_ = new QPushButton(QStringLiteral("発 行"), this);
    command_->setObjectName(QStringLiteral("Command"));
    command_->setAutoDefault(false);
    command_->setMinimumWidth(half * 14);
    command_->installEventFilter(this);
    buttons->addWidget(command_);
    outer->addLayout(buttons);
    connect(command_, &QPushButton::clicked, this, &Seikyu_frm::issue);

    help_ = label(QStringLiteral("Ｆ６：得意先ヘルプ"), this);
    help_->setObjectName(QStringLiteral("message"));
    help_->setFrameShape(QFrame::Panel);
    help_->setFrameShadow(QFrame::Sunken);
    outer->addWidget(help_);
    // The controller's state and help texts have no place on this screen: its help line is fixed.
    mode_ = label(QString(), this);
    controllerMessage_ = label(QString(), this);
    mode_->hide();
    controllerMessage_->hide();

    bu_.formLoad(BoxCount, BoxCount, 0, false);
    const DateBoxes today = DateToBoxes(QDate::currentDate());
    ebox_[YearBox]->setText(today.year);
    ebox_[IssueMonthBox]->setText(today.month);
    ebox_[DayBox]->setText(today.day);
}

QWidget* Seikyu_frm::RecField() const { return command_; }

void Seikyu_frm::clearDisplay()
{
    for (int b : {MonthBox, SimeBox, FromBox, ToBox}) ebox_[b]->clear();
    for (QLabel* l : dTorNamae_) l->clear();
}

void Seikyu_frm::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (shown_) return;
    shown_ = true;
    bu_.focusItem(0);
}

bool Seikyu_frm::eventFilter(QObject* watched, QEvent* event)
{
    const int e = ebox_.indexOf(qobject_cast<QLineEdit*>(watched));
    if (watched == command_ && event->type() == QEvent::KeyPress)
        return commandKey(vbKeyCode(static_cast<QKeyEvent*>(event)) == vbKeyTab
                                  && vbShift(static_cast<QKeyEvent*>(event)) == vbShiftMask
                              ? vbKeyUp
                              : vbKeyCode(static_cast<QKeyEvent*>(event)));
    if (e < 0) return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::FocusIn:
        bu_.eboxGotFocus(e);
        break;
    case QEvent::FocusOut: {
        // A lookup list or a message taking the focus is not leaving the box.
        const Qt::FocusReason r = static_cast<QFocusEvent*>(event)->reason();
        if (r == Qt::ActiveWindowFocusReason || r == Qt::PopupFocusReason) break;
        static_cast<QObject*>(ebox_[e])->event(event);
        bu_.DecideEBoxLength(ebox_[e]);
        boxLeft(e);
        return true;
    }
    case QEvent::KeyPress: {
        auto* k = static_cast<QKeyEvent*>(event);
        return boxKey(e, vbKeyCode(k), vbShift(k));
    }
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

bool Seikyu_frm::boxKey(int index, int keyCode, int shift)
{
    const int original = keyCode;
    if (keyCode == vbKeyF6 && (index == FromBox || index == ToBox)) keyCode = lookUpCustomer(index) ? vbKeyReturn : 0;
    if (keyCode != 0) bu_.eboxKeyDown(index, keyCode, shift);
    const bool handled = original == vbKeyTab || original == vbKeyReturn || original == vbKeyUp
                         || original == vbKeyDown || original == vbKeyEscape
                         || (original >= vbKeyF1 && original <= vbKeyF12);
    return keyCode == 0 || keyCode != original || handled;
}

bool Seikyu_frm::commandKey(int keyCode)
{
    switch (keyCode) {
    case vbKeyReturn: issue(); return true;
    case vbKeyEscape: close(); return true;
    case vbKeyUp: bu_.moveLastItem(); return true;
    case vbKeyTab: case vbKeyDown: case vbKeySpace: return true;
    default: return false;
    }
}

bool Seikyu_frm::lookUpCustomer(int index)
{
    // A class first, then its customers.
    const std::optional<QString> tbn = LookUp(this, QStringLiteral("Tbn"));
    if (!tbn) return false;
    const std::optional<QString> tor = LookUp(this, QStringLiteral("Tor"), tbn->trimmed());
    if (!tor) return false;
    ebox_[index]->setText(*tor);
    // The lookup held the focus, so the box may never see itself left: show the name now.
    boxLeft(index);
    return true;
}

void Seikyu_frm::boxLeft(int index)
{
    if (index != FromBox && index != ToBox) return;
    if (index == FromBox && HasText(ebox_[FromBox]->text()) && !HasText(ebox_[ToBox]->text())) {
        ebox_[ToBox]->setText(ebox_[FromBox]->text());
        dTorNamae_[1]->setText(seikyuTorName(session().MasterDb, ebox_[ToBox]->text()));
    }
    dTorNamae_[index - FromBox]->setText(seikyuTorName(session().MasterDb, ebox_[index]->text()));
}

void Seikyu_frm::issue()
{
    const SeikyuCheck check = checkSeikyu(ebox_[MonthBox]->text(), ebox_[SimeBox]->text());
    if (check.refusal != SeikyuRefusal::None) {
        Tell(check.message);
        bu_.focusItem(check.refusal == SeikyuRefusal::Month ? 0 : 1);
        return;
    }
    if (HasText(ebox_[FromBox]->text()) && !HasText(ebox_[ToBox]->text())) ebox_[ToBox]->setText(ebox_[FromBox]->text());

    // The printer question comes first, in preview mode as well; cancelling ends here.
    std::unique_ptr<PageOutput> out = makePrinterOutput(this);
    if (!out) return;
    if (session().PreviewMode) out = makePreviewOutput(this);

    InvoiceRunRequest request;
    request.month = ebox_[MonthBox]->text();
    request.sime = ebox_[SimeBox]->text();
    request.from = ebox_[FromBox]->text();
    request.to = ebox_[ToBox]->text();
    request.issueDate = BoxesToDate(ebox_[YearBox]->text(), ebox_[IssueMonthBox]->text(), ebox_[DayBox]->text());

    InvoiceRun run(session().MasterDb);
    run.chooseStyle = [this] {
        SlipSelect_frm select(this);
        select.Init(QStringLiteral("Sei"));
        const int answer = select.choose();
        activateWindow();
        return answer;
    };
    // The preview waits on the clerk page by page: no busy cursor over it.
    WaitCursor wait;
    if (!session().PreviewMode) run.progress = [&wait](int, int) { wait.show(); };
    InvoiceRunOutcome outcome = InvoiceRunOutcome::Done;
    printTo(*out, [&] {
        outcome = run.IssueInvoices(request);
        return outcome == InvoiceRunOutcome::Done;
    });
    if (outcome == InvoiceRunOutcome::Empty) QApplication::beep();
}
