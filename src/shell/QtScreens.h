#pragma once
// Screens by name. The menu starts a form by the name in its dispatch table; a name that no
// screen has registered yet starts nothing.
#include <functional>
#include <QString>

class QWidget;

using ScreenFactory = std::function<QWidget*()>;

// Registers the factory of a form (one process-wide instance is kept per name).
void registerScreen(const QString& formName, ScreenFactory factory);
bool screenExists(const QString& formName);
// The one instance of the form, created on first use; nullptr for an unknown name.
// A form that closes itself with WA_DeleteOnClose is created anew next time.
QWidget* screen(const QString& formName);
// A screen may refuse to open (a master it needs is empty): the check says why itself and
// answers false. The menu asks it before the form is made, so nothing flashes open.
using OpeningCheck = std::function<bool()>;
void registerOpeningCheck(const QString& formName, OpeningCheck check);
bool screenMayOpen(const QString& formName);
// Deletes every kept instance (the factories stay): a test starts with no screen open.
void forgetScreenInstances();

// Registers every screen the program has (the list lives in QtScreenList.cpp).
void registerAllScreens();
