// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "simulatedprinter.h"

#include <QTimer>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace printersim {

namespace {

using namespace std::chrono_literals;

constexpr auto LateMargin = 100ms;
constexpr auto PieceGap = 20ms;
constexpr auto UnplugDelay = 50ms;
constexpr int NoiseBytes = 1024 * 1024;
constexpr int ReadChunk = 4096;

void makeRaw(int descriptor)
{
    termios line = {};
    if (tcgetattr(descriptor, &line) == 0) {
        cfmakeraw(&line);
        tcsetattr(descriptor, TCSANOW, &line);
    }
}

/** The same bytes with another first one, for every @p number another. */
QByteArray differing(QByteArray bytes, int number)
{
    if (!bytes.isEmpty()) {
        bytes[0] = char(bytes.at(0) + number);
    }
    return bytes;
}

QString slaveName(int master)
{
    char name[128] = {};
    return ptsname_r(master, name, sizeof name) == 0 ? QString::fromLocal8Bit(name) : QString();
}

} // namespace

SimulatedPrinter::SimulatedPrinter(const Personality &personality, const Misbehaviour &misbehaviour, QObject *parent)
    : QObject(parent)
    , m_personality(personality)
    , m_misbehaviour(misbehaviour)
    , m_random(misbehaviour.seed)
{
    m_clock.start();
}

SimulatedPrinter::~SimulatedPrinter()
{
    unplug();
    if (m_slave >= 0) {
        ::close(m_slave);
    }
}

bool SimulatedPrinter::open()
{
    m_master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0) {
        m_errorString = QStringLiteral("no pseudo-terminal: %1").arg(QString::fromLocal8Bit(strerror(errno)));
        return false;
    }
    m_portName = slaveName(m_master);
    // Held open, so that the line outlives its users and a hang-up means that the device is gone; and to the end, so
    // that the system gives its name to nobody else while somebody may still look for it.
    m_slave = ::open(m_portName.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    makeRaw(m_slave);
    m_readNotifier = new QSocketNotifier(m_master, QSocketNotifier::Read, this);
    m_writeNotifier = new QSocketNotifier(m_master, QSocketNotifier::Write, this);
    m_writeNotifier->setEnabled(false);
    connect(m_readNotifier, &QSocketNotifier::activated, this, [this] { readLine(); });
    connect(m_writeNotifier, &QSocketNotifier::activated, this, [this] { flushOutput(); });
    return true;
}

QString SimulatedPrinter::errorString() const
{
    return m_errorString;
}

QString SimulatedPrinter::portName() const
{
    return m_portName;
}

const Personality &SimulatedPrinter::personality() const
{
    return m_personality;
}

QVector<Exchange> SimulatedPrinter::exchanges() const
{
    QMutexLocker locker(&m_mutex);
    return m_exchanges;
}

QByteArray SimulatedPrinter::received() const
{
    QMutexLocker locker(&m_mutex);
    return m_received;
}

void SimulatedPrinter::unplug()
{
    if (m_master < 0) {
        return;
    }
    // Called from a notifier's own signal, too.
    for (QSocketNotifier *notifier : {m_readNotifier, m_writeNotifier}) {
        notifier->setEnabled(false);
        notifier->deleteLater();
    }
    // The other side stays open: the system would give the name to the next printer, of whatever program, and who still
    // searches here would find that one.
    ::close(m_master);
    m_master = -1;
}

void SimulatedPrinter::goAway()
{
    if (m_master >= 0) {
        unplug();
        Q_EMIT unplugged();
    }
}

void SimulatedPrinter::readLine()
{
    char chunk[ReadChunk];
    const ssize_t size = ::read(m_master, chunk, sizeof chunk);
    if (size > 0) {
        hear(QByteArray(chunk, int(size)));
    }
}

