// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_FILESIZELIMIT_H
#define PRINTSRV_FILESIZELIMIT_H

#include <QtGlobal>

#include <csignal>
#include <sys/resource.h>

/** Keeps the process from writing more than so many bytes into a file, as a full disk does, while it lives. */
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
    }

    Q_DISABLE_COPY(FileSizeLimit)

private:
    rlimit m_before;
};

#endif
