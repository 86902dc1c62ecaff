// Stands in front of Qt's locks in builds with ThreadSanitizer and tells it who hands over to whom: Qt itself
// is built without it, and its locks are no calls of the system's that it would notice. Without this every
// access under a lock of Qt's counts as a race.

#include <QMutex>
#include <QReadWriteLock>
#include <QRunnable>
#include <QSemaphore>
#include <QThreadPool>
#include <QWaitCondition>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace {

/// Qt's own function behind the one that stands in front of it here.
template <typename Function>
Function *original(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

bool takenOver(bool locked, void *lock)
{
    if (locked)
        __tsan_acquire(lock);
    return locked;
}

/// Runs a task of a pool, with what its starter did before visible to it, and what it did to who waits for
/// the pool.
class HandedOver : public QRunnable
{
public:
    HandedOver(QRunnable *task, QThreadPool *pool)
        : task(task)
        , pool(pool)
    {
        __tsan_release(this);
    }

    void run() override
    {
        __tsan_acquire(this);
        const bool isOurs = task->autoDelete();
        task->run();
        if (isOurs)
            delete task;
        __tsan_release(pool);
    }

private:
    QRunnable *task;
    QThreadPool *pool;
};

} // namespace

void QThreadPool::start(QRunnable *runnable, int priority)
{
    static const auto start =
        original<void(QThreadPool *, QRunnable *, int)>("_ZN11QThreadPool5startEP9QRunnablei");
    start(this, new HandedOver(runnable, this), priority);
}

bool QThreadPool::waitForDone(int msecs)
{
    static const auto wait = original<bool(QThreadPool *, int)>("_ZN11QThreadPool11waitForDoneEi");
    return takenOver(wait(this, msecs), this);
}

void QReadWriteLock::lockForRead()
{
    static const auto lock = original<void(QReadWriteLock *)>("_ZN14QReadWriteLock11lockForReadEv");
    lock(this);
    __tsan_acquire(this);
}

bool QReadWriteLock::tryLockForRead()
{
    return tryLockForRead(0);
}

bool QReadWriteLock::tryLockForRead(int timeout)
{
    static const auto lock = original<bool(QReadWriteLock *, int)>("_ZN14QReadWriteLock14tryLockForReadEi");
    return takenOver(lock(this, timeout), this);
}

void QReadWriteLock::lockForWrite()
{
    static const auto lock = original<void(QReadWriteLock *)>("_ZN14QReadWriteLock12lockForWriteEv");
    lock(this);
    __tsan_acquire(this);
}

bool QReadWriteLock::tryLockForWrite()
{
    return tryLockForWrite(0);
}

bool QReadWriteLock::tryLockForWrite(int timeout)
{
    static const auto lock = original<bool(QReadWriteLock *, int)>("_ZN14QReadWriteLock15tryLockForWriteEi");
    return takenOver(lock(this, timeout), this);
}

void QReadWriteLock::unlock()
{
    static const auto unlock = original<void(QReadWriteLock *)>("_ZN14QReadWriteLock6unlockEv");
    __tsan_release(this);
    unlock(this);
}

void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto lock = original<void(QMutex *)>("_ZN6QMutex4lockEv");
    lock(this);
    __tsan_acquire(this);
}

bool QMutex::tryLock(int timeout) QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto lock = original<bool(QMutex *, int)>("_ZN6QMutex7tryLockEi");
    return takenOver(lock(this, timeout), this);
}

void QMutex::unlock() noexcept
{
    static const auto unlock = original<void(QMutex *)>("_ZN6QMutex6unlockEv");
    __tsan_release(this);
    unlock(this);
}

void QSemaphore::acquire(int n)
{
    static const auto acquire = original<void(QSemaphore *, int)>("_ZN10QSemaphore7acquireEi");
    acquire(this, n);
    __tsan_acquire(this);
}

bool QSemaphore::tryAcquire(int n)
{
    static const auto acquire = original<bool(QSemaphore *, int)>("_ZN10QSemaphore10tryAcquireEi");
    return takenOver(acquire(this, n), this);
}

bool QSemaphore::tryAcquire(int n, int timeout)
{
    static const auto acquire = original<bool(QSemaphore *, int, int)>("_ZN10QSemaphore10tryAcquireEii");
    return takenOver(acquire(this, n, timeout), this);
}

void QSemaphore::release(int n)
{
    static const auto release = original<void(QSemaphore *, int)>("_ZN10QSemaphore7releaseEi");
    __tsan_release(this);
    release(this, n);
}

bool QWaitCondition::wait(QMutex *lockedMutex, unsigned long time)
{
    static const auto wait =
        original<bool(QWaitCondition *, QMutex *, unsigned long)>("_ZN14QWaitCondition4waitEP6QMutexm");
    __tsan_release(lockedMutex);
    const bool woken = wait(this, lockedMutex, time);
    __tsan_acquire(lockedMutex);
    return woken;
}

bool QWaitCondition::wait(QMutex *lockedMutex, QDeadlineTimer deadline)
{
    static const auto wait = original<bool(QWaitCondition *, QMutex *, QDeadlineTimer)>(
        "_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
    __tsan_release(lockedMutex);
    const bool woken = wait(this, lockedMutex, deadline);
    __tsan_acquire(lockedMutex);
    return woken;
}
