#include "slips/CashRegister.h"

#include "entry/Convert.h"
#include "entry/Recordset.h"
#include "entry/Utility.h"
#include "ledgers/Daichou.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "slips/CashSlipEditor.h"
#include "slips/SlipNumbering.h"
#include "slips/SlipUnits.h"
#include "store/Sql.h"

using namespace SlipUnits;

namespace {

// One posting of money to the customer's (destination's) or the supplier's ledger.
Step post(bool deposit, qint64 partner, qint64 nou, const LedgerAmounts& a, const QString& month, short office,
          short seiFlag)
{
    QString error;
    const bool ok = deposit ? PostCustomer(partner, nou, a, month, office, seiFlag, &error)
                            : PostLedger(QStringLiteral("TSI"), partner, 0, a, month, office, seiFlag, 0, &error);
    return ok ? Step{} : Step{ErrorClass::Other, error};
}

// The stored rows leave the ledger of their own month and partner, whatever the screen now
// shows, and go.
Step reverseRows(const QSqlDatabase& db, const CashSlipEditor& ed, long dno, short office)
{
    const QVariantList key{qlonglong(dno), office};
    LedgerAmounts a;
    bool any = false;
    qint64 partner = 0, nou = 0;
    QString month;
    {
        Query q(db, QStringLiteral("SELECT * FROM %1 WHERE Dno=? AND EigCode=? ORDER BY Eda").arg(ed.kind()), key);
        if (!q.ok()) return failed(q.errorClass(), q.error());
        while (q.next()) {
            if (!any) {
                partner = q.value(ed.partnerColumn()).toLongLong();
                nou = ed.deposit() ? q.value(QStringLiteral("NouCode")).toLongLong() : 0;
                month = q.value(QStringLiteral("Getudo")).toString();
                any = true;
            }
            addByKubun(a, q.value(QStringLiteral("Kubun")).toInt(), -Money::fromStore(q.value(ed.amountColumn())));
        }
    }
    if (!any) return {};
    const short seiFlag = ed.deposit() && nou != 0 ? short(NouBilling(partner, nou).toInt()) : 1;
    const Step p = post(ed.deposit(), partner, nou, a, month, office, seiFlag);
    if (!p.ok()) return p;
    return run(db, QStringLiteral("DELETE FROM %1 WHERE Dno=? AND EigCode=?").arg(ed.kind()), key);
}

Step probeNumber(const QSqlDatabase& db, const QString& table, long dno, short office)
{
    const QVariantList key{qlonglong(dno), office};
    const Step s = run(db, QStringLiteral("INSERT INTO %1 (Dno, Eda, EigCode) VALUES (?, 1, ?)").arg(table), key);
    if (!s.ok()) return s;
    return run(db, QStringLiteral("DELETE FROM %1 WHERE Dno=? AND Eda=1 AND EigCode=?").arg(table), key);
}

Step writeRows(const QSqlDatabase& db, const CashSlipEditor& ed, long dno, const QDate& date, short office)
{
    const CashHead& h = ed.head;
    const QString sql =
        QStringLiteral("INSERT INTO %1 (Dno, Eda, Hizuke, TanCode, %2, %3%4, Kubun, %5, %6, %7, Getudo, EigCode) "
                       "VALUES (?, ?, ?, ?, ?, ?%8, ?, ?, ?, ?, ?, ?)")
            .arg(ed.kind(), ed.classColumn(), ed.partnerColumn(),
                 ed.deposit() ? QStringLiteral(", NouCode") : QString(), ed.textColumn(), ed.amountColumn(),
                 ed.invoiceColumn(), ed.deposit() ? QStringLiteral(", ?") : QString());
    bool ok = true;
    const qint16 getudo = ToInt16(ed.Getudo, &ok);
    const qint32 nno = ToInt32(h.NNo, &ok);
    for (int i = 0; i < ed.rowsToWrite(); ++i) {
        const CashRow& r = ed.rows[i];
        QVariantList b{qlonglong(dno), i + 1, date.toString(Qt::ISODate), h.TanCode.value_or(0),
                       h.ClassCode.value_or(0), h.Partner.value_or(0)};
        if (ed.deposit()) b << h.NouCode.value_or(0);
        b << r.Kubun + 1 << EmptyToSpace(CutToBytes(r.Naiyou, 30))
          << CashSlipEditor::amountOf(r.Gaku).toStore() << nno << getudo << office;
        const Step s = run(db, sql, b);
        if (!s.ok()) return s;
    }
    return {};
}

}  // namespace