void SimulatedPrinter::hear(const QByteArray &bytes)
{
    bool isFirst = false;
    {
        QMutexLocker locker(&m_mutex);
        isFirst = m_received.isEmpty();
        m_received += bytes;
    }
    if (isFirst && m_misbehaviour.unplugAfter > 0ms) {
        QTimer::singleShot(m_misbehaviour.unplugAfter, Qt::PreciseTimer, this, [this] { goAway(); });
    }
    const QByteArray heard = m_misbehaviour.fault == EFault::Drops ? withLosses(bytes) : bytes;
    if (answersAnything(heard)) {
        return;
    }
    const Voice *voice = m_misbehaviour.fault == EFault::Garbage ? nullptr : currentVoice();
    if (voice != nullptr) {
        obey(heard, *voice);
        return;
    }
    m_input.clear();
    note(Exchange::ToPrinter, heard, QStringLiteral("at settings that are not mine"));
    if (m_personality.isGarbledElsewhere) {
        sendRawLater(garbage(2 + int(m_random() % 4)), QStringLiteral("garbage"), m_misbehaviour.delay);
    }
}

/** True for the faults that look neither at the settings nor at what was asked; the answer is on its way then. */
bool SimulatedPrinter::answersAnything(const QByteArray &heard)
{
    switch (m_misbehaviour.fault) {
    case EFault::Silent:
        note(Exchange::ToPrinter, heard, QStringLiteral("not answered"));
        return true;
    case EFault::Echo:
        note(Exchange::ToPrinter, heard, {});
        sendRawLater(heard, QStringLiteral("echo"), m_misbehaviour.delay);
        return true;
    case EFault::SlowEcho:
        note(Exchange::ToPrinter, heard, {});
        echoSlowly(heard);
        return true;
    case EFault::Noise:
        note(Exchange::ToPrinter, heard, {});
        sendRawLater(garbage(NoiseBytes), QStringLiteral("noise"), m_misbehaviour.delay);
        return true;
    case EFault::Constant:
        note(Exchange::ToPrinter, heard, {});
        sendRawLater(QByteArray(1, m_misbehaviour.constant), QStringLiteral("constant"), m_misbehaviour.delay);
        return true;
    default:
        return false;
    }
}

void SimulatedPrinter::echoSlowly(const QByteArray &bytes)
{
    for (const char byte : bytes) {
        const std::chrono::milliseconds now(m_clock.elapsed());
        m_echoDue = std::max(m_echoDue, now + m_misbehaviour.delay) + PieceGap;
        sendRawLater(QByteArray(1, byte), QStringLiteral("echo"), m_echoDue - now);
    }
}

void SimulatedPrinter::obey(const QByteArray &bytes, const Voice &voice)
{
    m_input += bytes;
    const QVector<Request> requests = takeRequests(&m_input, voice.rules);
    m_answersGiven.resize(voice.rules.size());
    for (const Request &request : requests) {
        if (request.rule < 0) {
            note(Exchange::ToPrinter, request.bytes, QStringLiteral("unknown"));
            continue;
        }
        const Rule &rule = voice.rules.at(request.rule);
        note(Exchange::ToPrinter, request.bytes, rule.meaning);
        answer(rule, request.rule);
    }
}

void SimulatedPrinter::answer(const Rule &rule, int ruleIndex)
{
    if (rule.answers.isEmpty() || m_master < 0) {
        return;
    }
    int &given = m_answersGiven[ruleIndex];
    Answer next = rule.answers.at(qMin(given, rule.answers.size() - 1));
    ++given;
    ++m_answerCount;
    switch (m_misbehaviour.fault) {
    case EFault::ChangesMind:
        next.bytes = differing(next.bytes, m_answerCount - 1);
        break;
    case EFault::Drops:
        next.bytes = withLosses(next.bytes);
        break;
    case EFault::Unplugs:
        QTimer::singleShot(UnplugDelay, this, [this] { goAway(); });
        return;
    case EFault::Closes:
        if (m_answerCount == 2) {
            sendRaw(next.bytes.left(next.bytes.size() / 2), QStringLiteral("half an answer"));
            goAway();
            return;
        }
        break;
    default:
        break;
    }
    send(next);
}

