// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PAPERFONT_H
#define PRINTSRV_PAPERFONT_H

#include <monochromeimage.h>

#include <QtGlobal>

/**
 * The bundled bitmap font: Latin and Cyrillic letters, punctuation, signs of currencies and box drawing.
 *
 * Nothing else is needed to draw with it, no display and no installed font, and its dots are the same on every machine.
 * It has faces of 8 x 16, 10 x 20, 12 x 24 and 16 x 32 dots. A character goes into a cell of another size like this:
 * the largest face that fits and has the character stands in the middle of the cell (box drawing goes on to the cell's
 * edges, so that lines meet); in a cell of twice the largest face and more each dot is a square; into a cell that is
 * too small for every face the smallest one is shrunk. All functions may be called from any thread.
 */
class Q_DECL_EXPORT PaperFont
{
public:
    /** Whether the font has the character of this Unicode number. */
    static bool has(uint character);

    /**
     * The character in a cell of @p width x @p height dots, each 1 to 255; rows are padded to whole bytes.
     *
     * A default image, which is not valid, for another size or a character that the font lacks.
     */
    static MonochromeImage glyph(uint character, int width, int height);
};

#endif
