// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTERSIM_TRANSCRIPT_H
#define PRINTERSIM_TRANSCRIPT_H

#include "personality.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace printersim {

/**
 * Makes a personality of a recorded conversation, as `printsrv find --record` writes it: one JSON object a line.
 *
 * Each "settings" line begins a voice, each "write" line is a request of it and the "read" and "discard" lines up to
 * the next "write" are its answer, with their delay. Only the lines of the first port in the recording count. The
 * result answers at the recorded settings only and is silent elsewhere. Nothing, with the reason and the line in
 * @p errorString, when a line is no JSON object, lacks a member or nothing was ever written.
 */
std::optional<Personality> personalityFromTranscript(const QByteArray &transcript, QString *errorString);

} // namespace printersim

#endif
