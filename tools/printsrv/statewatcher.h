// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_STATEWATCHER_H
#define PRINTSRV_STATEWATCHER_H

#include "subcommand.h"

#include <QDBusConnection>
#include <QObject>

QT_BEGIN_NAMESPACE
class QDBusPendingCallWatcher;
QT_END_NAMESPACE

namespace printsrv {

/** Writes a line for each state that is offered on a bus, and a note when nobody offers one any more. */
class StateWatcher : public QObject
{
    Q_OBJECT

public:
    /** @param count states after which the watcher has seen enough; 0 for no end */
    StateWatcher(const QDBusConnection &bus, const QString &service, int count);

    /** Writes the current state, if anybody offers one, and then each new one; ends the event loop when it is done. */
    void start();

    /** ExitWrongInput when standard output could not be written. */
    ExitCode exitCode() const;

private Q_SLOTS:
    void show(int type, const QString &text, const QString &time);

private:
    void ask();
    void showAnswer(QDBusPendingCallWatcher *call);
    void finish();

    QDBusConnection m_bus;
    QString m_service;
    int m_remaining;
    QString m_lastLine;
    ExitCode m_exitCode = ExitDone;
};

} // namespace printsrv

#endif
