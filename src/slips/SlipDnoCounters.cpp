#include "slips/SlipDnoCounters.h"
#include "entry/Recordset.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {
// Counters of other offices are not reachable here.
constexpr short kOffice = 1;
}

SlipCounters slipCounterFields()
{
    return {SlipCounter{QStringLiteral("仕入伝票No."), QStringLiteral("DsrNo")},
            SlipCounter{QStringLiteral("売上伝票No."), QStringLiteral("DurNo")},
            SlipCounter{QStringLiteral("支払伝票No."), QStringLiteral("DshNo")},
            SlipCounter{QStringLiteral("入金伝票No."), QStringLiteral("DnyNo")},
            SlipCounter{QStringLiteral("請求書No."), QStringLiteral("SeikyuNo")}};
}

bool readSlipCounters(SlipCounters& counters)
{
    Query q(session().MasterDb, QStringLiteral("SELECT DsrNo, DurNo, DshNo, DnyNo, SeikyuNo FROM Eig WHERE Code=?"),
            {kOffice});
    if (!q.next()) return false;
    for (int i = 0; i < int(counters.size()); ++i) counters[i].value = q.value(i).toLongLong();
    return true;
}

bool writeSlipCounters(const SlipCounters& c)
{
    const QSqlDatabase db = session().MasterDb;
    QString told;
    {
        UnitOfWork unit(db);
        if (!unit.active()) {
            told = StoreErrorText(unit.error());
        } else if (!scalar(db, QStringLiteral("SELECT Code FROM Eig WHERE Code=?"), {kOffice}).isValid()) {
            told = QStringLiteral("Eigマスターのエラーです。");
        } else {
            Query q(db, QStringLiteral("UPDATE Eig SET DsrNo=?, DurNo=?, DshNo=?, DnyNo=?, SeikyuNo=? WHERE Code=?"),
                    {c[0].value, c[1].value, c[2].value, c[3].value, c[4].value, kOffice});
            if (!q.ok()) told = StoreErrorText(q.error());
            else if (!unit.commit()) told = StoreErrorText(unit.error());
        }
        if (!told.isEmpty()) unit.rollback();
    }
    if (!told.isEmpty()) Tell(told);
    return told.isEmpty();
}
