#include "shell/QtDialogs.h"
#include <QApplication>
#include <QDialog>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include "shell/QtScale.h"

namespace {

const QString kCaption = QStringLiteral("Norbrin Data");

// Dialogs open over the window that asked, so they come up where the user is looking.
QWidget* asker()
{
    QWidget* w = QApplication::activeWindow();
    return w && w->isVisible() ? w : nullptr;
}

QLabel* messageLabel(const QString& text, QWidget* parent)
{
    auto* l = new QLabel(text, parent);
    l->setObjectName(QStringLiteral("Message"));
    l->setWordWrap(true);
    l->setMinimumWidth(360);
    return l;
}

// Ask: two options in a frame, Up/Down between them, Enter takes the one that is set.
class Confirm_frm : public QDialog {
public:
    Confirm_frm(const QString& message, const QString& yes, const QString& no) : QDialog(asker())
    {
        setObjectName(QStringLiteral("Confirm_frm"));
        setWindowTitle(QStringLiteral("選択"));
        auto* lay = new QVBoxLayout(this);
        lay->addWidget(messageLabel(message, this));
        auto* frame = new QGroupBox(this);
        auto* fl = new QVBoxLayout(frame);
        option_[0] = new QRadioButton(yes, frame);
        option_[1] = new QRadioButton(no, frame);
        for (int i = 0; i < 2; ++i) {
            option_[i]->setObjectName(QStringLiteral("Option%1").arg(i));
            option_[i]->installEventFilter(this);
            fl->addWidget(option_[i]);
        }
        lay->addWidget(frame);
        auto* help = new QLabel(QStringLiteral("↑、↓、リターンキーで決定します。"), this);
        help->setObjectName(QStringLiteral("Help"));
        lay->addWidget(help);
        option_[0]->setChecked(true);
    }
    bool first() const { return option_[0]->isChecked(); }
    void start() { option_[0]->setFocus(); }

protected:
    bool eventFilter(QObject* o, QEvent* e) override
    {
        if (e->type() != QEvent::KeyPress) return false;
        const int key = static_cast<QKeyEvent*>(e)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            QRadioButton* other = o == option_[0] ? option_[1] : option_[0];
            other->setChecked(true);
            other->setFocus();
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            accept();
            return true;
        }
        return false;
    }

private:
    QRadioButton* option_[2];
};

class Alert_frm : public QDialog {
public:
    explicit Alert_frm(const QString& message) : QDialog(asker())
    {
        setObjectName(QStringLiteral("Alert_frm"));
        setWindowTitle(kCaption);
        auto* lay = new QVBoxLayout(this);
        lay->addWidget(messageLabel(message, this));
        ok_ = new QPushButton(QStringLiteral("OK"), this);
        ok_->setObjectName(QStringLiteral("OK"));
        ok_->setDefault(true);
        lay->addWidget(ok_, 0, Qt::AlignHCenter);
        QObject::connect(ok_, &QPushButton::clicked, this, &QDialog::accept);
    }
    void start() { ok_->setFocus(); }
private:
    QPushButton* ok_;
};

// Request: Enter or Tab in the box ends it; there is no cancel.
class Request_frm : public QDialog {
public:
    Request_frm(const QString& message, const QString& text) : QDialog(asker())
    {
        setObjectName(QStringLiteral("Request_frm"));
        setWindowTitle(kCaption);
        auto* lay = new QVBoxLayout(this);
        lay->addWidget(messageLabel(message, this));
        ebox_ = new QLineEdit(text, this);
        ebox_->setObjectName(QStringLiteral("ebox"));
        ebox_->installEventFilter(this);
        lay->addWidget(ebox_);
    }
    QString text() const { return ebox_->text(); }
    void start()
    {
        ebox_->setFocus();
        ebox_->selectAll();
    }

protected:
    bool eventFilter(QObject* o, QEvent* e) override
    {
        if (o != ebox_ || e->type() != QEvent::KeyPress) return false;
        auto* k = static_cast<QKeyEvent*>(e);
        if (k->key() == Qt::Key_Backtab || (k->key() == Qt::Key_Tab && (k->modifiers() & Qt::ShiftModifier)))
            return true;
        if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter || k->key() == Qt::Key_Tab) {
            accept();
            return true;
        }
        return false;
    }
    void keyPressEvent(QKeyEvent* e) override
    {
        if (e->key() == Qt::Key_Escape) return;
        QDialog::keyPressEvent(e);
    }

private:
    QLineEdit* ebox_;
};

class Message_frm : public QWidget {
public:
    explicit Message_frm(const QString& message)
        : QWidget(nullptr, Qt::Dialog | Qt::WindowTitleHint | Qt::CustomizeWindowHint)
    {
        setObjectName(QStringLiteral("Message_frm"));
        setWindowTitle(kCaption);
        setAttribute(Qt::WA_DeleteOnClose);
        auto* lay = new QVBoxLayout(this);
        label_ = messageLabel(message, this);
        label_->setAlignment(Qt::AlignCenter);
        lay->addWidget(label_);
    }
    void setText(const QString& m) { label_->setText(m); }
private:
    QLabel* label_;
};

} // namespace

QtDialogs::~QtDialogs()
{
    delete wait_.data();
}

bool QtDialogs::Ask(const QString& message, const QString& yesCaption, const QString& noCaption)
{
    Confirm_frm f(message, yesCaption, noCaption);
    scaleForm(&f);
    f.start();
    f.exec();
    return f.first();
}

void QtDialogs::Tell(const QString& message)
{
    Alert_frm f(message);
    scaleForm(&f);
    f.start();
    f.exec();
}

QString QtDialogs::Request(const QString& message, const QString& defaultText)
{
    Request_frm f(message, defaultText);
    scaleForm(&f);
    f.start();
    f.exec();
    return f.text();
}

void QtDialogs::ShowWait(const QString& message)
{
    auto* f = static_cast<Message_frm*>(wait_.data());
    if (!f) {
        f = new Message_frm(message);
        scaleForm(f);
        wait_ = f;
    } else {
        f->setText(message);
    }
    f->show();
    f->raise();
    f->repaint();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void QtDialogs::HideWait()
{
    if (wait_) wait_->close();
    wait_ = nullptr;
}

void QtDialogs::MessageBox(const QString& title, const QString& text)
{
    QMessageBox box(QMessageBox::Critical, title, text, QMessageBox::Ok, asker());
    scaleForm(&box);
    box.exec();
}
