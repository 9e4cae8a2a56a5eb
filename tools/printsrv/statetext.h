// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_STATETEXT_H
#define PRINTSRV_STATETEXT_H

#include "outcome.h"

#include <clientstate.h>
#include <printservicestate.h>

namespace printsrv {

/** Names of the type, "WARNING", and of the two states, "ready"; the number of one that has none. */
QString typeName(tolbus::ClientState::EStateType type);
QString serviceName(PrintServiceState::EServiceState state);
QString deviceName(PrintServiceState::EDeviceState state);

/** The state of a name that the functions above give, in any case of letters, or of its number; 0 to 65535. */
[[nodiscard]] Outcome<PrintServiceState::EServiceState> serviceFrom(const QString &text);
[[nodiscard]] Outcome<PrintServiceState::EDeviceState> deviceFrom(const QString &text);

/** The type of a name or number. */
[[nodiscard]] Outcome<tolbus::ClientState::EStateType> typeFrom(const QString &text);

/** The time in UTC, ISO 8601 with milliseconds: "2024-03-05T10:00:00.000Z". */
QString timeText(const QDateTime &time);

/** The record of a bus text; why it is no JSON otherwise. */
[[nodiscard]] Outcome<PrintServiceState> readRecord(const QByteArray &busText);

/** A client state as one line: time, type and text, parted by blanks. */
QString stateLine(const tolbus::ClientState &state);

} // namespace printsrv

#endif
