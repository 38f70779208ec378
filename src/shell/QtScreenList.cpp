#include "shell/QtScreens.h"

// Each screen adds one line here: registerScreen("Name_frm", [] { return new Name_frm; });
void registerAllScreens()
{
}
