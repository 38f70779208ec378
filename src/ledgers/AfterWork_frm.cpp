#include "ledgers/AfterWork_frm.h"
#include <QApplication>
#include <QCloseEvent>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

AfterWork_frm::AfterWork_frm()
    : QWidget(nullptr, Qt::Window | Qt::WindowTitleHint | Qt::CustomizeWindowHint)
{
    setObjectName(QStringLiteral("AfterWork_frm"));
    setWindowTitle(QStringLiteral("台帳処理"));
    auto* lay = new QVBoxLayout(this);
    lay->setContentsMargins(24, 20, 24, 20);
    lay->setSpacing(12);
    auto* top = new QHBoxLayout;
    top->setSpacing(18);
    auto* image = new QLabel(this);
    image->setObjectName(QStringLiteral("Image1"));
    image->setPixmap(style()->standardIcon(QStyle::SP_FileDialogContentsView).pixmap(48, 48));
    image->setAlignment(Qt::AlignTop);
    message_ = new QLabel(this);
    message_->setObjectName(QStringLiteral("message"));
    message_->setMinimumWidth(320);
    message_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    top->addWidget(image);
    top->addWidget(message_, 1);
    lay->addLayout(top);

    unreached_ = new QPlainTextEdit(this);
    unreached_->setObjectName(QStringLiteral("unreached"));
    unreached_->setReadOnly(true);
    unreached_->setFocusPolicy(Qt::NoFocus);
    unreached_->setLineWrapMode(QPlainTextEdit::NoWrap);
    unreached_->setMinimumSize(720, 220);
    confirm_ = new QPushButton(QStringLiteral("確認"), this);
    confirm_->setObjectName(QStringLiteral("confirm"));
    confirm_->setFocusPolicy(Qt::NoFocus);
    lay->addWidget(unreached_, 1);
    lay->addWidget(confirm_, 0, Qt::AlignRight);
    unreached_->hide();
    confirm_->hide();
    connect(confirm_, &QPushButton::clicked, this, [this] {
        if (reading_) reading_->quit();
    });

    setFocusPolicy(Qt::StrongFocus);
    adjustSize();
    setAfterWorkView(this);
}

AfterWork_frm::~AfterWork_frm()
{
    if (reading_) reading_->quit();
    if (cursorSet_) QApplication::restoreOverrideCursor();
    if (afterWorkView() == this) setAfterWorkView(nullptr);
}

void AfterWork_frm::runStarted()
{
    running_ = true;
    message_->clear();
    if (!isVisible()) show();
    if (!cursorSet_) QApplication::setOverrideCursor(Qt::WaitCursor);
    cursorSet_ = true;
    // Let the screen draw the form once before the run holds the thread.
    repaint();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void AfterWork_frm::showProgress(const QString& text)
{
    message_->setText(text);
    message_->repaint();
}

void AfterWork_frm::runFinished()
{
    running_ = false;
    if (cursorSet_) QApplication::restoreOverrideCursor();
    cursorSet_ = false;
    close();
}

void AfterWork_frm::showUnreached(const QString& report)
{
    // The heading on the message line, the slips below it; the run is over, the pointer normal.
    message_->setText(report.section(QLatin1Char('\n'), 0, 0));
    unreached_->setPlainText(report.section(QLatin1Char('\n'), 1));
    unreached_->show();
    confirm_->show();
    if (cursorSet_) QApplication::restoreOverrideCursor();
    cursorSet_ = false;
    adjustSize();
    if (!isVisible()) show();
    activateWindow();
    setFocus();
    QEventLoop reading;
    reading_ = &reading;
    reading.exec();
    reading_ = nullptr;
    unreached_->hide();
    confirm_->hide();
}

void AfterWork_frm::keyPressEvent(QKeyEvent* e)
{
    e->accept();
    if (!reading_) return;   // no keys while the run goes on
    switch (e->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        reading_->quit();
        break;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        QApplication::sendEvent(unreached_, e);
        break;
    default:
        break;
    }
}

void AfterWork_frm::closeEvent(QCloseEvent* e)
{
    if (running_ || reading_) e->ignore();
    else QWidget::closeEvent(e);
}
