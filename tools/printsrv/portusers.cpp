// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "portusers.h"

#include "portfacts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include <unistd.h>

namespace printsrv {

namespace {

QString processName(qint64 pid)
{
    QFile file(QStringLiteral("/proc/%1/comm").arg(pid));
    return file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll()).trimmed() : QString();
}

bool hasOpen(const QString &descriptorFolder, quint64 number)
{
    const auto entries = QDir(descriptorFolder).entryInfoList(QDir::System | QDir::Files | QDir::NoDotAndDotDot);
    return std::any_of(entries.cbegin(), entries.cend(), [&](const QFileInfo &entry) {
        return entry.symLinkTarget().startsWith(QLatin1String("/dev/")) && deviceNumber(entry.filePath()) == number;
    });
}

QVector<qint64> holders(quint64 number)
{
    QVector<qint64> pids;
    const QStringList names = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        bool isProcess = false;
        const qint64 pid = name.toLongLong(&isProcess);
        if (isProcess && pid != getpid() && hasOpen(QStringLiteral("/proc/%1/fd").arg(pid), number)) {
            pids.append(pid);
        }
    }
    return pids;
}

/** The process that the port's lock file names, by the old convention of serial programs; 0 for none that lives. */
qint64 locker(QString location)
{
    const QString name = location.remove(QLatin1String("/dev/")).replace(QLatin1Char('/'), QLatin1Char('_'));
    QFile file(QStringLiteral("/var/lock/LCK..%1").arg(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const qint64 pid = file.readLine(32).trimmed().toLongLong();
    return pid != getpid() && !processName(pid).isEmpty() ? pid : 0;
}

} // namespace

QStringList portUsers(const QString &portName, quint64 deviceNumber)
{
    QVector<qint64> pids = deviceNumber == 0 ? QVector<qint64>() : holders(deviceNumber);
    const QString location = portLocation(portName);
    // A link and what it points to are locked each under its own name.
    for (const QString &path : {location, QFileInfo(location).canonicalFilePath()}) {
        const qint64 lockingPid = locker(path);
        if (lockingPid != 0 && !pids.contains(lockingPid)) {
            pids.append(lockingPid);
        }
    }
    QStringList users;
    for (const qint64 pid : qAsConst(pids)) {
        users.append(QStringLiteral("%1 (pid %2)").arg(processName(pid)).arg(pid));
    }
    return users;
}

} // namespace printsrv
