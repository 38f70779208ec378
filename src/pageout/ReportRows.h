#pragma once
// The record set a report hands to the data driver: read forward once, in report order,
// standing before its first row until the driver starts.
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include "store/Money.h"

class ReportRows {
public:
    virtual ~ReportRows() = default;
    // Moves to the next row; false at the end. The first call moves to the first row.
    virtual bool next() = 0;
    // The current row's column by name (case-insensitive); invalid QVariant for Null.
    virtual QVariant value(const QString& column) const = 0;
    // False when the column is not among the rows (a report's mistake, said by the driver).
    virtual bool hasColumn(const QString& column) const = 0;
    // Rows read so far would not tell the count; those that know it say it, else -1.
    virtual int count() const { return -1; }
    // False when the statement failed, at its start or while reading; error() says why in the
    // system's wording, and the driver stops the document with it.
    virtual bool ok() const { return true; }
    virtual QString error() const { return {}; }
};

// The store keeps money as INTEGER ten-thousandths of a yen. Columns named in `moneyColumns`
// come back from the rows as Money in a QVariant (moneyVariant), so the driver prints yen and
// sums exactly; other columns come as the store has them.
//
// Rows of a statement with bound values, read forward. ok() false: the statement failed and
// error() says why (the driver stops the document with that message).
std::unique_ptr<ReportRows> queryRows(const QSqlDatabase& db, const QString& sql,
                                      const QVariantList& binds = {},
                                      const QStringList& moneyColumns = {});
// Rows held in memory: column names and row values in that order (Money may be given as
// moneyVariant).
std::unique_ptr<ReportRows> listRows(const QStringList& columns, const QList<QVariantList>& rows);
// Rows of a statement read whole into memory (for grids, which need the count first).
// Returns nullptr and sets *error when the statement fails.
std::unique_ptr<ReportRows> bufferedQueryRows(const QSqlDatabase& db, const QString& sql,
                                              const QVariantList& binds, QString* error,
                                              const QStringList& moneyColumns = {});

// Money carried in a QVariant: what money columns give, and what alpha may return.
QVariant moneyVariant(Money m);
bool isMoneyVariant(const QVariant& v);
// A value of a numeric type (not a text that reads as a number).
bool isNumberVariant(const QVariant& v);
// The value as currency: Money as it is, a number rounded at the fourth decimal, a text by
// its digits, "." and "-" (so "1,234円" is 1234), Null 0.
Money variantMoney(const QVariant& v);
