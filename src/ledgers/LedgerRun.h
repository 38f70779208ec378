#pragma once
// What one pass over the ledgers carries: the store, the session values it reads, the progress
// line and the first failure. After a failure every further statement is skipped, so a posting
// stops where it failed and its unit of work is rolled back by the caller.
#include <functional>
#include <map>
#include <memory>
#include <QSqlQuery>
#include <QSqlDatabase>
#include <QString>
#include <QVariantList>
#include "ledgers/Tax.h"
#include "store/Sql.h"

class PostingUnit;
using ProgressFn = std::function<void(const QString&)>;

class LedgerRun {
public:
    // Session values: office, Nendo, first month of the year, tax rates; the mark is -1.
    explicit LedgerRun(const ProgressFn& progress = {});
    LedgerRun(const LedgerRun&) = delete;
    LedgerRun& operator=(const LedgerRun&) = delete;

    QSqlDatabase db;
    int flag = -1;
    short office = 0;
    int nendo = 0;
    short firstMonth = 4;
    short lastMonth = 3;
    TaxRates rates;

    void show(const QString& text) const;
    bool ok() const { return error_.isEmpty(); }
    const QString& error() const { return error_; }
    // "エラー：" with the store's number and text; only the first failure is kept.
    void fail(const QSqlError& e);

    // Runs one statement; false (and nothing run) once the pass has failed.
    bool exec(const QString& sql, const QVariantList& binds = {});
    // Rows written by the last exec.
    int changes() const { return changes_; }
    // Runs a query; on failure the pass fails and the query yields no rows. The result is
    // read before the same statement runs again.
    QSqlQuery& query(const QString& sql, const QVariantList& binds = {});
    // Lets go of every statement's result (before the unit ends).
    void finishAll();

private:
    ProgressFn progress_;
    QString error_;
    int changes_ = 0;
    QSqlQuery* prepared(const QString& sql);
    bool run(QSqlQuery* q, const QVariantList& binds);
    std::map<QString, std::unique_ptr<QSqlQuery>> prepared_;
    QSqlQuery none_;
};

// Commits the unit when the pass went well, rolls it back otherwise; false with `error` set
// on failure.
bool finishUnit(LedgerRun& run, PostingUnit& unit, QString* error);

// Month after m in the fiscal walk, 12 wrapping to 1.
inline int nextMonth(int m) { return m >= 12 ? 1 : m + 1; }
// Last month of a year starting in `first`.
inline short lastMonthOf(short first) { return static_cast<short>(first + 11 > 12 ? first - 1 : first + 11); }

// The calendar month of a slip date kept as YYYY-MM-DD.
QString monthOf(const QString& column);
// A derived table of the month numbers 1..13 as column `m`.
QString monthRows();
// The store's text of a date for comparisons with Hizuke.
QString dateText(const QDate& d);

// The unit of work of a posting: a transaction of its own, or a savepoint inside the caller's
// unit when one is open, so a posting that a deposit save wraps lands together with the save.
class PostingUnit : public UnitOfWork {
public:
    using UnitOfWork::UnitOfWork;
    // The store's refusal to begin (another station held the file past the busy timeout, ...).
    QSqlError beginError() const { return error(); }
};
