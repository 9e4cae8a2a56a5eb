// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PROGRESS_H
#define PRINTSRV_PROGRESS_H

#include <QElapsedTimer>

namespace printsrv {

/** Counts on standard error, twice a second and only when that is a terminal. */
class Progress
{
public:
    Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /** Ends the line with the last numbers. */
    ~Progress();

    /** One more receipt is done or has failed. */
    void count(bool isDone);

private:
    void show();

    bool m_isShown;
    QElapsedTimer m_sinceShown;
    qint64 m_done = 0;
    qint64 m_failed = 0;
};

} // namespace printsrv

#endif
