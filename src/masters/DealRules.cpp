#include "masters/DealRules.h"

#include "entry/Convert.h"
#include "entry/Recordset.h"
#include "store/Sql.h"
#include "shell/Dialogs.h"

namespace {
// Each failed insert takes a fresh code, so only a flood of other stations could use these up.
constexpr int kMaxAttempts = 50;
}  // namespace

const DealKind* dealKind(const QString& menuKey)
{
    static const DealKind tor{QStringLiteral("Tor"), QStringLiteral("得意先マスター登録"), QStringLiteral("Tbn"),
                              QStringLiteral("TbnCode"), QStringLiteral("Ttantou"),
                              QStringLiteral("得意先分類が登録されていません。"), QStringLiteral("Dur"),
                              QStringLiteral("Dny"), QStringLiteral("TorCode"),
                              QStringLiteral("この得意先が伝票に存在するので、削除は出来ません。"),
                              QStringLiteral("この得意先を削除しますか？"), true};
    static const DealKind sir{QStringLiteral("Sir"), QStringLiteral("仕入先マスター登録"), QStringLiteral("Sbn"),
                              QStringLiteral("SbnCode"), QStringLiteral("Stantou"),
                              QStringLiteral("仕入先分類が登録されていません。"), QStringLiteral("Dsr"),
                              QStringLiteral("Dsh"), QStringLiteral("SirCode"),
                              QStringLiteral("この仕入先が伝票に存在するので、削除は出来ません。"),
                              QStringLiteral("この仕入先を削除しますか？"), false};
    if (menuKey == tor.menuKey) return &tor;
    if (menuKey == sir.menuKey) return &sir;
    return nullptr;
}

QString classMissingMessage(const QSqlDatabase& db, const DealKind& kind)
{
    return AnyRow(db, kind.classTable, {}) ? QString() : kind.noClassMessage;
}

qint64 nextFreeCode(const QSqlDatabase& db, const DealKind& kind)
{
    const QVariant top = scalar(db, QStringLiteral("SELECT Code FROM %1 ORDER BY Code DESC LIMIT 1").arg(kind.menuKey));
    return top.isValid() ? top.toLongLong() + 1 : 1;
}

std::optional<int> storedTorSime(const QSqlDatabase& db, qint64 code)
{
    const std::optional<QVariantMap> row = ReadRow(db, QStringLiteral("Tor"), {{QStringLiteral("Code"), code}});
    if (!row) return std::nullopt;
    return Col(*row, QStringLiteral("Sime")).toInt();
}

DealCheck dealSaveCheck(const DealKind& kind, const QString& simeText, std::optional<int> classCode)
{
    if (kind.customer && ToNum(simeText) == 0) return {QStringLiteral("締日が記入されてません。"), true};
    if (classCode.value_or(0) == 0) return {QStringLiteral("分類コードが設定されていません。"), false};
    return {};
}

QString dealSlipRefusal(const QSqlDatabase& db, const DealKind& kind, qint64 code)
{
    for (const QString& table : {kind.slipHead, kind.slipMoney}) {
        bool failed = false;
        if (!AnyRow(db, table, {{kind.slipColumn, code}}, &failed)) continue;
        if (failed) {
            const Query q(db, QStringLiteral("SELECT 1 FROM ") + table);
            return StoreErrorText(q.error());
        }
        return kind.inSlipsMessage;
    }
    return QString();
}

QString bankText(const QSqlDatabase& db, int bankCode)
{
    if (bankCode < 1 || bankCode > 4) return QString();
    const std::optional<QVariantMap> com = ReadRow(db, QStringLiteral("Com"), {});
    if (!com) return QString();
    return NullToEmpty(Col(*com, QStringLiteral("koza") + QString::number(bankCode))).trimmed();
}

QString partnerRyaku(const QSqlDatabase& db, const QString& table, qint64 code)
{
    const std::optional<QVariantMap> row = ReadRow(db, table, {{QStringLiteral("Code"), code}});
    return row ? NullToEmpty(Col(*row, QStringLiteral("Ryaku"))).trimmed() : QString();
}

DealSaveOutcome registerDeal(Recordset& rs, const DealKind& kind, const QString& mode, qint64 code,
                             const ColumnValues& values)
{
    DealSaveOutcome out;
    out.code = code;
    if (code < 0 || code > 2147483647LL) return out;
    if (mode == QLatin1String("NEW")) {
        rs.AddNew();
    } else if (rs.FindFirst(code)) {
        rs.Edit();
    } else {
        return out;   // gone meanwhile: an amendment adds nothing
    }
    for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
        rs.setValue(QStringLiteral("Code"), code);
        for (const ColumnValue& v : values) rs.setValue(v.column, v.value);
        const ErrorClass e = rs.Update();
        if (e == ErrorClass::None) {
            out.saved = true;
            out.code = code;
            if (out.codeChanged)
                Tell(QStringLiteral("マスターは、No.") + ToText(code) + QStringLiteral("で登録しました。"));
            return out;
        }
        // The store already waited its busy timeout; the clerk decides whether to wait again.
        if (e == ErrorClass::Busy) {
            if (AskRetryLocked(StoreErrorText(rs.lastError()))) continue;
            break;
        }
        if (e != ErrorClass::Duplicate) {
            Tell(StoreErrorText(rs.lastError()));
            break;
        }
        code = nextFreeCode(rs.database(), kind);
        out.codeChanged = true;
    }
    rs.CancelUpdate();
    return out;
}
