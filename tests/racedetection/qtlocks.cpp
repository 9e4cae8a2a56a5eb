// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

// Tells ThreadSanitizer of the locks in Qt's own library, which Debian builds without it: a library for LD_PRELOAD that
// stands in front of their functions. It is not instrumented itself and refers weakly to the sanitizer, so that
// programs which a test starts can be loaded with it as well.

#include <QMutex>
#include <QSemaphore>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

#pragma weak __tsan_mutex_pre_lock
#pragma weak __tsan_mutex_post_lock
#pragma weak __tsan_mutex_pre_unlock
#pragma weak __tsan_mutex_post_unlock
#pragma weak __tsan_acquire
#pragma weak __tsan_release

namespace {

template<typename Function>
Function qtFunction(const char *symbol)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, symbol));
}

} // namespace

void QMutex::lock() QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto function = qtFunction<void (*)(QMutex *)>("_ZN6QMutex4lockEv");
    __tsan_mutex_pre_lock(this, 0);
    function(this);
    __tsan_mutex_post_lock(this, 0, 0);
}

bool QMutex::tryLock(int timeout) QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto function = qtFunction<bool (*)(QMutex *, int)>("_ZN6QMutex7tryLockEi");
    __tsan_mutex_pre_lock(this, __tsan_mutex_try_lock);
    const bool isLocked = function(this, timeout);
    __tsan_mutex_post_lock(this, __tsan_mutex_try_lock | (isLocked ? 0 : __tsan_mutex_try_lock_failed), 0);
    return isLocked;
}

void QMutex::unlock() noexcept
{
    static const auto function = qtFunction<void (*)(QMutex *)>("_ZN6QMutex6unlockEv");
    __tsan_mutex_pre_unlock(this, 0);
    function(this);
    __tsan_mutex_post_unlock(this, 0);
}

void QSemaphore::acquire(int n)
{
    static const auto function = qtFunction<void (*)(QSemaphore *, int)>("_ZN10QSemaphore7acquireEi");
    function(this, n);
    __tsan_acquire(this);
}

bool QSemaphore::tryAcquire(int n)
{
    static const auto function = qtFunction<bool (*)(QSemaphore *, int)>("_ZN10QSemaphore10tryAcquireEi");
    const bool isAcquired = function(this, n);
    if (isAcquired) {
        __tsan_acquire(this);
    }
    return isAcquired;
}

void QSemaphore::release(int n)
{
    static const auto function = qtFunction<void (*)(QSemaphore *, int)>("_ZN10QSemaphore7releaseEi");
    __tsan_release(this);
    function(this, n);
}
