// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "portfacts.h"

#include "otherdevices.h"
#include "portusers.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace printsrv {

namespace {

QString usbId(const QSerialPortInfo &info)
{
    if (!info.hasVendorIdentifier() || !info.hasProductIdentifier()) {
        return {};
    }
    return QStringLiteral("%1:%2")
        .arg(info.vendorIdentifier(), 4, 16, QLatin1Char('0'))
        .arg(info.productIdentifier(), 4, 16, QLatin1Char('0'));
}

QString description(const QSerialPortInfo &info)
{
    const QString product = info.description();
    const bool isNamed = product.startsWith(info.manufacturer());
    return isNamed ? product : QStringLiteral("%1 %2").arg(info.manufacturer(), product).trimmed();
}

/** The kernel's name of a device file, "ttyS0", also for a link to it. */
QString kernelName(const QString &location)
{
    const QFileInfo file(location);
    const bool isKnown = QFileInfo::exists(QStringLiteral("/sys/class/tty/") + file.fileName());
    return isKnown || !file.isSymLink() ? file.fileName() : QFileInfo(file.symLinkTarget()).fileName();
}

/** The driver of the hardware: newer kernels put a bus of the serial core's own between it and the port. */
QString driver(const QString &location)
{
    const QFileInfo port(QStringLiteral("/sys/class/tty/%1/device").arg(kernelName(location)));
    QString device = port.canonicalFilePath();
    while (QFile::symLinkTarget(device + QStringLiteral("/subsystem")).endsWith(QLatin1String("/serial-base"))) {
        device = QFileInfo(device).path();
    }
    return QFileInfo(QFile::symLinkTarget(device + QStringLiteral("/driver"))).fileName();
}

/** True when a terminal driver serves the device, or when the kernel does not tell. */
bool isTerminal(quint64 number)
{
    QFile drivers(QStringLiteral("/proc/tty/drivers"));
    if (!drivers.open(QIODevice::ReadOnly)) {
        return number != 0;
    }
    // "serial /dev/ttyS 4 64-95 serial": name, device, major number, minor numbers, kind.
    const QList<QByteArray> lines = drivers.readAll().split('\n');
    return number != 0 && std::any_of(lines.cbegin(), lines.cend(), [number](const QByteArray &line) {
               return line.simplified().split(' ').value(2).toUInt() == major(number);
           });
}

EAccess access(const QString &location, quint64 number)
{
    const QByteArray path = QFile::encodeName(location);
    struct stat status = {};
    if (stat(path.constData(), &status) != 0) {
        return EAccess::Missing;
    }
    if (!isTerminal(number)) {
        return EAccess::NoPort;
    }
    if (::access(path.constData(), R_OK | W_OK) == 0) {
        return EAccess::Allowed;
    }
    constexpr mode_t ForGroup = S_IRGRP | S_IWGRP;
    // Nobody should become a member of the group root for the sake of a printer.
    const bool isForGroup = (status.st_mode & ForGroup) == ForGroup && status.st_gid != 0;
    return isForGroup ? EAccess::Denied : EAccess::OwnerOnly;
}

PortFacts facts(const QString &name, const QSerialPortInfo &info)
{
    PortFacts result;
    result.name = name;
    result.location = portLocation(name);
    result.number = deviceNumber(result.location);
    result.description = description(info);
    result.driver = driver(result.location);
    result.usbId = usbId(info);
    result.access = access(result.location, result.number);
    result.users = result.access == EAccess::NoPort ? QStringList() : portUsers(name, result.number);
    result.owner = QFileInfo(result.location).owner();
    result.group = QFileInfo(result.location).group();
    result.otherDevice = otherDevice(info, udevProperties(result.location));
    return result;
}

} // namespace

QVector<PortFacts> systemPorts()
{
    QVector<PortFacts> result;
    const auto ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &info : ports) {
        result.append(facts(info.portName(), info));
    }
    return result;
}

PortFacts portFacts(const QString &name)
{
    return facts(name, QSerialPortInfo(kernelName(portLocation(name))));
}

QString portLocation(const QString &name)
{
    const bool isPath = name.startsWith(QLatin1Char('/')) || name.startsWith(QLatin1String("./"))
        || name.startsWith(QLatin1String("../"));
    return isPath ? name : QStringLiteral("/dev/") + name;
}

quint64 deviceNumber(const QString &path)
{
    struct stat status = {};
    const bool isDevice = stat(QFile::encodeName(path).constData(), &status) == 0 && S_ISCHR(status.st_mode);
    return isDevice ? status.st_rdev : 0;
}

} // namespace printsrv
