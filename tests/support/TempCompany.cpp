#include "support/TempCompany.h"
#include "shell/Session.h"
#include "store/NewCompany.h"
#include "store/Store.h"

TempCompany::TempCompany(int year, int startMonth, bool enter) : year_(year)
{
    oldCwd_ = QDir::currentPath();
    if (year) {
        NewCompanyOptions o;
        o.year = year;
        o.startMonth = startMonth;
        createCompany(dir_.path(), o, nullptr);
    }
    if (enter) QDir::setCurrent(dir_.path());
}

TempCompany::~TempCompany()
{
    CloseStore();
    session() = Session();
    QDir::setCurrent(oldCwd_);
}

bool TempCompany::open()
{
    if (!OpenStore()) return false;
    session().Nendo = year_;
    const bool ok = OpenSlip() && AttachSlipTables();
    CloseSlip();
    return ok;
}
