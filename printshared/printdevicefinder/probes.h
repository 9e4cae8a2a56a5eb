// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PROBES_H
#define PRINTSRV_PROBES_H

#include "probeline.h"

#include <QString>
#include <QVector>

#include <optional>

namespace printsrv {

/**
 * What a conversation found out: nothing, when this is no printer of the family at these settings; otherwise the model
 * identifier, null when the printer is one that has no name.
 */
using ProbeVerdict = std::optional<QString>;

/** A conversation with what is on the line, at settings that were applied already. One per family, in a file of its
 * own. */
using Conversation = ProbeVerdict (*)(ProbeLine &line);

ProbeVerdict talkToSwecoin(ProbeLine &line);
ProbeVerdict talkTo1D491(ProbeLine &line);
ProbeVerdict talkToStar(ProbeLine &line);
ProbeVerdict talkToSimple(ProbeLine &line);
ProbeVerdict talkToAv268(ProbeLine &line);

/** The speed above which the ESC v printer is not looked for. */
constexpr qint32 SimpleMaximumBaudRate = 19200;

/** The one set of parameters of the AV-268. */
void setAv268Parameters(PortSettings *settings);

/**
 * The common loop: holds the conversation at one entry of @p candidates after the other until one finds a printer, the
 * search is stopped or the port gone. @p settings holds the entry tried last, the first one also without an open port;
 * @p model changes only when a name is found.
 */
bool walkCandidates(const ProbeContext &context, const QVector<PortSettings> &candidates, Conversation converse,
                    QString &model, PortSettings &settings);

/** One turn of that loop: true when a printer was found at @p settings. A line that talked for nothing is left quiet.
 */
bool converseAt(ProbeLine &line, const PortSettings &settings, WalkPosition position, Conversation converse,
                QString &model);

} // namespace printsrv

#endif
