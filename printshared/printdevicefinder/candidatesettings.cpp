// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "candidatesettings.h"

#include <algorithm>
#include <iterator>

namespace printsrv {

namespace {

using BaudRates = QVector<qint32>;
using FlowControls = QVector<QSerialPort::FlowControl>;

QVector<PortSettings> combinations(const BaudRates &baudRates, const FlowControls &flowControls)
{
    QVector<PortSettings> result;
    for (const qint32 baudRate : baudRates) {
        for (const auto parity : {QSerialPort::NoParity, QSerialPort::EvenParity, QSerialPort::OddParity}) {
            for (const QSerialPort::FlowControl flowControl : flowControls) {
                PortSettings settings;
                settings.setBaudRate(baudRate);
                settings.setParity(parity);
                settings.setFlowControl(flowControl);
                result.append(settings);
            }
        }
    }
    return result;
}

} // namespace

QVector<PortSettings> candidateSettings()
{
    return combinations({115200, 57600, 38400, 19200, 9600, 4800},
                        {QSerialPort::NoFlowControl, QSerialPort::HardwareControl, QSerialPort::SoftwareControl});
}

QVector<PortSettings> starSettings()
{
    return combinations({38400, 19200, 9600, 4800}, {QSerialPort::NoFlowControl, QSerialPort::HardwareControl});
}

QVector<PortSettings> notFasterThan(qint32 maximumBaudRate, const QVector<PortSettings> &settings)
{
    QVector<PortSettings> result;
    std::copy_if(settings.cbegin(), settings.cend(), std::back_inserter(result),
                 [maximumBaudRate](const PortSettings &entry) { return entry.baudRate() <= maximumBaudRate; });
    return result;
}

} // namespace printsrv
