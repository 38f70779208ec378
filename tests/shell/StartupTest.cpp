#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include "ShellSupport.h"
#include "shell/InstanceLock.h"

namespace {
const QString kPrompt = QStringLiteral("パスワードを入力してください。");
}

TEST(Startup, FreshStoreRunsTheWholeOrderAndWritesTheRateDefaults)
{
    TempCompany co(2026, 4);
    ScriptedDialogs dlg;
    MenuModel menu;
    const StartupResult r = runStartup(menu, loggingHooks(dlg));
    ASSERT_EQ(r.kind, StartupResult::Run);
    EXPECT_EQ(dlg.log, QStringList({"Hook:splash", "Request:" + kPrompt, "Hook:lookup", "Hook:scaleMenu",
                                    "Hook:hideSplash"}));
    EXPECT_EQ(r.title, QStringLiteral("株式会社ヴェルモラ商事 業務メニュー"));
    EXPECT_TRUE(r.firstRun);
    EXPECT_FALSE(r.showOffice);
    const Session& s = session();
    EXPECT_EQ(s.SlipDate, QDate::currentDate());
    EXPECT_EQ(s.eTuki, 3);
    EXPECT_EQ(s.EigCode, 1);
    EXPECT_EQ(s.Zeiritu, Money::fromYen(3));
    EXPECT_EQ(s.TaxRateNew, Money::fromYen(5));
    EXPECT_EQ(s.TaxChangeDate, QDate(1997, 3, 31));
    // The store got the defaults, and the slip file is attached.
    EXPECT_EQ(masterValue("SELECT contents FROM UserOP WHERE Code=725").toString(), "19970331");
    EXPECT_EQ(masterValue("SELECT contents FROM UserOP WHERE Code=726").toString(), "5");
    EXPECT_EQ(masterValue("SELECT Zeiritu FROM Com").toLongLong(), Money::fromYen(3).raw());
    EXPECT_EQ(masterValue("SELECT count(*) FROM Dur").toInt(), 0);
    EXPECT_EQ(menu.MenuCount[0], 6);
    EXPECT_TRUE(menu.InRight);
}

TEST(Startup, SecondStartReadsTheRatesAndTouchesNothing)
{
    TempCompany co(2026);
    prepare(co, {"UPDATE Com SET Zeiritu=?", "INSERT INTO UserOP (Code, contents) VALUES (725, '20191001'), (726, '10')"},
            {{Money::fromYen(8).toStore()}});
    ScriptedDialogs dlg;
    MenuModel menu;
    const StartupResult r = runStartup(menu);
    ASSERT_EQ(r.kind, StartupResult::Run);
    EXPECT_FALSE(r.firstRun);
    EXPECT_EQ(session().Zeiritu, Money::fromYen(8));
    EXPECT_EQ(session().TaxRateNew, Money::fromYen(10));
    EXPECT_EQ(session().TaxChangeDate, QDate(2019, 10, 1));
    EXPECT_EQ(masterValue("SELECT Zeiritu FROM Com").toLongLong(), Money::fromYen(8).raw());
    EXPECT_EQ(masterValue("SELECT count(*) FROM UserOP").toInt(), 2);
}

TEST(Startup, CompanyRowOverridesTheMarkerAndItsYearIsAttached)
{
    TempCompany co(2026);
    ASSERT_TRUE(co.useRootMasterFile());
    // Year folders: the marker names 2025, whose master still says the year begins in 2026.
    ASSERT_TRUE(QDir().mkpath("2025"));
    ASSERT_TRUE(QFile::rename("MASTER.db", "2025/MASTER.db"));
    { QFile m("NENDO"); ASSERT_TRUE(m.open(QIODevice::WriteOnly)); m.write("2025\r\n"); }
    ASSERT_TRUE(co.execOn("2026/SLIP.db", {"INSERT INTO Dur (Dno, EigCode, Hizuke) VALUES (41, 1, '2026-06-01')"}));
    ScriptedDialogs dlg;
    MenuModel menu;
    ASSERT_EQ(runStartup(menu).kind, StartupResult::Run);
    EXPECT_TRUE(session().YearFolderMode);
    EXPECT_EQ(session().Nendo, 2026);
    EXPECT_TRUE(session().MasterDb.databaseName().endsWith("2025/MASTER.db"));
    EXPECT_EQ(masterValue("SELECT Dno FROM Dur").toInt(), 41);
}

