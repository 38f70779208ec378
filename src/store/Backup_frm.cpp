#include "store/Backup_frm.h"
#include <QApplication>
#include <QDate>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include "shell/Dialogs.h"
#include "shell/QtMenuRun.h"
#include "shell/Session.h"
#include "store/Backup.h"
#include "store/BackupFiles.h"
#include "store/Store.h"

Backup_frm::Backup_frm()
{
    setObjectName(QStringLiteral("Backup_frm"));
    setWindowTitle(QStringLiteral("BackUp"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* lay = new QVBoxLayout(this);
    lay->setContentsMargins(28, 20, 28, 20);
    lay->setSpacing(16);
    auto* text = new QLabel(QStringLiteral("バックアップを行います。"), this);
    text->setObjectName(QStringLiteral("Label1"));
    lay->addWidget(text);
    start_ = new QPushButton(QStringLiteral("開始"), this);
    start_->setObjectName(QStringLiteral("StartBtn"));
    start_->setMinimumWidth(120);
    start_->installEventFilter(this);
    lay->addWidget(start_, 0, Qt::AlignHCenter);
    connect(start_, &QPushButton::clicked, this, [this] { Backup(1); });
    start_->setFocus();
}

void Backup_frm::Backup(int mode)
{
    Session& s = session();
    if (const QString problem = masterLayoutProblem(s.YearFolderMode, s.Nendo); !problem.isEmpty()) {
        Tell(problem);
        return;
    }
    const QString folder = backupFolder();
    CloseStore();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    BackupResult r;
    const bool ok = backupStore(folder, s.YearFolderMode, s.Nendo, QDate::currentDate(), &r);
    QApplication::restoreOverrideCursor();
    if (!ok) Tell(backupFailureText());
    else if (mode == 1) Tell(QStringLiteral("完了しました。システムを一旦終了します。"));
    if (mode != 1) return;
    close();
    EndProgram();
}

bool Backup_frm::eventFilter(QObject* o, QEvent* e)
{
    if (o == start_ && e->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(e)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            start_->click();
            return true;
        }
        if (key == Qt::Key_Escape) {
            close();
            return true;
        }
    }
    return QWidget::eventFilter(o, e);
}
