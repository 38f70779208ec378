#include "shell/InstanceLock.h"
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QLockFile>

InstanceLock::InstanceLock() = default;
InstanceLock::~InstanceLock() { release(); }

QString InstanceLock::lockPathFor(const QString& companyDir)
{
    QFileInfo fi(companyDir);
    QString abs = fi.canonicalFilePath();
    if (abs.isEmpty()) abs = fi.absoluteFilePath();
    const QByteArray hash = QCryptographicHash::hash(abs.toUtf8(), QCryptographicHash::Sha1).toHex().left(16);
    return QDir(QDir::tempPath()).filePath(QStringLiteral("velmora-%1.lock").arg(QString::fromLatin1(hash)));
}

bool InstanceLock::acquire(const QString& companyDir)
{
    const QString path = lockPathFor(companyDir);
    if (lock_ && path_ == path) return true;
    release();
    auto lock = std::make_unique<QLockFile>(path);
    // A running copy keeps its lock however long it runs; a crashed one is recognised by
    // its process id and taken over.
    lock->setStaleLockTime(0);
    if (!lock->tryLock(0)) return false;
    lock_ = std::move(lock);
    path_ = path;
    return true;
}

void InstanceLock::release()
{
    if (lock_) lock_->unlock();
    lock_.reset();
    path_.clear();
}

bool InstanceLock::held() const { return lock_ != nullptr; }

InstanceLock& processInstanceLock()
{
    static InstanceLock lock;
    return lock;
}
