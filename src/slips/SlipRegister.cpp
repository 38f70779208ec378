#include "slips/SlipRegister.h"

#include "entry/Convert.h"
#include "entry/Recordset.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "slips/SlipEditor.h"
#include "slips/SlipKinds.h"
#include "slips/SlipNumbering.h"
#include "slips/SlipUnits.h"
#include "store/Sql.h"

using namespace SlipUnits;

namespace {

Step cancelRows(const QSqlDatabase& db, const SlipEditor& ed, long dno, short office)
{
    const QString head = ed.kind(), line = ed.lineTable();
    const QVariantList key = {qlonglong(dno), office};
    // The number alone decides, whatever the office: a like number elsewhere answers for it.
    Query first(db, QStringLiteral("SELECT ThiFlag FROM %1 WHERE Dno=? LIMIT 1").arg(line), {qlonglong(dno)});
    if (!first.ok()) return failed(first.errorClass(), first.error());
    const QVariant flag = first.next() ? first.value(0) : QVariant();
    first.raw().finish();
    if (!flag.isValid())
        return run(db, QStringLiteral("DELETE FROM %1 WHERE Dno=? AND EigCode=?").arg(head), key);
    if (flag.toInt() != ThiFlag::Waiting) {
        // Posted: the rows stay as their negative image until the next ledger run takes them
        // off again. Only the four amounts turn; sGaku keeps its sign.
        Step s = run(db, QStringLiteral("UPDATE %1 SET Dno=Dno*-1 WHERE Dno=? AND EigCode=?").arg(head), key);
        if (!s.ok()) return s;
        return run(db,
                   QStringLiteral("UPDATE %1 SET Dno=Dno*-1,ThiFlag=-1,Suu=Suu*-1,UTanka=UTanka*-1,"
                                  "UGaku=UGaku*-1,Zeigaku=Zeigaku*-1 WHERE Dno=? AND EigCode=?")
                       .arg(line),
                   key);
    }
    Step s = run(db, QStringLiteral("DELETE FROM %1 WHERE Dno=? AND EigCode=?").arg(head), key);
    if (!s.ok()) return s;
    return run(db, QStringLiteral("DELETE FROM %1 WHERE Dno=? AND EigCode=?").arg(line), key);
}

Step writeHead(const QSqlDatabase& db, const SlipEditor& ed, long dno, const QDate& date, short office)
{
    const SlipHead& h = ed.head;
    bool ok = true;
    QString sql = QStringLiteral("INSERT INTO %1 (Dno, Hizuke, TanCode, %2, %3, Tekiyo, SNo, Kubun%4, EigCode) "
                                 "VALUES (?, ?, ?, ?, ?, ?, ?, ?%5, ?)")
                      .arg(ed.kind(),
                           ed.sales() ? QStringLiteral("TbnCode") : QStringLiteral("SbnCode"),
                           ed.sales() ? QStringLiteral("TorCode") : QStringLiteral("SirCode"),
                           ed.sales() ? QStringLiteral(", NouCode") : QString(),
                           ed.sales() ? QStringLiteral(", ?") : QString());
    QVariantList b = {qlonglong(dno), date.toString(Qt::ISODate), h.TanCode.value_or(0),
                      h.ClassCode.value_or(0), h.Partner.value_or(0),
                      EmptyToSpace(CutToBytes(h.Tekiyo, 32)), ToInt32(h.SNo, &ok), h.Kubun};
    if (ed.sales()) b << h.NouCode.value_or(0);
    b << office;
    return run(db, sql, b);
}

Step writeLines(const QSqlDatabase& db, const SlipEditor& ed, long dno, const QDate& date, short office)
{
    const bool torSide = ed.lineTable() == QLatin1String("Dud");
    const QString sql = QStringLiteral("INSERT INTO %1 (Dno, Eda, Kubun, Hizuke, HinCode, HinNamae, Suu, STanka, "
                                       "sGaku, UTanka, UGaku, %2, ZeiGaku, ZeiFlag, EigCode, Getudo, ThiFlag) "
                                       "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)")
                            .arg(ed.lineTable(), torSide ? QStringLiteral("TorCode") : QStringLiteral("SirCode"));
    bool ok = true;
    const qint16 getudo = ToInt16(ed.Getudo, &ok);
    int eda = 1;
    for (const SlipLine& l : ed.lines) {
        // Blank lines take no number: Eda runs from 1 without gaps.
        if (l.isEmpty()) continue;
        QString code = l.HinCode.trimmed();
        const QVariantList b = {qlonglong(dno), eda, l.Kubun, date.toString(Qt::ISODate), ZeroPad13(code),
                                EmptyToSpace(CutToBytes(l.HinNamae, 30)), ToInt32(l.Suu, &ok),
                                ToCur(l.STanka).toStore(), ToCur(l.sGaku).toStore(), ToCur(l.UTanka).toStore(),
                                l.Net.toStore(), ed.head.Partner.value_or(0), l.Zei.toStore(), l.ZeiFlag, office,
                                getudo, ThiFlag::Waiting};
        Step s = run(db, sql, b);
        if (!s.ok()) return s;
        ++eda;
    }
    return {};
}

}  // namespace

SlipSaveResult Register(SlipEditor& ed, const QString& mode)
{
    SlipSaveResult out;
    Session& s = session();
    const QDate date = ed.slipDate();
    s.SlipDate = date;
    ed.readRowsToLines();

    const QSqlDatabase db = s.MasterDb;
    const short office = s.EigCode;
    long number = ed.number();
    bool changed = false;

    // A message never waits for the clerk while the write lock is held: other stations would stall.
    if (mode == QLatin1String("EDIT") && !ed.checkPeriod()) return out;
    const bool saved = inUnit([&]() -> Step {
        Query head(db, QStringLiteral("SELECT Dno FROM %1 WHERE Dno=? AND EigCode=?").arg(ed.kind()),
                   {qlonglong(number), office});
        if (!head.ok()) return failed(head.errorClass(), head.error());
        const bool exists = head.next();
        head.raw().finish();
        // Typing a number far ahead moves the counter on; an old free number leaves it alone.
        QSqlError raiseError;
        if (!exists && !RaiseNextDno(ed.kind(), office, number + 1, &raiseError))
            return failed(classifyError(raiseError), raiseError);
        if (mode == QLatin1String("EDIT")) {
            const Step c = cancelRows(db, ed, number, office);
            if (!c.ok()) return c;
        }
        // A duplicate takes back the rows of one number, not the cancellation before them.
        return underFreeNumber(ed.kind(), office, number, changed, [&](long n) {
            const Step h = writeHead(db, ed, n, date, office);
            return h.ok() ? writeLines(db, ed, n, date, office) : h;
        });
    });
    if (!saved) return out;
    out.saved = true;
    out.dno = number;
    out.numberChanged = changed;
    ed.head.Dno = FormatRight(double(number), SlipFormat::Dno);
    if (changed) Tell(QStringLiteral("伝票は、No.") + QString::number(number) + QStringLiteral("で登録されました。"));
    return out;
}

bool cancelOldSlip(SlipEditor& ed)
{
    if (!ed.checkPeriod()) return false;
    return inUnit([&] { return cancelRows(session().MasterDb, ed, ed.number(), session().EigCode); });
}
