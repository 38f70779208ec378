#pragma once
// One prepared INSERT, bound and run again for every row: the demo writes hundreds of
// thousands of rows and must not parse the statement each time.
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantList>

class DemoInsert {
public:
    DemoInsert(const QSqlDatabase& db, const QString& table, const QStringList& columns);
    // A statement of its own, its parameters numbered ?1, ?2, ... and bound by set(0), set(1), ...
    DemoInsert(const QSqlDatabase& db, const QString& table, const QString& sql);
    bool ok() const { return ok_; }
    // Value of the i-th column (from 0) for the next exec().
    void set(int i, const QVariant& v) { q_.bindValue(i, v); }
    bool exec();
    bool insert(const QVariantList& row);
    // The first failure, with the table's name.
    QString error() const { return error_; }

private:
    QSqlQuery q_;
    QString table_;
    bool ok_ = false;
    QString error_;
};
