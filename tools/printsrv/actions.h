// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_ACTIONS_H
#define PRINTSRV_ACTIONS_H

#include "subcommand.h"

#include <QVector>

namespace printsrv {

/** A subcommand that has subcommands of its own: "printsrv settings list". */
struct ActionGroup
{
    /** Name of the subcommand. */
    const char *name;
    /** What its actions are about, in a sentence. */
    const char *description;
    QVector<Subcommand> actions;
    /** Lines that a shell takes as they stand. */
    QStringList examples;
};

/** Runs the action that the first argument names, or writes the help of the group. */
[[nodiscard]] ExitCode runAction(const ActionGroup &group, const QStringList &arguments);

} // namespace printsrv

#endif
