#include "reports/ListDaichou_frm.h"
#include <QApplication>
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
#include "reports/LedgerReportPrint.h"
#include "shell/Dialogs.h"
#include "shell/QtScreens.h"
#include "shell/Session.h"
#include "slips/Cashier_frm.h"
#include "slips/Slip_frm.h"

namespace {

QLabel* label(const QString& text, QWidget* parent, Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter)
{
    auto* l = new QLabel(text, parent);
    l->setAlignment(align);
    return l;
}

QLabel* valueBox(QWidget* parent, int minWidth, Qt::Alignment align)
{
    QLabel* l = label(QString(), parent, align);
    l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    l->setMinimumWidth(minWidth);
    return l;
}

// The slip screen takes its kind when it is made: one showing the other kind is closed and
// made anew. The caller has put the kind in the menu word.
Slip_frm* slipScreenOfKind(const QString& kind)
{
    auto* slip = qobject_cast<Slip_frm*>(screen(QStringLiteral("Slip_frm")));
    if (slip && slip->editor().kind() != kind) {
        slip->close();
        delete slip;
        slip = qobject_cast<Slip_frm*>(screen(QStringLiteral("Slip_frm")));
    }
    return slip;
}

}  // namespace

QLabel* addReportTitle(QWidget* form, QVBoxLayout* layout)
{
    auto* title = new QLabel(form);
    title->setAlignment(Qt::AlignCenter);
    QFont big = form->font();
    big.setPointSizeF(big.pointSizeF() * 1.5);
    title->setFont(big);
    layout->addWidget(title);
    return title;
}

bool ListDaichou_frm::openSlipScreen(const LedgerSlipTarget& t)
{
    Session& s = session();
    // Closing the slip screen comes back here.
    s.SlipCaller = QStringLiteral("LstDaichou");
    if (t.form == QLatin1String("Cashier_frm")) return Cashier_frm::openSlip(t.kind, t.Dno) != nullptr;
    s.MenuKey = t.kind;
    Slip_frm* slip = slipScreenOfKind(t.kind);
    if (!slip) return false;
    slip->show();
    slip->raise();
    slip->activateWindow();
    // The number goes in as a clerk types it: into the number field, then Enter.
    QLineEdit* number = slip->box(Slip_frm::DnoBox);
    number->setFocus(Qt::OtherFocusReason);
    number->setText(QString::number(t.Dno));
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(number, &enter);
    return true;
}

ListDaichou_frm::ListDaichou_frm(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(QStringLiteral("元帳"));
    setFont(screenFont());
    auto* outer = new QVBoxLayout(this);

    title_ = addReportTitle(this, outer);

    auto* who = new QHBoxLayout;
    torName_ = valueBox(this, 320, Qt::AlignLeft | Qt::AlignVCenter);
    tuki_ = valueBox(this, 100, Qt::AlignCenter);
    range_[0] = valueBox(this, 100, Qt::AlignCenter);
    range_[1] = valueBox(this, 100, Qt::AlignCenter);
    who->addWidget(torName_, 1);
    who->addWidget(tuki_);
    who->addWidget(range_[0]);
    tilde_ = label(QStringLiteral("～"), this);
    who->addWidget(tilde_);
    who->addWidget(range_[1]);
    outer->addLayout(who);

    auto* head = new QGridLayout;
    for (int i = 0; i < 7; ++i) {
        labelHeader_[i] = label(QString(), this, Qt::AlignCenter);
        labelHValue_[i] = valueBox(this, 110, Qt::AlignRight | Qt::AlignVCenter);
        head->addWidget(labelHeader_[i], 0, i);
        head->addWidget(labelHValue_[i], 1, i);
    }
    outer->addLayout(head);

    auto* body = new QHBoxLayout;
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(4);
    grid->setVerticalSpacing(1);
    const QStringList heads = {QStringLiteral("日付"), QStringLiteral("区分"), QStringLiteral("品名"),
                               QStringLiteral("数量"), QStringLiteral("単価"), QStringLiteral("税抜金額")};
    const int widths[6] = {90, 60, 300, 90, 130, 130};
    for (int c = 0; c < 6; ++c) grid->addWidget(label(heads[c], this, Qt::AlignCenter), 0, c);
    for (int r = 0; r < ListDaichou::PageRows; ++r) {
        for (int c = 0; c < 6; ++c) {
            const Qt::Alignment a = c >= 3 ? Qt::AlignRight | Qt::AlignVCenter : Qt::AlignLeft | Qt::AlignVCenter;
            QLabel* l = valueBox(this, widths[c], a);
            cells_[r][c] = l;
            grid->addWidget(l, r + 1, c);
        }
        // The date leads to the slip: by a double click, or by Enter when it has the focus.
        QLabel* date = cells_[r][0];
        date->setFocusPolicy(Qt::ClickFocus);
        date->setCursor(Qt::PointingHandCursor);
        date->setStyleSheet(QStringLiteral("QLabel:focus { background-color: #fff2a8; }"));
        date->installEventFilter(this);
    }
    body->addLayout(grid, 1);
    bar_ = new QScrollBar(Qt::Vertical, this);
    bar_->setObjectName(QStringLiteral("Bar"));
    bar_->setRange(0, 0);
    bar_->setPageStep(ListDaichou::PageRows);
    bar_->setFocusPolicy(Qt::StrongFocus);
    bar_->installEventFilter(this);
    connect(bar_, &QScrollBar::valueChanged, this, [this](int v) { showRows(v); });
    body->addWidget(bar_);
    outer->addLayout(body);

    auto* foot = new QHBoxLayout;
    command_ = new QPushButton(QStringLiteral("印 刷  (F9)"), this);
    excel_ = new QPushButton(QStringLiteral("エクセル"), this);
    command_->installEventFilter(this);
    excel_->installEventFilter(this);
    connect(command_, &QPushButton::clicked, this, [this] { print(); });
    connect(excel_, &QPushButton::clicked, this, [this] { exportSheet(); });
    foot->addWidget(label(QStringLiteral("ESC：戻る　F9：印刷　日付をダブルクリック：伝票"), this));
    foot->addStretch(1);
    foot->addWidget(command_);
    foot->addWidget(excel_);
    outer->addLayout(foot);
}

