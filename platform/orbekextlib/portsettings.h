// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef ORBEKEXTLIB_PORTSETTINGS_H
#define ORBEKEXTLIB_PORTSETTINGS_H

#include <QMetaType>
#include <QSerialPort>
#include <QString>

/**
 * The serial parameters of one port: its name, baud rate, data bits, parity, stop bits and flow control.
 *
 * A plain value in the types of QSerialPort; nothing is checked when it is set. Reentrant.
 */
class Q_DECL_EXPORT PortSettings
{
public:
    /** Port name as given by the caller, "ttyS0" or "/dev/ttyS0"; empty by default. */
    QString portName() const;
    void setPortName(const QString &portName);

    /** Speed of both directions in baud; 9600 by default. */
    qint32 baudRate() const;
    void setBaudRate(qint32 baudRate);

    /** Eight data bits by default. */
    QSerialPort::DataBits dataBits() const;
    void setDataBits(QSerialPort::DataBits dataBits);

    /** No parity by default. */
    QSerialPort::Parity parity() const;
    void setParity(QSerialPort::Parity parity);

    /** One stop bit by default. */
    QSerialPort::StopBits stopBits() const;
    void setStopBits(QSerialPort::StopBits stopBits);

    /** No flow control by default. */
    QSerialPort::FlowControl flowControl() const;
    void setFlowControl(QSerialPort::FlowControl flowControl);

    /** True when all six parameters, the port name included, are equal. */
    bool operator==(const PortSettings &other) const;
    bool operator!=(const PortSettings &other) const;

private:
    QString m_portName;
    qint32 m_baudRate = QSerialPort::Baud9600;
    QSerialPort::DataBits m_dataBits = QSerialPort::Data8;
    QSerialPort::Parity m_parity = QSerialPort::NoParity;
    QSerialPort::StopBits m_stopBits = QSerialPort::OneStop;
    QSerialPort::FlowControl m_flowControl = QSerialPort::NoFlowControl;
};

Q_DECLARE_METATYPE(PortSettings)

#endif
