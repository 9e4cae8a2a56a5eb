// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printservicestate.h"

#include <QDebug>

namespace {

const auto ServiceStateKey = QLatin1String("serviceState");
const auto DeviceStateKey = QLatin1String("deviceState");
const auto ErrorCodeKey = QLatin1String("deviceErrorCode");
const auto NativeCodeKey = QLatin1String("deviceNativeCode");
const auto ErrorMessageKey = QLatin1String("deviceErrorMsg");
const auto TapeKey = QLatin1String("tapeAvailable");

// Hands the value under the key to the function, when there is one.
template<typename Take>
void takeValue(const QVariantMap &map, QLatin1String key, Take take)
{
    const auto found = map.constFind(key);
    if (found != map.constEnd()) {
        take(*found);
    }
}

} // namespace

PrintServiceState::PrintServiceState(const QVariantMap &map)
{
    setMap(map);
}

PrintServiceState::EServiceState PrintServiceState::serviceState() const
{
    return m_serviceState;
}

void PrintServiceState::setServiceState(EServiceState serviceState)
{
    m_serviceState = serviceState;
}

PrintServiceState::EDeviceState PrintServiceState::deviceState() const
{
    return m_deviceState;
}

void PrintServiceState::setDeviceState(EDeviceState deviceState)
{
    m_deviceState = deviceState;
}

unsigned int PrintServiceState::deviceErrorCode() const
{
    return m_deviceErrorCode;
}

void PrintServiceState::setDeviceErrorCode(unsigned int code)
{
    m_deviceErrorCode = code;
}

unsigned int PrintServiceState::deviceNativeCode() const
{
    return m_deviceNativeCode;
}

void PrintServiceState::setDeviceNativeCode(unsigned int code)
{
    m_deviceNativeCode = code;
}

QString PrintServiceState::deviceErrorMsg() const
{
    return m_deviceErrorMsg;
}

void PrintServiceState::setDeviceErorMsg(const QString &message)
{
    m_deviceErrorMsg = message;
}

bool PrintServiceState::tapeAvailable() const
{
    return m_tapeAvailable;
}

void PrintServiceState::setTapeAvailable(bool isAvailable)
{
    m_tapeAvailable = isAvailable;
}

bool PrintServiceState::operator==(const PrintServiceState &other)
{
    return m_serviceState == other.m_serviceState && m_deviceState == other.m_deviceState
        && m_deviceErrorCode == other.m_deviceErrorCode && m_deviceNativeCode == other.m_deviceNativeCode
        && m_deviceErrorMsg == other.m_deviceErrorMsg && m_tapeAvailable == other.m_tapeAvailable;
}

bool PrintServiceState::operator!=(const PrintServiceState &other)
{
    return !(*this == other);
}

void PrintServiceState::setMap(const QVariantMap &map)
{
    const auto toState = [](const QVariant &value) {
        return static_cast<quint16>(value.toUInt());
    };
    takeValue(map, ServiceStateKey, [&](const QVariant &value) { m_serviceState = EServiceState(toState(value)); });
    takeValue(map, DeviceStateKey, [&](const QVariant &value) { m_deviceState = EDeviceState(toState(value)); });
    takeValue(map, ErrorCodeKey, [this](const QVariant &value) { m_deviceErrorCode = value.toUInt(); });
    takeValue(map, NativeCodeKey, [this](const QVariant &value) { m_deviceNativeCode = value.toUInt(); });
    takeValue(map, ErrorMessageKey, [this](const QVariant &value) { m_deviceErrorMsg = value.toString(); });
    takeValue(map, TapeKey, [this](const QVariant &value) { m_tapeAvailable = value.toBool(); });
}

QVariantMap PrintServiceState::toMap() const
{
    return {{ServiceStateKey, static_cast<int>(m_serviceState)},
            {DeviceStateKey, static_cast<int>(m_deviceState)},
            {ErrorCodeKey, static_cast<qint64>(m_deviceErrorCode)},
            {NativeCodeKey, static_cast<qint64>(m_deviceNativeCode)},
            {ErrorMessageKey, m_deviceErrorMsg},
            {TapeKey, m_tapeAvailable}};
}

QDebug operator<<(QDebug debug, const PrintServiceState &state)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "PrintServiceState(service " << state.serviceState() << ", device " << state.deviceState()
                    << ", error " << state.deviceErrorCode() << ", native " << state.deviceNativeCode() << ", "
                    << state.deviceErrorMsg() << ", tape " << state.tapeAvailable() << ')';
    return debug;
}
