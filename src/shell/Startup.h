#pragma once
// The start-up order: one copy per company, the store, the company row, the offices, the
// switches, the password, the menu and the first-run rate defaults. What needs the screen
// comes in through the hooks and the common dialogs, so the whole order runs in tests.
#include <functional>
#include <QString>
#include "store/Money.h"

class MenuModel;

struct StartupHooks {
    std::function<void()> showSplash;      // Opening_frm
    std::function<void()> loadLookupList;  // the lookup list form, kept for the whole run
    std::function<void()> scaleMenu;
    std::function<void()> hideSplash;
};

struct StartupResult {
    enum Kind {
        Run,               // show the menu
        StopSilently,      // another copy runs on this company
        StopAfterMessage,  // the reason has been shown; the store is closed
    } kind = StopSilently;
    QString title;            // company name and " 業務メニュー"
    bool showOffice = false;  // more than one office: the menu shows the office name
    bool firstRun = false;    // the rate defaults were written
};

// Runs the whole order on the company in the working directory.
StartupResult runStartup(MenuModel& menu, const StartupHooks& hooks = {});

// Last month of a fiscal year that starts in `sTuki`.
short EndMonth(short sTuki);
// Target year from Com.SKai: the number in its first four characters once trimmed.
int NendoFromSKai(const QString& sKai);
// Screen scale from zSysFunc code 1: digits, "." and "-" kept; 0 or nothing readable is 1.
Money ScaleFromContents(const QString& contents);
// Fills the menu from the zSysFunc rows 20001..20999. Rows that do not start with a digit are
// skipped; a group digit 8 or 9 and items past 31 in a group are dropped and reported in
// `problems` (one line each).
void LoadMenuItems(MenuModel& menu, QStringList* problems);
