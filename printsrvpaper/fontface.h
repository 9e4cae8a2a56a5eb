// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_FONTFACE_H
#define PRINTSRV_FONTFACE_H

#include "raster.h"

#include <QHash>
#include <QVector>

namespace printsrv {

/** One size of the bundled font. */
struct FontFace
{
    int width = 0;
    int height = 0;
    /** Rows of dots by the character's Unicode number. */
    QHash<uint, QByteArray> glyphs;

    Raster glyph(uint character) const;
};

/** The faces from the smallest to the largest; read once in the process, from any thread. */
const QVector<FontFace> &fontFaces();

/** The face of a text as scripts/make-paper-font writes it. */
FontFace parseFontFace(const QByteArray &text);

/** The character in a cell of this size, as PaperFont::glyph() says; an empty raster when the font lacks it. */
Raster fontGlyph(uint character, int width, int height);

} // namespace printsrv

#endif
