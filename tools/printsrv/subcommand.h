// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SUBCOMMAND_H
#define PRINTSRV_SUBCOMMAND_H

#include <QStringList>

namespace printsrv {

/** What the command tells its caller when it ends. */
enum ExitCode : int {
    ExitDone = 0, /**< Everything that was asked for is done. */
    ExitWrongInput = 1, /**< A file, its content, a device or the system is in the way; standard error says which. */
    ExitUsage = 2, /**< The command line itself is wrong; nothing was read or written. */
};

/** One subcommand: a row of the table in main.cpp. */
struct Subcommand
{
    const char *name;
    /** One line for "printsrv --help". */
    const char *summary;
    /** Runs it; the arguments are those behind the subcommand's name. */
    ExitCode (*run)(const QStringList &arguments);
};

ExitCode runDocument(const QStringList &arguments);
ExitCode runDocumentShow(const QStringList &arguments);
ExitCode runFind(const QStringList &arguments);
ExitCode runLint(const QStringList &arguments);
ExitCode runModels(const QStringList &arguments);
ExitCode runPorts(const QStringList &arguments);
ExitCode runTest(const QStringList &arguments);
ExitCode runRender(const QStringList &arguments);
ExitCode runSettings(const QStringList &arguments);
ExitCode runState(const QStringList &arguments);
ExitCode runSymbols(const QStringList &arguments);

} // namespace printsrv

#endif
