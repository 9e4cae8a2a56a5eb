// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SEARCH_H
#define PRINTSRV_SEARCH_H

#include "verdict.h"
#include "wirelistener.h"

#include <printdevicefinder.h>

#include <QHash>
#include <QObject>
#include <QSet>

#include <memory>
#include <vector>

namespace printsrv {

/** When a search of several ports ends. */
enum class EExtent {
    FirstPrinter, /**< As soon as one port has a printer. */
    EveryPort, /**< When every port was searched to its end. */
};

/** One run of finders over the ports of a command, from start() or verify() to over(). */
class Search : public QObject
{
    Q_OBJECT

public:
    explicit Search(const WireListener &listener);

    void start(const QVector<PortFacts> &ports, EExtent extent);
    void verify(const PortFacts &port, const PrintDeviceInfo &device);

    /** Ends everything; over() follows. */
    void cancel();

    /** The verdicts, in the order of the ports, once over() came. */
    QVector<Verdict> verdicts() const;

Q_SIGNALS:
    void over();

private:
    PrintDeviceFinder *addFinder(const QString &portName = {});
    Verdict verdictOf(const PortFacts &port) const;

    const WireListener &m_listener;
    std::vector<std::unique_ptr<PrintDeviceFinder>> m_finders;
    QVector<PortFacts> m_ports;
    QHash<QString, PrintDeviceInfo> m_found;
    QSet<QString> m_ended; // ports whose own finder was not cancelled
    EExtent m_extent = EExtent::EveryPort;
    int m_running = 0;
    bool m_wasCancelled = false;
};

} // namespace printsrv

#endif
