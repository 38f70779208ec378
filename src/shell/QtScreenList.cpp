#include "shell/QtScreens.h"
#include "shell/Nendo_frm.h"
#include "shell/myHistory_frm.h"

// Each screen adds one line here: registerScreen("Name_frm", [] { return new Name_frm; });
void registerAllScreens()
{
    registerScreen("Nendo_frm", [] { return new Nendo_frm; });
    registerScreen("myHistory_frm", [] { return new myHistory_frm; });
}
