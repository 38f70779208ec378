#include "shell/MenuPrompts.h"
#include "entry/Convert.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {

void tellFailure(const QSqlError& err) { Tell(StoreErrorText(err)); }

// Writes zSysFunc `code`, adding the row when it is missing, in one statement.
bool writeSysFunc(qint64 code, const QString& contents)
{
    QSqlError err;
    const ErrorClass e = execSql(session().MasterDb,
                                 QStringLiteral("INSERT INTO zSysFunc (Code, contents) VALUES (?, ?) "
                                                "ON CONFLICT (Code) DO UPDATE SET contents = excluded.contents"),
                                 {code, contents}, &err);
    if (e != ErrorClass::None) tellFailure(err);
    return e == ErrorClass::None;
}

} // namespace

void MemoPrompt()
{
    const QSqlDatabase db = session().MasterDb;
    QString current;
    {
        // Read and let go before asking: an open read would keep other stations' saves out.
        Query q(db, QStringLiteral("SELECT * FROM Tek"));
        if (q.next()) current = NullToEmpty(q.value(QStringLiteral("Tekiyo")));
    }
    const QString typed = Request(QStringLiteral("摘要を入力します。"), current);
    if (typed.isEmpty()) return;
    const QString memo = typed.left(36);
    QSqlError err;
    {
        // Tek holds one row: looked for again and written in one unit, after the clerk's answer.
        UnitOfWork unit(db);
        ErrorClass e = unit.active() ? ErrorClass::None : unit.errorClass();
        if (!unit.active()) err = unit.error();
        if (e == ErrorClass::None) {
            const bool there = scalar(db, QStringLiteral("SELECT count(*) FROM Tek")).toInt() > 0;
            e = there ? execSql(db, QStringLiteral("UPDATE Tek SET Tekiyo=?"), {memo}, &err)
                      : execSql(db, QStringLiteral("INSERT INTO Tek (Tekiyo) VALUES (?)"), {memo}, &err);
        }
        if (e == ErrorClass::None && unit.commit()) return;
        if (e == ErrorClass::None) err = unit.error();
    }
    tellFailure(err);
}

QString ClampScaleText(const QString& typed)
{
    const QString text = NumText(typed);
    const double v = ToNum(text);
    if (v < 0.7) return QStringLiteral("0.7");
    if (v > 2) return QStringLiteral("2");
    return text;
}

void ScalePrompt()
{
    const QVariant row = scalar(session().MasterDb, QStringLiteral("SELECT contents FROM zSysFunc WHERE Code=1"));
    if (row.isNull() && !writeSysFunc(1, QStringLiteral("1"))) return;
    const QString current = row.isNull() ? QStringLiteral("1") : row.toString().trimmed();
    const QString typed = Request(QStringLiteral("画面スケールを入力します。(標準=1)"), current);
    writeSysFunc(1, ClampScaleText(typed));
}

void PasswordPrompt()
{
    const QString current = NullToEmpty(scalar(session().MasterDb,
                                               QStringLiteral("SELECT contents FROM zSysFunc WHERE Code=123"))).trimmed();
    const QString typed = Request(QStringLiteral("パスワードを入力します。"), current);
    if (!Ask(typed + QStringLiteral("で更新します。"), QStringLiteral("はい"), QStringLiteral("いいえ"))) return;
    writeSysFunc(123, EmptyToSpace(typed));
}

bool ChangeOffice()
{
    Session& s = session();
    Query q(s.MasterDb, QStringLiteral("SELECT Code, Namae FROM Eig ORDER BY Code"));
    QList<QPair<short, QString>> rows;
    while (q.next()) rows << qMakePair(static_cast<short>(q.value(0).toInt()), NullToEmpty(q.value(1)));
    if (rows.size() <= 1) return false;
    auto next = rows.first();
    for (const auto& r : rows)
        if (r.first > s.EigCode) {
            next = r;
            break;
        }
    s.EigCode = next.first;
    s.EigNamae = next.second;
    return true;
}

bool BackupAtExit()
{
    const QVariant v = scalar(session().MasterDb, QStringLiteral("SELECT Contents FROM UserOP WHERE Code=15"));
    return !v.isNull() && ToNum(v.toString()) == 1.0;
}
