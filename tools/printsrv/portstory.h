// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PORTSTORY_H
#define PRINTSRV_PORTSTORY_H

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QVector>

#include <chrono>

namespace printsrv {

/** What a device said at one set of parameters. */
struct Utterance
{
    int baudRate = 0;
    QByteArray asked;
    QByteArray said;
};

/**
 * What happened on one port, told by the lines of the category "printers.wire": a plain value, made of one event after
 * the other.
 */
class PortStory
{
public:
    /** Takes one event; what it does not know it passes over. */
    void take(const QJsonObject &event);

    bool wasOpened() const;
    /** The system's reason for not opening the port; empty when it did. */
    QString refusal() const;
    bool wasLost() const;
    /** Everything that came back is what was sent just before, and two bytes or more at a time. */
    bool isEcho() const;
    /** What was said, one for each set of parameters at which anything came; at most the last eight. */
    QVector<Utterance> utterances() const;

    /** Probe, speed and the time that is left at most, for a progress line; empty before the first attempt. */
    QString progress() const;

private:
    void beginEntry(const QJsonObject &event);
    bool isCurrentEcho() const;
    std::chrono::milliseconds timeLeft() const;

    bool m_wasOpened = false;
    bool m_wasLost = false;
    QString m_refusal;
    QString m_probe;
    int m_entry = 0;
    int m_entries = 0;
    int m_baudRate = 0;
    QVector<Utterance> m_utterances;
    Utterance m_current;
    QByteArray m_askedBefore;
    bool m_onlyEchoes = true;
    int m_longestEcho = 0;
};

} // namespace printsrv

#endif
