#include "ledgers/YearEnd.h"
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include "ledgers/Recovery.h"
#include "ledgers/YearEndSteps.h"
#include "shell/Session.h"
#include "shell/Startup.h"
#include "store/BackupFiles.h"
#include "store/Store.h"

namespace {

YearEndHook& hook()
{
    static YearEndHook h;
    return h;
}

// Left in the new year's folder from the moment it gets its name until the company has moved
// on to it: a run that finds it completes the update instead of refreshing the year.
const QString kPendingNote = QStringLiteral("YEAREND.pending");

const QStringList kOldLedgers{QStringLiteral("Thi"), QStringLiteral("Tto"), QStringLiteral("Tsi"),
                              QStringLiteral("ThiD"), QStringLiteral("TtoD"), QStringLiteral("TsiD")};
const QStringList kOldSlips{QStringLiteral("Dsr"), QStringLiteral("Dsd"), QStringLiteral("Dur"), QStringLiteral("Dud")};

QString inFolder(const QString& folder, const QString& name) { return folder + QLatin1Char('/') + name; }

// The marker as the directory names it (its case may differ).
QString markerFile()
{
    for (const QString& n : QDir::current().entryList(QDir::Files | QDir::Hidden))
        if (n.toUpper() == QLatin1String("NENDO")) return n;
    return QStringLiteral("NENDO");
}

bool writeWhole(const QString& path, const QByteArray& text, QString* error)
{
    const QString temp = path + QStringLiteral(".new");
    QFile f(temp);
    // On the disk before the name points at it: a power cut must not leave an empty NENDO.
    const bool ok = f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(text) == text.size() && f.flush()
                    && ::fsync(f.handle()) == 0;
    f.close();
    if (ok && putInPlace(temp, path, error)) return true;
    QFile::remove(temp);
    if (error && error->isEmpty()) *error = fileErrorText(QStringLiteral("書き込めません。"), path);
    return false;
}

bool eightDigits(const QVariant& v)
{
    static const QRegularExpression re(QStringLiteral("^\\d{8}$"));
    return re.match(v.toString().trimmed()).hasMatch();
}

class YearEndRun {
public:
    YearEndRun(const ProgressFn& progress, const FirstMonthRebuild& rebuild)
        : progress_(progress), rebuild_(rebuild)
    {
        const Session& s = session();
        marker_ = s.YearFolderMode;
        oldYear_ = s.Nendo;
        newYear_ = s.Nendo + 1;
        first_ = (s.sTuki >= 1 && s.sTuki <= 12) ? s.sTuki : 4;
        last_ = lastMonthOf(static_cast<short>(first_));
        result_.newYear = newYear_;
    }

    YearEndResult run()
    {
        if (!checkCompany()) return result_;
        if (!QFileInfo(slipPath(newYear_)).isFile()) {
            result_.kind = YearEndKind::FirstRun;
            if (!buildNewYear() || !putNewYearInPlace() || !moveCompany()) return result_;
        } else if (QFileInfo::exists(pendingNote()) && stillOnOldYear()) {
            result_.kind = YearEndKind::Completion;
            if (!moveCompany()) return result_;
        } else {
            result_.kind = YearEndKind::RepeatedRun;
            if (!refreshNewYear()) return result_;
            // A note that a kill left after the company had moved on.
            QFile::remove(pendingNote());
        }
        session().Nendo = newYear_;
        result_.ok = true;
        return result_;
    }

private:
    ProgressFn progress_;
    FirstMonthRebuild rebuild_;
    bool marker_ = false;
    int oldYear_ = 0;
    int newYear_ = 0;
    int first_ = 4;
    int last_ = 3;
    bool dead_ = false;
    YearEndResult result_;

    void show(const QString& text) const
    {
        if (progress_) progress_(text);
    }

    bool fail(const QString& error)
    {
        if (result_.error.isEmpty()) result_.error = error;
        return false;
    }

    // False when the run must stop here: a test failed or killed it.
    bool step(YearEndStep s)
    {
        if (dead_) return false;
        const StepFate fate = hook() ? hook()(s) : StepFate::Go;
        if (fate == StepFate::Die) dead_ = true;
        if (fate == StepFate::Fail) fail(QStringLiteral("エラー：書き込みに失敗しました。"));
        return fate == StepFate::Go;
    }

