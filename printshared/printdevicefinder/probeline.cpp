// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "probeline.h"

#include "printershelper.h"

#include <logbinary.h>

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>

namespace printsrv {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds QuietGap{50};
constexpr milliseconds LongestChatter{500};
/** Bytes read, for the log, of what comes where silence is wanted. */
constexpr int LongestProtest = 5;

milliseconds timeLeft(milliseconds timeout, const QElapsedTimer &clock)
{
    return std::max(milliseconds(0), timeout - milliseconds(clock.elapsed()));
}

QString portName(const QSerialPort *port)
{
    return port == nullptr ? QString() : port->portName();
}

} // namespace

ProbeLine::ProbeLine(const ProbeContext &context)
    : m_context(context)
    , m_trace(portName(context.port), context.probe)
{
}

bool ProbeLine::isStopped() const
{
    return m_context.stopFlag != nullptr && *m_context.stopFlag;
}

bool ProbeLine::isUsable() const
{
    return !isStopped() && m_context.helper.portIsValid();
}

bool ProbeLine::begin(const PortSettings &settings, WalkPosition position)
{
    if (!m_context.helper.portIsValid()) {
        log(QStringLiteral("port is closed"));
    }
    if (!isUsable()) {
        return false;
    }
    m_trace.bytes("discard", m_context.port->readAll());
    m_trace.settings(settings, position);
    m_context.helper.setPortSettings(settings);
    m_context.port->clear();
    m_hasHeard = false;
    qCDebug(SEARCH_PRINTERS) << m_context.probe << "from" << m_context.helper.objectName() << "try"
                             << m_context.port->portName() << settings.baudRate();
    return true;
}

void ProbeLine::pumpEvents() const
{
    QCoreApplication::processEvents();
}

void ProbeLine::write(const QByteArray &request)
{
    writeWithoutFlush(request);
    if (isUsable()) {
        m_context.port->flush();
    }
}

void ProbeLine::writeWithoutFlush(const QByteArray &request)
{
    if (!isUsable()) {
        return;
    }
    m_context.port->write(request);
    logBytes("write:", request);
    m_trace.bytes("write", request);
}

QByteArray ProbeLine::readExactly(int size, milliseconds timeout)
{
    QElapsedTimer clock;
    clock.start();
    QByteArray answer;
    while (answer.size() < size && wait(timeLeft(timeout, clock))) {
        answer += m_context.port->read(size - answer.size());
    }
    const QByteArray noted = noteAnswer(answer, timeout);
    return noted.size() == size ? noted : QByteArray();
}

QByteArray ProbeLine::readSome(int maximumSize, milliseconds timeout)
{
    const QByteArray answer = wait(timeout) ? m_context.port->read(maximumSize) : QByteArray();
    return noteAnswer(answer, timeout);
}

QByteArray ProbeLine::readWhole(int maximumSize, milliseconds timeout)
{
    QElapsedTimer clock;
    clock.start();
    QByteArray answer;
    milliseconds patience = timeout;
    while (answer.size() < maximumSize && wait(patience)) {
        answer += m_context.port->read(maximumSize - answer.size());
        patience = std::min(QuietGap, timeLeft(timeout, clock));
    }
    return noteAnswer(answer, timeout);
}

QByteArray ProbeLine::ask(const QByteArray &request, int size, milliseconds timeout)
{
    write(request);
    return readExactly(size, timeout);
}

bool ProbeLine::keepsSilent(milliseconds timeout)
{
    const bool isSilent = readSome(LongestProtest, timeout).isEmpty();
    if (!isSilent) {
        discard(QSerialPort::Input);
    }
    return isSilent && isUsable();
}

void ProbeLine::discard(QSerialPort::Directions directions)
{
    if (!m_context.helper.portIsValid()) {
        return;
    }
    m_trace.bytes("discard", m_context.port->readAll());
    m_context.port->clear(directions);
}

void ProbeLine::awaitQuiet()
{
    if (!m_hasHeard) {
        return;
    }
    QElapsedTimer clock;
    clock.start();
    while (!clock.hasExpired(LongestChatter.count()) && wait(QuietGap)) {
        m_trace.bytes("discard", m_context.port->readAll());
    }
}

qint32 ProbeLine::baudRate() const
{
    return m_context.port == nullptr ? 0 : m_context.port->baudRate();
}

void ProbeLine::log(const QString &text) const
{
    qCDebug(SEARCH_PRINTERS) << m_context.probe << "from" << m_context.helper.objectName() << qUtf8Printable(text);
}

bool ProbeLine::wait(milliseconds timeout)
{
    const bool wasValid = m_context.helper.portIsValid();
    const bool hasInput = m_context.helper.waitForReadyRead(int(timeout.count()));
    if (wasValid && !m_context.helper.portIsValid()) {
        m_trace.port("lost");
    }
    m_hasHeard = m_hasHeard || hasInput;
    return hasInput && isUsable();
}

void ProbeLine::logBytes(const char *what, const QByteArray &bytes) const
{
    qCDebug(SEARCH_PRINTERS) << m_context.probe << "from" << m_context.helper.objectName() << what
                             << logbinary(bytes, "UTF-8");
}

QByteArray ProbeLine::noteAnswer(const QByteArray &answer, milliseconds timeout) const
{
    if (answer.isEmpty()) {
        m_trace.silence(int(timeout.count()));
        return {};
    }
    logBytes("read:", answer);
    m_trace.bytes("read", answer);
    return isUsable() ? answer : QByteArray();
}

} // namespace printsrv
