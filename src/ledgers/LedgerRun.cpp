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
    if (!error_.isEmpty()) return;
    QString text = e.databaseText();
    if (text.isEmpty()) text = e.text();
    error_ = QStringLiteral("エラー：") + QString::number(sqliteCode(e)) + QLatin1Char(' ') + text;
}

void LedgerRun::failText(const QString& text)
{
    if (error_.isEmpty()) error_ = QStringLiteral("エラー：") + text;
}

QSqlQuery* LedgerRun::prepared(const QString& sql)
{
    // The same statements run once per month or group: each is prepared once per pass.
    auto it = prepared_.find(sql);
    if (it == prepared_.end()) {
        auto q = std::make_unique<QSqlQuery>(db);
        q->setForwardOnly(true);
        if (!q->prepare(sql)) {
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
    if (q->exec()) return true;
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

PostingUnit::PostingUnit(const QSqlDatabase& db) : db_(db), own_(db)
{
    if (own_.active()) return;
    // A plain BEGIN tells the two failures apart: it passes when the immediate one failed on
    // a lock (give up: the busy wait is over), and it fails inside the caller's transaction,
    // where the posting becomes a savepoint of that transaction.
    Query probe(db_, QStringLiteral("BEGIN"));
    if (probe.ok()) {
        execSql(db_, QStringLiteral("ROLLBACK"));
        beginError_ = QSqlError(QString(), QStringLiteral("database is locked"), QSqlError::StatementError,
                                QStringLiteral("5"));
        return;
    }
    Query q(db_, QStringLiteral("SAVEPOINT ledger_posting"));
    savepoint_ = q.ok();
    if (!savepoint_) beginError_ = q.error();
}

PostingUnit::~PostingUnit() { rollback(); }

bool PostingUnit::commit()
{
    if (own_.active()) return own_.commit();
    if (!savepoint_) return false;
    savepoint_ = false;
    return execSql(db_, QStringLiteral("RELEASE ledger_posting")) == ErrorClass::None;
}

void PostingUnit::rollback()
{
    own_.rollback();
    if (!savepoint_) return;
    execSql(db_, QStringLiteral("ROLLBACK TO ledger_posting"));
    execSql(db_, QStringLiteral("RELEASE ledger_posting"));
    savepoint_ = false;
}

bool finishUnit(LedgerRun& run, PostingUnit& unit, QString* error)
{
    run.finishAll();
    if (run.ok() && !unit.commit()) {
        const QSqlError e = run.db.lastError();
        if (e.type() != QSqlError::NoError) run.fail(e);
        else run.failText(QStringLiteral("COMMIT"));
    }
    if (run.ok()) return true;
    unit.rollback();
    if (error) *error = run.error();
    return false;
}
