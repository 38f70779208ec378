#include "reports/ReportSupport.h"
#include <gtest/gtest.h>
#include "ledgers/LedgerBatch.h"
#include "store/Sql.h"

void exec(const QString& sql, const QVariantList& binds)
{
    QSqlError e;
    EXPECT_EQ(execSql(session().MasterDb, sql, binds, &e), ErrorClass::None) << qPrintable(sql + " " + e.text());
}

QVariant one(const QString& sql, const QVariantList& binds) { return scalar(session().MasterDb, sql, binds); }

void useFiscal2026()
{
    Session& s = session();
    s.Nendo = 2026;
    s.sTuki = 4;
    s.eTuki = 3;
    s.EigCode = 1;
    s.Zeiritu = Money::fromYen(8);
    s.TaxRateNew = Money::fromYen(10);
    s.TaxChangeDate = QDate(2019, 9, 30);
}

void ledgerRun()
{
    QString error;
    EXPECT_TRUE(runLedgerProcessing({}, &error)) << qPrintable(error);
}

void cancelPosted(const QString& head, const QString& line, int dno, int eig)
{
    exec(QStringLiteral("UPDATE %1 SET Dno=Dno*-1 WHERE Dno=? AND EigCode=?").arg(head), {dno, eig});
    exec(QStringLiteral("UPDATE %1 SET Dno=Dno*-1,ThiFlag=-1,Suu=Suu*-1,UTanka=UTanka*-1,UGaku=UGaku*-1,"
                        "Zeigaku=Zeigaku*-1 WHERE Dno=? AND EigCode=?").arg(line), {dno, eig});
}
