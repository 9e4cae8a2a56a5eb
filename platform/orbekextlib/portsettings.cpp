// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "portsettings.h"

QString PortSettings::portName() const
{
    return m_portName;
}

void PortSettings::setPortName(const QString &portName)
{
    m_portName = portName;
}

qint32 PortSettings::baudRate() const
{
    return m_baudRate;
}

void PortSettings::setBaudRate(qint32 baudRate)
{
    m_baudRate = baudRate;
}

QSerialPort::DataBits PortSettings::dataBits() const
{
    return m_dataBits;
}

void PortSettings::setDataBits(QSerialPort::DataBits dataBits)
{
    m_dataBits = dataBits;
}

QSerialPort::Parity PortSettings::parity() const
{
    return m_parity;
}

void PortSettings::setParity(QSerialPort::Parity parity)
{
    m_parity = parity;
}

QSerialPort::StopBits PortSettings::stopBits() const
{
    return m_stopBits;
}

void PortSettings::setStopBits(QSerialPort::StopBits stopBits)
{
    m_stopBits = stopBits;
}

QSerialPort::FlowControl PortSettings::flowControl() const
{
    return m_flowControl;
}

void PortSettings::setFlowControl(QSerialPort::FlowControl flowControl)
{
    m_flowControl = flowControl;
}

bool PortSettings::operator==(const PortSettings &other) const
{
    return m_portName == other.m_portName && m_baudRate == other.m_baudRate && m_dataBits == other.m_dataBits
        && m_parity == other.m_parity && m_stopBits == other.m_stopBits && m_flowControl == other.m_flowControl;
}

bool PortSettings::operator!=(const PortSettings &other) const
{
    return !(*this == other);
}
