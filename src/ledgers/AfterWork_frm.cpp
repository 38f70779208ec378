#include "ledgers/AfterWork_frm.h"
#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>

AfterWork_frm::AfterWork_frm()
    : QWidget(nullptr, Qt::Window | Qt::WindowTitleHint | Qt::CustomizeWindowHint)
{
    setObjectName(QStringLiteral("AfterWork_frm"));
    setWindowTitle(QStringLiteral("台帳処理"));
    auto* lay = new QHBoxLayout(this);
    lay->setContentsMargins(24, 20, 24, 20);
    lay->setSpacing(18);
    auto* image = new QLabel(this);
    image->setObjectName(QStringLiteral("Image1"));
    image->setPixmap(style()->standardIcon(QStyle::SP_FileDialogContentsView).pixmap(48, 48));
    image->setAlignment(Qt::AlignTop);
    message_ = new QLabel(this);
    message_->setObjectName(QStringLiteral("message"));
    message_->setMinimumWidth(320);
    message_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    lay->addWidget(image);
    lay->addWidget(message_, 1);
    setFocusPolicy(Qt::StrongFocus);
    adjustSize();
    setAfterWorkView(this);
}

AfterWork_frm::~AfterWork_frm()
{
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

void AfterWork_frm::keyPressEvent(QKeyEvent* e)
{
    // No keys: the run closes the form.
    e->accept();
}

void AfterWork_frm::closeEvent(QCloseEvent* e)
{
    if (running_) e->ignore();
    else QWidget::closeEvent(e);
}
