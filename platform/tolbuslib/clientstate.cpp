// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "clientstate.h"

namespace tolbus {

ClientState::EStateType ClientState::stateType() const
{
    return m_stateType;
}

void ClientState::setStateType(const EStateType &stateType)
{
    m_stateType = stateType;
}

QString ClientState::state() const
{
    return m_state;
}

void ClientState::setState(const QString &state)
{
    m_state = state;
}

QString ClientState::description() const
{
    return m_description;
}

void ClientState::setDescription(const QString &description)
{
    m_description = description;
}

QDateTime ClientState::dt() const
{
    return m_dt;
}

void ClientState::setDt(const QDateTime &dt)
{
    m_dt = dt;
}

bool ClientState::isValid() const
{
    return m_stateType != INVALID && m_dt.isValid();
}

bool ClientState::operator==(const ClientState &other) const
{
    return m_stateType == other.m_stateType && m_state == other.m_state && m_description == other.m_description
        && m_dt == other.m_dt;
}

bool ClientState::operator!=(const ClientState &other) const
{
    return !(*this == other);
}

} // namespace tolbus
