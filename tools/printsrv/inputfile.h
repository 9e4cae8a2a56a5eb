// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_INPUTFILE_H
#define PRINTSRV_INPUTFILE_H

#include "outcome.h"

#include <QByteArray>

namespace printsrv {

/**
 * The whole content of a file, or of standard input when @p path is "-"; at most 64 MiB, so that a device that never
 * ends is refused.
 */
[[nodiscard]] Outcome<QByteArray> readInput(const QString &path);

} // namespace printsrv

#endif