void ListDaichou_frm::Init(const LedgerRange& range)
{
    view_.Init(range);
    title_->setText(view_.Title);
    torName_->setText(view_.TorName);
    tuki_->setText(view_.tukiBox);
    tuki_->setVisible(range.byMonth);
    for (int i = 0; i < 2; ++i) {
        range_[i]->setText(view_.Range[i]);
        range_[i]->setVisible(!range.byMonth);
    }
    tilde_->setVisible(!range.byMonth);
    for (int i = 0; i < 7; ++i) {
        labelHeader_[i]->setText(view_.LabelHeader[i]);
        labelHValue_[i]->setText(view_.LabelHValue[i]);
    }
    const QSignalBlocker quiet(bar_);
    bar_->setRange(0, view_.barMax);
    bar_->setValue(0);
    showRows(0);
    command_->setFocus(Qt::OtherFocusReason);
}

void ListDaichou_frm::showRows(int top)
{
    const QList<LedgerScreenRow> rows = view_.ShowLedgerRows(top);
    for (int r = 0; r < ListDaichou::PageRows; ++r) {
        const LedgerScreenRow& row = rows[r];
        const QString texts[6] = {row.Hizuke, row.Kubun, row.fHinNamae, row.fSuu, row.fTanka, row.fGaku};
        for (int c = 0; c < 6; ++c) cells_[r][c]->setText(texts[c]);
    }
}

void ListDaichou_frm::openLine(int line)
{
    LedgerSlipTarget t;
    if (view_.slipOf(bar_->value(), line, &t)) openSlipScreen(t);
}

void ListDaichou_frm::print()
{
    // Nothing to print without rows.
    if (view_.rowCount == 0) return;
    std::unique_ptr<PageOutput> out = makeReportOutput(this);
    if (!out) return;
    printTo(*out, [this] { return printLedgerView(view_); });
    showRows(bar_->value());
}

void ListDaichou_frm::exportSheet()
{
    ReportSheet sheet;
    QString error;
    const bool ok = view_.exportSheet(&sheet, &error);
    showRows(bar_->value());
    if (!ok) {
        Tell(error);
        return;
    }
    ExcelBook book;
    if (!book.open()) return;
    writeSheet(sheet, book);
    book.save(QStringLiteral("元帳"), nullptr, nullptr);
}

bool ListDaichou_frm::dateKey(int line, int key)
{
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        openLine(line);
        return true;
    case Qt::Key_Up:
        if (line > 0) cells_[line - 1][0]->setFocus(Qt::OtherFocusReason);
        else bar_->setValue(bar_->value() - 1);
        return true;
    case Qt::Key_Down:
        if (line < ListDaichou::PageRows - 1) cells_[line + 1][0]->setFocus(Qt::OtherFocusReason);
        else bar_->setValue(bar_->value() + 1);
        return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
        bar_->setFocus(Qt::OtherFocusReason);
        return true;
    default:
        return false;
    }
}

bool ListDaichou_frm::eventFilter(QObject* watched, QEvent* event)
{
    int line = -1;
    for (int r = 0; r < ListDaichou::PageRows; ++r)
        if (watched == cells_[r][0]) line = r;
    if (event->type() == QEvent::MouseButtonDblClick && line >= 0) {
        openLine(line);
        return true;
    }
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape) {
        close();
        return true;
    }
    if (key == Qt::Key_F9) {
        print();
        return true;
    }
    if (key == Qt::Key_F10) {
        exportSheet();
        return true;
    }
    if (line >= 0) return dateKey(line, key);
    if (watched == command_ || watched == excel_) {
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Left || key == Qt::Key_Right) {
            bar_->setFocus(Qt::OtherFocusReason);
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            static_cast<QPushButton*>(watched)->click();
            return true;
        }
    }
    if (watched == bar_) {
        if (key == Qt::Key_Left || key == Qt::Key_Right) {
            command_->setFocus(Qt::OtherFocusReason);
            return true;
        }
        // Enter steps into the rows, to the first date.
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            cells_[0][0]->setFocus(Qt::OtherFocusReason);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
