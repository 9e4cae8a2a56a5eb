// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "porttext.h"

#include <QJsonArray>

#include <algorithm>
#include <iterator>

namespace printsrv {

namespace {

constexpr int BytesShown = 16;

template<typename Value, std::size_t Count>
const NamedValue<Value> &named(const NamedValue<Value> (&values)[Count], Value value)
{
    const auto *found = std::find_if(std::begin(values), std::end(values),
                                     [value](const NamedValue<Value> &candidate) { return candidate.value == value; });
    return found == std::end(values) ? values[0] : *found;
}

QString accessName(EAccess access)
{
    switch (access) {
    case EAccess::Denied:
    case EAccess::OwnerOnly:
        return QStringLiteral("denied");
    case EAccess::Missing:
        return QStringLiteral("missing");
    case EAccess::NoPort:
        return QStringLiteral("no-port");
    default:
        return QStringLiteral("allowed");
    }
}

} // namespace

QString accessText(const PortFacts &port)
{
    switch (port.access) {
    case EAccess::Denied:
        return QStringLiteral("no permission: add the user to the group %1 and log in again").arg(port.group);
    case EAccess::OwnerOnly:
        return QStringLiteral("no permission: only %1 may use it; a udev rule can give it to the group dialout")
            .arg(port.owner);
    case EAccess::Missing:
        return QStringLiteral("there is no %1").arg(port.location);
    case EAccess::NoPort:
        return QStringLiteral("no serial port");
    default:
        return {};
    }
}

QString settingsText(const PortSettings &settings)
{
    return QStringLiteral("%1 baud, %2 data bits, %3, %4 stop bit%5, %6")
        .arg(settings.baudRate())
        .arg(int(settings.dataBits()))
        .arg(QLatin1String(named(Parities, settings.parity()).text))
        .arg(settings.stopBits() == QSerialPort::TwoStop ? QStringLiteral("two") : QStringLiteral("one"),
             settings.stopBits() == QSerialPort::TwoStop ? QStringLiteral("s") : QString(),
             QLatin1String(named(FlowControls, settings.flowControl()).text));
}

QJsonObject toJson(const PortFacts &port)
{
    return {{QStringLiteral("port"), port.name},
            {QStringLiteral("location"), port.location},
            {QStringLiteral("description"), port.description},
            {QStringLiteral("driver"), port.driver},
            {QStringLiteral("usbId"), port.usbId},
            {QStringLiteral("users"), QJsonArray::fromStringList(port.users)},
            {QStringLiteral("access"), accessName(port.access)},
            {QStringLiteral("group"), port.group},
            {QStringLiteral("otherDevice"), port.otherDevice}};
}

QJsonObject toJson(const PortSettings &settings)
{
    return {{QStringLiteral("baudRate"), settings.baudRate()},
            {QStringLiteral("dataBits"), int(settings.dataBits())},
            {QStringLiteral("parity"), QLatin1String(named(Parities, settings.parity()).name)},
            {QStringLiteral("stopBits"), int(settings.stopBits())},
            {QStringLiteral("flowControl"), QLatin1String(named(FlowControls, settings.flowControl()).name)}};
}

QString bytesText(const QByteArray &bytes)
{
    const QString text = QString::fromLatin1(bytes.left(BytesShown).toHex(' ').toUpper());
    return bytes.size() > BytesShown ? text + QStringLiteral(" ... (%1 bytes)").arg(bytes.size()) : text;
}

} // namespace printsrv
