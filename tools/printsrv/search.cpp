// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "search.h"

namespace printsrv {

Search::Search(const WireListener &listener)
    : m_listener(listener)
{
}

PrintDeviceFinder *Search::addFinder(const QString &portName)
{
    m_finders.push_back(std::make_unique<PrintDeviceFinder>());
    PrintDeviceFinder *finder = m_finders.back().get();
    ++m_running;
    connect(finder, &PrintDeviceFinder::deviceFinded, this,
            [this](const PrintDeviceInfo &device) { m_found.insert(device.settings().portName(), device); });
    // Queued: a result comes right after the end of its search.
    connect(
        finder, &PrintDeviceFinder::finished, this,
        [this, portName] {
            if (!m_wasCancelled) {
                m_ended.insert(portName);
            }
            if (--m_running == 0) {
                Q_EMIT over();
            }
        },
        Qt::QueuedConnection);
    return finder;
}

void Search::start(const QVector<PortFacts> &ports, EExtent extent)
{
    m_ports = ports;
    m_extent = extent;
    QStringList names;
    for (const PortFacts &port : ports) {
        names.append(port.name);
    }
    if (extent == EExtent::FirstPrinter) {
        addFinder()->start(names);
        return;
    }
    for (const QString &name : qAsConst(names)) {
        addFinder(name)->start({name});
    }
}

void Search::verify(const PortFacts &port, const PrintDeviceInfo &device)
{
    m_ports = {port};
    QList<PrintDeviceInfo> configs{device};
    addFinder()->test(configs);
}

void Search::cancel()
{
    m_wasCancelled = true;
    // Told to all first: each cancel() waits until its own finder's ports have heard it.
    for (const auto &finder : m_finders) {
        Q_EMIT finder->needCancel();
    }
    for (const auto &finder : m_finders) {
        finder->cancel();
    }
}

QVector<Verdict> Search::verdicts() const
{
    QVector<Verdict> result;
    for (const PortFacts &port : m_ports) {
        result.append(verdictOf(port));
    }
    return result;
}

Verdict Search::verdictOf(const PortFacts &port) const
{
    const bool wasOtherFound = m_extent == EExtent::FirstPrinter && !m_found.isEmpty();
    const bool wasEnded = wasOtherFound || (m_wasCancelled && !m_ended.contains(port.name));
    const ETurn turn = wasEnded ? ETurn::CutShort : ETurn::Over;
    return judge(port, m_listener.story(port.name), m_found.value(port.name), turn);
}

} // namespace printsrv
