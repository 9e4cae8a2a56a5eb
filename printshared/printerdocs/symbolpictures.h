// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SYMBOLPICTURES_H
#define PRINTSRV_SYMBOLPICTURES_H

#include "specialcharacters.h"

#include <QString>

#include <array>

namespace printsrv {

constexpr int FirstSymbolCode = 1; /**< The characters from here on stand for symbol pictures in HTML, … */
constexpr int LastSymbolCode = 7; /**< … up to here. */

/**
 * The symbols of a HTML preview as "<img>" elements, their pictures written as files the first time they are asked for.
 *
 * Serves one preview after the other, or one line after the other: each picture is written once. A picture's file is
 * named by its content, so that one that is there already is used as it is. The folder "tempimg" in the system's
 * temporary folder may have been planted by somebody else: it is refused when it is a link or not ours.
 * Belongs to one thread at a time.
 */
class SymbolPictures
{
public:
    /** @p symbols is copied (shared). */
    explicit SymbolPictures(const SpecialCharacters &symbols);

    /** The HTML of the symbol @p code, 1 to 7: its picture, or a white square when no picture can be written. */
    const QString &html(int code);

private:
    QString pictureHtml(int code);

    SpecialCharacters m_symbols;
    std::array<QString, LastSymbolCode - FirstSymbolCode + 1> m_html;
    bool m_isBad = false; // a picture could not be written: no further attempt, no further warning
};

} // namespace printsrv

#endif
