#pragma once
// A company for the invoice and delivery slip tests: customers, destinations and products
// written straight into the store, sales slips marked for the ledger, and the ledger run that
// fills the customer ledger the invoices read. Fiscal year 2026 from April, tax 10 % cut off to
// the yen, office 1. Amounts are in yen.
#include <gtest/gtest.h>
#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QStringList>
#include <memory>
#include "pageout/PageOutput.h"
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

    void exec(const QString& sql, const QVariantList& binds = {});
    qint64 count(const QString& sql, const QVariantList& binds = {}) const;
    void addTor(qint64 code, const QString& name, int sime = 31, int zeituuchi = 1);
    void addNou(qint64 tor, qint64 code, const QString& name);
    void addHin(const QString& code, const QString& name);
    // A sales slip of office 1 marked for the ledger.
    void sale(int dno, const QDate& date, qint64 tor, qint64 nou, int getudo, const QList<InvoiceLine>& lines,
              const QString& tekiyo = {});
    // Ledger processing; fails the test on an error.
    void batch();
    // KTotal and ZeiGaku of a ledger month row, in yen.
    qint64 tto(qint64 tor, qint64 nou, int getudo, const QString& column) const;

private:
    std::unique_ptr<TempCompany> company_;
};

// The documents drawn on a recording output.
struct Recorded {
    RecordingOutput out;
    const RecordingSurface& rec() const { return out.rec; }
    // "T x,y text" entries of page n (from 1).
    QStringList texts(int page) const;
    // The text drawn at (x, y) on page n, "" when none.
    QString at(int page, int x, int y) const;
    int pages() const { return out.rec.ended; }
};

// Readable failures; static, so another fixture of this program may have its own.
static inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }
static inline void PrintTo(const QStringList& l, std::ostream* os) { *os << '[' << l.join(" ; ").toStdString() << ']'; }

// Money as the store keeps it.
inline QVariant storeYen(qint64 yen) { return QVariant(qlonglong(yen * 10000)); }
