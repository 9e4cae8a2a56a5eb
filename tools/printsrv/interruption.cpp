// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "interruption.h"

#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace printsrv {

namespace {

sigset_t endingSignals()
{
    sigset_t set = {};
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGHUP);
    return set;
}

int openDescriptor(sigset_t *blockedBefore)
{
    // Blocked before any other thread begins, which inherits it; the descriptor alone gets them then.
    const sigset_t set = endingSignals();
    pthread_sigmask(SIG_BLOCK, &set, blockedBefore);
    return signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
}

} // namespace

Interruption::Interruption()
    : m_blockedBefore()
    , m_descriptor(openDescriptor(&m_blockedBefore))
    , m_notifier(m_descriptor, QSocketNotifier::Read)
{
    connect(&m_notifier, &QSocketNotifier::activated, this, [this] {
        signalfd_siginfo info = {};
        if (read(m_descriptor, &info, sizeof info) == sizeof info) {
            Q_EMIT interrupted();
        }
    });
}

Interruption::~Interruption()
{
    m_notifier.setEnabled(false);
    // Those that came meanwhile have had their effect: the report is still to be written.
    signalfd_siginfo info = {};
    while (read(m_descriptor, &info, sizeof info) > 0) { }
    close(m_descriptor);
    pthread_sigmask(SIG_SETMASK, &m_blockedBefore, nullptr);
}

} // namespace printsrv
