// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PORTUSERS_H
#define PRINTSRV_PORTUSERS_H

#include <QStringList>

namespace printsrv {

/**
 * The other processes that have the device of this number open or hold the lock file of this port name, each as "name
 * (pid 812)". Processes of other users are seen by root only; the lock file tells of them all the same.
 */
QStringList portUsers(const QString &portName, quint64 deviceNumber);

} // namespace printsrv

#endif
