#pragma once
// A company for the invoice and delivery slip tests: customers, destinations and products
// written straight into the store, sales slips marked for the ledger, and the ledger run that
// fills the customer ledger the invoices read. Fiscal year 2026 from April, tax 10 % cut off to
// the yen, office 1. Amounts are in yen.
#include <gtest/gtest.h>
#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include "reports/ReportSupport.h"
#include "support/RecordingSurface.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

struct InvoiceLine {
    QString hin;           // product code as typed, "1001"
    qint64 suu = 1;
    qint64 tanka = 0;      // unit price in yen
    qint64 gaku = 0;       // 0: quantity times price
    int zeiFlag = 1;
    qint64 zei = 0;        // the line's tax as the slip screen left it
    int kubun = 0;
};

class InvoiceCompany {
public:
    InvoiceCompany();
    QSqlDatabase db() const;
    void addTor(qint64 code, const QString& name, int sime = 31, int zeituuchi = 1);
    void addNou(qint64 tor, qint64 code, const QString& name);
    void addHin(const QString& code, const QString& name);
    // A sales slip of office 1 marked for the ledger.
    void sale(int dno, const QDate& date, qint64 tor, qint64 nou, int getudo, const QList<InvoiceLine>& lines,
              const QString& tekiyo = {});

private:
    TempCompany company_{2026, 4};
};

// The documents drawn on a recording output.
struct Recorded : RecordingOutput {
    // The text drawn at (x, y) on page n (from 1), "" when none.
    QString at(int page, int x, int y) const;
};
