// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PORTFACTS_H
#define PRINTSRV_PORTFACTS_H

#include <QSerialPortInfo>
#include <QString>
#include <QStringList>
#include <QVector>

namespace printsrv {

/** What this user may do with a port. */
enum class EAccess {
    Allowed,
    Denied, /**< The file's rights forbid reading or writing; its group may. */
    OwnerOnly, /**< They forbid it to its group, too, or that is root's. */
    Missing, /**< There is no such file. */
    NoPort, /**< What stands there is no serial port. */
};

/** What the system knows of one serial port. */
struct PortFacts
{
    /** As the user or the system named it. */
    QString name;
    /** The device file, "/dev/ttyS0". */
    QString location;
    /** The device's number, the same for each of its names; 0 for no device. */
    quint64 number = 0;
    /** Maker and product, as far as they are known; empty otherwise. */
    QString description;
    /** Kernel driver; empty when unknown. */
    QString driver;
    /** USB vendor and product as "04b8:0202"; empty for anything else. */
    QString usbId;
    /** "minicom (pid 812)" for each process that has the port open or locked. */
    QStringList users;
    EAccess access = EAccess::Allowed;
    /** User that the device file belongs to. */
    QString owner;
    /** Group that the device file belongs to. */
    QString group;
    /** What the port is known to be if it is no printer, "a modem"; empty otherwise. */
    QString otherDevice;
};

/** The ports that the system lists. */
QVector<PortFacts> systemPorts();

/** The facts of the port of this name, listed by the system or not. */
PortFacts portFacts(const QString &name);

/** The device file of a port name: "/dev/" in front of a name without a path. */
QString portLocation(const QString &name);

/** The number of the device behind a path, links followed; 0 when there is none. */
quint64 deviceNumber(const QString &path);

} // namespace printsrv

#endif
