// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SETTINGSLOCKER_H
#define PRINTSRV_SETTINGSLOCKER_H

#include <QMutex>

namespace printsrv {

/**
 * Holds a mutex of the settings while it lives. Those mutexes are not recursive: a thread that took one twice would
 * wait for itself for ever, which a debug build stops by an assertion.
 */
class SettingsLocker
{
    Q_DISABLE_COPY(SettingsLocker)

public:
#ifdef QT_NO_DEBUG
    explicit SettingsLocker(QMutex &mutex)
        : m_locker(&mutex)
    {
    }

private:
#else
    explicit SettingsLocker(QMutex &mutex)
        : m_locker(notHeldHere(mutex))
    {
        innermost() = this;
    }

    ~SettingsLocker()
    {
        innermost() = m_outer;
    }

private:
    static QMutex *notHeldHere(QMutex &mutex)
    {
        for (const SettingsLocker *locker = innermost(); locker; locker = locker->m_outer) {
            Q_ASSERT_X(locker->m_locker.mutex() != &mutex, "SettingsLocker", "this thread holds the mutex already");
        }
        return &mutex;
    }

    /** The last one made of those that live in this thread. */
    static SettingsLocker *&innermost()
    {
        static thread_local SettingsLocker *locker = nullptr;
        return locker;
    }

    SettingsLocker *const m_outer = innermost();
#endif
    const QMutexLocker m_locker;
};

/** Reads @p stored, which @p mutex guards. */
template<typename Value>
Value lockedRead(QMutex &mutex, const Value &stored)
{
    const SettingsLocker locker(mutex);
    return stored;
}

/** Writes @p value into @p stored, which @p mutex guards. */
template<typename Value, typename NewValue>
void lockedWrite(QMutex &mutex, Value &stored, const NewValue &value)
{
    const SettingsLocker locker(mutex);
    stored = value;
}

} // namespace printsrv

#endif
