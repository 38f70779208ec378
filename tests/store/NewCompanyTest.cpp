#include <gtest/gtest.h>
#include <QFile>
#include <QFileInfo>
#include "shell/Session.h"
#include "store/NewCompany.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "support/TempCompany.h"

namespace {
QVariant one(const QString& sql) { return scalar(session().MasterDb, sql); }
}

TEST(NewCompany, TheStartRows)
{
    TempCompany co(2026, 4);
    ASSERT_TRUE(co.open());
    EXPECT_EQ(one("SELECT SKai || '-' || EKai || '-' || sTuki || '-' || Sime || '-' || Hiz || '-' || Zeituuchi || HsuType || Hsu FROM Com").toString(),
              "20260401-20270331-4-31-2-111");
    EXPECT_EQ(one("SELECT Code || DurNo || DsrNo || DshNo || DnyNo || SeikyuNo FROM Eig").toString(), "111111");
    EXPECT_EQ(one("SELECT count(*) FROM UserOP").toInt(), 0);   // the first start writes 725/726
}

TEST(NewCompany, FiscalYearBoundaries)
{
    struct Case { int year, start; const char* skai; const char* ekai; } cases[] = {
        {2026, 1, "20260101", "20261231"},
        {2027, 12, "20271201", "20281130"},
        {2023, 3, "20230301", "20240229"},
    };
    for (const auto& c : cases) {
        TempCompany co(c.year, c.start);
        ASSERT_TRUE(co.open()) << c.year;
        EXPECT_EQ(one("SELECT SKai FROM Com").toString(), c.skai);
        EXPECT_EQ(one("SELECT EKai FROM Com").toString(), c.ekai);
    }
    EXPECT_EQ(fiscalYearOf(QDate(2026, 3, 31), 4), 2025);
    EXPECT_EQ(fiscalYearOf(QDate(2026, 4, 1), 4), 2026);
    EXPECT_EQ(fiscalYearOf(QDate(2026, 12, 31), 1), 2026);
}

TEST(NewCompany, RefusesAFolderWithAStoreAndChangesNothing)
{
    TempCompany co(2026);
    const QDateTime before = QFileInfo("MASTER.db").lastModified();
    const qint64 size = QFileInfo("MASTER.db").size();
    NewCompanyOptions o;
    o.year = 2030;
    QString err;
    EXPECT_FALSE(createCompany(co.path(), o, &err));
    EXPECT_TRUE(err.contains("すでに"));
    EXPECT_FALSE(QFileInfo::exists("2030"));
    EXPECT_EQ(QFileInfo("MASTER.db").lastModified(), before);
    EXPECT_EQ(QFileInfo("MASTER.db").size(), size);

    o.startMonth = 13;
    EXPECT_FALSE(createCompany(co.path() + "/other", o, &err));
    EXPECT_FALSE(QFileInfo::exists(co.path() + "/other"));
}
