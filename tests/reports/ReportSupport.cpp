#include "reports/ReportSupport.h"
#include <gtest/gtest.h>
#include "store/Sql.h"

void cancelPosted(const QString& head, const QString& line, int dno, int eig)
{
    const QString negate[] = {QStringLiteral("UPDATE %1 SET Dno=Dno*-1 WHERE Dno=? AND EigCode=?").arg(head),
                              QStringLiteral("UPDATE %1 SET Dno=Dno*-1,ThiFlag=-1,Suu=Suu*-1,UTanka=UTanka*-1,"
                                             "UGaku=UGaku*-1,Zeigaku=Zeigaku*-1 WHERE Dno=? AND EigCode=?").arg(line)};
    for (const QString& sql : negate) EXPECT_EQ(execSql(session().MasterDb, sql, {dno, eig}), ErrorClass::None) << sql.toStdString();
}
