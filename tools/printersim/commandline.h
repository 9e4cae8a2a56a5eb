// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTERSIM_COMMANDLINE_H
#define PRINTERSIM_COMMANDLINE_H

#include "simulatedprinter.h"

#include <QStringList>

#include <optional>

namespace printersim {

/** What the command was asked to play. */
struct Play
{
    /** Empty when only a text is wanted (help, the list of models). */
    QVector<Personality> cast;
    Misbehaviour misbehaviour;
    /** Folder for one link per printer; empty for none. */
    QString linkFolder;
    /** File for the conversation; empty for the standard output. */
    QString logFile;
};

/**
 * Reads the command line. Nothing, with the reason in @p message, when it is not understood; a play without a cast and
 * the text to print in @p message for "--help", "--version" and "--list".
 */
std::optional<Play> parseCommandLine(const QStringList &arguments, QString *message);

} // namespace printersim

#endif
