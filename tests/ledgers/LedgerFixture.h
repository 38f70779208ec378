#pragma once
// A company with partners, products and slips written straight into the store, and readers of
// the ledger rows. Amounts are in yen.
#include <gtest/gtest.h>
#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QStringList>
#include <memory>
#include "store/Money.h"
#include "support/TempCompany.h"

struct SlipLine {
    QString hin = QStringLiteral("0000000000001");
    qint64 suu = 1;
    qint64 yen = 0;
    int zeiFlag = 1;
    qint64 zeiYen = 0;
    int kubun = 0;
};

inline SlipLine line(qint64 yen, qint64 tax = 0, int zeiFlag = 1, qint64 suu = 1,
                     const QString& hin = QStringLiteral("0000000000001"), int kubun = 0)
{
    return SlipLine{hin, suu, yen, zeiFlag, tax, kubun};
}

class LedgerCompany {
public:
    // A company whose fiscal year starts in `startMonth`; rates 8 % up to TaxChangeDate, 10 % after.
    explicit LedgerCompany(int startMonth = 4, int year = 2026);
    QSqlDatabase db() const;

    void exec(const QString& sql, const QVariantList& binds = {});
    void addTor(qint64 code, int zeituuchi = 1, int hsuType = 1, int hsu = 1, int tbn = 1);
    void addNou(qint64 tor, qint64 code, int seiFlag, const QString& name = QStringLiteral("納入先"));
    void addSir(qint64 code, int zeituuchi = 1, int hsuType = 1, int hsu = 1);
    void addHin(const QString& code);
    // Customer 100 and supplier 7 of the default modes, and product A.
    void usual();

    // A sales or purchase slip, marked for ledger processing. headKubun 1 is cash.
    void sale(int dno, const QDate& date, qint64 tor, qint64 nou, int getudo, const QList<SlipLine>& lines,
              int headKubun = 0, int eig = 1);
    void purchase(int dno, const QDate& date, qint64 sir, int getudo, const QList<SlipLine>& lines,
                  int headKubun = 0, int eig = 1);
    // The cancelling rewrite of a posted slip: Dno negated, amounts negated, marked again.
    void negate(const QString& head, const QString& lines, int dno, int eig = 1);

    // Money figures of a month row in yen (fractions dropped); -999999 when the row is missing.
    qint64 tto(qint64 tor, qint64 nou, int getudo, const QString& column, int eig = 1) const;
    qint64 tsi(qint64 sir, int getudo, const QString& column, int eig = 1) const;
    qint64 thi(const QString& hin, int getudo, const QString& column, int eig = 1) const;
    // Several columns of one month row joined by '/': {"Gaku", "Zeigaku"} gives "1000/100".
    QString tto(qint64 tor, qint64 nou, int getudo, const QStringList& columns, int eig = 1) const;
    QString tsi(qint64 sir, int getudo, const QStringList& columns, int eig = 1) const;
    QString thi(const QString& hin, int getudo, const QStringList& columns, int eig = 1) const;
    qint64 zan(const QString& head, const QString& where, const QVariantList& binds) const;
    qint64 count(const QString& sql, const QVariantList& binds = {}) const;
    // Every row of the year's slip file, slips and ledgers, for before/after comparisons.
    QStringList dump() const;
    // Ledger processing with its progress texts; fails the test on an error.
    QStringList batch();

private:
    std::unique_ptr<TempCompany> company_;
};

inline constexpr qint64 Missing = -999999;
inline const QString A = QStringLiteral("0000000000001");
inline const QString TorWhere = QStringLiteral("TorCode=? AND NouCode=? AND EigCode=1");
