#pragma once
// Delivery destinations: rows of Nou under a customer, numbered per customer from 1.
#include <optional>
#include <QSqlDatabase>
#include <QString>
#include <QVariantMap>
#include "masters/MasterRows.h"

// The customer's name; nothing when there is no such customer.
std::optional<QString> torNamae(const QSqlDatabase& db, qint64 tor);
// The customer's highest destination code plus one; 1 when it has none.
qint64 nextFreeNouCode(const QSqlDatabase& db, qint64 tor);
std::optional<QVariantMap> nouRow(const QSqlDatabase& db, qint64 tor, qint64 code);

struct NouSaveOutcome {
    bool saved = false;
    bool codeChanged = false;
    qint64 code = 0;
};
// Register: "NEW" adds; otherwise the row of the customer and code is edited, or added when
// there is none. A code taken meanwhile moves the new row to the customer's next free code
// with "納入先は、No." code "で登録しました。". A customer that does not exist, or a code 0,
// stores nothing; any other failure drops the save.
NouSaveOutcome registerNou(const QSqlDatabase& db, const QString& mode, qint64 tor, qint64 code,
                           const ColumnValues& values);

// The refusal when the destination stands on a sales or deposit slip of the year.
QString nouSlipRefusal(const QSqlDatabase& db, qint64 tor, qint64 code);
ErrorClass deleteNou(const QSqlDatabase& db, qint64 tor, qint64 code, QSqlError* error = nullptr);
