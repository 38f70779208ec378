#include "slips/SlipUnits.h"

#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "slips/SlipNumbering.h"

namespace SlipUnits {

namespace {
// Numbers taken by other stations one after another; only a flood of them ends the save here.
constexpr int kMaxNumberAttempts = 20;
}  // namespace

Step failed(ErrorClass cls, const QSqlError& e) { return {cls, StoreErrorText(e)}; }

Step run(const QSqlDatabase& db, const QString& sql, const QVariantList& binds)
{
    QSqlError e;
    const ErrorClass cls = execSql(db, sql, binds, &e);
    return cls == ErrorClass::None ? Step{} : failed(cls, e);
}

bool inUnit(const std::function<Step()>& body)
{
    Step s;
    {
        UnitOfWork unit(session().MasterDb);
        if (!unit.active()) s = failed(unit.errorClass(), unit.error());
        else s = body();
        if (s.ok() && !unit.commit()) s = failed(unit.errorClass(), unit.error());
        if (!s.ok()) unit.rollback();
    }
    if (!s.ok()) Tell(s.text);
    return s.ok();
}

Step underFreeNumber(const QString& kind, short office, long& number, bool& changed,
                     const std::function<Step(long number)>& write)
{
    const QSqlDatabase db = session().MasterDb;
    Step last;
    for (int attempt = 0; attempt < kMaxNumberAttempts; ++attempt) {
        UnitOfWork rows(db);
        if (!rows.active()) return failed(rows.errorClass(), rows.error());
        last = write(number);
        if (last.ok()) return rows.commit() ? Step{} : failed(rows.errorClass(), rows.error());
        rows.rollback();
        if (last.cls != ErrorClass::Duplicate) return last;
        changed = true;
        number = nextFreeDno(kind, office);
    }
    return last;
}

}  // namespace SlipUnits
