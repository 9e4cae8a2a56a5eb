// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_LINEREADER_H
#define PRINTSRV_LINEREADER_H

#include <QByteArray>

#include <functional>

namespace printsrv {

/** Reads lines from a file descriptor in memory that a limit bounds. */
class LineReader
{
public:
    /** What next() found. */
    enum class EResult {
        Line, /**< A line; the last one may be without a line end. */
        TooLong, /**< A line longer than the limit; it is passed over. */
        End, /**< The input ends. */
        Failed, /**< The system refused; errno says why. */
    };

    /**
     * @param descriptor stays the caller's
     * @param largestLineBytes the limit, without the line end
     * @param beforeRead is called before each time the reader may have to wait for input
     */
    LineReader(int descriptor, int largestLineBytes, std::function<void()> beforeRead);

    /** Puts the next line into @p line, without its line end. */
    [[nodiscard]] EResult next(QByteArray &line);

private:
    enum class EFill { More, End, Failed };

    EFill fill();
    EResult cut(int end, int separatorBytes, QByteArray &line);

    int m_descriptor;
    int m_largestLineBytes;
    std::function<void()> m_beforeRead;
    QByteArray m_buffer;
    int m_start = 0;
    bool m_isPassingOver = false;
};

} // namespace printsrv

#endif
