#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include "YearEndFixture.h"
#include "ledgers/YearEnd.h"
#include "shell/Session.h"
#include "store/Store.h"
#include "support/StoreFileHelpers.h"
#include "support/StoreSnapshot.h"

namespace {

qint64 yenIn(const QString& file, const QString& sql, const QVariantList& binds = {})
{
    return Money::fromStore(valueIn(file, sql, binds)).truncYen();
}

QString textOf(const QString& path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QStringLiteral("<none>");
}

// Stops the run at the `at`-th hook point (from 0) with `fate`.
YearEndHook stopAt(int at, StepFate fate)
{
    return [at, fate, seen = 0](YearEndStep) mutable { return seen++ == at ? fate : StepFate::Go; };
}

const QString kNew = QStringLiteral("2027/SLIP.db");
const QString kOld = QStringLiteral("2026/SLIP.db");

} // namespace

TEST(YearEnd, FirstRunKeepsOpenItemsCarriesTheLedgersAndStartsTheNumbersAfresh)
{
    ClosingYear co;
    const QStringList oldBefore = storeFileRows(kOld);
    const YearEndResult r = ExecuteUpdate();
    ASSERT_TRUE(r.ok) << r.error.toStdString();
    EXPECT_EQ(r.kind, YearEndKind::FirstRun);
    EXPECT_EQ(session().Nendo, 2027);
    EXPECT_FALSE(QFileInfo::exists("2027.new"));
    EXPECT_EQ(QDir("2027").entryList(QDir::Files), QStringList{"SLIP.db"});

    // Slips: closed lines gone with their heads; month 13 moved to April, a split head gone.
    struct Slips { const char* sql; QString expected; } slips[] = {
        {"SELECT group_concat(Dno || ':' || Getudo, ' ') FROM (SELECT * FROM Dud ORDER BY Dno, Eda)", "2:4 3:4"},
        {"SELECT group_concat(Dno, ' ') FROM (SELECT * FROM Dur ORDER BY Dno)", "2"},
        {"SELECT group_concat(Dno || ':' || Getudo, ' ') FROM Dsd", "2:4"},
        {"SELECT group_concat(Dno, ' ') FROM Dsr", "2"},
        {"SELECT group_concat(Dno || ':' || Getudo, ' ') FROM Dny", "1:4"},
        {"SELECT group_concat(Dno || ':' || Getudo, ' ') FROM Dsh", "1:4"},
        {"SELECT group_concat(Dno, ' ') FROM Mit", "5"},
    };
    for (const auto& s : slips) EXPECT_EQ(valueIn(kNew, s.sql).toString(), s.expected) << s.sql;

    // Customer 100: April is the old row 13; every later month and Zan carry 1000+500+25-300.
    const QString tto = "SELECT %1 FROM TtoD WHERE TorCode=? AND NouCode=0 AND EigCode=1 AND Getudo=?";
    EXPECT_EQ(yenIn(kNew, tto.arg("Zenkaigaku"), {100, 4}), 1000);
    EXPECT_EQ(yenIn(kNew, tto.arg("KTotal"), {100, 4}), 500);
    EXPECT_EQ(yenIn(kNew, tto.arg("Genkin"), {100, 4}), 100);
    for (int m : {5, 6, 12, 1, 3, 13}) {
        EXPECT_EQ(yenIn(kNew, tto.arg("Zenkaigaku"), {100, m}), 1225) << m;
        EXPECT_EQ(yenIn(kNew, tto.arg("KTotal + Gaku + Genkin + Zeigaku + NTotal"), {100, m}), 0) << m;
    }
    EXPECT_EQ(yenIn(kNew, "SELECT Zan FROM Tto WHERE TorCode=100 AND EigCode=1"), 1225);
    // Customer 200 had no row 13: March stood in for it, in the old year and in April.
    EXPECT_EQ(valueIn(kOld, "SELECT count(*) FROM TtoD WHERE TorCode=200 AND Getudo=13").toInt(), 1);
    EXPECT_EQ(yenIn(kNew, tto.arg("Zenkaigaku + KTotal"), {200, 4}), yenIn(kOld, tto.arg("Zenkaigaku + KTotal"), {200, 3}));
    EXPECT_EQ(yenIn(kNew, "SELECT Zan FROM Tto WHERE TorCode=200"), 880);   // 800 and its tax
    // Supplier 7 the same way: 2000+400-100.
    EXPECT_EQ(yenIn(kNew, "SELECT Zenkaigaku FROM TsiD WHERE SirCode=7 AND Getudo=5"), 2300);
    EXPECT_EQ(yenIn(kNew, "SELECT Zan FROM Tsi WHERE SirCode=7"), 2300);

    // Products start from the old last month, flows included; later months only its stock.
    const QString thi = "SELECT SSuu || '/' || USuu || '/' || ZSuu || '/' || TSuu || '/' || KSuu || '/' || UGaku "
                        "FROM ThiD WHERE HinCode=? AND Getudo=?";
    EXPECT_EQ(valueIn(kNew, thi, {kP1, 4}).toString(), "5/2/10/13/1/300000");
    for (int m : {5, 3, 13}) EXPECT_EQ(valueIn(kNew, thi, {kP1, m}).toString(), "0/0/10/13/0/0") << m;
    EXPECT_EQ(valueIn(kNew, "SELECT count(*) || '/' || sum(ZSuu + USuu) FROM ThiD WHERE HinCode=?", {kP2}).toString(), "13/0");

    // The one master file: the company a year later, every counter of every office at 1.
    EXPECT_EQ(valueIn("MASTER/MASTER.db", "SELECT SKai || '-' || EKai || '-' || Ki FROM Com").toString(),
              "20270401-20280331-2");
    EXPECT_EQ(valueIn("MASTER/MASTER.db", "SELECT group_concat(DurNo + DsrNo + DshNo + DnyNo + SeikyuNo) FROM Eig").toString(),
              "5,5");

    // The old year: only rows 13 were added, where a head had none; row 13 of 100 kept its figures.
    QStringList oldAfter = storeFileRows(kOld);
    for (const QString& row : oldBefore) EXPECT_TRUE(oldAfter.removeOne(row)) << row.toStdString();
    for (const QString& added : oldAfter) EXPECT_TRUE(added.contains("|13|")) << added.toStdString();
    EXPECT_FALSE(oldAfter.isEmpty());
    EXPECT_EQ(yenIn(kOld, tto.arg("KTotal"), {100, 13}), 500);
}

