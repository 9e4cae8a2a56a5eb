// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "checksumprogram.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace printsrv {

namespace {

constexpr int LongestLine = 16384; // four times the longest path
constexpr char Program[] = "sha1sum";
constexpr char NullDevice[] = "/dev/null";

// How the program is started: its folder, its three streams, and the signals as programs expect them.
class StartPlan
{
public:
    StartPlan(const QByteArray &folder, int output)
    {
        sigset_t set;
        sigemptyset(&set);
        posix_spawn_file_actions_init(&m_files);
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setsigmask(&m_attributes, &set);
        sigaddset(&set, SIGPIPE);
        posix_spawnattr_setsigdefault(&m_attributes, &set);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        // The output first: where the standard streams are closed it has one of their numbers.
        m_isGood = posix_spawn_file_actions_adddup2(&m_files, output, STDOUT_FILENO) == 0
            && posix_spawn_file_actions_addopen(&m_files, STDIN_FILENO, NullDevice, O_RDONLY, 0) == 0
            && posix_spawn_file_actions_addopen(&m_files, STDERR_FILENO, NullDevice, O_WRONLY, 0) == 0
            && posix_spawn_file_actions_addchdir_np(&m_files, folder.constData()) == 0;
    }

    ~StartPlan()
    {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_files);
    }

    Q_DISABLE_COPY(StartPlan)

    // The process, 0 when it cannot be started. Not by QProcess: when the system has no more processes it takes the
    // error's number for the process and signals that, which as root kills every process of the machine.
    pid_t start(QByteArray path) const
    {
        QByteArray program = Program;
        char *const arguments[] = {program.data(), path.data(), nullptr};
        pid_t process = 0;
        return m_isGood && posix_spawnp(&process, Program, &m_files, &m_attributes, arguments, environ) == 0 ? process
                                                                                                             : 0;
    }

private:
    posix_spawn_file_actions_t m_files;
    posix_spawnattr_t m_attributes;
    bool m_isGood;
};

bool waitForOutput(int descriptor, const QDeadlineTimer &deadline)
{
    pollfd waited{descriptor, POLLIN, 0};
    int count = -1;
    do {
        count = ::poll(&waited, 1, int(deadline.remainingTime()));
    } while (count < 0 && errno == EINTR);
    return count > 0;
}

QByteArray readOutput(int descriptor, const QDeadlineTimer &deadline)
{
    QByteArray output(LongestLine, 0);
    int size = 0;
    while (size < LongestLine && waitForOutput(descriptor, deadline)) {
        const ssize_t count = ::read(descriptor, output.data() + size, size_t(LongestLine - size));
        if (count == 0 || (count < 0 && errno != EINTR)) {
            break;
        }
        size += int(qMax(count, ssize_t(0)));
    }
    return output.left(size);
}

void end(pid_t process)
{
    ::kill(process, SIGKILL);
    while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) { }
}

} // namespace

QByteArray runChecksumProgram(const QString &path, int timeoutMs)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return QByteArray();
    }
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const pid_t process = StartPlan(folder, ends[1]).start(QFile::encodeName(path));
    ::close(ends[1]);
    QByteArray output;
    if (process > 0) {
        output = readOutput(ends[0], QDeadlineTimer(timeoutMs));
        end(process);
    }
    ::close(ends[0]);
    return output;
}

} // namespace printsrv
