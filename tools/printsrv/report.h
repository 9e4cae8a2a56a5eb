// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_REPORT_H
#define PRINTSRV_REPORT_H

#include "outcome.h"
#include "subcommand.h"

#include <QString>

namespace printsrv {

/** Writes "printsrv: text" and a line end to standard error. The text says what, where and what to do. */
void complain(const QString &text);

/** complain() with the failure and its place; a path "-" is standard input. Returns ExitWrongInput. */
ExitCode complainAt(const Failure &failure, const QString &path);

/**
 * Sends the library's own warnings to standard error in the form of complain(). Debug and info lines stay away unless
 * QT_LOGGING_RULES asks for them.
 */
void reportLibraryMessages();

/** Puts @p place, "line 12", in front of the library's warnings that follow; an empty text ends that. */
void setMessagePlace(const QString &place);

/** While it lives, the library's warnings and errors stay away, but for a want of memory: a caller says it better. */
class LibrarySilence
{
public:
    LibrarySilence();
    ~LibrarySilence();
    Q_DISABLE_COPY(LibrarySilence)
};

/** True when the library has said that the memory does not suffice for what it was asked for: that is missing then. */
bool hasMemoryFailed();

} // namespace printsrv

#endif
