// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SAVELOCK_H
#define PRINTSRV_SAVELOCK_H

#include <QString>

#include <filesystem>

namespace printsrv {

/**
 * The right to change the files of one document, which one saver of all threads and processes has at a time.
 *
 * It is a lock on a hidden file beside the document, which the system gives back when its holder ends, however that
 * ends. The file itself goes when the work is complete; found again, it tells that a saver was killed.
 */
class SaveLock
{
public:
    /** Waits for the right to change @p path, at most so long. A path that is a link stands for the file it leads to.
     */
    SaveLock(const QString &path, int timeoutMs);

    /** Gives the right back. */
    ~SaveLock();

    Q_DISABLE_COPY(SaveLock)

    /** Whether the right was had. */
    bool isHeld() const;

    /** Why the right was not had, for a log line. */
    QString problem() const;

    /** Whether a saver was killed: what it wrote can be read, and a power cut can still undo it. */
    bool isAfterKilledSaver() const;

    /** Says that what was written is on the disk; nothing when the right was not had. */
    void setComplete();

private:
    enum class EAttempt { Held, Busy, Stale, Failed };

    EAttempt attempt();
    EAttempt lockOpenFile();
    void close();

    std::filesystem::path m_file;
    int m_descriptor = -1;
    bool m_isHeld = false;
    bool m_isAfterKilledSaver = false;
    QString m_problem;
};

} // namespace printsrv

#endif
