#include "ledgers/NenjiKosin_frm.h"
#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMetaObject>
#include <QPushButton>
#include <QVBoxLayout>
#include "ledgers/YearEnd.h"
#include "shell/Dialogs.h"
#include "shell/Nendo_frm.h"
#include "shell/QtMenuRun.h"
#include "shell/QtScale.h"
#include "shell/QtScreens.h"
#include "shell/Session.h"
#include "shell/TargetYear.h"
#include "store/BackupFiles.h"
#include "store/Store.h"

namespace {

const QString kCaution = QStringLiteral(
    "年次更新での注意！！\n\n会計年度の終了後に\n年次更新が必要です。\n旧年度を確定してから実施してください。\n\n"
    "実行後は新年度で、実行されます。\n\nLAN上の他のコンピュータの\n作業を中止してください。");
const QString kRunning = QStringLiteral("\n年次更新実行中です。\n電源を落とさないでください。");

// A repeated run rebuilds the first month through the recovery menu, shown while it works;
// the menu tells its own failure.
bool rebuildOnRecoveryMenu(QString* error)
{
    QWidget* tips = screen(QStringLiteral("TipsMenu_frm"));
    if (!tips) return false;
    scaleForm(tips);
    tips->show();
    bool ok = false;
    QMetaObject::invokeMethod(tips, "AfterNenjiKosin", Qt::DirectConnection, Q_RETURN_ARG(bool, ok));
    error->clear();
    return ok;
}

bool isEnter(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter; }

} // namespace

NenjiKosin_frm::NenjiKosin_frm()
{
    setObjectName(QStringLiteral("NenjiKosin_frm"));
    setWindowTitle(QStringLiteral("年次更新"));
    // Made anew each time, so the years in the title are those of the moment.
    setAttribute(Qt::WA_DeleteOnClose);
    const int nendo = session().Nendo;
    auto* lay = new QVBoxLayout(this);
    lay->setContentsMargins(24, 18, 24, 18);
    lay->setSpacing(12);
    title_ = new QLabel(QStringLiteral("%1年度より %2年度への、年次更新を行います").arg(nendo).arg(nendo + 1), this);
    title_->setObjectName(QStringLiteral("Title"));
    QFont big = title_->font();
    big.setPointSizeF(big.pointSizeF() * 1.2);
    big.setBold(true);
    title_->setFont(big);
    caution_ = new QLabel(kCaution, this);
    caution_->setObjectName(QStringLiteral("Caution"));
    caution_->setMinimumHeight(caution_->sizeHint().height());
    caution_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    caution_->setStyleSheet(QStringLiteral("QLabel { color: #b00000; }"));
    lay->addWidget(title_);
    lay->addWidget(caution_, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    execute_ = new QPushButton(QStringLiteral("実行する"), this);
    execute_->setObjectName(QStringLiteral("ExecBtn"));
    cancel_ = new QPushButton(QStringLiteral("中止する"), this);
    cancel_->setObjectName(QStringLiteral("CancelBtn"));
    for (QPushButton* b : {execute_, cancel_}) {
        b->setMinimumWidth(120);
        b->installEventFilter(this);
        buttons->addWidget(b);
    }
    lay->addLayout(buttons);
    connect(execute_, &QPushButton::clicked, this, &NenjiKosin_frm::ExecuteUpdate);
    connect(cancel_, &QPushButton::clicked, this, &QWidget::close);
    // A stray Enter must not start what cannot be undone: the focus starts on "中止する".
    cancel_->setFocus();
}

void NenjiKosin_frm::ExecuteUpdate()
{
    if (running_) return;
    const Session& s = session();
    if (const QString problem = masterLayoutProblem(s.YearFolderMode, s.Nendo); !problem.isEmpty()) {
        Tell(problem);
        return;
    }
    const int year = s.Nendo;
    running_ = true;
    execute_->setEnabled(false);
    cancel_->setEnabled(false);
    caution_->setText(kRunning);
    repaint();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    // The update works on the files through connections of its own: the session lets go.
    UnloadHinForm();
    CloseStore();
    const YearEndResult r = ::ExecuteUpdate({}, rebuildOnRecoveryMenu);
    QApplication::restoreOverrideCursor();
    running_ = false;
    if (r.ok) {
        Tell(QStringLiteral("年次更新は無事に終了しました。\n一旦ベルモーラを終了します。"));
        close();
        EndProgram();
        return;
    }
    // Nothing has changed: the session opens the year again, the clerk reads why and may try
    // again or leave.
    if (!r.error.isEmpty()) Tell(r.error);
    if (ChangeTargetYear(year) != YearChange::Changed) {
        close();
        EndProgram();
        return;
    }
    caution_->setText(kCaution);
    execute_->setEnabled(true);
    cancel_->setEnabled(true);
    cancel_->setFocus();
}

bool NenjiKosin_frm::eventFilter(QObject* o, QEvent* e)
{
    if (e->type() == QEvent::KeyPress && (o == execute_ || o == cancel_)) {
        const int key = static_cast<QKeyEvent*>(e)->key();
        if (isEnter(key)) {
            static_cast<QPushButton*>(o)->click();
            return true;
        }
        if (key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down) {
            (o == execute_ ? cancel_ : execute_)->setFocus();
            return true;
        }
    }
    return QWidget::eventFilter(o, e);
}

void NenjiKosin_frm::keyPressEvent(QKeyEvent* e)
{
    if (e->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(e);
}

void NenjiKosin_frm::closeEvent(QCloseEvent* e)
{
    if (running_) e->ignore();
    else QWidget::closeEvent(e);
}
