#include "reports/Mei.h"
#include <QStringList>
#include <QVariantList>
#include "entry/Recordset.h"
#include "reports/LedgerReport.h"
#include "store/Schema.h"
#include "store/Sql.h"

QDate LedgerRange::from() const
{
    if (!byMonth) return fiscalDate(startMonth, startDay);
    QDate f, t;
    fiscalMonthRange(month, &f, &t);
    return f;
}

QDate LedgerRange::to() const
{
    if (!byMonth) return fiscalDate(endMonth, endDay);
    QDate f, t;
    fiscalMonthRange(month, &f, &t);
    return t;
}

QString ledgerViewName(const QString& view)
{
    if (view == QLatin1String("Tdc")) return QStringLiteral("得意先元帳");
    if (view == QLatin1String("Sdc")) return QStringLiteral("仕入先元帳");
    if (view == QLatin1String("Jdc")) return QStringLiteral("得意先受注台帳");
    if (view == QLatin1String("Hdc")) return QStringLiteral("仕入先発注台帳");
    return {};
}

namespace {

// A statement's conditions and their values, written in the order they are added.
struct Filter {
    QStringList terms;
    QVariantList binds;
    void add(const QString& term, const QVariant& v)
    {
        terms << term;
        binds << v;
    }
    QString where() const { return QStringLiteral(" WHERE ") + terms.join(QStringLiteral(" AND ")); }
};

QVariant dateValue(const QDate& d) { return d.isValid() ? QVariant(d.toString(Qt::ISODate)) : QVariant(); }

// The period: a closing month for one partner in month mode, else the dates.
void addPeriod(Filter& f, const LedgerRange& r, const QString& prefix)
{
    if (r.byGetudo()) {
        f.add(prefix + QStringLiteral("Getudo=?"), r.month);
        return;
    }
    f.add(prefix + QStringLiteral("Hizuke>=?"), dateValue(r.from()));
    f.add(prefix + QStringLiteral("Hizuke<=?"), dateValue(r.to()));
}

// Mei takes the sales line columns by name: the line table's own, in its order.
QString lineColumns(const QString& prefix)
{
    QStringList cols;
    if (const TableDef* t = findTableDef(QStringLiteral("Dud")))
        for (const ColumnDef& c : t->columns) cols << prefix + c.name;
    return cols.join(QLatin1Char(','));
}

class MeiFill {
public:
    MeiFill(const QSqlDatabase& db, QString* error) : db_(db), error_(error) {}
    bool run(const QString& sql, const QVariantList& binds = {})
    {
        if (failed_) return false;
        QSqlError e;
        if (execSql(db_, sql, binds, &e) != ErrorClass::None) {
            failed_ = true;
            if (error_) *error_ = StoreErrorText(e);
        }
        return !failed_;
    }
    bool ok() const { return !failed_; }
    const QSqlDatabase& db() const { return db_; }

private:
    QSqlDatabase db_;
    QString* error_;
    bool failed_ = false;
};

void depositsTdc(MeiFill& m, const LedgerRange& r, short eig, bool byMonth)
{
    Filter f;
    addPeriod(f, r, {});
    if (r.partner != 0) {
        f.add(QStringLiteral("TorCode=?"), r.partner);
        // Deposits are not joined with the destinations: those of a destination billed on its
        // own stand in its customer's ledger too.
        if (r.nou != 0) f.add(QStringLiteral("NouCode=?"), r.nou);
    }
    f.add(QStringLiteral("EigCode=?"), eig);
    // By month the deposit's kind also goes into Eda.
    const QString eda = byMonth ? QStringLiteral("Kubun") : QStringLiteral("Eda");
    m.run(QStringLiteral("INSERT INTO Mei (Dno,Eda,Hizuke,Ngaku,Nnaiyo,Kubun,TorCode,EigCode,Getudo) "
                         " SELECT Dno,%1,Hizuke,Ngaku,Nnaiyo,Kubun,TorCode,EigCode,Getudo FROM Dny")
              .arg(eda) + f.where(),
          f.binds);
}

void paymentsSdc(MeiFill& m, const LedgerRange& r, short eig, bool byMonth)
{
    Filter f;
    addPeriod(f, r, {});
    if (r.partner != 0) f.add(QStringLiteral("SirCode=?"), r.partner);
    f.add(QStringLiteral("EigCode=?"), eig);
    // By date the payments come without Eda.
    const QString sql = byMonth
        ? QStringLiteral("INSERT INTO Mei (Dno,Eda,Hizuke,UGaku,HinNamae,Kubun,TorCode,EigCode,Getudo) "
                         " SELECT Dno,Kubun,Hizuke,Sgaku,Snaiyo,Kubun,SirCode,EigCode,Getudo FROM Dsh")
        : QStringLiteral("INSERT INTO Mei (Dno,Hizuke,UGaku,HinNamae,Kubun,TorCode,EigCode,Getudo) "
                         " SELECT Dno,Hizuke,Sgaku,Snaiyo,Kubun,SirCode,EigCode,Getudo FROM Dsh");
    m.run(sql + f.where(), f.binds);
}

// The money rows read like lines, marked "*". The size code is a number here: blank is 0.
void markMoneyRows(MeiFill& m, bool customer)
{
    if (customer)
        m.run(QStringLiteral("UPDATE Mei SET UriFlag = '*',Ugaku = Ngaku,Suu = Null,Utanka = Null,"
                             "HinNamae = Nnaiyo,HinCode = ' ',SizNamae = ' ',SizCode= 0"));
    else
        m.run(QStringLiteral("UPDATE Mei SET UriFlag = '*',Suu = Null,Utanka = Null,HinCode = ' ',"
                             "SizNamae = ' ',SizCode= 0"));
}

// A posted slip cancelled or amended leaves its lines as their negative image under the
// negated number until the next ledger run: they are not the partner's business any more.
void addLiveSlips(Filter& f, const QString& prefix) { f.add(prefix + QStringLiteral("Dno>?"), 0); }

void linesSdc(MeiFill& m, const LedgerRange& r, short eig, bool byMonth)
{
    Filter f;
    addPeriod(f, r, {});
    addLiveSlips(f, {});
    if (r.partner != 0) f.add(QStringLiteral("SirCode=?"), r.partner);
    f.add(QStringLiteral("EigCode=?"), eig);
    const QString extra = byMonth ? QString() : QStringLiteral(",SizNamae,IriSuu,TniCode");
    m.run(QStringLiteral("INSERT INTO Mei (Dno,Eda,Hizuke,HinCode,HinNamae,Kubun,Suu,UTanka,Ugaku,TorCode,EigCode,"
                         "Getudo%1) SELECT Dno,Eda,Hizuke,HinCode,HinNamae,Kubun,Suu,UTanka,Ugaku,SirCode,EigCode,"
                         "Getudo%1 FROM Dsd")
              .arg(extra) + f.where(),
          f.binds);
}

bool hasSeparatelyBilled(MeiFill& m, qint64 tor)
{
    return scalar(m.db(), QStringLiteral("SELECT COUNT(*) FROM Nou WHERE TorCode=? AND SeiFlag=2"), {tor}).toInt() > 0;
}

void linesTdc(MeiFill& m, const LedgerRange& r, short eig)
{
    const QString insert = QStringLiteral("INSERT INTO Mei (%1) SELECT %2 ").arg(lineColumns({}), lineColumns(QStringLiteral("Dud.")));
    const QString joinDur = QStringLiteral("FROM Dud INNER JOIN Dur ON (Dud.Dno=Dur.Dno) AND (Dud.EigCode=Dur.EigCode)");
    Filter f;
    addPeriod(f, r, QStringLiteral("Dud."));
    addLiveSlips(f, QStringLiteral("Dud."));
    if (r.partner != 0 && r.nou != 0) {
        f.add(QStringLiteral("Dud.TorCode=?"), r.partner);
        f.add(QStringLiteral("Dur.NouCode=?"), r.nou);
        f.add(QStringLiteral("Dud.EigCode=?"), eig);
        m.run(insert + joinDur + f.where(), f.binds);
    } else if (r.partner != 0 && hasSeparatelyBilled(m, r.partner)) {
        // Destinations billed on their own keep their lines out of the customer's ledger. The
        // join asks every slip for its destination row: a customer that has destinations saves
        // no slip without one.
        f.add(QStringLiteral("Dud.TorCode=?"), r.partner);
        f.add(QStringLiteral("Nou.SeiFlag<>?"), 2);
        f.add(QStringLiteral("Dud.EigCode=?"), eig);
        m.run(insert + QStringLiteral("FROM (Dud INNER JOIN Dur ON (Dud.Dno=Dur.Dno) AND (Dud.EigCode=Dur.EigCode)) "
                                      "INNER JOIN Nou ON (Dur.NouCode=Nou.Code) AND (Dur.TorCode=Nou.TorCode)")
                  + f.where(),
              f.binds);
    } else {
        if (r.partner != 0) f.add(QStringLiteral("Dud.TorCode=?"), r.partner);
        f.add(QStringLiteral("Dud.EigCode=?"), eig);
        m.run(insert + QStringLiteral("FROM Dud") + f.where(), f.binds);
    }
}

bool fillMei(const QSqlDatabase& db, const LedgerRange& r, short eig, bool byMonth, QString* error)
{
    const bool customer = r.view == QLatin1String("Tdc");
    if (!customer && r.view != QLatin1String("Sdc")) {
        if (error) *error = QStringLiteral("エラー：") + r.view;
        return false;
    }
    MeiFill m(db, error);
    m.run(QStringLiteral("DELETE FROM Mei"));
    if (customer) depositsTdc(m, r, eig, byMonth);
    else paymentsSdc(m, r, eig, byMonth);
    markMoneyRows(m, customer);
    if (customer) linesTdc(m, r, eig);
    else linesSdc(m, r, eig, byMonth);
    return m.ok();
}

}  // namespace

bool FillMeiByMonth(const QSqlDatabase& db, const LedgerRange& range, short EigCode, QString* error)
{
    return fillMei(db, range, EigCode, true, error);
}

bool FillMeiByDate(const QSqlDatabase& db, const LedgerRange& range, short EigCode, QString* error)
{
    return fillMei(db, range, EigCode, false, error);
}
