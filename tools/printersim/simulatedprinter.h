// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTERSIM_SIMULATEDPRINTER_H
#define PRINTERSIM_SIMULATEDPRINTER_H

#include "fault.h"
#include "personality.h"

#include <QElapsedTimer>
#include <QMutex>
#include <QObject>
#include <QSocketNotifier>

#include <random>

namespace printersim {

/** One thing that was said on a simulated printer's line. */
struct Exchange
{
    enum EDirection {
        ToPrinter,
        FromPrinter,
    };

    EDirection direction = ToPrinter;
    QByteArray bytes;
    /** What the bytes mean, for people. */
    QString meaning;
    /** Milliseconds since the printer was switched on. */
    qint64 timeMs = 0;
};

/** How a simulated printer misbehaves. */
struct Misbehaviour
{
    EFault fault = EFault::None;
    /** Added to every answer's own delay. */
    std::chrono::milliseconds delay{0};
    /** Start of the random bytes: the same seed gives the same bytes. */
    quint32 seed = 1;
    /** What EFault::Constant answers. */
    char constant = '\0';
    /** Time from the first byte that reaches the device to the moment when it goes away; 0: it stays. */
    std::chrono::milliseconds unplugAfter{0};
};

/**
 * Plays one printer on a pseudo-terminal of its own.
 *
 * The printer answers at the line settings of its voices only and sends garbage at all others (no byte twice in a row,
 * so that no two garbled answers are alike). Lives in one thread, which runs an event loop; exchanges(), received() and
 * portName() may be called from any thread.
 */
class SimulatedPrinter : public QObject
{
    Q_OBJECT

public:
    explicit SimulatedPrinter(const Personality &personality, const Misbehaviour &misbehaviour = {},
                              QObject *parent = nullptr);
    ~SimulatedPrinter() override;

    /** Opens the pseudo-terminal; false, with the reason in errorString(), when the system has none left. */
    [[nodiscard]] bool open();
    QString errorString() const;

    /** The name to search, "/dev/pts/3"; empty before open(). */
    QString portName() const;

    const Personality &personality() const;

    /** Everything said so far, in order. */
    QVector<Exchange> exchanges() const;

    /** All bytes that reached the printer so far, whatever they mean. */
    QByteArray received() const;

    /** Pulls the plug: the port fails for whoever uses it. */
    void unplug();

Q_SIGNALS:
    /** Emitted in the printer's thread for each request and each answer. */
    void talked(const printersim::Exchange &exchange);

    /** The device went away by itself (EFault::Closes, EFault::Unplugs and Misbehaviour::unplugAfter). */
    void unplugged();

private:
    void readLine();
    void goAway();
    bool answersAnything(const QByteArray &heard);
    void echoSlowly(const QByteArray &bytes);
    void hear(const QByteArray &bytes);
    void obey(const QByteArray &bytes, const Voice &voice);
    void answer(const Rule &rule, int ruleIndex);
    void send(const Answer &answer);
    void sendAtOwnSettings(const QByteArray &bytes);
    void sendRaw(const QByteArray &bytes, const QString &meaning);
    void sendRawLater(const QByteArray &bytes, const QString &meaning, std::chrono::milliseconds delay);
    void flushOutput();
    void note(Exchange::EDirection direction, const QByteArray &bytes, const QString &meaning);
    const Voice *currentVoice() const;
    QByteArray garbage(int size);
    QByteArray withLosses(const QByteArray &bytes);
    std::chrono::milliseconds delayOf(const Answer &answer) const;

    Personality m_personality;
    Misbehaviour m_misbehaviour;
    QString m_portName;
    QString m_errorString;
    int m_master = -1;
    int m_slave = -1;
    QSocketNotifier *m_readNotifier = nullptr;
    QSocketNotifier *m_writeNotifier = nullptr;
    QByteArray m_input;
    QByteArray m_output;
    QVector<int> m_answersGiven;
    int m_answerCount = 0;
    std::minstd_rand m_random;
    char m_lastGarbage = 0;
    QElapsedTimer m_clock;
    /** When the last byte of a slow echo leaves, by the clock. */
    std::chrono::milliseconds m_echoDue{0};
    mutable QMutex m_mutex;
    QVector<Exchange> m_exchanges;
    QByteArray m_received;
};

} // namespace printersim

#endif
