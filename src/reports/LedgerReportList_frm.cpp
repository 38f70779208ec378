#include "reports/LedgerReportList_frm.h"
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include "entry/QtFormBuilder.h"
#include "pageout/Excel.h"
#include "pageout/QtPageOutputs.h"
#include "reports/ListDaichou_frm.h"
#include "reports/LedgerReportPrint.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

namespace {

// Column 0 the code, 1 the name, the rest amounts.
QLabel* cellLabel(QWidget* parent, int column)
{
    auto* l = new QLabel(parent);
    l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    l->setAlignment(column >= 2 ? Qt::AlignRight | Qt::AlignVCenter : Qt::AlignLeft | Qt::AlignVCenter);
    l->setMinimumWidth(column == 0 ? 70 : column == 1 ? 260 : 115);
    return l;
}

}  // namespace

LedgerReportList_frm::LedgerReportList_frm(std::function<PartnerMonthList*(const QString&)> makeList,
                                           const QStringList& codes, const QString& hint, const QString& caption,
                                           QWidget* parent)
    : QWidget(parent), makeList_(std::move(makeList)), codes_(codes), caption_(caption)
{
    // A fresh form for every opening, so the next one reads its own MenuKey.
    setAttribute(Qt::WA_DeleteOnClose);
    setFont(screenFont());
    auto* outer = new QVBoxLayout(this);
    title_ = addReportTitle(this, outer);

    auto* fields = new QHBoxLayout;
    const QStringList captions = {QStringLiteral("月度"), QStringLiteral("日締")};
    for (int i = 0; i < 2; ++i) {
        ebox_[i] = new QLineEdit(this);
        ebox_[i]->setMaxLength(2);
        ebox_[i]->setFixedWidth(48);
        ebox_[i]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        ebox_[i]->installEventFilter(this);
        fields->addWidget(new QLabel(captions[i], this));
        fields->addWidget(ebox_[i]);
    }
    fields->addWidget(new QLabel(hint, this));
    fields->addStretch(1);
    outer->addLayout(fields);

    auto* buttons = new QHBoxLayout;
    command_ = new QPushButton(QStringLiteral("最新の情報に更新する。"), this);
    clear_ = new QPushButton(QStringLiteral("画面ｸﾘｱ F1"), this);
    print_ = new QPushButton(QStringLiteral("印刷 F9"), this);
    excel_ = new QPushButton(QStringLiteral("ｴｸｾﾙ F10"), this);
    for (QPushButton* b : {command_, clear_, print_, excel_}) {
        b->installEventFilter(this);
        buttons->addWidget(b);
    }
    buttons->addStretch(1);
    connect(command_, &QPushButton::clicked, this, [this] { Command_Click(); });
    connect(clear_, &QPushButton::clicked, this, [this] { ScrClr_Click(); });
    connect(print_, &QPushButton::clicked, this, [this] { PrintBtn_Click(); });
    connect(excel_, &QPushButton::clicked, this, [this] { DoExcel_Click(); });
    outer->addLayout(buttons);

    auto* body = new QHBoxLayout;
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(3);
    grid->setVerticalSpacing(1);
    loadList(session().MenuKey);
    const int n = columns();
    for (int c = 0; c < n; ++c) grid->addWidget(heads_[c], 0, c);
    for (int r = 0; r < PartnerMonthList::PageRows; ++r) {
        QList<QLabel*> row;
        for (int c = 0; c < n; ++c) {
            row << cellLabel(this, c);
            grid->addWidget(row.last(), r + 1, c);
        }
        cells_ << row;
    }
    grid->addWidget(new QLabel(QStringLiteral("合計"), this), PartnerMonthList::PageRows + 1, 1, Qt::AlignRight);
    for (int c = 2; c < n; ++c) {
        totals_ << cellLabel(this, c);
        grid->addWidget(totals_.last(), PartnerMonthList::PageRows + 1, c);
    }
    grid->setColumnStretch(1, 1);
    body->addLayout(grid, 1);
    bar_ = new QScrollBar(Qt::Vertical, this);
    bar_->setObjectName(QStringLiteral("Bar"));
    bar_->setRange(0, 0);
    bar_->setPageStep(PartnerMonthList::PageRows);
    bar_->setFocusPolicy(Qt::StrongFocus);
    bar_->installEventFilter(this);
    connect(bar_, &QScrollBar::valueChanged, this, [this](int v) { showRows(v); });
    body->addWidget(bar_);
    outer->addLayout(body);
    outer->addWidget(new QLabel(QStringLiteral("ESC：戻る　Ｆ１：画面クリア　Ｆ９：印刷　Ｆ１０：エクセル"), this));
}

LedgerReportList_frm::~LedgerReportList_frm() = default;

