// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_REPLACEDFILE_H
#define PRINTSRV_REPLACEDFILE_H

#include <QByteArray>
#include <QString>

#include <filesystem>

/** Files that hold their old or their new content at any moment. Paths are bytes, as the system has them. */
namespace printsrv::replacedfile {

/**
 * Where a path leads when its last part is a link, also to nothing or to a link; otherwise the path itself.
 *
 * Links that lead in a circle end in one of them.
 */
std::filesystem::path linkTarget(const QString &path);

/**
 * A hidden name in the folder of @p path for the library's own use: ".printsrv-", digits that stand for the file's
 * name, and @p suffix. It is short whatever the length of the name.
 */
std::filesystem::path hiddenName(const std::filesystem::path &path, const char *suffix);

/**
 * Writes the bytes under a hidden name and renames that file; a link is followed.
 *
 * The file keeps its owner, group and permissions. The hidden file of a writer that was killed is written anew, so that
 * only one writer may be at work at a time.
 *
 * False after one critical line, and the file as it was, when it cannot be written, is no regular file or may not be
 * written.
 */
[[nodiscard]] bool replaceFile(const QString &path, const QByteArray &bytes);

/** Removes the hidden file that a killed writer of @p path left. */
void removeRemains(const QString &path);

} // namespace printsrv::replacedfile

#endif
