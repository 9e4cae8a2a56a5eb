// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PORTTEXT_H
#define PRINTSRV_PORTTEXT_H

#include "portfacts.h"

#include <portsettings.h>

#include <QJsonObject>

namespace printsrv {

/** Why this user may not use the port and what to do; empty when he may. */
QString accessText(const PortFacts &port);

/** "19200 baud, 8 data bits, no parity, one stop bit, no flow control". */
QString settingsText(const PortSettings &settings);

QJsonObject toJson(const PortFacts &port);
QJsonObject toJson(const PortSettings &settings);

/** Bytes as people read them, "1B 06 01"; of long ones the beginning. */
QString bytesText(const QByteArray &bytes);

/** One choice of a serial parameter, as the options and the recordings name it. */
template<typename Value>
struct NamedValue
{
    Value value;
    const char *name;
    /** In a sentence. */
    const char *text;
};

constexpr NamedValue<QSerialPort::Parity> Parities[] = {
    {QSerialPort::NoParity, "none", "no parity"},
    {QSerialPort::EvenParity, "even", "even parity"},
    {QSerialPort::OddParity, "odd", "odd parity"},
};

constexpr NamedValue<QSerialPort::FlowControl> FlowControls[] = {
    {QSerialPort::NoFlowControl, "none", "no flow control"},
    {QSerialPort::HardwareControl, "hardware", "hardware flow control"},
    {QSerialPort::SoftwareControl, "software", "software flow control"},
};

} // namespace printsrv

#endif
