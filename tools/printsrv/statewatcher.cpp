// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "statewatcher.h"

#include "outputwriter.h"
#include "report.h"
#include "stateobject.h"
#include "statetext.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>

namespace printsrv {

StateWatcher::StateWatcher(const QDBusConnection &bus, const QString &service, int count)
    : m_bus(bus)
    , m_service(service)
    , m_remaining(count)
{
}

ExitCode StateWatcher::exitCode() const
{
    return m_exitCode;
}

void StateWatcher::start()
{
    m_bus.connect(m_service, statebus::ObjectPath, statebus::InterfaceName, QStringLiteral("Changed"), this,
                  SLOT(show(int, QString, QString)));
    auto *watcher = new QDBusServiceWatcher(m_service, m_bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this,
            [] { complain(QStringLiteral("nobody offers the state any more; waiting")); });
    ask();
}

// A state that is offered later is signalled, so that no answer is no failure.
void StateWatcher::ask()
{
    const QDBusMessage question = QDBusMessage::createMethodCall(m_service, statebus::ObjectPath,
                                                                 statebus::InterfaceName, QStringLiteral("State"));
    auto *call = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, &StateWatcher::showAnswer);
}

void StateWatcher::showAnswer(QDBusPendingCallWatcher *call)
{
    const QDBusPendingReply<int, QString, QString> reply = *call;
    call->deleteLater();
    if (reply.isError()) {
        complain(QStringLiteral("nobody offers the state yet; waiting"));
    } else {
        show(reply.argumentAt<0>(), reply.argumentAt<1>(), reply.argumentAt<2>());
    }
}

void StateWatcher::show(int type, const QString &text, const QString &time)
{
    const QString name = typeName(static_cast<tolbus::ClientState::EStateType>(type));
    const QString line = QStringLiteral("%1 %2 %3\n").arg(time, name, text);
    if (line == m_lastLine) { // signalled while it was asked for
        return;
    }
    m_lastLine = line;
    const EWriteResult result = writeStandardOutput(line.toUtf8());
    m_exitCode = result == EWriteResult::Failed ? ExitWrongInput : m_exitCode;
    const bool isEnough = m_remaining > 0 && --m_remaining == 0;
    if (isEnough || result != EWriteResult::Written) {
        finish();
    }
}

void StateWatcher::finish()
{
    disconnect();
    m_bus.disconnect(m_service, statebus::ObjectPath, statebus::InterfaceName, QStringLiteral("Changed"), this,
                     SLOT(show(int, QString, QString)));
    QCoreApplication::quit();
}

} // namespace printsrv