void LedgerReportList_frm::loadList(const QString& code)
{
    list_.reset(makeList_(codes_.contains(code) ? code : codes_.first()));
    setWindowTitle(caption_.isEmpty() ? list_->sheetName() : caption_);
    title_->setText(list_->title());
    const QStringList heads = list_->heads();
    if (heads_.isEmpty()) {
        for (int c = 0; c < heads.size(); ++c) {
            heads_ << new QLabel(this);
            heads_.last()->setAlignment(Qt::AlignCenter);
        }
    }
    for (int c = 0; c < heads_.size(); ++c) heads_[c]->setText(heads.value(c));
}

void LedgerReportList_frm::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // The menu's word picks the list each time the screen comes up.
    if (codes_.contains(session().MenuKey) && session().MenuKey != list_->code) {
        loadList(session().MenuKey);
        ScrClr_Click();
    }
    ebox_[0]->setFocus(Qt::OtherFocusReason);
}

void LedgerReportList_frm::Command_Click()
{
    int month = 0, sime = 0;
    QString message = PartnerMonthList::checkMonth(ebox_[0]->text(), &month);
    QLineEdit* wrong = ebox_[0];
    if (message.isEmpty()) {
        message = PartnerMonthList::checkSime(ebox_[1]->text(), &sime);
        wrong = ebox_[1];
    }
    if (!message.isEmpty()) {
        Tell(message);
        wrong->setFocus(Qt::OtherFocusReason);
        wrong->selectAll();
        return;
    }
    list_->read(month, sime);
    const QSignalBlocker quiet(bar_);
    bar_->setRange(0, list_->barMax);
    bar_->setValue(0);
    showRows(0);
    showTotals();
}

void LedgerReportList_frm::ScrClr_Click()
{
    list_->clear();
    const QSignalBlocker quiet(bar_);
    bar_->setRange(0, 0);
    showRows(0);
    for (QLabel* t : totals_) t->clear();
    ebox_[0]->setFocus(Qt::OtherFocusReason);
    ebox_[0]->selectAll();
}

void LedgerReportList_frm::PrintBtn_Click()
{
    if (list_->rowCount == 0) {
        Tell(QStringLiteral("対象がありません。"));
        return;
    }
    std::unique_ptr<PageOutput> out = makeReportOutput(this);
    if (!out) return;
    printTo(*out, [this] { return printPartnerList(*list_); });
}

void LedgerReportList_frm::DoExcel_Click()
{
    if (list_->rowCount == 0) {
        Tell(QStringLiteral("対象がありません。"));
        return;
    }
    ExcelBook book;
    if (!book.open()) return;
    writeSheet(list_->sheet(), book);
    book.save(list_->sheetName(), nullptr, nullptr);
}

void LedgerReportList_frm::showRows(int top)
{
    for (int r = 0; r < PartnerMonthList::PageRows; ++r) {
        const int at = top + r;
        const QStringList texts = at < list_->rowCount ? list_->screenRow(at) : QStringList();
        for (int c = 0; c < cells_[r].size(); ++c) cells_[r][c]->setText(texts.value(c));
    }
}

void LedgerReportList_frm::showTotals()
{
    const QStringList t = list_->totals();
    for (int i = 0; i < totals_.size(); ++i) totals_[i]->setText(t.value(i));
}

bool LedgerReportList_frm::functionKey(int key)
{
    switch (key) {
    case Qt::Key_F1: ScrClr_Click(); return true;
    case Qt::Key_F9: PrintBtn_Click(); return true;
    case Qt::Key_F10: DoExcel_Click(); return true;
    case Qt::Key_Escape: close(); return true;
    default: return false;
    }
}

bool LedgerReportList_frm::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (functionKey(key)) return true;
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) return true;
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    auto toBox = [](QLineEdit* b) {
        b->setFocus(Qt::OtherFocusReason);
        b->selectAll();
    };
    if (watched == ebox_[0] || watched == ebox_[1]) {
        if (enter || key == Qt::Key_Down) {
            if (watched == ebox_[0]) toBox(ebox_[1]);
            else command_->setFocus(Qt::OtherFocusReason);
            return true;
        }
        if (key == Qt::Key_Up) {
            toBox(ebox_[0]);
            return true;
        }
        return false;
    }
    if (watched == command_) {
        if (enter) Command_Click();
        else if (key == Qt::Key_Up) toBox(ebox_[1]);
        else if (key == Qt::Key_Down || key == Qt::Key_Right) bar_->setFocus(Qt::OtherFocusReason);
        else return false;
        return true;
    }
    if (watched == print_ || watched == clear_ || watched == excel_) {
        if (enter) static_cast<QPushButton*>(watched)->click();
        else if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Left || key == Qt::Key_Right)
            bar_->setFocus(Qt::OtherFocusReason);
        else return false;
        return true;
    }
    if (watched == bar_ && (key == Qt::Key_Left || key == Qt::Key_Right)) {
        command_->setFocus(Qt::OtherFocusReason);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
