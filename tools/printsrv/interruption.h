// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_INTERRUPTION_H
#define PRINTSRV_INTERRUPTION_H

#include <QObject>
#include <QSocketNotifier>

#include <csignal>

namespace printsrv {

/** Turns Ctrl-C, a termination and a hang-up into a signal of the event loop while it exists. */
class Interruption : public QObject
{
    Q_OBJECT

public:
    Interruption();
    ~Interruption() override;

Q_SIGNALS:
    void interrupted();

private:
    sigset_t m_blockedBefore;
    int m_descriptor;
    QSocketNotifier m_notifier;
};

} // namespace printsrv

#endif