TEST(Startup, Offices)
{
    struct Case { int offices; short code; QString name; int listed; bool shown; int tells; };
    const QList<Case> cases = {
        {0, 0, "", 0, false, 0},
        {1, 5, "営業所5", 0, false, 0},
        {3, 2, "営業所2", 3, true, 0},
        {22, 2, "営業所2", 21, true, 1},   // the 22nd is left out, with a word
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.offices);
        TempCompany co(2026);
        QStringList sql = {"DELETE FROM Eig"};
        QList<QVariantList> binds = {{}};
        for (int i = 0; i < c.offices; ++i) {
            // Stored out of order: the list follows the code.
            const int code = c.offices == 1 ? 5 : 2 + (c.offices - 1 - i);
            sql << "INSERT INTO Eig (Code, Namae) VALUES (?, ?)";
            binds << QVariantList{code, QStringLiteral("営業所%1").arg(code)};
        }
        prepare(co, sql, binds);
        ScriptedDialogs dlg;
        MenuModel menu;
        const StartupResult r = runStartup(menu);
        ASSERT_EQ(r.kind, StartupResult::Run);
        EXPECT_EQ(session().EigCode, c.code);
        EXPECT_EQ(session().EigNamae, c.name);
        EXPECT_EQ(session().EigNames.size(), c.listed);
        if (c.listed) {
            EXPECT_EQ(session().EigCodes.last(), 2 + c.listed - 1);
        }
        EXPECT_EQ(r.showOffice, c.shown);
        EXPECT_EQ(dlg.of("Tell").size(), c.tells);
    }
}

TEST(Startup, CompanyWithoutItsRowStopsCleanly)
{
    TempCompany co(2026);
    prepare(co, {"DELETE FROM Com"});
    ScriptedDialogs dlg;
    MenuModel menu;
    const StartupResult r = runStartup(menu, loggingHooks(dlg));
    EXPECT_EQ(r.kind, StartupResult::StopAfterMessage);
    ASSERT_EQ(dlg.log.size(), 3);
    EXPECT_EQ(dlg.log[0], "Hook:splash");
    EXPECT_EQ(dlg.log[1], "Hook:hideSplash");
    EXPECT_TRUE(dlg.log[2].startsWith("Tell:") && dlg.log[2].contains("Com"));
    EXPECT_FALSE(session().MasterDb.isOpen());
}

TEST(Startup, PasswordIsComparedExactlyAndHasNoSecondTry)
{
    struct Case { QString stored; QString typed; bool passes; };
    const QList<Case> cases = {
        {"secret", "secret", true},
        {"secret", "Secret", false},
        {"secret", "secret ", false},
        {" ", "", true},    // the store's way of writing an empty text
        {"", "x", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.stored.toStdString() + "/" + c.typed.toStdString());
        TempCompany co(2026);
        prepare(co, {"UPDATE zSysFunc SET contents=? WHERE Code=123"}, {{c.stored}});
        ScriptedDialogs dlg;
        dlg.requestAnswers = {c.typed};
        MenuModel menu;
        const StartupResult r = runStartup(menu, loggingHooks(dlg));
        if (c.passes) {
            EXPECT_EQ(r.kind, StartupResult::Run);
            EXPECT_TRUE(dlg.of("Tell").isEmpty());
        } else {
            EXPECT_EQ(r.kind, StartupResult::StopAfterMessage);
            EXPECT_EQ(dlg.of("Tell"), QStringList{"パスワードが異なります。"});
            EXPECT_FALSE(dlg.log.contains("Hook:lookup"));
            EXPECT_FALSE(session().MasterDb.isOpen());
            // Nothing was written on the way out.
            co.open();
            EXPECT_TRUE(masterValue("SELECT contents FROM UserOP WHERE Code=725").isNull());
        }
    }
}

TEST(Startup, SecondCopyOnTheSameCompanyEndsSilently)
{
    TempCompany co(2026);
    InstanceLock first;
    ASSERT_TRUE(first.acquire(QDir::currentPath()));
    ScriptedDialogs dlg;
    MenuModel menu;
    EXPECT_EQ(runStartup(menu, loggingHooks(dlg)).kind, StartupResult::StopSilently);
    EXPECT_TRUE(dlg.log.isEmpty());
    EXPECT_FALSE(session().MasterDb.isOpen());
    // Once the first copy has gone, the company opens.
    first.release();
    EXPECT_EQ(runStartup(menu).kind, StartupResult::Run);
    // The lock lives outside the shared company folder.
    EXPECT_TRUE(InstanceLock::lockPathFor(co.path()).startsWith(QDir::tempPath()));
}