    QString pendingNote() const { return inFolder(QString::number(newYear_), kPendingNote); }

    // The company has not moved on to the new year yet: the marker, or without it the
    // company row of the one master file, still names the old year.
    bool stillOnOldYear() const
    {
        if (marker_) {
            QFile f(markerFile());
            static const QRegularExpression num(QStringLiteral("-?\\d+"));
            const auto m = f.open(QIODevice::ReadOnly) ? num.match(QString::fromLatin1(f.readAll())) : QRegularExpressionMatch();
            return m.hasMatch() && m.captured().toInt() == oldYear_;
        }
        OwnConnection c(companyMaster(oldYear_));
        return NendoFromSKai(scalar(c.db(), QStringLiteral("SELECT SKai FROM Com")).toString()) == oldYear_;
    }

    // The master file whose company row moves on: the new year's own with the marker, the
    // one master file without it.
    QString companyMaster(int year) const { return marker_ ? yearMasterPath(year) : reopenMasterPathNoMarker(); }

    bool checkCompany()
    {
        if (const QString p = masterLayoutProblem(marker_, oldYear_); !p.isEmpty()) return fail(p);
        if (!QFileInfo(slipPath(oldYear_)).isFile())
            return fail(QStringLiteral("ファイルが見つかりません。(%1)").arg(QDir::current().absoluteFilePath(slipPath(oldYear_))));
        OwnConnection c(companyMaster(oldYear_));
        Query com(c.db(), QStringLiteral("SELECT SKai, EKai FROM Com"));
        if (!c.isOpen() || !com.next() || !eightDigits(com.value(0)) || !eightDigits(com.value(1)))
            return fail(QStringLiteral("会社の期首日と期末日（年月日8桁）を確認してください。何も変更していません。"));
        return true;
    }

    // Runs `body` in one transaction of `db`: everything lands, or nothing. `body` gives false
    // when a step stopped the run (and has said why); a failed statement is kept by the run.
    template <typename Body>
    bool inUnit(const QSqlDatabase& db, Body body)
    {
        if (dead_) return false;
        bool stopped = false;
        QString error;
        {
            LedgerRun run(progress_);
            run.db = db;
            UnitOfWork unit(db);
            if (!unit.active()) run.fail(unit.error());
            else stopped = !body(run);
            run.finishAll();
            if (!stopped && run.ok()) {
                if (!step(YearEndStep::Commit)) stopped = true;
                else if (unit.commit()) return true;
                else run.fail(unit.error());
            }
            error = run.error();
        }   // not committed: rolled back
        return stopped ? false : fail(error);
    }

    // The old year, attached as `old`, seen through the links of the legacy names. With
    // `asClosed` its month ledgers show the rows 13 that the update supplies, so the new year
    // can be built before the old one is touched.
    bool linkOld(const QSqlDatabase& db, const QStringList& tables, bool asClosed)
    {
        if (!step(YearEndStep::LinkOld)) return false;
        const QString old = QFileInfo(slipPath(oldYear_)).absoluteFilePath();
        bool ok = execSql(db, QStringLiteral("ATTACH DATABASE ? AS old"), {old}) == ErrorClass::None;
        for (const QString& t : tables) {
            QString view = QStringLiteral("CREATE TEMP VIEW %1Old AS SELECT * FROM old.%1").arg(t);
            const QString supplied = asClosed ? missingRows13(t, QStringLiteral("old"), QString::number(last_)) : QString();
            if (!supplied.isEmpty()) view += QStringLiteral(" UNION ALL ") + supplied;
            ok = ok && execSql(db, view) == ErrorClass::None;
        }
        return ok || fail(QStringLiteral("アタッチに失敗しました。"));
    }

    void unlinkOld(const QSqlDatabase& db, const QStringList& tables)
    {
        for (const QString& t : tables) DropTable(db, t + QStringLiteral("Old"));
        execSql(db, QStringLiteral("DETACH DATABASE old"));
    }

