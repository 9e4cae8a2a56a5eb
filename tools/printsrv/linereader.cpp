// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "linereader.h"

#include <array>
#include <cerrno>
#include <unistd.h>

namespace printsrv {

namespace {

constexpr int ChunkBytes = 64 * 1024;

} // namespace

LineReader::LineReader(int descriptor, int largestLineBytes, std::function<void()> beforeRead)
    : m_descriptor(descriptor)
    , m_largestLineBytes(largestLineBytes)
    , m_beforeRead(std::move(beforeRead))
{
}

LineReader::EFill LineReader::fill()
{
    m_beforeRead();
    m_buffer.remove(0, m_start);
    m_start = 0;
    // Not straight into the byte array: an optimised build with _FORTIFY_SOURCE takes its header for the whole target.
    std::array<char, ChunkBytes> chunk;
    ssize_t count = 0;
    do {
        count = ::read(m_descriptor, chunk.data(), chunk.size());
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        return EFill::Failed;
    }
    m_buffer.append(chunk.data(), static_cast<int>(count));
    return count > 0 ? EFill::More : EFill::End;
}

LineReader::EResult LineReader::cut(int end, int separatorBytes, QByteArray &line)
{
    const bool isTooLong = m_isPassingOver || end - m_start > m_largestLineBytes;
    line = isTooLong ? QByteArray() : m_buffer.mid(m_start, end - m_start);
    m_start = end + separatorBytes;
    m_isPassingOver = false;
    return isTooLong ? EResult::TooLong : EResult::Line;
}

LineReader::EResult LineReader::next(QByteArray &line)
{
    int searched = m_start;
    for (;;) {
        const int end = m_buffer.indexOf('\n', searched);
        if (end >= 0) {
            return cut(end, 1, line);
        }
        if (m_buffer.size() - m_start > m_largestLineBytes) {
            m_isPassingOver = true;
            m_start = m_buffer.size();
        }
        searched = m_buffer.size() - m_start;
        const EFill filled = fill();
        if (filled == EFill::Failed) {
            return EResult::Failed;
        }
        if (filled == EFill::End) {
            const bool isRest = m_isPassingOver || m_start < m_buffer.size();
            return isRest ? cut(m_buffer.size(), 0, line) : EResult::End;
        }
    }
}

} // namespace printsrv
