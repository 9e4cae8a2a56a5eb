// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_CHECKSUMFILE_H
#define PRINTSRV_CHECKSUMFILE_H

#include <QByteArray>
#include <QString>

/** The file beside another one that holds its SHA-1 sum as the program "sha1sum" prints it. */
namespace printsrv::checksumfile {

/** The path of the sum of @p path. */
QString pathFor(const QString &path);

/** The SHA-1 sum of @p bytes, 20 bytes. */
QByteArray digestOf(const QByteArray &bytes);

/** The digest in the sum's file of @p path; empty when there is none. */
QByteArray readDigest(const QString &path);

/** The digest at the beginning of a line that "sha1sum" prints; of another length than 20 bytes when it is none. */
QByteArray digestIn(const QByteArray &line);

/** The line that "sha1sum" prints for @p path, newline included. */
QByteArray line(const QString &path, const QByteArray &digest);

} // namespace printsrv::checksumfile

#endif