SlipSaveResult Register(CashSlipEditor& ed, const QString& mode)
{
    SlipSaveResult out;
    const CashHead& h = ed.head;
    if (!HasText(h.Year) || !HasText(h.Month) || !HasText(h.Day)) return out;
    Session& s = session();
    const QDate date = ed.slipDate();
    s.CashDate = date;
    // Without a row to write the save still runs through: the number is used up and the
    // partner's ledger made, and an amended slip taken down to nothing leaves the ledger.
    const bool edit = mode == QLatin1String("EDIT");

    const QSqlDatabase db = s.MasterDb;
    const short office = s.EigCode;
    const short seiFlag = ed.seiFlag();
    long number = ed.number();
    bool changed = false;
    const bool saved = inUnit([&]() -> Step {
        if (edit) {
            const Step r = reverseRows(db, ed, number, office);
            if (!r.ok()) return r;
        }
        // The probe meets a number taken meanwhile before any row is written.
        Step w = underFreeNumber(ed.kind(), office, number, changed, [&](long n) {
            const Step p = probeNumber(db, ed.kind(), n, office);
            return p.ok() ? writeRows(db, ed, n, date, office) : p;
        });
        if (!w.ok()) return w;
        w = post(ed.deposit(), h.Partner.value_or(0), ed.deposit() ? h.NouCode.value_or(0) : 0, ed.amounts(),
                 ed.Getudo, office, seiFlag);
        if (!w.ok()) return w;
        // Typing a number far ahead moves the counter on; an old free number leaves it alone.
        QSqlError raiseError;
        if (!edit && !RaiseNextDno(ed.kind(), office, number + 1, &raiseError))
            return failed(classifyError(raiseError), raiseError);
        return {};
    });
    if (!saved) return out;
    out.saved = true;
    out.dno = number;
    out.numberChanged = changed;
    ed.head.Dno = FormatRight(double(number), CashFormat::Dno);
    ed.loadedDno = number;
    ed.mode = QStringLiteral("EDIT");
    if (changed) Tell(QStringLiteral("伝票は、No.") + QString::number(number) + QStringLiteral("で保存されました。"));
    return out;
}

bool reverseCashSlip(CashSlipEditor& ed)
{
    const QSqlDatabase db = session().MasterDb;
    const long number = ed.number();
    const short office = session().EigCode;
    return inUnit([&] { return reverseRows(db, ed, number, office); });
}

bool saveCarryOver(CashSlipEditor& ed, const QString& typed)
{
    if (!ed.head.Partner) return false;
    const qint64 partner = *ed.head.Partner;
    const qint64 nou = ed.deposit() ? ed.head.NouCode.value_or(0) : 0;
    const Money value = CashSlipEditor::amountOf(typed);
    const short office = session().EigCode;
    const short seiFlag = nou != 0 ? 2 : 0;
    const QString first = QString::number(CashSlipEditor::firstMonth());
    const QSqlDatabase db = session().MasterDb;
    const bool stored = inUnit([&]() -> Step {
        // The first posting makes the head and its months; the second carries the new opening
        // balance through the year to Zan.
        Step st = post(ed.deposit(), partner, nou, LedgerAmounts(), first, office, seiFlag);
        if (!st.ok()) return st;
        st = ed.deposit()
                 ? run(db, QStringLiteral("UPDATE TtoD SET Zenkaigaku=? WHERE TorCode=? AND NouCode=? AND Getudo=? "
                                          "AND EigCode=?"),
                       {value.toStore(), partner, nou, first.toInt(), office})
                 : run(db, QStringLiteral("UPDATE TsiD SET Zenkaigaku=? WHERE SirCode=? AND Getudo=? AND EigCode=?"),
                       {value.toStore(), partner, first.toInt(), office});
        if (!st.ok()) return st;
        return post(ed.deposit(), partner, nou, LedgerAmounts(), first, office, seiFlag);
    });
    if (!stored) return false;
    ed.panel.Kurikoshi = FormatRight(value, CashFormat::Panel);
    Tell(QStringLiteral("繰越しを登録しました。"));
    ed.showPartnerMonths();
    return true;
}
