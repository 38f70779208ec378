#pragma once
// The year-end update ("年次更新") without its screen: the session's year N opens the year
// N+1 in a folder of its own. Never half done:
// - a first run builds the new year in the folder "<N+1>.new", reading the old year as it will
//   be once its rows 13 are supplied, and gives the folder its year's name only when it is
//   complete. Then, in this order, the old year gets its rows 13 and the company moves on to
//   the new year (the marker NENDO, or without it the one master file's company row and
//   counters). Until the company has moved on, a note in the new folder says so, and the next
//   run does only what was left (a note found once the company has moved on is one that a
//   kill left behind: it is not heeded);
// - a repeated run (the new year is there) supplies the old rows 13 and refreshes the new year
//   in one transaction over both files.
// A failure before the new year has its name leaves the company exactly as it was.
#include <functional>
#include <QString>
#include "ledgers/LedgerRun.h"

enum class YearEndKind { FirstRun, RepeatedRun, Completion };

// Where a run can be stopped by the tests, in the order of a first run (Rebuild only in a
// repeated run, which also passes Row13, MoveOpenSlips, LinkOld and Commit).
enum class YearEndStep {
    StageSlip,         // copy of the old slip file into the staging folder
    StageMaster,       // copy of the old master file (with the marker)
    LinkOld,           // ThiOld ... linked to the old year
    RemoveClosedSlips,
    MoveOpenSlips,
    ResetSlipNumbers,  // with the marker; without it part of MoveCompany
    CarryLedgers,
    CompanyYear,       // with the marker; without it part of MoveCompany
    Commit,            // before each transaction commits
    PutInPlace,        // the staged folder gets its year's name
    Row13,             // rows 13 in the old year
    MoveCompany,       // the marker, or the master's company row and counters
    Rebuild,           // repeated run: the first month rebuilt from the slips
};

// What a test makes of a step: go on, fail there (the run rolls back), or stop dead as a
// killed process would, leaving files and folders as they are at that instant.
enum class StepFate { Go, Fail, Die };
using YearEndHook = std::function<StepFate(YearEndStep)>;
// Returns the previous hook; an empty one restores the default (always go on).
YearEndHook setYearEndHook(YearEndHook hook);

// The staging folder of a first run.
QString stagingFolder(int newYear);

// The rebuild of the first month in a repeated run; the default is AfterNenjiKosin. It runs
// with the session's MasterDb on the new year, inside the run's transaction, and gives false
// with an empty `error` when it has told the clerk itself.
using FirstMonthRebuild = std::function<bool(QString* error)>;

struct YearEndResult {
    bool ok = false;
    YearEndKind kind = YearEndKind::FirstRun;
    int newYear = 0;
    QString error;     // "エラー：..." or a message of the system; empty when already told
};

// Runs the update from the session's Nendo. On success the session's Nendo is the new year
// and the caller ends the program; on failure nothing has changed, the session included.
YearEndResult ExecuteUpdate(const ProgressFn& progress = {}, const FirstMonthRebuild& rebuild = {});
