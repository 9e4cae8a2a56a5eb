// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_CHECKSUMPROGRAM_H
#define PRINTSRV_CHECKSUMPROGRAM_H

#include <QByteArray>
#include <QString>

namespace printsrv {

/**
 * What the program "sha1sum" prints for @p path, an absolute path, run in that file's folder; empty when it cannot be
 * started.
 *
 * It is stopped when it closes its output, after the time given, or when it prints more than a line can be long.
 */
QByteArray runChecksumProgram(const QString &path, int timeoutMs);

} // namespace printsrv

#endif
