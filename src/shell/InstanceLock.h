#pragma once
// One running copy per company folder. The lock lives in the local temp folder, named after
// the company's absolute path: a lock inside the shared company folder would also shut out
// the other workstations that work on the same data.
#include <memory>
#include <QString>

class QLockFile;

class InstanceLock {
public:
    InstanceLock();
    ~InstanceLock();
    // True when this object now holds the lock of `companyDir` (or already held it).
    bool acquire(const QString& companyDir);
    void release();
    bool held() const;
    // The lock file used for a company folder.
    static QString lockPathFor(const QString& companyDir);
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;
private:
    std::unique_ptr<QLockFile> lock_;
    QString path_;
};

// The lock of this process, held from start-up to the end of the run.
InstanceLock& processInstanceLock();
