#include "store/Options.h"
#include "store/Session.h"
#include "store/Sql.h"

std::optional<QString> readOption(int code)
{
    Query q(session().MasterDb, QStringLiteral("SELECT contents FROM UserOP WHERE Code = ?"), {code});
    if (!q.next()) return std::nullopt;
    return q.value(0).isNull() ? QString() : q.value(0).toString().trimmed();
}
