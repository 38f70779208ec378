#include "store/NewCompany.h"
#include <functional>
#include <unistd.h>
#include <QDate>
#include <QSqlError>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include "shell/MenuCaptions.h"
#include "store/Schema.h"
#include "store/Sql.h"

namespace {

const char* const kMasterLink = "MASTER/MASTER.db";

bool holdsStore(const QDir& d)
{
    if (d.exists(QStringLiteral("MASTER.db")) || QFileInfo(d.filePath(QStringLiteral("MASTER.db"))).isSymLink()
        || d.exists(QStringLiteral("MASTER/MASTER.db")))
        return true;
    for (const QString& n : d.entryList(QDir::Files))
        if (n.toUpper() == QLatin1String("NENDO")) return true;
    for (const QString& sub : d.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        if (d.exists(sub + QStringLiteral("/SLIP.db"))) return true;
    return false;
}

// Writes one file under a temporary name; the caller renames it when everything succeeded.
bool writeFile(const QString& path, StoreFile file, const std::function<bool(QSqlDatabase&)>& fill, QString* error)
{
    const QString conn = QStringLiteral("VelmoraNew");
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), conn);
        db.setDatabaseName(path);
        if (!db.open()) {
            if (error) *error = db.lastError().text();
        } else {
            ok = createTables(db, file, error);
            if (ok) {
                UnitOfWork unit(db);
                ok = unit.active() && fill(db) && unit.commit();
                if (!ok && error && error->isEmpty()) *error = QStringLiteral("初期データを書き込めませんでした。");
            }
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(conn);
    return ok;
}

bool fillMaster(QSqlDatabase& db, const NewCompanyOptions& opt, int year)
{
    const QDate first(year, opt.startMonth, 1);
    const QDate last = first.addMonths(12).addDays(-1);
    bool ok = execSql(db, QStringLiteral(
        "INSERT INTO Com (Kaisya, SKai, EKai, sTuki, Ki, Sime, Hiz, Zeituuchi, HsuType, Hsu) "
        "VALUES (?, ?, ?, ?, 1, 31, 2, 1, 1, 1)"),
        {opt.company, first.toString(QStringLiteral("yyyyMMdd")), last.toString(QStringLiteral("yyyyMMdd")),
         opt.startMonth}) == ErrorClass::None;
    ok = ok && execSql(db, QStringLiteral(
        "INSERT INTO Eig (Code, Namae, DurNo, DsrNo, DshNo, DnyNo, SeikyuNo) VALUES (1, ?, 1, 1, 1, 1, 1)"),
        {QStringLiteral("本社")}) == ErrorClass::None;
    ok = ok && execSql(db, QStringLiteral("INSERT INTO zSysFunc (Code, contents) VALUES (1, '1')")) == ErrorClass::None;
    // An empty password: Enter alone passes the prompt at start.
    ok = ok && execSql(db, QStringLiteral("INSERT INTO zSysFunc (Code, contents) VALUES (123, '')")) == ErrorClass::None;
    // Menu rows: group g, n-th caption -> 20000 + g*100 + n, which leaves room to insert.
    int index[8] = {0};
    for (const MenuCaption& m : menuCaptions()) {
        const int code = 20000 + m.group * 100 + ++index[m.group];
        ok = ok && execSql(db, QStringLiteral("INSERT INTO zSysFunc (Code, contents) VALUES (?, ?)"),
                           {code, QString::number(m.group) + m.caption}) == ErrorClass::None;
    }
    return ok;
}

} // namespace

QString newCompanyMasterPath(const QString& dir)
{
    return dir + QLatin1Char('/') + QString::fromLatin1(kMasterLink);
}

void removeNewCompany(const QString& dir, int year)
{
    const QString root = QDir(dir).absolutePath();
    const QString files[] = {root + QStringLiteral("/MASTER.db"), newCompanyMasterPath(root),
                             root + QStringLiteral("/%1/SLIP.db").arg(year)};
    for (const QString& f : files) {
        QFile::remove(f);
        QFile::remove(f + QStringLiteral("-journal"));
    }
    QDir().rmdir(QFileInfo(newCompanyMasterPath(root)).path());
    QDir().rmdir(root + QLatin1Char('/') + QString::number(year));
}

int fiscalYearOf(const QDate& date, int startMonth)
{
    return date.month() >= startMonth ? date.year() : date.year() - 1;
}

bool createCompany(const QString& dirPath, const NewCompanyOptions& opt, QString* error)
{
    auto fail = [&](const QString& m) { if (error) *error = m; return false; };
    if (opt.startMonth < 1 || opt.startMonth > 12) return fail(QStringLiteral("期首月は1から12で指定してください。"));
    const int year = opt.year ? opt.year : fiscalYearOf(QDate::currentDate(), opt.startMonth);
    if (year < 1900 || year > 9998) return fail(QStringLiteral("年度が正しくありません。"));
    QDir dir(dirPath);
    if (dir.exists() && holdsStore(dir))
        return fail(QStringLiteral("%1 にはすでに会社のデータがあります。何も変更しませんでした。").arg(dir.absolutePath()));
    const bool madeDir = !dir.exists();
    if (madeDir && !QDir().mkpath(dir.absolutePath())) return fail(QStringLiteral("フォルダを作成できません。"));

    const QString yearDir = dir.absoluteFilePath(QString::number(year));
    QDir().mkpath(yearDir);
    const QString master = newCompanyMasterPath(dir.absolutePath());
    QDir().mkpath(QFileInfo(master).path());
    const QString masterTmp = master + QStringLiteral(".new");
    const QString slipTmp = yearDir + QStringLiteral("/SLIP.db.new");
    QFile::remove(masterTmp);
    QFile::remove(slipTmp);

    // The master file lives in MASTER/, where the reopening, backup and compaction look for
    // it; the root MASTER.db that the start opens is a relative link to it, so the folder can
    // be moved as a whole. The link comes last: until then the folder holds no company.
    QString err;
    bool ok = writeFile(masterTmp, StoreFile::Master, [&](QSqlDatabase& db) { return fillMaster(db, opt, year); }, &err)
              && writeFile(slipTmp, StoreFile::Slip, [](QSqlDatabase&) { return true; }, &err)
              && QFile::rename(slipTmp, yearDir + QStringLiteral("/SLIP.db"))
              && QFile::rename(masterTmp, master);
    if (ok && ::symlink(kMasterLink, QFile::encodeName(dir.absoluteFilePath(QStringLiteral("MASTER.db"))).constData()) != 0) {
        err = QStringLiteral("MASTER.db のリンクを作成できません。");
        ok = false;
    }
    if (!ok) {
        QFile::remove(masterTmp);
        QFile::remove(slipTmp);
        removeNewCompany(dir.absolutePath(), year);
        if (madeDir) QDir().rmdir(dir.absolutePath());
        return fail(QStringLiteral("会社のデータを作成できませんでした。") + err);
    }
    return true;
}
