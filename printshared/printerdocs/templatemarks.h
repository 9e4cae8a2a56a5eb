// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TEMPLATEMARKS_H
#define PRINTSRV_TEMPLATEMARKS_H

#include <QStringView>

#include <array>

namespace printsrv {

namespace templatemarks {

constexpr char Characters[] = "<>[]\n";
constexpr size_t AsciiCount = 128;

constexpr std::array<bool, AsciiCount> table()
{
    std::array<bool, AsciiCount> marks{};
    for (size_t i = 0; Characters[i] != 0; ++i) {
        marks[static_cast<unsigned char>(Characters[i])] = true;
    }
    return marks;
}

constexpr std::array<bool, AsciiCount> Table = table();

} // namespace templatemarks

/** True for the characters that mean something in a line: the brackets of tags and groups, and a line break. */
constexpr bool isMark(QChar c)
{
    return c.unicode() < templatemarks::AsciiCount && templatemarks::Table[c.unicode()];
}

/** Index of the first mark in @p text from @p from on; the size when there is none. Most text has few of them. */
inline int nextMark(QStringView text, int from)
{
    const auto size = int(text.size());
    while (from < size && !isMark(text.data()[from])) {
        ++from;
    }
    return from;
}

} // namespace printsrv

#endif
