#include <QApplication>
#include "app/Commands.h"
#include "shell/Opening_frm.h"
#include "shell/QtDialogs.h"
#include "shell/QtScale.h"
#include "shell/QtScreens.h"
#include "shell/Startup.h"
#include "shell/main_menu_frm.h"

// The program on screen: the company is the working directory.
int runGui()
{
    static QtDialogs qtDialogs;
    setDialogs(&qtDialogs);
    installJapaneseFonts();
    installFormScaling();
    // The field under the cursor is tinted: a clerk types blind and must see where a key lands.
    qApp->setStyleSheet(QStringLiteral("QLineEdit:focus, QComboBox:focus { background-color: #fff2a8; }"));
    registerAllScreens();

    auto* menu = new main_menu_frm;
    Opening_frm* splash = nullptr;
    StartupHooks hooks;
    hooks.showSplash = [&splash] {
        splash = new Opening_frm;
        splash->show();
        splash->repaint();
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    };
    hooks.hideSplash = [&splash] {
        delete splash;
        splash = nullptr;
    };
    // The lookup list form is loaded once and kept for the whole run.
    hooks.loadLookupList = [] {
        if (QWidget* help = screen(QStringLiteral("Help_frm"))) scaleForm(help);
    };
    hooks.scaleMenu = [menu] { scaleForm(menu); };

    const StartupResult r = runStartup(menu->model(), hooks);
    delete splash;
    if (r.kind != StartupResult::Run) {
        delete menu;
        return r.kind == StartupResult::StopSilently ? 0 : 1;
    }
    menu->applyStartup(r);
    menu->show();
    menu->activateWindow();
    menu->setFocus();
    const int code = QApplication::exec();
    delete menu;
    return code;
}
