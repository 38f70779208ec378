#include "shell/Nendo_frm.h"
#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include "shell/QtMenuRun.h"
#include "shell/TargetYear.h"
#include "shell/main_menu_frm.h"

void UnloadHinForm()
{
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("Hin_frm") || qstrcmp(w->metaObject()->className(), "Hin_frm") == 0) {
            w->close();
            w->deleteLater();
        }
}

Nendo_frm::Nendo_frm()
{
    setObjectName(QStringLiteral("Nendo_frm"));
    setWindowTitle(QStringLiteral("対象年度"));
    // Built anew each time it is opened, so the list is read afresh.
    setAttribute(Qt::WA_DeleteOnClose);
    auto* lay = new QVBoxLayout(this);
    lay->setContentsMargins(20, 16, 20, 16);
    lay->setSpacing(10);
    auto* title = new QLabel(QStringLiteral("対象の年度を一時的に変更します。"), this);
    title->setObjectName(QStringLiteral("Title"));
    lay->addWidget(title);
    auto* row = new QHBoxLayout;
    auto* label = new QLabel(QStringLiteral("年度"), this);
    cbox_ = new QComboBox(this);
    cbox_->setObjectName(QStringLiteral("cbox"));
    cbox_->setMinimumWidth(120);
    for (int y : AvailableYears()) cbox_->addItem(QString::number(y), y);
    cbox_->setCurrentIndex(cbox_->count() ? 0 : -1);
    cbox_->installEventFilter(this);
    row->addWidget(label);
    row->addWidget(cbox_);
    row->addStretch(1);
    lay->addLayout(row);
    auto* help = new QLabel(QStringLiteral("終了するまで有効です。"), this);
    help->setObjectName(QStringLiteral("Help"));
    lay->addWidget(help);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    set_ = new QPushButton(QStringLiteral("設定"), this);
    set_->setObjectName(QStringLiteral("SetBtn"));
    cancel_ = new QPushButton(QStringLiteral("キャンセル"), this);
    cancel_->setObjectName(QStringLiteral("CancelBtn"));
    set_->setMinimumWidth(100);
    cancel_->setMinimumWidth(100);
    buttons->addWidget(set_);
    buttons->addWidget(cancel_);
    lay->addLayout(buttons);
    connect(set_, &QPushButton::clicked, this, &Nendo_frm::apply);
    connect(cancel_, &QPushButton::clicked, this, &QWidget::close);
    cbox_->setFocus();
}

void Nendo_frm::apply()
{
    if (cbox_->currentIndex() >= 0) {
        const int year = cbox_->currentData().toInt();
        QApplication::setOverrideCursor(Qt::WaitCursor);
        UnloadHinForm();
        const YearChange r = ChangeTargetYear(year);
        QApplication::restoreOverrideCursor();
        if (r == YearChange::Lost) {
            // Nothing is open any more: the run cannot go on.
            close();
            EndProgram();
            return;
        }
        if (main_menu_frm* m = main_menu_frm::instance()) m->refreshHeader();
    }
    close();
}

bool Nendo_frm::eventFilter(QObject* o, QEvent* e)
{
    if (o == cbox_ && e->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(e)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            apply();
            return true;
        }
        if (key == Qt::Key_Escape) {
            close();
            return true;
        }
    }
    return QWidget::eventFilter(o, e);
}

void Nendo_frm::keyPressEvent(QKeyEvent* e)
{
    if (e->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(e);
}
