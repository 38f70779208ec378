#include "demo/DemoInsert.h"
#include <QSqlError>

DemoInsert::DemoInsert(const QSqlDatabase& db, const QString& table, const QStringList& columns)
    : q_(db), table_(table)
{
    QStringList marks;
    for (qsizetype i = 0; i < columns.size(); ++i) marks << QStringLiteral("?");
    ok_ = q_.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                         .arg(table, columns.join(QStringLiteral(", ")), marks.join(QStringLiteral(", "))));
    if (!ok_) error_ = table_ + QStringLiteral(": ") + q_.lastError().text();
}

DemoInsert::DemoInsert(const QSqlDatabase& db, const QString& table, const QString& sql) : q_(db), table_(table)
{
    ok_ = q_.prepare(sql);
    if (!ok_) error_ = table_ + QStringLiteral(": ") + q_.lastError().text();
}

bool DemoInsert::exec()
{
    if (!ok_) return false;
    if (!q_.exec()) {
        ok_ = false;
        error_ = table_ + QStringLiteral(": ") + q_.lastError().text();
    }
    return ok_;
}

bool DemoInsert::insert(const QVariantList& row)
{
    for (qsizetype i = 0; i < row.size(); ++i) q_.bindValue(static_cast<int>(i), row[i]);
    return exec();
}
