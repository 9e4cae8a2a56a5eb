// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_MOUNTEDFOLDER_H
#define PRINTSRV_MOUNTEDFOLDER_H

#include <QByteArray>
#include <QFile>
#include <QString>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sched.h>
#include <sys/mount.h>

/** What a test program returns that cannot do its work here, which ctest counts as skipped. */
constexpr int SkippedCode = 77;

/** Lets this process mount what no other one sees and what goes with it. False where that is not permitted. */
inline bool hasOwnMounts()
{
    const bool isApart = unshare(CLONE_NEWNS) == 0;
    // In a chroot the root is no place of mounting.
    return isApart && (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 || errno == EINVAL);
}

/** Tells why the program does nothing and returns its exit code. */
inline int skipped(const char *reason)
{
    std::printf("SKIPPED, NOTHING WAS TESTED: %s (%s)\n", reason, std::strerror(errno));
    return SkippedCode;
}

/** A small disk in memory, mounted while it lives. */
class MemoryDisk
{
public:
    MemoryDisk(const QString &folder, const char *options)
        : m_folder(QFile::encodeName(folder))
        , m_isMounted(mount("tmpfs", m_folder.constData(), "tmpfs", 0, options) == 0)
    {
    }

    ~MemoryDisk()
    {
        umount2(m_folder.constData(), MNT_DETACH);
    }

    Q_DISABLE_COPY(MemoryDisk)

    bool isMounted() const
    {
        return m_isMounted;
    }

private:
    QByteArray m_folder;
    bool m_isMounted;
};

#endif
