#include "ledgers/TipsMenu_frm.h"
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include "ledgers/Recovery.h"
#include "ledgers/RecoveryMenu.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

namespace {

const char* const kCaptions[] = {
    "伝票より全ての台帳を再作成する", "伝票より商品台帳を再作成する", "伝票より得意先台帳を再作成する",
    "伝票より仕入先台帳を再作成する", "台帳へ商品マスタの反映",       "台帳へ得意先マスタの反映",
    "台帳へ仕入先マスタの反映",       "メニューへ戻る",
};
constexpr int kButtons = 8;

QLineEdit* monthBox(QWidget* parent, const char* name)
{
    auto* box = new QLineEdit(parent);
    box->setObjectName(QLatin1String(name));
    box->setMaxLength(2);
    box->setFixedWidth(44);
    box->setAlignment(Qt::AlignRight);
    return box;
}

bool isEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

} // namespace

TipsMenu_frm::TipsMenu_frm()
{
    setObjectName(QStringLiteral("TipsMenu_frm"));
    setWindowTitle(QStringLiteral("データ復旧メニュー"));
    // Opened afresh each time, with the first text on the information line.
    setAttribute(Qt::WA_DeleteOnClose);
    auto* lay = new QVBoxLayout(this);
    lay->setContentsMargins(24, 18, 24, 18);
    lay->setSpacing(8);

    auto* months = new QHBoxLayout;
    months->setSpacing(6);
    text1_ = monthBox(this, "Text1");
    text2_ = monthBox(this, "Text2");
    months->addWidget(text1_);
    months->addWidget(new QLabel(QStringLiteral("月度"), this));
    months->addSpacing(18);
    months->addWidget(text2_);
    months->addWidget(new QLabel(QStringLiteral("月度"), this));
    months->addStretch(1);
    lay->addLayout(months);

    info_ = new QLabel(QStringLiteral("選択してください。"), this);
    info_->setObjectName(QStringLiteral("Information"));
    info_->setFrameShape(QFrame::Panel);
    info_->setFrameShadow(QFrame::Sunken);
    info_->setMinimumWidth(340);
    info_->setContentsMargins(6, 3, 6, 3);
    lay->addWidget(info_);
    lay->addSpacing(6);

    for (int i = 0; i < kButtons; ++i) {
        auto* b = new QPushButton(QString::fromUtf8(kCaptions[i]), this);
        b->setObjectName(QStringLiteral("Command1_%1").arg(i));
        b->setMinimumHeight(30);
        b->setAutoDefault(false);
        b->installEventFilter(this);
        connect(b, &QPushButton::clicked, this, [this, i] { runButton(i); });
        buttons_ << b;
        if (i == 7) lay->addSpacing(6);
        lay->addWidget(b);
    }
    text1_->installEventFilter(this);
    text2_->installEventFilter(this);
    adjustSize();
    text1_->setFocus();
}

TipsMenu_frm::~TipsMenu_frm()
{
    if (cursorSet_) QApplication::restoreOverrideCursor();
}

void TipsMenu_frm::setInformation(const QString& text)
{
    info_->setText(text);
    info_->repaint();
}

void TipsMenu_frm::busy(bool on)
{
    if (on == cursorSet_) return;
    if (on) QApplication::setOverrideCursor(Qt::WaitCursor);
    else QApplication::restoreOverrideCursor();
    cursorSet_ = on;
}

void TipsMenu_frm::runButton(int index)
{
    if (index >= 0 && index <= 3) rebuild(index);
    else if (index >= 4 && index <= 6) masterNames(index);
    else if (index == 7) close();
}

void TipsMenu_frm::rebuild(int index)
{
    const MonthBoxes check = checkMonthBoxes(text1_->text(), text2_->text());
    if (check != MonthBoxes::Ok) {
        QLineEdit* bad = check == MonthBoxes::BadFirst ? text1_ : text2_;
        bad->setFocus();
        bad->selectAll();
        return;
    }
    static const RebuildKind kinds[] = {RebuildKind::ALL, RebuildKind::THI, RebuildKind::TTO, RebuildKind::TSI};
    QString error;
    busy(true);
    const bool ok = rebuildLedgers(kinds[index], monthBoxValue(text1_->text()), monthBoxValue(text2_->text()),
                                   [this](const QString& t) { setInformation(t); }, &error);
    busy(false);
    Tell(ok ? QStringLiteral("終了しました。") : error);
}

void TipsMenu_frm::masterNames(int index)
{
    static const MasterNames which[] = {MasterNames::Products, MasterNames::Customers, MasterNames::Suppliers};
    QString error;
    busy(true);
    const bool ok = refreshMasterNames(which[index - 4], [this](const QString& t) { setInformation(t); }, &error);
    busy(false);
    if (!ok) Tell(error);
}

void TipsMenu_frm::repairNulls()
{
    QString error;
    busy(true);
    const bool ok = RepairNulls(&error);
    busy(false);
    text1_->clear();
    if (!ok) Tell(error);
}

bool TipsMenu_frm::AfterNenjiKosin()
{
    const QString first = QString::number(session().sTuki);
    text1_->setText(first);
    text2_->setText(first);
    QString error;
    busy(true);
    const bool ok = ::AfterNenjiKosin([this](const QString& t) { setInformation(t); }, &error);
    busy(false);
    if (!ok) Tell(error);
    return ok;
}

bool TipsMenu_frm::text1Key(int key)
{
    if (isEnter(key)) {
        if (isRepairNullsKey(text1_->text())) repairNulls();
        else text2_->setFocus();
        return true;
    }
    if (key == Qt::Key_Escape) return close(), true;
    return false;
}

bool TipsMenu_frm::text2Key(int key)
{
    if (isEnter(key)) return buttons_.first()->setFocus(), true;
    if (key == Qt::Key_Up) return text1_->setFocus(), true;
    if (key == Qt::Key_Escape) return close(), true;
    return false;
}

bool TipsMenu_frm::buttonKey(int index, int key)
{
    switch (key) {
    case Qt::Key_Escape:
        close();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        runButton(index);
        return true;
    case Qt::Key_Up:
    case Qt::Key_Left:
        if (index == 0) text2_->setFocus();
        else buttons_[index - 1]->setFocus();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Right:
        if (index + 1 < buttons_.size()) buttons_[index + 1]->setFocus();
        return true;
    default:
        return false;
    }
}

bool TipsMenu_frm::eventFilter(QObject* o, QEvent* e)
{
    if (e->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(e)->key();
        if (o == text1_) return text1Key(key) || QWidget::eventFilter(o, e);
        if (o == text2_) return text2Key(key) || QWidget::eventFilter(o, e);
        const int index = buttons_.indexOf(qobject_cast<QPushButton*>(o));
        if (index >= 0 && buttonKey(index, key)) return true;
    }
    return QWidget::eventFilter(o, e);
}

void TipsMenu_frm::keyPressEvent(QKeyEvent* e)
{
    if (e->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(e);
}