TEST(YearEnd, WithTheMarkerTheNewYearHasItsOwnMasterAndTheMarkerMovesOn)
{
    ClosingYear co(true);
    const QStringList oldMaster = storeFileRows("2026/MASTER.db");
    ASSERT_TRUE(ExecuteUpdate().ok);
    EXPECT_EQ(textOf("NENDO"), "2027");
    EXPECT_EQ(snapshotDifference(oldMaster, storeFileRows("2026/MASTER.db")), "");
    EXPECT_EQ(valueIn("2027/MASTER.db", "SELECT SKai || '-' || EKai || '-' || Ki FROM Com").toString(), "20270401-20280331-2");
    EXPECT_EQ(valueIn("2027/MASTER.db", "SELECT sum(DurNo + DsrNo + DshNo + DnyNo + SeikyuNo) FROM Eig").toInt(), 10);
    EXPECT_EQ(valueIn("2027/MASTER.db", "SELECT count(*) FROM Hin").toInt(), 2);
    // The next start opens the new year.
    ASSERT_TRUE(co.reopen());
    EXPECT_EQ(session().Nendo, 2027);
    EXPECT_TRUE(session().MasterDb.databaseName().endsWith("2027/MASTER.db"));
}

TEST(YearEnd, CompanyDatesMoveOnAYearAsNumbers)
{
    struct Case { int year, start; const char* expected; } cases[] = {
        {2026, 4, "20270401-20280331"},
        {2023, 3, "20240301-20250229"},   // 29 February kept, though 2025 has none
        {2030, 1, "20310101-20311231"},
    };
    for (const auto& c : cases) {
        TempCompany co(c.year, c.start);
        ASSERT_TRUE(co.open());
        session().sTuki = static_cast<short>(c.start);
        ASSERT_TRUE(ExecuteUpdate().ok) << c.year;
        EXPECT_EQ(valueIn("MASTER/MASTER.db", "SELECT SKai || '-' || EKai FROM Com").toString(), c.expected);
    }
}

// A run stopped at any hook point, failed or killed, leaves the company as it was when the
// new year had no name yet; the next start and run then give exactly a clean run's company.
TEST(YearEnd, StoppedAnywhereThenRunAgainGivesTheCleanResult)
{
    for (const bool marker : {false, true}) {
        QStringList clean;
        QList<int> steps;   // the hook points of a clean run, in order
        {
            ClosingYear co(marker);
            ScopedYearEndHook record([&](YearEndStep s) {
                steps << static_cast<int>(s);
                return StepFate::Go;
            });
            ASSERT_TRUE(ExecuteUpdate().ok);
            clean = companySnapshot();
        }
        const int named = steps.indexOf(static_cast<int>(YearEndStep::PutInPlace));
        ASSERT_GT(named, 0);
        for (int at = 0; at < steps.size(); ++at)
            for (const StepFate fate : {StepFate::Fail, StepFate::Die}) {
                const QString where = QStringLiteral("marker %1, step %2 (#%3), %4")
                                          .arg(marker).arg(steps[at]).arg(at).arg(fate == StepFate::Die ? "killed" : "failed");
                ClosingYear co(marker);
                const QStringList before = companySnapshot();
                {
                    ScopedYearEndHook stop(stopAt(at, fate));
                    const YearEndResult r = ExecuteUpdate();
                    EXPECT_FALSE(r.ok) << where.toStdString();
                    EXPECT_TRUE(fate == StepFate::Die || !r.error.isEmpty()) << where.toStdString();
                }
                if (fate == StepFate::Fail && at < named) {
                    EXPECT_EQ(snapshotDifference(before, companySnapshot()), "") << where.toStdString();
                    EXPECT_EQ(session().Nendo, 2026);
                }
                ASSERT_TRUE(co.reopen()) << where.toStdString();
                EXPECT_EQ(session().Nendo, 2026) << where.toStdString();
                const YearEndResult again = ExecuteUpdate();
                EXPECT_TRUE(again.ok) << where.toStdString() << " " << again.error.toStdString();
                EXPECT_EQ(again.kind, at <= named ? YearEndKind::FirstRun : YearEndKind::Completion) << where.toStdString();
                EXPECT_EQ(snapshotDifference(clean, companySnapshot()), "") << where.toStdString();
            }
    }
}

