#include "shell/QtScreens.h"
#include "entry/Help_frm.h"
#include "ledgers/AfterWork_frm.h"
#include "ledgers/TipsMenu_frm.h"
#include "ledgers/NenjiKosin_frm.h"
#include "store/Backup_frm.h"
#include "masters/ms_frm.h"
#include "masters/Tan_frm.h"
#include "masters/Deal_frm.h"
#include "masters/DealRules.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "masters/Nou_frm.h"
#include "masters/Hin_frm.h"
#include "masters/Price_frm.h"
#include "masters/PriceNka_frm.h"
#include "masters/Kaisya_frm.h"
#include "masters/Opt_frm.h"
#include "masters/SysFunc_frm.h"
#include "shell/Nendo_frm.h"
#include "shell/myHistory_frm.h"
#include "slips/Slip_frm.h"
#include "slips/SlipSelect_frm.h"
#include "slips/SlipList_frm.h"
#include "slips/Cashier_frm.h"
#include "slips/CasherList_frm.h"
#include "slips/SlipDno_frm.h"
#include "reports/Seikyu_frm.h"
#include "reports/RepoNippou_frm.h"
#include "reports/RepoGeppou_frm.h"
#include "reports/Chouha_frm.h"
#include "reports/Daichou_frm.h"
#include "reports/ListDaichou_frm.h"
#include "reports/RepoSales_frm.h"
#include "reports/Zandaka_frm.h"

// Each screen adds one line here: registerScreen("Name_frm", [] { return new Name_frm; });
void registerAllScreens()
{
    installHelpForm();
    registerScreen("AfterWork_frm", [] { return new AfterWork_frm; });
    registerScreen("TipsMenu_frm", [] { return new TipsMenu_frm; });
    registerScreen("ms_frm", [] { return new ms_frm; });
    registerScreen("Tan_frm", [] { return new Tan_frm; });
    registerScreen("Deal_frm", [] { return new Deal_frm; });
    // Partners need their classes first.
    registerOpeningCheck("Deal_frm", [] {
        const DealKind* kind = dealKind(session().MenuKey);
        const QString refusal = kind ? classMissingMessage(session().MasterDb, *kind) : QString();
        if (!refusal.isEmpty()) Tell(refusal);
        return refusal.isEmpty();
    });
    registerScreen("Nou_frm", [] { return new Nou_frm; });
    registerScreen("Hin_frm", [] { return new Hin_frm; });
    registerScreen("Price_frm", [] { return new Price_frm; });
    registerScreen("PriceNka_frm", [] { return new PriceNka_frm; });
    registerScreen("Kaisya_frm", [] { return new Kaisya_frm; });
    registerScreen("SysFunc_frm", [] { return new SysFunc_frm; });
    registerScreen("Opt_frm", [] { return new Opt_frm; });
    registerScreen("Nendo_frm", [] { return new Nendo_frm; });
    registerScreen("NenjiKosin_frm", [] { return new NenjiKosin_frm; });
    registerScreen("Backup_frm", [] { return new Backup_frm; });
    registerScreen("myHistory_frm", [] { return new myHistory_frm; });
    registerScreen("Slip_frm", [] { return new Slip_frm; });
    registerScreen("SlipSelect_frm", [] { return new SlipSelect_frm; });
    registerScreen("Seikyu_frm", [] { return new Seikyu_frm; });
    Slip_frm::setSlipListPicker(&SlipList_frm::pick);
    registerScreen("Cashier_frm", [] { return new Cashier_frm; });
    Cashier_frm::setCashListPicker(&CasherList_frm::pick);
    registerScreen("SlipDno_frm", [] { return new SlipDno_frm; });
    registerOpeningCheck("SlipDno_frm", &SlipDno_frm::mayOpen);
    registerScreen("RepoNippou_frm", [] { return new RepoNippou_frm; });
    registerScreen("RepoGeppou_frm", [] { return new RepoGeppou_frm; });
    registerScreen("Chouha_frm", [] { return new Chouha_frm; });
    registerScreen("Daichou_frm", [] { return new Daichou_frm; });
    registerScreen("ListDaichou_frm", [] { return new ListDaichou_frm; });
    registerScreen("Zandaka_frm", [] { return new Zandaka_frm; });
    registerScreen("RepoSales_frm", [] { return new RepoSales_frm; });
}
