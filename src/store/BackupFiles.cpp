#include "store/BackupFiles.h"
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include "store/Sql.h"
#include "store/Store.h"

namespace {

FileStepHook& hook()
{
    static FileStepHook h;
    return h;
}

bool stepAllowed(const QString& step, const QString& path, QString* error)
{
    if (!hook() || hook()(step, path)) return true;
    if (error) *error = fileErrorText(QStringLiteral("書き込みに失敗しました。"), path);
    return false;
}

QByteArray native(const QString& path) { return QFile::encodeName(path); }

QString reason() { return QString::fromLocal8Bit(std::strerror(errno)); }

// Data on the disk before the name points at it: a power cut must not leave a renamed,
// empty file.
bool syncPath(const QString& path, bool folder)
{
    const int fd = ::open(native(path).constData(), folder ? (O_RDONLY | O_DIRECTORY) : O_RDONLY);
    if (fd < 0) return false;
    const bool ok = ::fsync(fd) == 0;
    ::close(fd);
    return ok;
}

QString folderOf(const QString& path)
{
    const QString dir = QFileInfo(path).path();
    return dir.isEmpty() ? QStringLiteral(".") : dir;
}

} // namespace

OwnConnection::OwnConnection(const QString& path)
{
    static int serial = 0;
    name_ = QStringLiteral("VelmoraOwn%1").arg(++serial);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
    db.setDatabaseName(path);
    db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(busyTimeoutMs()));
    // Never create a store file by opening it.
    open_ = QFileInfo(path).isFile() && db.open();
    // Another station's lock is waited for as on the session's own connection, and said.
    if (open_) installLockWait(db);
}

OwnConnection::~OwnConnection()
{
    {
        QSqlDatabase db = QSqlDatabase::database(name_, false);
        if (db.isOpen()) db.close();
    }
    QSqlDatabase::removeDatabase(name_);
}

QSqlDatabase OwnConnection::db() const { return QSqlDatabase::database(name_, false); }

QString copyingMasterPath(bool yearFolderMode, int nendo)
{
    return yearFolderMode ? yearMasterPath(nendo) : reopenMasterPathNoMarker();
}

QString masterLayoutProblem(bool yearFolderMode, int nendo)
{
    const QString path = copyingMasterPath(yearFolderMode, nendo);
    if (QFileInfo(path).isFile()) return {};
    if (yearFolderMode) return QStringLiteral("ファイルが見つかりません。(%1)").arg(QDir::current().absoluteFilePath(path));
    return QStringLiteral("マスターファイル %1 がありません。\n"
                          "NENDO ファイルを使わない会社では、マスターファイルを MASTER フォルダに置き、"
                          "%2 をそのリンクにしてください。\n何も変更していません。")
        .arg(QDir::current().absoluteFilePath(path), masterFileName());
}

FileStepHook setFileStepHook(FileStepHook h)
{
    FileStepHook prev = hook();
    hook() = std::move(h);
    return prev;
}

QString fileErrorText(const QString& what, const QString& path)
{
    return QStringLiteral("エラー：") + what + QStringLiteral("(") + QDir::current().absoluteFilePath(path)
           + QStringLiteral(")");
}

bool hasJournal(const QString& file)
{
    return QFileInfo::exists(file + QStringLiteral("-journal")) || QFileInfo::exists(file + QStringLiteral("-wal"));
}

void removeStoreFile(const QString& path)
{
    QFile::remove(path);
    QFile::remove(path + QStringLiteral("-journal"));
}

bool fileIsSound(const QString& path, QString* error)
{
    OwnConnection c(path);
    if (!c.isOpen()) {
        if (error) *error = fileErrorText(QStringLiteral("ファイルを開けません。"), path);
        return false;
    }
    Query check(c.db(), QStringLiteral("PRAGMA integrity_check"));
    if (!check.ok()) {
        if (error) *error = StoreErrorText(check.error());
        return false;
    }
    if (check.next() && check.value(0).toString() == QLatin1String("ok")) return true;
    if (error) *error = fileErrorText(QStringLiteral("コピーを読み直すと壊れていました。"), path);
    return false;
}

bool writeCopy(const QString& source, const QString& temp, QString* error)
{
    auto fail = [&](const QString& e) {
        removeStoreFile(temp);
        if (error) *error = e;
        return false;
    };
    if (!QFileInfo(source).isFile())
        return fail(QStringLiteral("ファイルが見つかりません。(%1)").arg(QDir::current().absoluteFilePath(source)));
    removeStoreFile(temp);
    QString why;
    if (!stepAllowed(QStringLiteral("copy"), temp, &why)) return fail(why);
    OwnConnection c(source);
    if (!c.isOpen()) return fail(fileErrorText(QStringLiteral("ファイルを開けません。"), source));
    QSqlError e;
    if (execSql(c.db(), QStringLiteral("VACUUM INTO ?"), {temp}, &e) != ErrorClass::None) return fail(StoreErrorText(e));
    return true;
}

bool writeCheckedCopy(const QString& source, const QString& temp, QString* error)
{
    QString why;
    const bool ok = writeCopy(source, temp, &why) && stepAllowed(QStringLiteral("check"), temp, &why)
                    && fileIsSound(temp, &why)
                    && (syncPath(temp, false) || (why = fileErrorText(QStringLiteral("ディスクに書き込めません。") + reason(), temp), false));
    if (ok) return true;
    removeStoreFile(temp);
    if (error) *error = why;
    return false;
}

bool putInPlace(const QString& temp, const QString& target, QString* error)
{
    if (!stepAllowed(QStringLiteral("place"), target, error)) return false;
    if (std::rename(native(temp).constData(), native(target).constData()) != 0) {
        if (error) *error = fileErrorText(QStringLiteral("名前を変更できません。") + reason(), target);
        return false;
    }
    syncPath(folderOf(target), true);
    return true;
}

bool replaceKeepingPrevious(const QString& file, const QString& replacement, const QString& keep, QString* error)
{
    const QString second = keep + QStringLiteral(".new");
    QFile::remove(second);
    if (!stepAllowed(QStringLiteral("keep"), keep, error)) return false;
    // A second name costs nothing; where the disk has no hard links, a copy does the same.
    if (::link(native(file).constData(), native(second).constData()) != 0 && !QFile::copy(file, second)) {
        if (error) *error = fileErrorText(QStringLiteral("元のファイルを残せません。") + reason(), keep);
        return false;
    }
    if (!putInPlace(replacement, file, error)) {
        QFile::remove(second);
        return false;
    }
    if (std::rename(native(second).constData(), native(keep).constData()) != 0) {
        if (error) *error = fileErrorText(QStringLiteral("名前を変更できません。") + reason(), keep);
        return false;
    }
    syncPath(folderOf(keep), true);
    return true;
}
