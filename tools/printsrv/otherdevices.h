// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_OTHERDEVICES_H
#define PRINTSRV_OTHERDEVICES_H

#include <QHash>
#include <QSerialPortInfo>
#include <QString>

namespace printsrv {

/** What udev knows of a device, by property name. */
using UdevProperties = QHash<QString, QString>;

/** udev's properties of this device file, from its database below /run; empty when there is none. */
UdevProperties udevProperties(const QString &location);

/** What a port is known to be when it is certainly no receipt printer, "a modem"; empty otherwise. */
QString otherDevice(const QSerialPortInfo &info, const UdevProperties &properties);

} // namespace printsrv

#endif
