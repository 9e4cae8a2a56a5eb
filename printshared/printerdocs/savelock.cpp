// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "savelock.h"

#include "replacedfile.h"

#include <QDeadlineTimer>
#include <QThread>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace printsrv {

namespace {

constexpr unsigned long PauseMs = 5;
constexpr mode_t OwnerOnly = S_IRUSR | S_IWUSR; // a lock that others can take could keep every save waiting

} // namespace

SaveLock::SaveLock(const QString &path, int timeoutMs)
    : m_file(replacedfile::hiddenName(replacedfile::linkTarget(path), ".lock"))
{
    const QDeadlineTimer deadline(timeoutMs);
    EAttempt result = attempt();
    while ((result == EAttempt::Busy || result == EAttempt::Stale) && !deadline.hasExpired()) {
        QThread::msleep(PauseMs);
        result = attempt();
    }
    m_isHeld = result == EAttempt::Held;
    m_problem = result == EAttempt::Failed ? qt_error_string(errno) : QStringLiteral("which another saver keeps busy");
}

SaveLock::~SaveLock()
{
    close();
}

bool SaveLock::isHeld() const
{
    return m_isHeld;
}

bool SaveLock::isAfterKilledSaver() const
{
    return m_isAfterKilledSaver;
}

QString SaveLock::problem() const
{
    return m_problem;
}

void SaveLock::setComplete()
{
    if (m_isHeld) {
        ::unlink(m_file.c_str());
    }
}

SaveLock::EAttempt SaveLock::attempt()
{
    constexpr int Flags = O_RDWR | O_CLOEXEC | O_NOFOLLOW;
    m_descriptor = ::open(m_file.c_str(), Flags | O_CREAT | O_EXCL, OwnerOnly);
    m_isAfterKilledSaver = m_descriptor < 0 && errno == EEXIST;
    if (m_isAfterKilledSaver) {
        m_descriptor = ::open(m_file.c_str(), Flags);
    }
    if (m_descriptor < 0) {
        return m_isAfterKilledSaver && errno == ENOENT ? EAttempt::Stale : EAttempt::Failed;
    }
    const EAttempt result = lockOpenFile();
    if (result != EAttempt::Held) {
        close();
    }
    return result;
}

// A disk that knows no locks, as some over the network, is written without.
SaveLock::EAttempt SaveLock::lockOpenFile()
{
    if (::flock(m_descriptor, LOCK_EX | LOCK_NB) != 0 && (errno == EWOULDBLOCK || errno == EINTR)) {
        return EAttempt::Busy;
    }
    struct stat status = {};
    const bool isRemoved = ::fstat(m_descriptor, &status) == 0 && status.st_nlink == 0; // by the holder before us
    return isRemoved ? EAttempt::Stale : EAttempt::Held;
}

void SaveLock::close()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
}

} // namespace printsrv
