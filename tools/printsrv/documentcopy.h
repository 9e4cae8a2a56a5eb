// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_DOCUMENTCOPY_H
#define PRINTSRV_DOCUMENTCOPY_H

#include <QByteArray>
#include <QString>

namespace printsrv {

/** One of the two copies of a document file, and what is wrong with it. */
struct DocumentCopy
{
    /** The copy's own name: that of the document, or with ".bak". */
    QString path;
    /** Why the copy cannot be used; empty for a good one. */
    QString problem;
    /** The copy's bytes, as far as they could be read. */
    QByteArray content;
    /** False when the file is there and could not be read: it may be good. */
    bool isRead = true;

    /** True when the content has the checksum that stands beside it, and is a document. */
    bool isGood() const;
};

/** Reads a copy and its checksum file without changing either. */
[[nodiscard]] DocumentCopy inspectCopy(const QString &path);

/** The name of a document's backup. */
QString backupPath(const QString &path);

/** The name of a copy's checksum file. */
QString checksumPath(const QString &path);

/** The line that "sha1sum" prints for @p content under the absolute name of @p path. */
QByteArray checksumLine(const QString &path, const QByteArray &content);

} // namespace printsrv

#endif
