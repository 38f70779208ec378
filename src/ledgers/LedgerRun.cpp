#include "ledgers/LedgerRun.h"
#include "shell/Session.h"

LedgerRun::LedgerRun(const ProgressFn& progress) : progress_(progress)
{
    const Session& s = session();
    db = s.MasterDb;
    office = s.EigCode;
    nendo = s.Nendo;
    firstMonth = (s.sTuki >= 1 && s.sTuki <= 12) ? s.sTuki : 4;
    lastMonth = lastMonthOf(firstMonth);
    rates = sessionTaxRates();
}

void LedgerRun::show(const QString& text) const
{
    if (progress_) progress_(text);
}

void LedgerRun::fail(const QSqlError& e)
{
    if (error_.isEmpty()) error_ = StoreErrorText(e);
}

QSqlQuery* LedgerRun::prepared(const QString& sql)
{
    // The same statements run once per month or group: each is prepared once per pass.
    auto it = prepared_.find(sql);
    if (it == prepared_.end()) {
        auto q = std::make_unique<QSqlQuery>(db);
        q->setForwardOnly(true);
        const bool prepared = q->prepare(sql);
        endLockWait();
        if (!prepared) {
            fail(q->lastError());
            return nullptr;
        }
        it = prepared_.emplace(sql, std::move(q)).first;
    }
    return it->second.get();
}

bool LedgerRun::run(QSqlQuery* q, const QVariantList& binds)
{
    if (!q) return false;
    for (int i = 0; i < binds.size(); ++i) q->bindValue(i, binds.at(i));
    const bool done = q->exec();
    endLockWait();
    if (done) return true;
    fail(q->lastError());
    q->finish();
    return false;
}

bool LedgerRun::exec(const QString& sql, const QVariantList& binds)
{
    changes_ = 0;
    if (!ok()) return false;
    QSqlQuery* q = prepared(sql);
    if (!run(q, binds)) return false;
    changes_ = q->numRowsAffected();
    q->finish();
    return true;
}

QSqlQuery& LedgerRun::query(const QString& sql, const QVariantList& binds)
{
    if (ok()) {
        QSqlQuery* q = prepared(sql);
        if (run(q, binds)) return *q;
    }
    // After a failure a query yields no rows.
    none_ = QSqlQuery(db);
    return none_;
}

void LedgerRun::finishAll()
{
    for (auto& p : prepared_) p.second->finish();
}

QString monthOf(const QString& column)
{
    return QStringLiteral("CAST(substr(%1, 6, 2) AS INTEGER)").arg(column);
}

QString monthRows()
{
    return QStringLiteral("(SELECT column1 AS m FROM (VALUES (1),(2),(3),(4),(5),(6),(7),(8),(9),(10),(11),(12),(13)))");
}

QString dateText(const QDate& d)
{
    return d.isValid() ? d.toString(Qt::ISODate) : QString();
}

bool finishUnit(LedgerRun& run, PostingUnit& unit, QString* error)
{
    run.finishAll();
    if (run.ok() && !unit.commit()) run.fail(unit.error());
    if (run.ok()) return true;
    unit.rollback();
    if (error) *error = run.error();
    return false;
}

QString sqlText(QString text, std::initializer_list<std::pair<const char*, QString>> pieces)
{
    for (const auto& [name, piece] : pieces)
        text.replace(QLatin1Char('{') + QLatin1String(name) + QLatin1Char('}'), piece);
    Q_ASSERT_X(!text.contains(QLatin1Char('{')), "sqlText", qPrintable(text));
    return text;
}
