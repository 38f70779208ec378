#include "masters/SimpleMaster.h"

#include "entry/Convert.h"
#include "entry/Recordset.h"
#include "masters/MasterRows.h"
#include "store/Schema.h"
#include "store/Sql.h"
#include "shell/Dialogs.h"

namespace {
QStringList labels(std::initializer_list<const char*> l)
{
    QStringList out;
    for (const char* t : l) out << QString::fromUtf8(t);
    return out;
}

const QList<SimpleMasterKind>& kinds()
{
    const QString master = QStringLiteral("マスターは、No.");
    const QString ask = QStringLiteral("を削除してよろしいですか？");
    static const QList<SimpleMasterKind> k = {
        {"Hbn", "商品分類マスター", labels({"コード", "ふりがな", "分類名", "分類略称"}), true, false, master, ask},
        {"Sbn", "仕入先分類マスター", labels({"コード", "ふりがな", "分類名", "分類略称"}), true, false, master, ask},
        {"Tbn", "得意先分類マスター", labels({"コード", "ふりがな", "分類名", "分類略称"}), true, false, master, ask},
        {"Cku", "地区マスター", labels({"コード", "ふりがな", "地区名称", "地区略称"}), true, false, master, ask},
        {"Chi", "地位マスター", labels({"コード", "ふりがな", "地位名", "地位略称"}), true, false, master, ask},
        {"Tni", "単位マスター", labels({"コード", "ふりがな", "単位名", "単位略称"}), false, false, master, ask},
        {"Tan", "担当者", labels({"コード", "フリガナ", "担当者名", "担当者略名", "レベル"}), true, true,
         QStringLiteral("担当者は、No."), QStringLiteral("を削除してもよろしいですか？")},
    };
    return k;
}

// Bounds the retries: each failed insert takes a fresh number, so only a flood of other
// stations could use them up.
constexpr int kMaxAttempts = 50;

ColumnValues simpleValues(const SimpleMasterKind& kind, const SimpleRow& row)
{
    ColumnValues v{{QStringLiteral("Namae"), EmptyToSpace(row.namae)}};
    if (kind.hasKanaRyaku)
        v << ColumnValue{QStringLiteral("kana"), EmptyToSpace(row.kana)} << ColumnValue{QStringLiteral("Ryaku"), EmptyToSpace(row.ryaku)};
    if (kind.hasLevel) v << ColumnValue{QStringLiteral("TanLevel"), int(ToInt16(row.level))};
    return v;
}

// The row of that code as typed, whether it is still there or went away meanwhile: one
// statement, so no other station's write comes between a look and the write.
RegisterOutcome amendSimpleRow(Recordset& rs, const SimpleMasterKind& kind, qint16 code, const SimpleRow& row)
{
    RegisterOutcome out;
    out.code = ToText(code);
    for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
        QSqlError err;
        const ErrorClass e = UpsertRow(rs.database(), kind.table, {{QStringLiteral("Code"), int(code)}},
                                       simpleValues(kind, row), &err);
        if (e == ErrorClass::None) {
            rs.Requery();
            rs.FindFirst(code);
            out.saved = true;
            return out;
        }
        // The store already waited its busy timeout; the clerk decides whether to wait again.
        if (e == ErrorClass::Busy && AskRetryLocked(StoreErrorText(err))) continue;
        if (e != ErrorClass::Busy) Tell(StoreErrorText(err));
        break;
    }
    return out;
}
}  // namespace

const SimpleMasterKind* simpleMasterKind(const QString& menuKey)
{
    for (const SimpleMasterKind& k : kinds())
        if (k.table == menuKey) return &k;
    return nullptr;
}

std::optional<qint32> NextFreeCode(const QSqlDatabase& db, const QString& table)
{
    const TableDef* def = findTableDef(table);
    if (!def) return std::nullopt;
    const QVariant top = scalar(db, QStringLiteral("SELECT Code FROM %1 ORDER BY Code DESC LIMIT 1").arg(def->name));
    if (!top.isValid()) return std::nullopt;
    return qint32(top.toLongLong() + 1);
}

RegisterOutcome registerSimpleRow(Recordset& rs, const SimpleMasterKind& kind, const QString& mode, SimpleRow row)
{
    RegisterOutcome out;
    out.code = row.code;
    rs.Requery();
    bool ok = true;
    qint16 code = ToInt16(row.code, &ok);
    if (!ok) {
        Tell(codeLimitMessage());
        return out;
    }
    if (mode != QLatin1String("NEW")) return amendSimpleRow(rs, kind, code, row);
    rs.AddNew();
    for (int attempt = 0; attempt < kMaxAttempts; ++attempt) {
        rs.setValue(QStringLiteral("Code"), code);
        for (const ColumnValue& v : simpleValues(kind, row)) rs.setValue(v.column, v.value);
        const ErrorClass e = rs.Update();
        if (e == ErrorClass::None) {
            out.saved = true;
            out.code = ToText(code);
            if (out.codeChanged) Tell(kind.savedPrefix + out.code + QStringLiteral("で登録しました。"));
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
        // Another station took the number: the same new row goes under the next free one.
        const std::optional<qint32> next = NextFreeCode(rs.database(), kind.table);
        if (!next) break;
        code = ToInt16(ToText(*next), &ok);
        if (!ok) break;
        out.code = ToText(code);
        out.codeChanged = true;
    }
    rs.CancelUpdate();
    return out;
}

QString deleteQuestion(const Recordset& rs, const SimpleMasterKind& kind)
{
    if (rs.isEmpty() || !rs.hasCurrent()) return QString();
    return NullToEmpty(rs.value(QStringLiteral("Namae"))).trimmed() + kind.deleteSuffix;
}

QString codeLimitMessage()
{
    return QStringLiteral("コードに不適切な数値です。\n32000以下にしてください。");
}
