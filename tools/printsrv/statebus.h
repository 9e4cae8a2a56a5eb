// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_STATEBUS_H
#define PRINTSRV_STATEBUS_H

#include "subcommand.h"

namespace printsrv {

/** "printsrv state publish": offers the current client state on D-Bus. */
ExitCode publishState(const QStringList &arguments);

/** "printsrv state watch": follows one. */
ExitCode watchState(const QStringList &arguments);

} // namespace printsrv

#endif
