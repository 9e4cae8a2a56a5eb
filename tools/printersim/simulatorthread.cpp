// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "simulatorthread.h"

namespace printersim {

SimulatorThread::SimulatorThread()
    : m_context(new QObject)
{
    m_context->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, m_context, &QObject::deleteLater);
    m_thread.start();
}

SimulatorThread::~SimulatorThread()
{
    m_thread.quit();
    m_thread.wait();
}

SimulatedPrinter *SimulatorThread::add(const Personality &personality, const Misbehaviour &misbehaviour)
{
    SimulatedPrinter *printer = nullptr;
    QMetaObject::invokeMethod(
        m_context,
        [&] {
            auto candidate = std::make_unique<SimulatedPrinter>(personality, misbehaviour, m_context);
            printer = candidate->open() ? candidate.release() : nullptr;
        },
        Qt::BlockingQueuedConnection);
    return printer;
}

void SimulatorThread::unplug(SimulatedPrinter *printer)
{
    QMetaObject::invokeMethod(
        m_context, [printer] { printer->unplug(); }, Qt::BlockingQueuedConnection);
}

} // namespace printersim
