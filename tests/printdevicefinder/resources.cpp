// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "resources.h"

#include <QDir>
#include <QFile>

#include <algorithm>

#include <malloc.h>
#include <unistd.h>
#if defined __SANITIZE_ADDRESS__ || defined __SANITIZE_THREAD__
// GCC comes without the header of its own sanitizer.
extern "C" size_t __sanitizer_get_current_allocated_bytes(); // NOLINT(bugprone-reserved-identifier)
#endif

namespace {

int entries(const char *folder)
{
    return int(
        QDir(QString::fromLatin1(folder)).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size());
}

QString lockFolder()
{
    return QStringLiteral("/var/lock");
}

/** A lock file tells in its first line who made it; one that a killed program left counts for nothing. */
bool isOurs(const QString &lockFile)
{
    QFile file(QDir(lockFolder()).filePath(lockFile));
    return file.open(QIODevice::ReadOnly) && file.readLine().trimmed().toLongLong() == getpid();
}

} // namespace

qint64 heapBytes()
{
#if defined __SANITIZE_ADDRESS__ || defined __SANITIZE_THREAD__
    return qint64(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 heap = mallinfo2();
    return qint64(heap.uordblks) + qint64(heap.hblkhd);
#endif
}

bool isLocked(const QString &portName)
{
    return isOurs(QStringLiteral("LCK..") + QString(portName).remove(QStringLiteral("/dev/")).replace(u'/', u'_'));
}

int lockFiles()
{
    const QStringList names = QDir(lockFolder()).entryList({QStringLiteral("LCK..*")}, QDir::Files);
    return int(std::count_if(names.cbegin(), names.cend(), isOurs));
}

QString inUse()
{
    return QStringLiteral("%1 threads, %2 descriptors, %3 lock files")
        .arg(entries("/proc/self/task"))
        .arg(entries("/proc/self/fd"))
        .arg(lockFiles());
}