    bool attachSlip(const QSqlDatabase& db, const QString& path)
    {
        return execSql(db, QStringLiteral("ATTACH DATABASE ? AS slip"), {QFileInfo(path).absoluteFilePath()}) == ErrorClass::None
               || fail(fileErrorText(QStringLiteral("ファイルを開けません。"), path));
    }

    bool buildNewYear()
    {
        const QString staging = stagingFolder(newYear_);
        QDir(staging).removeRecursively();   // what a stopped run left
        if (!QDir().mkpath(staging)) return fail(fileErrorText(QStringLiteral("フォルダを作成できません。"), staging));
        show(QStringLiteral("新年度のファイルを作成中"));
        const QString slip = inFolder(staging, QStringLiteral("SLIP.db"));
        const QString master = inFolder(staging, QStringLiteral("MASTER.db"));
        QString error;
        // Copies of the old files to start from; what they become is read back whole at the end.
        bool ok = step(YearEndStep::StageSlip) && (writeCopy(slipPath(oldYear_), slip, &error) || fail(error));
        // Without the marker every year shares the one master file: there is none to copy.
        if (ok && marker_)
            ok = step(YearEndStep::StageMaster) && (writeCopy(yearMasterPath(oldYear_), master, &error) || fail(error));
        ok = ok && writeWhole(inFolder(staging, kPendingNote), QByteArray::number(oldYear_), &error);
        if (ok) {
            OwnConnection c(marker_ ? master : slip);
            ok = (c.isOpen() || fail(fileErrorText(QStringLiteral("ファイルを開けません。"), slip)))
                 && (!marker_ || attachSlip(c.db(), slip)) && linkOld(c.db(), kOldLedgers, true)
                 && inUnit(c.db(), [&](LedgerRun& run) { return stripAndCarry(run); });
            if (ok) unlinkOld(c.db(), kOldLedgers);
            // What the closed year's slips occupied goes too: the new year starts compact.
            if (ok) execSql(c.db(), QStringLiteral("VACUUM main"));
            if (ok && marker_) execSql(c.db(), QStringLiteral("VACUUM slip"));
        }
        for (const QString& f : marker_ ? QStringList{master, slip} : QStringList{slip})
            ok = ok && (fileIsSound(f, &error) || fail(error));
        if (!ok && !dead_) QDir(staging).removeRecursively();
        return ok;
    }

    bool stripAndCarry(LedgerRun& run)
    {
        show(QStringLiteral("伝票を整理中"));
        if (!step(YearEndStep::RemoveClosedSlips)) return false;
        RemoveClosedSlips(run);
        if (!step(YearEndStep::MoveOpenSlips)) return false;
        MoveOpenSlips(run, first_);
        if (marker_) {
            if (!step(YearEndStep::ResetSlipNumbers)) return false;
            ResetSlipNumbers(run);
        }
        show(QStringLiteral("台帳を繰り越し中"));
        if (!step(YearEndStep::CarryLedgers)) return false;
        CarryLedgers(run, first_, last_);
        if (marker_) {
            if (!step(YearEndStep::CompanyYear)) return false;
            AdvanceCompanyYear(run);
        }
        return true;
    }

    // The staged year takes its name: the whole folder in one rename, or into a folder of
    // that name that holds no year yet, file by file with the slip file last.
    bool putNewYearInPlace()
    {
        if (!step(YearEndStep::PutInPlace)) return false;
        const QString staging = stagingFolder(newYear_);
        const QString target = QString::number(newYear_);
        QString error;
        if (!QFileInfo::exists(target) || QDir(target).isEmpty()) {
            QDir().rmdir(target);
            if (!putInPlace(staging, target, &error)) {
                QDir(staging).removeRecursively();
                return fail(error);
            }
            return true;
        }
        QStringList names{kPendingNote, QStringLiteral("SLIP.db")};
        if (marker_) names.prepend(QStringLiteral("MASTER.db"));
        for (const QString& n : names)
            if (!putInPlace(inFolder(staging, n), inFolder(target, n), &error)) {
                QDir(staging).removeRecursively();
                return fail(error);
            }
        QDir(staging).removeRecursively();
        return true;
    }

