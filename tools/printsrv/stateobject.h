// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_STATEOBJECT_H
#define PRINTSRV_STATEOBJECT_H

#include <clientstate.h>

#include <QObject>

namespace printsrv {

/** Names of the state on the bus. */
namespace statebus {

const QLatin1String ServiceName("org.printsrv.State");
const QLatin1String ObjectPath("/org/printsrv/State");
const QLatin1String InterfaceName("org.printsrv.ClientState1");

} // namespace statebus

/** The D-Bus object that offers the current client state. */
class StateObject : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.printsrv.ClientState1")
    // Over the bus Changed() tells of all three at once.
    /** Type of the state, -1 to 3. */
    Q_PROPERTY(int Type READ type) // clazy:exclude=qproperty-without-notify
    /** Text of the state, compact JSON. */
    Q_PROPERTY(QString Text READ text) // clazy:exclude=qproperty-without-notify
    /** Time of the state, ISO 8601 in UTC. */
    Q_PROPERTY(QString Time READ time) // clazy:exclude=qproperty-without-notify

public:
    using QObject::QObject;

    int type() const;
    QString text() const;
    QString time() const;

    /** Offers @p state from now on and signals it. */
    void setState(const tolbus::ClientState &state);

public Q_SLOTS:
    /** The three parts of one state, at once. */
    Q_SCRIPTABLE int State(QString &text, QString &time) const;

Q_SIGNALS:
    /** A new state is offered. */
    Q_SCRIPTABLE void Changed(int type, const QString &text, const QString &time);

private:
    tolbus::ClientState m_state;
};

} // namespace printsrv

#endif
