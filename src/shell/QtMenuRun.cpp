#include "shell/QtMenuRun.h"
#include <QScreen>
#include <QApplication>
#include <QMetaObject>
#include <QWidget>
#include "ledgers/AfterWork.h"
#include "shell/Dialogs.h"
#include "shell/InstanceLock.h"
#include "shell/MenuCaptions.h"
#include "shell/MenuPrompts.h"
#include "shell/QtScale.h"
#include "shell/QtScreens.h"
#include "shell/Session.h"
#include "shell/main_menu_frm.h"
#include "store/QtOptimize.h"
#include "store/Store.h"

namespace {

std::function<void()>& endHook()
{
    static std::function<void()> f;
    return f;
}

bool gEnding = false;

void defaultEnd()
{
    CloseStore();
    while (QApplication::overrideCursor()) QApplication::restoreOverrideCursor();
    processInstanceLock().release();
    QCoreApplication::quit();
}

// A form opened for the first time comes up over the menu.
void placeOverMenu(QWidget* w)
{
    if (w->property("velmoraPlaced").isValid()) return;
    w->setProperty("velmoraPlaced", true);
    if (QWidget* menu = main_menu_frm::instance(); menu && menu->isVisible() && menu != w) {
        w->adjustSize();
        QPoint at = menu->frameGeometry().center() - QPoint(w->width() / 2, w->height() / 2);
        // Never past the edges of the screen the menu is on: a wide form starts at its left edge.
        if (QScreen* sc = menu->screen()) {
            const QRect avail = sc->availableGeometry();
            at.setX(qBound(avail.left(), at.x(), qMax(avail.left(), avail.right() - w->frameGeometry().width())));
            at.setY(qBound(avail.top(), at.y(), qMax(avail.top(), avail.bottom() - w->frameGeometry().height())));
        }
        w->move(at);
    }
}

QWidget* openScreen(const QString& name)
{
    QWidget* w = screen(name);
    if (!w) return nullptr;
    scaleForm(w);
    placeOverMenu(w);
    w->show();
    w->raise();
    w->activateWindow();
    return w;
}

void runLedgerProcessing()
{
    openScreen(QStringLiteral("AfterWork_frm"));
    ActionAfterWork(true);
}

bool isSlipScreen(const QString& form)
{
    return form == QLatin1String("Slip_frm") || form == QLatin1String("Cashier_frm");
}

} // namespace

void EndProgram()
{
    gEnding = true;
    if (endHook()) endHook()();
    else defaultEnd();
}

std::function<void()> setEndProgram(std::function<void()> f)
{
    std::function<void()> prev = endHook();
    endHook() = std::move(f);
    gEnding = false;
    return prev;
}

bool ProgramEnding() { return gEnding; }

bool MenuRun(const QString& caption)
{
    const MenuCaption* m = findMenuCaption(caption);
    if (!m) return false;
    if (m->form == QLatin1String("Compact")) {
        if (Ask(QStringLiteral("実行しますか？"), QStringLiteral("はい"), QStringLiteral("いいえ"))) OptimizeStore();
        return true;
    }
    if (m->form == QLatin1String("Memo")) return MemoPrompt(), true;
    if (m->form == QLatin1String("Scale")) return ScalePrompt(), true;
    if (m->form == QLatin1String("Password")) return PasswordPrompt(), true;
    if (!screenExists(m->form)) return false;
    if (m->offer) OfferLedgerProcessing();
    Session& s = session();
    if (!m->menuKey.isEmpty()) s.MenuKey = m->menuKey;
    // Tells a slip screen it was not called from a ledger list.
    if (isSlipScreen(m->form)) s.SlipCaller = QStringLiteral("Menu");
    if (!screenMayOpen(m->form)) return true;
    return openScreen(m->form) != nullptr;
}

void OfferLedgerProcessing()
{
    if (Ask(QStringLiteral("台帳処理を実行しますか?"), QStringLiteral("はい"), QStringLiteral("いいえ")))
        runLedgerProcessing();
}

bool DoEndingAction()
{
    if (!Ask(QStringLiteral("終了しますか？"), QStringLiteral("はい"), QStringLiteral("いいえ"))) return false;
    // Every regular exit brings the ledgers up to date, without asking.
    runLedgerProcessing();
    if (BackupAtExit()) {
        // Backup_frm offers `Backup(int)`, which copies the files and ends the run itself.
        if (QWidget* b = screen(QStringLiteral("Backup_frm"))) {
            scaleForm(b);
            QMetaObject::invokeMethod(b, "Backup", Qt::DirectConnection, Q_ARG(int, 0));
        }
    }
    EndProgram();
    return true;
}
