// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_OUTPUTWRITER_H
#define PRINTSRV_OUTPUTWRITER_H

#include "subcommand.h"

#include <QByteArray>

namespace printsrv {

/** How a write to standard output ended. */
enum class EWriteResult {
    Written, /**< All bytes are with the reader. */
    ReaderGone, /**< The reader closed the pipe: it has what it wanted, the command ends without a word. */
    Failed, /**< The system refused; standard error says why. */
};

/** Writes all bytes to standard output, unbuffered. SIGPIPE must be ignored. */
[[nodiscard]] EWriteResult writeStandardOutput(const QByteArray &bytes);

/**
 * Writes the whole output: to standard output when @p path is empty or "-", otherwise to the file.
 *
 * A file is written completely or not at all: under a temporary name in its folder, then renamed over the one before
 * it. A device or a pipe is written directly. On failure standard error names the file and the system's text.
 */
[[nodiscard]] ExitCode writeOutput(const QString &path, const QByteArray &bytes);

} // namespace printsrv

#endif
