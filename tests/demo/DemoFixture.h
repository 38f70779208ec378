#pragma once
// A demo company on disk and one connection on it: the master file with the year's slips
// attached, as the program sees it.
#include <gtest/gtest.h>
#include <QSqlDatabase>
#include <QSqlRecord>
#include <QTemporaryDir>
#include "store/Sql.h"
#include "demo/DemoCompany.h"

namespace demotest {

inline const int kYear = 2026;

using Rows = QList<QVariantList>;

class DemoStore {
public:
    DemoStore(const QString& dir, const QString& name) : name_(name)
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
        db.setDatabaseName(dir + QStringLiteral("/MASTER.db"));
        ok_ = db.open()
              && execSql(db, QStringLiteral("ATTACH DATABASE ? AS slip"),
                         {dir + QStringLiteral("/%1/SLIP.db").arg(kYear)}) == ErrorClass::None;
    }
    ~DemoStore()
    {
        { QSqlDatabase::database(name_).close(); }
        QSqlDatabase::removeDatabase(name_);
    }
    DemoStore(const DemoStore&) = delete;
    DemoStore& operator=(const DemoStore&) = delete;
    bool ok() const { return ok_; }
    QSqlDatabase db() const { return QSqlDatabase::database(name_); }
    int count(const QString& sql, const QVariantList& args = {}) const { return scalar(db(), sql, args).toInt(); }
    Rows rows(const QString& sql, const QVariantList& args = {}) const
    {
        Rows out;
        Query q(db(), sql, args);
        EXPECT_TRUE(q.ok()) << qPrintable(sql) << " " << qPrintable(q.error().text());
        while (q.next()) {
            QVariantList r;
            for (int i = 0; i < q.raw().record().count(); ++i) r << q.value(i);
            out << r;
        }
        return out;
    }
    // Every row of a table in its stored order, as one text.
    QString dump(const QString& table) const
    {
        QString s;
        for (const QVariantList& r : rows(QStringLiteral("SELECT * FROM %1 ORDER BY rowid").arg(table))) {
            for (const QVariant& v : r) s += v.toString() + QLatin1Char('|');
            s += QLatin1Char('\n');
        }
        return s;
    }

private:
    QString name_;
    bool ok_ = false;
};

inline QString makeDemo(const QTemporaryDir& tmp, const QString& sub, int slips, uint64_t seed, int customers = 100)
{
    const QString dir = tmp.filePath(sub);
    DemoOptions o;
    o.slips = slips;
    o.seed = seed;
    o.year = kYear;
    o.customers = customers;
    QString err;
    EXPECT_TRUE(createDemoCompany(dir, o, &err)) << qPrintable(err);
    return dir;
}

} // namespace demotest
