// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PROBELINE_H
#define PRINTSRV_PROBELINE_H

#include "wiretrace.h"

#include <portsettings.h>

#include <QByteArray>
#include <QSerialPort>
#include <QString>

#include <atomic>
#include <chrono>

class PrintersHelper;

namespace printsrv {

/** What a line is made of; lent by the helper for one probe. */
struct ProbeContext
{
    PrintersHelper &helper;
    /** Null when the helper has no port. */
    QSerialPort *port;
    /** Null for a flag that is never raised. */
    const std::atomic_bool *stopFlag;
    /** The probe's name, which leads its log lines. */
    const char *probe;
};

/**
 * What a probe needs of the port: requests, answers and silence, each logged.
 *
 * Once the port is gone or the search stopped nothing is written any more, every answer is missing and nothing counts
 * as silence, so that a conversation needs no checks of its own.
 */
class ProbeLine
{
public:
    explicit ProbeLine(const ProbeContext &context);

    /** True once the stop flag was raised. */
    bool isStopped() const;

    /** True while the port is open and the search goes on. */
    bool isUsable() const;

    /** Applies the settings, discards both directions and logs the attempt; false when the line is not usable. */
    bool begin(const PortSettings &settings, WalkPosition position);

    /** Hands the thread's events out, all kinds. */
    void pumpEvents() const;

    void write(const QByteArray &request);
    /** Leaves the bytes to the next wait. */
    void writeWithoutFlush(const QByteArray &request);

    /** Exactly @p size bytes, waiting for the rest until the time has passed; empty when fewer came. */
    QByteArray readExactly(int size, std::chrono::milliseconds timeout);

    /** What is there of the first @p maximumSize bytes as soon as anything is; empty when nothing came. */
    QByteArray readSome(int maximumSize, std::chrono::milliseconds timeout);

    /** The first @p maximumSize bytes, until the line has been quiet for 50 ms or the time has passed. */
    QByteArray readWhole(int maximumSize, std::chrono::milliseconds timeout);

    /** write() and readExactly(). */
    QByteArray ask(const QByteArray &request, int size, std::chrono::milliseconds timeout);

    /** True when the whole time passed without a byte; what came instead is discarded. */
    bool keepsSilent(std::chrono::milliseconds timeout);

    /** Drops what has come and, with both directions, what has not been sent. */
    void discard(QSerialPort::Directions directions = QSerialPort::AllDirections);

    /**
     * Discards what a device still sends that has said anything since begin(), until it has been quiet for 50 ms or has
     * talked for half a second: its last words would else be taken for the answer to the next candidate's first
     * request. Returns at once when the line has been silent.
     */
    void awaitQuiet();

    /** The speed in use; 0 without a port. */
    qint32 baudRate() const;

    void log(const QString &text) const;

private:
    bool wait(std::chrono::milliseconds timeout);
    void logBytes(const char *what, const QByteArray &bytes) const;
    QByteArray noteAnswer(const QByteArray &answer, std::chrono::milliseconds timeout) const;

    ProbeContext m_context;
    WireTrace m_trace;
    bool m_hasHeard = false;
};

} // namespace printsrv

#endif
