#include "shell/main_menu_frm.h"
#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>
#include "shell/MenuCaptions.h"
#include "shell/MenuPrompts.h"
#include "shell/QtMenuRun.h"
#include "shell/QtScale.h"
#include "shell/QtScreens.h"
#include "shell/Session.h"
#include "shell/Startup.h"

namespace {

main_menu_frm* gMenu = nullptr;

constexpr Qt::KeyboardModifiers kHidden = Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;

const char* const kStyle =
    "QPushButton { text-align: left; padding: 3px 12px; border: 1px solid #8a94a6; border-radius: 2px;"
    "  background: #f4f6f9; color: #1b2433; }"
    "QPushButton[selected=\"true\"] { background: #1f4e9c; color: white; border-color: #163a75; }"
    "QLabel#Title { color: #163a75; }"
    "QLabel#nendo, QLabel#Eig { border: 1px solid #8a94a6; background: white; padding: 2px 8px; }";

QPixmap emblem()
{
    QPixmap p(44, 44);
    p.fill(Qt::transparent);
    QPainter g(&p);
    g.setRenderHint(QPainter::Antialiasing);
    g.setBrush(QColor(0x1f, 0x4e, 0x9c));
    g.setPen(Qt::NoPen);
    g.drawEllipse(2, 2, 40, 40);
    g.setPen(QPen(Qt::white, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    g.drawPolyline(QPolygon({QPoint(13, 14), QPoint(22, 31), QPoint(31, 14)}));
    return p;
}

QPushButton* menuButton(const QString& name, QWidget* parent)
{
    auto* b = new QPushButton(parent);
    b->setObjectName(name);
    b->setFocusPolicy(Qt::NoFocus);   // the form takes every key itself
    b->setMinimumHeight(30);
    QSizePolicy sp = b->sizePolicy();
    sp.setRetainSizeWhenHidden(true);
    b->setSizePolicy(sp);
    return b;
}

// The installer's screens behind the hidden gestures; nothing when not built in.
void openHidden(const QString& name, QWidget* menu)
{
    QWidget* w = ::screen(name);
    if (!w) return;
    scaleForm(w);
    if (!w->isVisible()) {
        w->adjustSize();
        w->move(menu->frameGeometry().center() - QPoint(w->width() / 2, w->height() / 2));
    }
    w->show();
    w->raise();
    w->activateWindow();
}

} // namespace

main_menu_frm* main_menu_frm::instance() { return gMenu; }

main_menu_frm::main_menu_frm()
{
    gMenu = this;
    setObjectName(QStringLiteral("main_menu"));
    setWindowTitle(QStringLiteral("業務メニュー"));
    setFocusPolicy(Qt::StrongFocus);
    setStyleSheet(QString::fromLatin1(kStyle));

    auto* root = new QVBoxLayout(this);
    root->setContentsMargins(18, 14, 18, 12);
    root->setSpacing(10);

    auto* top = new QHBoxLayout;
    title_ = new QLabel(this);
    title_->setObjectName(QStringLiteral("Title"));
    QFont tf = font();
    tf.setPointSizeF(tf.pointSizeF() * 1.5);
    tf.setBold(true);
    title_->setFont(tf);
    top->addWidget(title_, 1);
    image_ = new QToolButton(this);
    image_->setObjectName(QStringLiteral("ImageBtn"));
    image_->setFocusPolicy(Qt::NoFocus);
    image_->setAutoRaise(true);
    image_->setIcon(QIcon(emblem()));
    image_->setIconSize(QSize(44, 44));
    image_->installEventFilter(this);
    top->addWidget(image_);
    root->addLayout(top);

    auto* fields = new QHBoxLayout;
    nendoLabel_ = new QLabel(QStringLiteral("対象年度"), this);
    nendoLabel_->setObjectName(QStringLiteral("nendoLabel"));
    nendo_ = new QLabel(this);
    nendo_->setObjectName(QStringLiteral("nendo"));
    nendo_->setMinimumWidth(70);
    eigLabel_ = new QLabel(QStringLiteral("営業所"), this);
    eigLabel_->setObjectName(QStringLiteral("EigLabel"));
    eig_ = new QLabel(this);
    eig_->setObjectName(QStringLiteral("Eig"));
    eig_->setMinimumWidth(160);
    fields->addWidget(nendoLabel_);
    fields->addWidget(nendo_);
    fields->addSpacing(24);
    fields->addWidget(eigLabel_);
    fields->addWidget(eig_);
    fields->addStretch(1);
    root->addLayout(fields);

    auto* columns = new QHBoxLayout;
    columns->setSpacing(16);
    auto* leftCol = new QVBoxLayout;
    leftCol->setSpacing(4);
    const QStringList& groups = menuGroupCaptions();
    for (int i = 0; i < MenuModel::ShownGroups; ++i) {
        left_[i] = menuButton(QStringLiteral("LeftBtn%1").arg(i), this);
        left_[i]->setText(groups.value(i));
        left_[i]->setMinimumWidth(150);
        leftCol->addWidget(left_[i]);
        connect(left_[i], &QPushButton::clicked, this, [this, i] {
            QApplication::beep();
            act(model_.clickLeft(i));
        });
    }
    leftCol->addStretch(1);
    auto* rightCol = new QVBoxLayout;
    rightCol->setSpacing(4);
    for (int i = 0; i < MenuModel::Rows; ++i) {
        right_[i] = menuButton(QStringLiteral("RightBtn%1").arg(i), this);
        right_[i]->setMinimumWidth(300);
        rightCol->addWidget(right_[i]);
        connect(right_[i], &QPushButton::clicked, this, [this, i] {
            QApplication::beep();
            act(model_.clickRight(i));
        });
    }
    columns->addLayout(leftCol);
    columns->addLayout(rightCol, 1);
    root->addLayout(columns, 1);

    message_ = new QLabel(QStringLiteral("↑↓で選択、→←で列を移り、リターンキーで実行します。Escで終了します。"), this);
    message_->setObjectName(QStringLiteral("Message"));
    message_->setStyleSheet(QStringLiteral("color: #4a5568;"));
    root->addWidget(message_);
}

main_menu_frm::~main_menu_frm()
{
    if (gMenu == this) gMenu = nullptr;
}

void main_menu_frm::applyStartup(const StartupResult& r)
{
    title_->setText(r.title);
    setWindowTitle(r.title);
    showOffice_ = r.showOffice;
    refreshHeader();
    redraw();
    adjustSize();
    if (QScreen* sc = QGuiApplication::primaryScreen())
        move(sc->availableGeometry().center() - QPoint(width() / 2, height() / 2));
}

void main_menu_frm::refreshHeader()
{
    const Session& s = session();
    nendo_->setText(QString::number(s.Nendo));
    eig_->setText(s.EigNamae.trimmed());
    eigLabel_->setVisible(showOffice_);
    eig_->setVisible(showOffice_);
}

void main_menu_frm::setSelected(QPushButton* b, bool on)
{
    if (b->property("selected").toBool() == on && b->property("selected").isValid()) return;
    b->setProperty("selected", on);
    b->style()->unpolish(b);
    b->style()->polish(b);
    b->update();
}

void main_menu_frm::redraw()
{
    for (int i = 0; i < MenuModel::ShownGroups; ++i) setSelected(left_[i], i == model_.CurGroup);
    const QStringList items = model_.visibleItems();
    for (int i = 0; i < MenuModel::Rows; ++i) {
        right_[i]->setText(items.value(i));
        right_[i]->setVisible(i < items.size());
        setSelected(right_[i], model_.InRight && i == model_.CurItem);
    }
}

void main_menu_frm::act(const MenuModel::Command& c)
{
    switch (c.kind) {
    case MenuModel::Command::Nothing:
        return;
    case MenuModel::Command::Redraw:
        redraw();
        return;
    case MenuModel::Command::Run:
        redraw();
        MenuRun(c.caption);
        return;
    case MenuModel::Command::ChangeOffice:
        if (ChangeOffice()) refreshHeader();
        return;
    case MenuModel::Command::Ending:
        if (DoEndingAction()) ending_ = true;
        return;
    case MenuModel::Command::EndingThenClose:
        // "No" to the exit question still leaves the program from the left column.
        if (DoEndingAction()) ending_ = true;
        else close();
        return;
    }
}

void main_menu_frm::keyPressEvent(QKeyEvent* e)
{
    const MenuModel::Command c = model_.keyPress(e->key());
    if (c.kind == MenuModel::Command::Nothing) {
        QWidget::keyPressEvent(e);
        return;
    }
    act(c);
}

void main_menu_frm::mousePressEvent(QMouseEvent* e)
{
    if ((e->modifiers() & kHidden) == kHidden) {
        openHidden(QStringLiteral("SysFunc_frm"), this);
        return;
    }
    QWidget::mousePressEvent(e);
}

bool main_menu_frm::eventFilter(QObject* o, QEvent* e)
{
    if (o == image_ && e->type() == QEvent::MouseButtonPress) {
        auto* me = static_cast<QMouseEvent*>(e);
        if ((me->modifiers() & kHidden) == kHidden) {
            openHidden(QStringLiteral("myHistory_frm"), this);
            return true;
        }
    }
    return QWidget::eventFilter(o, e);
}

void main_menu_frm::closeEvent(QCloseEvent* e)
{
    if (!ending_ && !ProgramEnding()) {
        ending_ = true;
        OfferLedgerProcessing();
        EndProgram();
    }
    e->accept();
}
