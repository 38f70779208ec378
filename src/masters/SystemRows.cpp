#include "masters/SystemRows.h"

#include "entry/Convert.h"
#include "entry/Recordset.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "store/Sql.h"

bool saveSysFuncRow(Recordset& rs, qint32 code, const QString& contents)
{
    if (rs.FindFirst(code)) rs.Edit();
    else rs.AddNew();
    rs.setValue(QStringLiteral("Code"), code);
    rs.setValue(QStringLiteral("contents"), EmptyToSpace(CutToBytes(contents, 50)));
    const ErrorClass e = rs.Update();
    if (e == ErrorClass::None) return true;
    if (e == ErrorClass::Busy) Tell(StoreErrorText(rs.lastError()));
    rs.CancelUpdate();
    return false;
}

QString sysFuncDeleteQuestion(const Recordset& rs)
{
    if (rs.isEmpty() || !rs.hasCurrent()) return QString();
    return QStringLiteral("コード : ") + ToText(rs.currentKey()) + QStringLiteral("\n\n")
           + NullToEmpty(rs.value(QStringLiteral("contents"))) + QStringLiteral("\n\nを削除してよろしいですか？");
}

std::optional<QString> readOption(int code)
{
    Query q(session().MasterDb, QStringLiteral("SELECT contents FROM UserOP WHERE Code = ?"), {code});
    if (!q.next()) return std::nullopt;
    return NullToEmpty(q.value(0)).trimmed();
}

bool saveOptions(const QString& backupPath, const QString& backupAtExit)
{
    const QSqlDatabase db = session().MasterDb;
    QSqlError err;
    {
        UnitOfWork unit(db);
        bool ok = unit.active();
        if (!ok) err = unit.error();
        const std::pair<int, QString> rows[] = {{kOptBackupPath, CutToBytes(backupPath.trimmed(), 30)},
                                                {kOptBackupAtExit, backupAtExit.trimmed()}};
        for (const auto& [code, text] : rows) {
            if (!ok) break;
            ok = execSql(db, QStringLiteral("INSERT INTO UserOP (Code, contents) VALUES (?, ?) "
                                            "ON CONFLICT (Code) DO UPDATE SET contents = excluded.contents"),
                         {code, EmptyToSpace(text)}, &err) == ErrorClass::None;
        }
        if (ok && !unit.commit()) {
            ok = false;
            err = unit.error();
        }
        if (ok) return true;
    }
    // Told once the unit is rolled back: no station waits on the clerk's answer.
    Tell(StoreErrorText(err));
    return false;
}
