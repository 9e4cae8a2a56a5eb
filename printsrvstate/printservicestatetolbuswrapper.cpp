// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printservicestatetolbuswrapper.h"

#include "statelogging.h"

#include <QDebug>
#include <QJsonDocument>

using namespace printsrv;
using tolbus::ClientState;

namespace {

ClientState::EStateType typeOf(const PrintServiceState &state)
{
    if (state.serviceState() == PrintServiceState::ServiceInvalid) {
        return ClientState::INVALID;
    }
    if (state.serviceState() > PrintServiceState::ServiceTesting) {
        return ClientState::CRITICAL;
    }
    switch (state.deviceState()) {
    case PrintServiceState::DeviceReady:
    case PrintServiceState::DeviceBusy:
        return ClientState::NORMAL;
    case PrintServiceState::DeviceNeedsAttention:
        return ClientState::WARNING;
    case PrintServiceState::DeviceCritical:
        return ClientState::CRITICAL;
    case PrintServiceState::DeviceFatal:
        return ClientState::FATAL;
    case PrintServiceState::DeviceInvalid:
        break;
    }
    return ClientState::INVALID;
}

QString nameOf(ClientState::EStateType type)
{
    switch (type) {
    case ClientState::INVALID:
        return QStringLiteral("INVALID");
    case ClientState::NORMAL:
        return QStringLiteral("NORMAL");
    case ClientState::WARNING:
        return QStringLiteral("WARNING");
    case ClientState::CRITICAL:
        return QStringLiteral("CRITICAL");
    case ClientState::FATAL:
        return QStringLiteral("FATAL");
    }
    return {};
}

PrintServiceState resetState(const PrintServiceState &former)
{
    PrintServiceState state;
    state.setTapeAvailable(former.tapeAvailable());
    return state;
}

} // namespace

PrintServiceStateTolbusWrapper::PrintServiceStateTolbusWrapper(const PrintServiceState &state)
    : m_state(state)
{
}

PrintServiceStateTolbusWrapper::PrintServiceStateTolbusWrapper(const ClientState &clientState)
{
    setClientState(clientState);
}

ClientState::EStateType PrintServiceStateTolbusWrapper::stateType() const
{
    return m_stateType;
}

QString PrintServiceStateTolbusWrapper::stateDescription() const
{
    return m_stateDescription;
}

QDateTime PrintServiceStateTolbusWrapper::stateDt() const
{
    return m_stateDt;
}

PrintServiceState PrintServiceStateTolbusWrapper::state() const
{
    return m_state;
}

ClientState PrintServiceStateTolbusWrapper::toClientState() const
{
    const QByteArray json = QJsonDocument::fromVariant(m_state.toMap()).toJson(QJsonDocument::Compact);
    ClientState clientState;
    clientState.setDt(QDateTime::currentDateTime());
    clientState.setStateType(typeOf(m_state));
    clientState.setState(QString::fromUtf8(json));
    return clientState;
}

bool PrintServiceStateTolbusWrapper::setClientState(const ClientState &clientState)
{
    QJsonParseError error{};
    const QJsonDocument json = QJsonDocument::fromJson(clientState.state().toUtf8(), &error);
    if (error.error != QJsonParseError::NoError) {
        m_stateType = ClientState::INVALID;
        m_stateDt = QDateTime();
        m_state = resetState(m_state);
        qCWarning(STATE) << "JSON PARSING ERROR: " << error.errorString() << clientState.state();
        return false;
    }
    m_stateType = clientState.stateType();
    m_stateDescription = clientState.description();
    m_stateDt = clientState.dt();
    m_state.setMap(json.toVariant().toMap());
    return clientState.isValid();
}

bool PrintServiceStateTolbusWrapper::isValid() const
{
    return m_stateType != ClientState::INVALID && m_stateDt.isValid()
        && m_state.serviceState() != PrintServiceState::ServiceInvalid
        && m_state.deviceState() != PrintServiceState::DeviceInvalid;
}

bool PrintServiceStateTolbusWrapper::isWorkable() const
{
    const auto service = m_state.serviceState();
    return isValid() && service >= PrintServiceState::ServiceReady && service <= PrintServiceState::ServiceTesting
        && m_state.deviceState() <= PrintServiceState::DeviceNeedsAttention;
}

QVariantMap PrintServiceStateTolbusWrapper::toMap() const
{
    return {{QStringLiteral("stateType"), static_cast<int>(m_stateType)},
            {QStringLiteral("stateDt"), m_stateDt.toTimeSpec(Qt::UTC).toString(Qt::ISODate)},
            {QStringLiteral("stateDescription"), nameOf(m_stateType)},
            {QStringLiteral("serviceState"), static_cast<int>(m_state.serviceState())},
            {QStringLiteral("deviceState"), static_cast<int>(m_state.deviceState())},
            {QStringLiteral("deviceErrorCode"), m_state.deviceErrorCode()},
            {QStringLiteral("deviceNativeCode"), m_state.deviceNativeCode()},
            {QStringLiteral("deviceErrorMsg"), m_state.deviceErrorMsg()},
            {QStringLiteral("tapeAvailablle"), m_state.tapeAvailable()}};
}

bool PrintServiceStateTolbusWrapper::operator==(const PrintServiceStateTolbusWrapper &other) const
{
    PrintServiceState state = m_state; // its comparison is not const
    return m_stateType == other.m_stateType && m_stateDescription == other.m_stateDescription
        && m_stateDt == other.m_stateDt && state == other.m_state;
}

bool PrintServiceStateTolbusWrapper::operator!=(const PrintServiceStateTolbusWrapper &other) const
{
    return !(*this == other);
}

QDebug operator<<(QDebug debug, const PrintServiceStateTolbusWrapper &wrapper)
{
    const QDebugStateSaver saver(debug);
    debug << wrapper.toMap();
    return debug;
}
