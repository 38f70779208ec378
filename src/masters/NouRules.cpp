#include "masters/NouRules.h"

#include "entry/Convert.h"
#include "entry/Recordset.h"
#include "store/Sql.h"
#include "shell/Dialogs.h"

namespace {
constexpr int kMaxAttempts = 50;
const QString kNou = QStringLiteral("Nou");
const QString kTorCode = QStringLiteral("TorCode");
const QString kCode = QStringLiteral("Code");
}  // namespace

std::optional<QString> torNamae(const QSqlDatabase& db, qint64 tor)
{
    const std::optional<QVariantMap> row = ReadRow(db, QStringLiteral("Tor"), {{kCode, tor}});
    if (!row) return std::nullopt;
    return NullToEmpty(Col(*row, QStringLiteral("Namae")));
}

qint64 nextFreeNouCode(const QSqlDatabase& db, qint64 tor)
{
    const QVariant top = scalar(db, QStringLiteral("SELECT Code FROM Nou WHERE TorCode = ? ORDER BY Code DESC LIMIT 1"), {tor});
    return top.isValid() ? top.toLongLong() + 1 : 1;
}

std::optional<QVariantMap> nouRow(const QSqlDatabase& db, qint64 tor, qint64 code)
{
    return ReadRow(db, kNou, {{kTorCode, tor}, {kCode, code}});
}

NouSaveOutcome registerNou(const QSqlDatabase& db, const QString& mode, qint64 tor, qint64 code,
                           const ColumnValues& values)
{
    NouSaveOutcome out;
    out.code = code;
    if (code <= 0 || code > 2147483647LL || !torNamae(db, tor)) return out;
    // A new one must take a free number; an amendment writes its row whether it is still
    // there or not.
    bool adding = mode == QLatin1String("NEW");
    for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
        QSqlError err;
        const ColumnValues key = {{kTorCode, tor}, {kCode, code}};
        const ErrorClass e = adding ? InsertRow(db, kNou, key + values, &err) : UpsertRow(db, kNou, key, values, &err);
        if (e == ErrorClass::None) {
            out.saved = true;
            out.code = code;
            if (out.codeChanged)
                Tell(QStringLiteral("納入先は、No.") + ToText(code) + QStringLiteral("で登録しました。"));
            return out;
        }
        // The store already waited its busy timeout; the clerk decides whether to wait again.
        if (e == ErrorClass::Busy) {
            if (AskRetryLocked(StoreErrorText(err))) continue;
            return out;
        }
        if (e != ErrorClass::Duplicate) {
            Tell(StoreErrorText(err));
            return out;
        }
        code = nextFreeNouCode(db, tor);
        out.codeChanged = true;
        adding = true;
    }
    return out;
}

QString nouSlipRefusal(const QSqlDatabase& db, qint64 tor, qint64 code)
{
    for (const QString& table : {QStringLiteral("Dur"), QStringLiteral("Dny")}) {
        bool failed = false;
        if (!AnyRow(db, table, {{kTorCode, tor}, {QStringLiteral("NouCode"), code}}, &failed)) continue;
        if (failed) return StoreErrorText(Query(db, QStringLiteral("SELECT 1 FROM ") + table).error());
        return QStringLiteral("この納入先が伝票に存在するので、削除はできません。");
    }
    return QString();
}

ErrorClass deleteNou(const QSqlDatabase& db, qint64 tor, qint64 code, QSqlError* error)
{
    return DeleteRows(db, kNou, {{kTorCode, tor}, {kCode, code}}, error);
}
