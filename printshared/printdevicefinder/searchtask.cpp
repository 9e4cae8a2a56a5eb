// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "searchtask.h"

#include "printershelper.h"
#include "wiretrace.h"

#include <QDeadlineTimer>
#include <QThread>

#include <exception>

#include <sys/ioctl.h>

namespace printsrv {

namespace {

constexpr unsigned int TextPrinter = 1;
constexpr std::chrono::seconds LongestDrain{2};
constexpr unsigned long DrainSliceMs = 5;

PrintDeviceInfo deviceAt(const QString &portName)
{
    PortSettings settings;
    settings.setPortName(portName);
    PrintDeviceInfo device;
    device.setSettings(settings);
    return device;
}

bool hasUnsentBytes(const QSerialPort &port)
{
    int count = 0;
    return ioctl(port.handle(), TIOCOUTQ, &count) == 0 && count > 0;
}

/**
 * Closes the port without waiting for a device that holds its line back: closing sends what the system still has, for
 * up to half a minute. A found printer gets the time that the closing command needs on a slow line.
 */
void closePort(QSerialPort &port, bool isFound, const StopFlag &stopFlag)
{
    if (!port.isOpen()) {
        return;
    }
    const QDeadlineTimer deadline(isFound ? LongestDrain : std::chrono::seconds(0));
    while (!*stopFlag && hasUnsentBytes(port) && !deadline.hasExpired()) {
        QThread::msleep(DrainSliceMs);
    }
    if (!isFound || hasUnsentBytes(port)) {
        port.clear();
    }
    port.close();
    WireTrace(port.portName()).port("closed");
}

/** Searches or verifies; @p device holds the type and, for a verification, the id and the settings. */
PrintDeviceInfo examine(const PrintDeviceInfo &device, const StopFlag &stopFlag)
{
    const QString portName = device.settings().portName();
    PrintDeviceInfo result = deviceAt(portName);
    if (*stopFlag) {
        return result;
    }
    const auto port = QSharedPointer<QSerialPort>::create(portName);
    const WireTrace trace(port->portName());
    if (!port->open(QIODevice::ReadWrite)) {
        trace.port("refused", port->errorString());
        return result;
    }
    trace.port("opened");
    PrintersHelper helper(port);
    helper.setStopFlag(stopFlag);
    QString model = device.deviceId();
    PortSettings settings = device.settings();
    const bool isFound = !*stopFlag && helper.scan(model, settings);
    closePort(*port, isFound, stopFlag);
    settings.setPortName(portName);
    result.setSettings(settings);
    result.setDeviceType(isFound ? device.deviceType() : 0);
    result.setDeviceId(isFound ? model : QString());
    return result;
}

} // namespace

PrintDeviceInfo searchPort(const QString &portName, const StopFlag &stopFlag) noexcept
{
    PrintDeviceInfo anyPrinter = deviceAt(portName);
    anyPrinter.setDeviceType(TextPrinter);
    return verifyDevices({anyPrinter}, stopFlag);
}

PrintDeviceInfo verifyDevices(const QVector<PrintDeviceInfo> &devices, const StopFlag &stopFlag) noexcept
{
    PrintDeviceInfo result;
    for (const PrintDeviceInfo &device : devices) {
        try {
            result = examine(device, stopFlag);
        } catch (const std::exception &error) {
            qCCritical(SEARCH_PRINTERS) << "The search on" << device.settings().portName() << "failed:" << error.what();
            result = deviceAt(device.settings().portName());
        }
        if (result.isValid() || *stopFlag) {
            break;
        }
    }
    return result;
}

} // namespace printsrv
