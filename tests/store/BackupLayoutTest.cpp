#include <gtest/gtest.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include "ledgers/YearEnd.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"
#include "shell/Startup.h"
#include "shell/TargetYear.h"
#include "store/Backup.h"
#include "store/NewCompany.h"
#include "store/Optimize.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "demo/DemoCompany.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

namespace {

QString linkTarget(const QString& path)
{
    char buf[256] = {0};
    const ssize_t n = ::readlink(QFile::encodeName(path).constData(), buf, sizeof buf - 1);
    return n > 0 ? QString::fromLocal8Bit(buf, n) : QString();
}

bool startsOn(int year)
{
    CloseStore();
    session() = Session();
    MenuModel menu;
    return runStartup(menu).kind == StartupResult::Run && session().Nendo == year;
}

} // namespace

TEST(CompanyLayout, NewAndDemoCompaniesKeepTheMasterInItsFolderWithARelativeLink)
{
    QTemporaryDir tmp;
    NewCompanyOptions o;
    o.year = 2026;
    DemoOptions d;
    d.slips = 20;
    d.year = 2026;
    ASSERT_TRUE(createCompany(tmp.filePath("new"), o, nullptr));
    ASSERT_TRUE(createDemoCompany(tmp.filePath("demo"), d, nullptr));
    for (const char* name : {"new", "demo"}) {
        const QString root = tmp.filePath(name);
        EXPECT_EQ(linkTarget(root + "/MASTER.db"), "MASTER/MASTER.db") << name;
        EXPECT_TRUE(QFileInfo(root + "/MASTER/MASTER.db").isFile() && !QFileInfo(root + "/MASTER/MASTER.db").isSymLink());
    }
    // The folder moved as a whole still opens.
    ASSERT_TRUE(QDir().rename(tmp.filePath("new"), tmp.filePath("moved")));
    TempCompany enter(0);
    QDir::setCurrent(tmp.filePath("moved"));
    ScriptedDialogs dlg;
    ASSERT_TRUE(OpenStore());
    EXPECT_EQ(scalar(session().MasterDb, "SELECT SKai FROM Com").toString(), "20260401");
}

TEST(CompanyLayout, ANewCompanyWithoutTheMarkerGoesThroughYearEndBackupAndCompaction)
{
    TempCompany co(2026);
    ScriptedDialogs dlg;
    ASSERT_TRUE(startsOn(2026));
    ASSERT_TRUE(execSql(session().MasterDb, "INSERT INTO Dur (Dno, EigCode, Hizuke) VALUES (1, 1, '2026-06-01')") == ErrorClass::None);
    const YearEndResult r = ExecuteUpdate();
    ASSERT_TRUE(r.ok) << r.error.toStdString();
    BackupResult b;
    ASSERT_TRUE(backupStore("bk", false, 2027, QDate::currentDate(), &b)) << b.error.toStdString();
    CloseStore();
    QString error;
    ASSERT_TRUE(compactStore(false, 2027, &error)) << error.toStdString();

    ASSERT_TRUE(startsOn(2027));
    EXPECT_EQ(session().MasterDb.databaseName(), "MASTER.db");   // the start opens the link
    EXPECT_EQ(ChangeTargetYear(2026), YearChange::Changed);
    EXPECT_EQ(scalar(session().MasterDb, "SELECT Dno FROM Dur").toInt(), 1);
    EXPECT_EQ(AvailableYears(), QList<int>({2026, 2027}));
    EXPECT_TRUE(dlg.of("Box").isEmpty());
}
