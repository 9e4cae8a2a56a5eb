// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_GUARDEDFILE_H
#define PRINTSRV_GUARDEDFILE_H

#include <QByteArray>
#include <QString>

/**
 * A file whose content is guarded by its SHA-1 sum in a file of its own (".sha1", in the form of the program "sha1sum")
 * and by a copy of both (".bak", ".bak.sha1").
 *
 * A save that is cut short at any instruction leaves the content before it or the new one readable. One saver of a path
 * is at work at a time, of all threads and processes; readers need not wait for it and see one content or the other.
 */
namespace printsrv::guardedfile {

/** Larger files are neither written nor read. */
constexpr int LargestBytes = 64 * 1024 * 1024;

/** How long "sha1sum" may take. */
constexpr int ProgramTimeoutMs = 30000;

/** What a file is good for. */
enum class EState {
    Missing, /**< It is not there. */
    Unusable, /**< It is there and cannot be read, or does not fit its sum. */
    Good, /**< It fits its sum. */
};

/** A file as it was read. */
struct Content
{
    EState state = EState::Missing;
    QByteArray bytes; /**< Empty unless the state is Good. */
    QString problem; /**< Why the file is unusable, for a log line. */
};

/** Reads one file and checks it against its sum; logs nothing. */
Content readSummed(const QString &path);

/**
 * Writes @p bytes as @p path, which is made absolute, and as its copy.
 *
 * True only when both read back as good afterwards. One critical line for each file that cannot be written, or one and
 * nothing touched when the path is none that can be saved, or when another saver keeps it busy for four times the
 * program's time; one warning for each file that "sha1sum" did not sum.
 */
bool save(const QString &path, const QByteArray &bytes, int programTimeoutMs = ProgramTimeoutMs);

/**
 * Reads @p path, or its copy when it is not good; one warning for each file that is unusable.
 *
 * False, and @p bytes as they were, when neither is good.
 */
bool load(const QString &path, QByteArray &bytes);

/** Removes the file, its copy, both sums and what a killed saver left, and syncs the disk. */
void remove(const QString &path);

} // namespace printsrv::guardedfile

#endif
