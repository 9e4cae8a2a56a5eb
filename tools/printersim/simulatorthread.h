// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTERSIM_SIMULATORTHREAD_H
#define PRINTERSIM_SIMULATORTHREAD_H

#include "simulatedprinter.h"

#include <QThread>

#include <memory>

namespace printersim {

/**
 * Plays any number of printers in a thread of its own, for programs whose main thread is busy searching for them.
 *
 * All operations are for the thread that made the object; the destructor switches every printer off.
 */
class SimulatorThread
{
public:
    SimulatorThread();
    ~SimulatorThread();
    SimulatorThread(const SimulatorThread &) = delete;
    SimulatorThread &operator=(const SimulatorThread &) = delete;

    /** Switches a printer on and returns it, owned by this object; null when the system has no pseudo-terminal left. */
    SimulatedPrinter *add(const Personality &personality, const Misbehaviour &misbehaviour = {});

    /** Pulls the plug of @p printer, in the printer's thread, and waits until that is done. */
    void unplug(SimulatedPrinter *printer);

private:
    QThread m_thread;
    QObject *m_context = nullptr;
};

} // namespace printersim

#endif