TEST(YearEnd, RepeatedRunRefreshesTheNewYearAndKeepsItsSlips)
{
    ClosingYear co;
    ASSERT_TRUE(ExecuteUpdate().ok);
    ASSERT_TRUE(co.reopen());
    ASSERT_EQ(session().Nendo, 2027);
    // Work in the new year: a sale in April, posted.
    co.sale(1, QDate(2027, 4, 15), 100, 0, 4, {line(900, 0, 1, 4)});
    co.batch();
    // Back to the old year, which has a late line in month 13 and lost a row 13.
    session().Nendo = 2026;
    ASSERT_TRUE(OpenSlip() && AttachSlipTables());
    CloseSlip();
    co.exec("INSERT INTO Dud (Dno, Eda, EigCode, Kubun, Hizuke, TorCode, HinCode, Suu, UGaku, ZeiFlag, ZeiGaku, Getudo, "
            "ThiFlag) VALUES (9, 1, 1, 0, '2027-03-31', 100, ?, 1, 1000000, 1, 0, 13, 0)", {kP1});
    co.exec("DELETE FROM TtoD WHERE TorCode=200 AND Getudo=13");

    // A failed refresh changes neither year.
    const QStringList before = companySnapshot();
    for (const YearEndStep s : {YearEndStep::Row13, YearEndStep::MoveOpenSlips, YearEndStep::Rebuild, YearEndStep::Commit}) {
        ScopedYearEndHook failing(failingAt(s));
        EXPECT_FALSE(ExecuteUpdate().ok) << static_cast<int>(s);
        EXPECT_EQ(snapshotDifference(before, companySnapshot()), "") << static_cast<int>(s);
    }

    const YearEndResult r = ExecuteUpdate();
    ASSERT_TRUE(r.ok) << r.error.toStdString();
    EXPECT_EQ(r.kind, YearEndKind::RepeatedRun);
    // Nothing copied: the new year's sale stays, the old late line does not come over.
    EXPECT_EQ(valueIn(kNew, "SELECT group_concat(Dno || ':' || Getudo, ' ') FROM (SELECT * FROM Dud ORDER BY Dno, Eda)")
                  .toString(), "1:4 2:4 3:4");
    // April rebuilt from the new year's slips: the old last month's flows are gone from it.
    EXPECT_EQ(valueIn(kNew, "SELECT USuu FROM ThiD WHERE HinCode=? AND Getudo=4", {kP1}).toInt(), 4);
    EXPECT_EQ(valueIn(kOld, "SELECT count(*) FROM TtoD WHERE TorCode=200 AND Getudo=13").toInt(), 1);
    EXPECT_EQ(valueIn("MASTER/MASTER.db", "SELECT SKai FROM Com").toString(), "20270401");
}

// A kill after the company has moved on but before the note of a pending update is removed
// leaves the note behind; a later update from the closed year is then a repeated run all the
// same, and the note goes.
TEST(YearEnd, ANoteLeftBehindAfterTheCompanyMovedOnDoesNotStopARepeatedRun)
{
    for (const bool marker : {false, true}) {
        ClosingYear co(marker);
        ASSERT_TRUE(ExecuteUpdate().ok);
        QFile note("2027/YEAREND.pending");
        ASSERT_TRUE(note.open(QIODevice::WriteOnly));
        note.close();
        ASSERT_TRUE(co.reopen());
        co.sale(1, QDate(2027, 4, 15), 100, 0, 4, {line(900, 0, 1, 4)});
        co.batch();
        session().Nendo = 2026;   // the target year changed back to the closed year
        const YearEndResult r = ExecuteUpdate();
        ASSERT_TRUE(r.ok) << r.error.toStdString();
        EXPECT_EQ(r.kind, YearEndKind::RepeatedRun) << marker;
        EXPECT_EQ(valueIn(kNew, "SELECT USuu FROM ThiD WHERE HinCode=? AND Getudo=4", {kP1}).toInt(), 4) << marker;
        EXPECT_FALSE(note.exists()) << marker;
        if (marker) {
            EXPECT_EQ(textOf("NENDO"), "2027");
        }
    }
}
