// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_CELLMAKER_H
#define PRINTSRV_CELLMAKER_H

#include "raster.h"

#include <printerinfo.h>

#include <QHash>
#include <QMultiMap>
#include <QTextCodec>

namespace printsrv {

/** One character of a line with its two bytes. */
struct PaperCharacter
{
    ushort code = 0;
    uchar font = 0;
    uchar format = 0;
};

/** Makes the cells of characters for one model and remembers them; for one thread. */
class CellMaker
{
public:
    using Images = QMultiMap<signed char, MonochromeImage>;

    /** @param codec the printer's code page; null for all characters of the bundled font */
    CellMaker(const PrinterInfo &model, const QTextCodec *codec, const Images &images);

    /** Size of the character's cell in dots, double width and height included; at least 1 x 1. */
    QSize size(const PaperCharacter &character) const;

    /** The cell with everything that the format asks for and the model can do; valid until the next call. */
    const Raster &cell(const PaperCharacter &character);

private:
    FontInfo font(uchar number) const;
    bool has(const PaperCharacter &character, uchar flag) const;
    uint unicode(const PaperCharacter &character) const;
    Raster symbol(int code, const FontInfo &font) const;
    Raster glyph(const PaperCharacter &character, QSize cell) const;
    Raster make(const PaperCharacter &character) const;

    uchar m_flags = 0;
    QVector<FontInfo> m_fonts;
    const QTextCodec *m_codec;
    Images m_images;
    QHash<quint32, Raster> m_cells;
};

} // namespace printsrv

#endif
