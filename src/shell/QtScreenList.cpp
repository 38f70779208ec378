#include "shell/QtScreens.h"
#include "entry/Help_frm.h"
#include "masters/ms_frm.h"
#include "masters/Tan_frm.h"
#include "store/Opt_frm.h"
#include "store/SysFunc_frm.h"
#include "shell/Nendo_frm.h"
#include "shell/myHistory_frm.h"
#include "slips/Slip_frm.h"
#include "slips/SlipSelect_frm.h"

// Each screen adds one line here: registerScreen("Name_frm", [] { return new Name_frm; });
void registerAllScreens()
{
    installHelpForm();
    registerScreen("ms_frm", [] { return new ms_frm; });
    registerScreen("Tan_frm", [] { return new Tan_frm; });
    registerScreen("SysFunc_frm", [] { return new SysFunc_frm; });
    registerScreen("Opt_frm", [] { return new Opt_frm; });
    registerScreen("Nendo_frm", [] { return new Nendo_frm; });
    registerScreen("myHistory_frm", [] { return new myHistory_frm; });
    registerScreen("Slip_frm", [] { return new Slip_frm; });
    registerScreen("SlipSelect_frm", [] { return new SlipSelect_frm; });
}