    // The old year gets its rows 13 and the company moves on to the new year. Safe to repeat:
    // rows 13 are only supplied where missing, the marker is written whole, and the one master
    // file moves only while it still names the old year. Without the marker both land in one
    // transaction.
    bool moveCompany()
    {
        if (marker_) {
            OwnConnection c(slipPath(oldYear_));
            QString error;
            const bool ok = (c.isOpen() || fail(fileErrorText(QStringLiteral("ファイルを開けません。"), slipPath(oldYear_))))
                            && inUnit(c.db(), [&](LedgerRun& run) { return addRows13(run, {}); })
                            && moveOn() && (writeWhole(markerFile(), QByteArray::number(newYear_), &error) || fail(error));
            if (!ok) return false;
        } else {
            OwnConnection c(companyMaster(newYear_));
            if (!c.isOpen()) return fail(fileErrorText(QStringLiteral("ファイルを開けません。"), companyMaster(newYear_)));
            if (!linkOld(c.db(), {}, false)) return false;
            const bool ok = inUnit(c.db(), [&](LedgerRun& run) {
                if (!addRows13(run, QStringLiteral("old")) || !moveOn()) return false;
                if (NendoFromSKai(scalar(run.db, QStringLiteral("SELECT SKai FROM Com")).toString()) == oldYear_) {
                    ResetSlipNumbers(run);
                    AdvanceCompanyYear(run);
                }
                return true;
            });
            if (!ok) return false;
        }
        QFile::remove(pendingNote());
        return true;
    }

    bool moveOn()
    {
        show(QStringLiteral("新年度へ移行中"));
        return step(YearEndStep::MoveCompany);
    }

    bool addRows13(LedgerRun& run, const QString& schema)
    {
        show(QStringLiteral("旧年度の13月度を作成中"));
        if (!step(YearEndStep::Row13)) return false;
        CopyLastMonthToRow13(run, last_, schema);
        return true;
    }

    // The new year is there: in one transaction over both years, the old year gets its rows
    // 13, open items of month 13 move to the first month and the first month is rebuilt from
    // the slips. The new year's slips stay as they are.
    bool refreshNewYear()
    {
        show(QStringLiteral("新年度を更新中"));
        OwnConnection c(companyMaster(newYear_));
        if (!c.isOpen()) return fail(fileErrorText(QStringLiteral("ファイルを開けません。"), companyMaster(newYear_)));
        const QStringList linked = kOldSlips + kOldLedgers;
        if (!attachSlip(c.db(), slipPath(newYear_)) || !linkOld(c.db(), linked, false)) return false;
        const bool ok = inUnit(c.db(), [&](LedgerRun& run) {
            if (!addRows13(run, QStringLiteral("old")) || !step(YearEndStep::MoveOpenSlips)) return false;
            MoveOpenSlips(run, first_);
            if (!run.ok()) return true;   // the unit reports it
            if (!step(YearEndStep::Rebuild)) return false;
            run.finishAll();
            return rebuildFirstMonth(c.db());
        });
        if (ok) unlinkOld(c.db(), linked);
        return ok;
    }

    bool rebuildFirstMonth(const QSqlDatabase& db)
    {
        // The rebuild works on the session's store: for its length that is the new year.
        Session& s = session();
        const QSqlDatabase saved = s.MasterDb;
        s.MasterDb = db;
        s.Nendo = newYear_;
        QString error;
        const bool ok = rebuild_ ? rebuild_(&error) : AfterNenjiKosin(progress_, &error);
        s.MasterDb = saved;
        s.Nendo = oldYear_;
        // An empty error: the rebuild has told the clerk itself.
        if (!ok && !error.isEmpty()) fail(error);
        return ok;
    }
};

} // namespace

YearEndHook setYearEndHook(YearEndHook h)
{
    YearEndHook prev = hook();
    hook() = std::move(h);
    return prev;
}

QString stagingFolder(int newYear) { return QString::number(newYear) + QStringLiteral(".new"); }

YearEndResult ExecuteUpdate(const ProgressFn& progress, const FirstMonthRebuild& rebuild)
{
    return YearEndRun(progress, rebuild).run();
}
