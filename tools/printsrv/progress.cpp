// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "progress.h"

#include <cinttypes>
#include <cstdio>
#include <unistd.h>

namespace printsrv {

namespace {

constexpr qint64 IntervalMs = 500;

} // namespace

Progress::Progress()
    : m_isShown(::isatty(STDERR_FILENO) == 1)
{
    m_sinceShown.start();
}

Progress::~Progress()
{
    if (m_isShown) {
        show();
        std::fputc('\n', stderr);
    }
}

void Progress::count(bool isDone)
{
    ++(isDone ? m_done : m_failed);
    if (m_isShown && m_sinceShown.elapsed() >= IntervalMs) {
        show();
        m_sinceShown.restart();
    }
}

void Progress::show()
{
    std::fprintf(stderr, "\rprintsrv: %" PRId64 " receipts done, %" PRId64 " failed", std::int64_t(m_done),
                 std::int64_t(m_failed));
}

} // namespace printsrv
