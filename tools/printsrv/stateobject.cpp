// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "stateobject.h"

#include "statetext.h"

namespace printsrv {

int StateObject::type() const
{
    return m_state.stateType();
}

QString StateObject::text() const
{
    return m_state.state();
}

QString StateObject::time() const
{
    return timeText(m_state.dt());
}

void StateObject::setState(const tolbus::ClientState &state)
{
    m_state = state;
    Q_EMIT Changed(type(), text(), time());
}

int StateObject::State(QString &stateText, QString &stateTime) const
{
    stateText = text();
    stateTime = time();
    return type();
}

} // namespace printsrv
