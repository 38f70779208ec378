#include "demo/DemoCash.h"
#include <map>
#include <QSqlDatabase>
#include <QSqlError>
#include "entry/Dates.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"
#include "slips/CashRegister.h"
#include "slips/CashSlipEditor.h"
#include "slips/SlipNumbering.h"
#include "store/Sql.h"
#include "demo/DemoCashPlan.h"

namespace {

// Nobody is there to answer: what the save would tell the clerk is kept as the failure.
class KeptDialogs : public Dialogs {
public:
    KeptDialogs() { prev_ = setDialogs(this); }
    ~KeptDialogs() override { setDialogs(prev_); }
    KeptDialogs(const KeptDialogs&) = delete;
    KeptDialogs& operator=(const KeptDialogs&) = delete;
    bool Ask(const QString&, const QString&, const QString&) override { return false; }
    void Tell(const QString& m) override { told << m; }
    QString Request(const QString&, const QString& d) override { return d; }
    void ShowWait(const QString&) override {}
    void HideWait() override {}
    void MessageBox(const QString& t, const QString& m) override { told << t + QStringLiteral(": ") + m; }
    QStringList told;

private:
    Dialogs* prev_ = nullptr;
};

// The demo company as the session of a clerk at its first office, for as long as it lives.
class BorrowedSession {
public:
    BorrowedSession(const QSqlDatabase& db, int nendo, short sTuki) : saved_(session())
    {
        Session& s = session();
        s.MasterDb = db;
        s.Nendo = nendo;
        s.sTuki = sTuki;
        s.eTuki = static_cast<short>(sTuki == 1 ? 12 : sTuki - 1);
        Query com(db, QStringLiteral("SELECT Sime, Hiz FROM Com"));
        if (com.next()) {
            s.Sime = static_cast<short>(com.value(0).toInt());
            s.Hiz = static_cast<short>(com.value(1).toInt());
        }
        s.EigCode = 1;
        s.CashDate = QDate();
    }
    ~BorrowedSession() { session() = saved_; }
    BorrowedSession(const BorrowedSession&) = delete;
    BorrowedSession& operator=(const BorrowedSession&) = delete;

private:
    Session saved_;
};

class CashWriter {
public:
    explicit CashWriter(DemoCashCounts& counts) : counts_(counts) {}
    bool save(const DemoCashSlip& slip);
    QString failure() const { return dialogs_.told.isEmpty() ? QString() : dialogs_.told.join(QLatin1Char('\n')); }

private:
    KeptDialogs dialogs_;
    DemoCashCounts& counts_;
    std::map<std::pair<bool, short>, long> next_;   // (deposit, office) -> number
};

// Typed as a clerk types it: number, date, partner with class and staff, destination, rows;
// then the screen's period check and its save.
bool CashWriter::save(const DemoCashSlip& slip)
{
    session().EigCode = slip.office;
    CashSlipEditor ed(slip.deposit ? QStringLiteral("Dny") : QStringLiteral("Dsh"));
    long& number = next_[{slip.deposit, slip.office}];
    if (number < 1) number = std::max(1L, GetNextDno(ed.kind(), slip.office));
    ed.head.Dno = QString::number(number);
    const DateBoxes date = DateToBoxes(slip.date);
    ed.head.Year = date.year.trimmed();
    ed.head.Month = date.month.trimmed();
    ed.head.Day = date.day.trimmed();
    ed.head.ClassCode = slip.partnerClass;
    ed.head.Partner = slip.partner;
    if (slip.deposit) ed.head.NouCode = slip.nou;
    ed.head.TanCode = slip.tan;
    for (qsizetype i = 0; i < slip.rows.size() && i < CashSlipEditor::RowCount; ++i) {
        const DemoCashRow& r = slip.rows[i];
        ed.rows[static_cast<size_t>(i)] = CashRow{r.kubun - 1, r.text, QString::number(r.yen)};
    }
    ed.SumGaku();
    ed.mode = QStringLiteral("NEW");
    ed.loadedDno = number;
    if (!ed.checkCashPeriod()) return false;
    const SlipSaveResult saved = Register(ed, QStringLiteral("NEW"));
    if (!saved.saved) {
        if (dialogs_.told.isEmpty()) dialogs_.told << QStringLiteral("%1 No.%2").arg(ed.title()).arg(number);
        return false;
    }
    number = saved.dno + 1;
    ++(slip.deposit ? counts_.deposits : counts_.payments);
    counts_.rows += ed.rowsToWrite();
    return true;
}

} // namespace

bool writeDemoCash(const QString& masterPath, const QString& slipPath, int nendo, short sTuki,
                   const QList<DemoCashSlip>& slips, DemoCashCounts& counts, QString* error)
{
    const QString conn = QStringLiteral("VelmoraDemoCash");
    QString failure;
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), conn);
        db.setDatabaseName(masterPath);
        QSqlError e;
        if (!db.open()) {
            failure = db.lastError().text();
        } else if (execSql(db, QStringLiteral("ATTACH DATABASE ? AS slip"), {slipPath}, &e) != ErrorClass::None) {
            failure = e.text();
        } else {
            // Both files are new and nobody else has them; the journal stays in memory, so
            // a failed save still rolls back as on a clerk's station.
            execSql(db, QStringLiteral("PRAGMA journal_mode=MEMORY"));
            execSql(db, QStringLiteral("PRAGMA synchronous=OFF"));
            BorrowedSession borrowed(db, nendo, sTuki);
            CashWriter writer(counts);
            {
                UnitOfWork unit(db);
                ok = unit.active();
                for (const DemoCashSlip& slip : slips)
                    if (!(ok = writer.save(slip))) break;
                ok = ok && unit.commit();
                if (!ok && writer.failure().isEmpty()) failure = unit.error().text();
            }
            if (!ok && failure.isEmpty()) failure = writer.failure();
        }
        execSql(db, QStringLiteral("PRAGMA journal_mode=DELETE"));
        db.close();
    }
    QSqlDatabase::removeDatabase(conn);
    if (!ok && error) *error = failure;
    return ok;
}
