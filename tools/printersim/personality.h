// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTERSIM_PERSONALITY_H
#define PRINTERSIM_PERSONALITY_H

#include "linesettings.h"

#include <QByteArray>
#include <QStringList>
#include <QVector>

#include <chrono>
#include <optional>

namespace printersim {

/** One answer of a printer. */
struct Answer
{
    QByteArray bytes;
    /** Time from the request's last byte to the answer's first. */
    std::chrono::milliseconds delay{0};
};

/** A request that a printer knows. */
struct Rule
{
    QByteArray request;
    /** Given one after the other, the last one again and again; empty: the printer obeys and keeps silent. */
    QVector<Answer> answers;
    /** What the request asks for, for people. */
    QString meaning;
};

/** What a printer understands at one set of line settings. */
struct Voice
{
    LineSettings line;
    QVector<Rule> rules;
};

/** What a simulated printer is: data, played by SimulatedPrinter. */
struct Personality
{
    /** The name on the command line. */
    QString name;
    /** The model identifier that a search reports; empty for a printer that no search can name. */
    QString modelId;
    QVector<Voice> voices;
    /** The shortest time that a search waits for one of this printer's answers. */
    std::chrono::milliseconds shortestWait{300};
    /** The longest time that an answer could still be heard: EFault::LateOutside goes above it. */
    std::chrono::milliseconds longestWait{600};
    /** Garbage at line settings of no voice, as a receiver at the wrong speed sees it; otherwise silence. */
    bool isGarbledElsewhere = true;
};

/** The names of all personalities, in the order of the families. */
QStringList personalityNames();

/** The personality of this name, upper and lower case alike; nothing for an unknown one. */
std::optional<Personality> personality(const QString &name);

/** Printer input cut into pieces that have a meaning. */
struct Request
{
    QByteArray bytes;
    /** Index into the rules; -1 for bytes that no rule knows. */
    int rule = -1;
};

/**
 * Takes every complete request from the front of @p input; what may still become one stays there.
 *
 * The longest rule wins. Of an unknown command that begins with ESC, FS or GS two bytes are taken, of anything else
 * one, as a printer's own reader does.
 */
QVector<Request> takeRequests(QByteArray *input, const QVector<Rule> &rules);

} // namespace printersim

#endif
