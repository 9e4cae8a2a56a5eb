// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SEARCHTASK_H
#define PRINTSRV_SEARCHTASK_H

#include "printdevicefinder.h"

namespace printsrv {

/** Shared by the finder, which raises it, and the tasks of one search, which look at it. */
using StopFlag = QSharedPointer<std::atomic_bool>;

/**
 * Searches one port, in the calling thread, which opens, uses and closes it.
 *
 * @return a device of type 1 with the model found; an invalid one with the settings tried last, or with nothing but the
 * port name when the port does not open. The port name is @p portName always. Nothing is thrown.
 */
PrintDeviceInfo searchPort(const QString &portName, const StopFlag &stopFlag) noexcept;

/** Verifies the devices, all of one port, in their order: the first one found, otherwise the result of the last one. */
PrintDeviceInfo verifyDevices(const QVector<PrintDeviceInfo> &devices, const StopFlag &stopFlag) noexcept;

} // namespace printsrv

#endif
