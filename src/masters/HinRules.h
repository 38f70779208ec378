#pragma once
// Products: the code is text, kept in its 13-digit form when it is all digits, so "123" and
// "0000000000123" are one product and "A-12" stays as typed.
#include <optional>
#include <QSqlDatabase>
#include <QString>
#include <QVariantMap>
#include "masters/MasterRows.h"

// The stored form of a typed code (ZeroPad13, without touching the caller's text).
QString hinStoreCode(const QString& typed);
// The screen form of a stored code (ZeroStrip).
QString hinScreenCode(const QString& stored);

std::optional<QVariantMap> hinRow(const QSqlDatabase& db, const QString& storedCode);
// Adds the row of the code, or changes it when there is one.
ErrorClass registerHin(const QSqlDatabase& db, const QString& storedCode, const ColumnValues& values,
                       QSqlError* error = nullptr);
// The refusal of a product on a sales slip, then on a purchase slip, of the year; empty when
// it may go.
QString hinSlipRefusal(const QSqlDatabase& db, const QString& storedCode);
ErrorClass deleteHin(const QSqlDatabase& db, const QString& storedCode, QSqlError* error = nullptr);