void SimulatedPrinter::send(const Answer &answer)
{
    const std::chrono::milliseconds delay = delayOf(answer);
    if (m_misbehaviour.fault != EFault::TwoPieces || answer.bytes.size() < 2) {
        QTimer::singleShot(delay, Qt::PreciseTimer, this, [this, bytes = answer.bytes] { sendAtOwnSettings(bytes); });
        return;
    }
    const int half = answer.bytes.size() / 2;
    const QByteArray first = answer.bytes.left(half);
    const QByteArray second = answer.bytes.mid(half);
    QTimer::singleShot(delay, Qt::PreciseTimer, this, [this, first] { sendAtOwnSettings(first); });
    QTimer::singleShot(delay + PieceGap, Qt::PreciseTimer, this, [this, second] { sendAtOwnSettings(second); });
}

std::chrono::milliseconds SimulatedPrinter::delayOf(const Answer &answer) const
{
    const std::chrono::milliseconds delay = answer.delay + m_misbehaviour.delay;
    switch (m_misbehaviour.fault) {
    case EFault::LateInside:
        return delay + m_personality.shortestWait / 2;
    case EFault::LateOutside:
        return delay + m_personality.longestWait + LateMargin;
    default:
        return delay;
    }
}

void SimulatedPrinter::sendAtOwnSettings(const QByteArray &bytes)
{
    // A late answer may meet a line whose speed has changed meanwhile.
    const bool isUnderstood = currentVoice() != nullptr;
    sendRaw(isUnderstood ? bytes : garbage(bytes.size() + 1), isUnderstood ? QString() : QStringLiteral("garbage"));
}

void SimulatedPrinter::sendRaw(const QByteArray &bytes, const QString &meaning)
{
    if (m_master < 0 || bytes.isEmpty()) {
        return;
    }
    note(Exchange::FromPrinter, bytes, meaning);
    m_output += bytes;
    flushOutput();
}

void SimulatedPrinter::sendRawLater(const QByteArray &bytes, const QString &meaning, std::chrono::milliseconds delay)
{
    if (delay <= 0ms) {
        sendRaw(bytes, meaning);
        return;
    }
    QTimer::singleShot(delay, Qt::PreciseTimer, this, [this, bytes, meaning] { sendRaw(bytes, meaning); });
}

void SimulatedPrinter::flushOutput()
{
    const ssize_t size = ::write(m_master, m_output.constData(), size_t(m_output.size()));
    if (size > 0) {
        m_output.remove(0, int(size));
    }
    m_writeNotifier->setEnabled(!m_output.isEmpty());
}

void SimulatedPrinter::note(Exchange::EDirection direction, const QByteArray &bytes, const QString &meaning)
{
    const Exchange exchange{direction, bytes.left(ReadChunk), meaning, m_clock.elapsed()};
    {
        QMutexLocker locker(&m_mutex);
        m_exchanges.append(exchange);
    }
    Q_EMIT talked(exchange);
}

const Voice *SimulatedPrinter::currentVoice() const
{
    const std::optional<LineSettings> line = readLineSettings(m_master);
    // The last one counts: a recording's successful settings stand at its end.
    const auto found = std::find_if(m_personality.voices.crbegin(), m_personality.voices.crend(),
                                    [&](const Voice &voice) { return line.has_value() && matches(voice.line, *line); });
    return found == m_personality.voices.crend() ? nullptr : &*found;
}

QByteArray SimulatedPrinter::garbage(int size)
{
    QByteArray bytes(size, '\0');
    for (char &byte : bytes) {
        const char candidate = char(m_random() >> 8);
        byte = candidate == m_lastGarbage ? char(candidate + 1) : candidate;
        m_lastGarbage = byte;
    }
    return bytes;
}

QByteArray SimulatedPrinter::withLosses(const QByteArray &bytes)
{
    QByteArray kept;
    for (const char byte : bytes) {
        if (m_random() % 3 != 0) {
            kept += byte;
        }
    }
    return kept;
}

} // namespace printersim