TEST(Startup, SwitchesOfTheSystemTable)
{
    struct Case { QString code1, code2, code823, code184; Money scale; bool preview, shrink, keep; };
    const QList<Case> cases = {
        {"1", "1", "Taiwan", "GZL", Money::fromYen(1), true, true, true},
        {"0", " 1", "taiwan", "gzl", Money::fromYen(1), true, false, false},
        {"1.5", "2", "Taiwan ", "", Money::fromRaw(15000), false, true, false},
        {"x0.8", "0", "", "GZL", Money::fromRaw(8000), false, false, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.code1.toStdString());
        TempCompany co(2026);
        prepare(co, {"UPDATE zSysFunc SET contents=? WHERE Code=1",
                     "INSERT INTO zSysFunc (Code, contents) VALUES (2, ?)",
                     "INSERT INTO zSysFunc (Code, contents) VALUES (823, ?)",
                     "INSERT INTO zSysFunc (Code, contents) VALUES (184, ?)",
                     "INSERT INTO zSysFunc (Code, contents) VALUES (301, '3')"},
                {{c.code1}, {c.code2}, {c.code823}, {c.code184}});
        ScriptedDialogs dlg;
        MenuModel menu;
        ASSERT_EQ(runStartup(menu).kind, StartupResult::Run);
        EXPECT_EQ(session().ScreenScale, c.scale);
        EXPECT_EQ(session().PreviewMode, c.preview);
        EXPECT_EQ(session().ShrinkMode, c.shrink);
        EXPECT_EQ(session().KeepPageSetup, c.keep);
        EXPECT_EQ(session().SlipStyle, 3);
    }
}

TEST(Startup, MissingPasswordRowStopsInsteadOfLettingEveryoneIn)
{
    TempCompany co(2026);
    prepare(co, {"DELETE FROM zSysFunc WHERE Code=123"});
    ScriptedDialogs dlg;
    MenuModel menu;
    EXPECT_EQ(runStartup(menu).kind, StartupResult::StopAfterMessage);
    EXPECT_TRUE(dlg.of("Request").isEmpty());
    EXPECT_EQ(dlg.of("Tell").size(), 1);
}

TEST(Startup, MenuRowsBeyondTheTablesAreDroppedWithAWord)
{
    TempCompany co(2026);
    QStringList sql = {"DELETE FROM zSysFunc WHERE Code>20000",
                       "INSERT INTO zSysFunc (Code, contents) VALUES (20001, 'X見出し')",
                       "INSERT INTO zSysFunc (Code, contents) VALUES (20002, '7隠し')",
                       "INSERT INTO zSysFunc (Code, contents) VALUES (20003, '9範囲外')",
                       "INSERT INTO zSysFunc (Code, contents) VALUES (21000, '0範囲外のコード')"};
    for (int i = 0; i < 33; ++i) sql << QStringLiteral("INSERT INTO zSysFunc (Code, contents) VALUES (%1, '3項目%2')").arg(20100 + i).arg(i);
    prepare(co, sql);
    ScriptedDialogs dlg;
    MenuModel menu;
    ASSERT_EQ(runStartup(menu).kind, StartupResult::Run);
    EXPECT_EQ(menu.MenuCount[0], 0);
    EXPECT_EQ(menu.MenuCount[7], 1);
    EXPECT_EQ(menu.MenuItems[7][0], QStringLiteral("隠し"));
    EXPECT_EQ(menu.MenuCount[3], 31);
    EXPECT_EQ(menu.MenuItems[3][30], QStringLiteral("項目30"));
    const QStringList tells = dlg.of("Tell");
    ASSERT_EQ(tells.size(), 1);
    EXPECT_TRUE(tells[0].contains("グループ 9"));
    EXPECT_TRUE(tells[0].contains("グループ 3"));
}

TEST(Startup, MonthsAndYearReadings)
{
    const QList<QPair<short, short>> months = {{1, 12}, {4, 3}, {12, 11}};
    for (auto [s, e] : months) EXPECT_EQ(EndMonth(s), e) << s;
    const QList<QPair<QString, int>> years = {{"20260401", 2026}, {"  2019 ", 2019}, {"", 0}, {"19x7", 19}};
    for (auto [t, y] : years) EXPECT_EQ(NendoFromSKai(t), y) << t.toStdString();
}
