// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "cellmaker.h"

#include "fontface.h"

#include <documentblock.h>

namespace printsrv {

namespace {

constexpr uchar Bold = CharFormatBold;
constexpr uchar Italic = CharFormatItalic;
constexpr uchar Inverse = CharFormatDriver;
constexpr uchar Underline = CharFormatUnderline;
constexpr uchar DoubleWidth = CharFormatDoubleWidth;
constexpr uchar DoubleHeight = CharFormatDoubleHeight;
constexpr uchar ByNumber = CharFormatPlacedByCode;

constexpr int LargestFontNumber = 3;
constexpr int LastSymbol = 7;
constexpr uint QuestionMark = '?';
constexpr int FallbackWidth = 12;
constexpr int FallbackHeight = 24;
// Beyond it a document of ever new characters could take up the memory.
constexpr int LargestCellCount = 4096;

uchar flagsOf(const PrinterInfo &model)
{
    int flags = ByNumber;
    flags |= model.bold() ? Bold : 0;
    flags |= model.italic() ? Italic : 0;
    flags |= model.inversion() ? Inverse : 0;
    flags |= model.underline() ? Underline : 0;
    flags |= model.doubleWidth() ? DoubleWidth : 0;
    flags |= model.doubleHeight() ? DoubleHeight : 0;
    return static_cast<uchar>(flags);
}

// The fonts by their number; a gap holds the first font.
QVector<FontInfo> fontsOf(const PrinterInfo &model)
{
    FontInfo fallback;
    fallback.setWidth(FallbackWidth);
    fallback.setHeight(FallbackHeight);
    const auto types = model.fontTypes();
    QVector<FontInfo> fonts;
    for (int number = 0; number <= LargestFontNumber; ++number) {
        const FontInfo *found = types.isEmpty() ? &fallback : &types.first();
        for (const FontInfo &font : types) {
            found = font.id() == number ? &font : found;
        }
        fonts.append(FontInfo(*found));
    }
    return fonts;
}

bool isControl(uint character)
{
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

Raster bold(const Raster &cell)
{
    Raster result = cell;
    result.draw(cell, 1, 0);
    return result;
}

// Leans to the right by a dot each four rows, around the middle.
Raster italic(const Raster &cell)
{
    Raster result(cell.width(), cell.height());
    for (int y = 0; y < cell.height(); ++y) {
        const int shift = (cell.height() / 2 - y) / 4;
        for (int x = 0; x < cell.width(); ++x) {
            if (cell.dot(x, y)) {
                result.setDot(x + shift, y);
            }
        }
    }
    return result;
}

Raster underlined(Raster cell)
{
    const int thickness = cell.height() > 20 ? 2 : 1;
    cell.fill(0, cell.height() - thickness, cell.width(), thickness);
    return cell;
}

} // namespace

CellMaker::CellMaker(const PrinterInfo &model, const QTextCodec *codec, const Images &images)
    : m_flags(flagsOf(model))
    , m_fonts(fontsOf(model))
    , m_codec(codec)
    , m_images(images)
{
}

FontInfo CellMaker::font(uchar number) const
{
    return m_fonts.at(number <= LargestFontNumber ? number : 0);
}

bool CellMaker::has(const PaperCharacter &character, uchar flag) const
{
    return (character.format & m_flags & flag) != 0;
}

QSize CellMaker::size(const PaperCharacter &character) const
{
    const FontInfo &font = m_fonts.at(character.font <= LargestFontNumber ? character.font : 0);
    return {qMax<int>(1, font.width()) * (has(character, DoubleWidth) ? 2 : 1),
            qMax<int>(1, font.height()) * (has(character, DoubleHeight) ? 2 : 1)};
}

const Raster &CellMaker::cell(const PaperCharacter &character)
{
    const uchar format = character.format & m_flags;
    const quint32 key = (quint32(character.code) << 16) | (quint32(character.font) << 8) | format;
    const auto known = m_cells.constFind(key);
    if (known != m_cells.constEnd()) {
        return *known;
    }
    if (m_cells.size() >= LargestCellCount) {
        m_cells.clear();
    }
    return *m_cells.insert(key, make(character));
}

uint CellMaker::unicode(const PaperCharacter &character) const
{
    if (m_codec == nullptr) {
        return character.code;
    }
    if (has(character, ByNumber) && character.code >= 0x80 && character.code <= 0xFF) {
        const char byte = static_cast<char>(character.code);
        return m_codec->toUnicode(&byte, 1).leftJustified(1, QLatin1Char('?')).at(0).unicode();
    }
    return m_codec->canEncode(QChar(character.code)) ? character.code : QuestionMark;
}

// The largest image of the code that fits into the font's cell of own symbols; an empty raster when there is none.
Raster CellMaker::symbol(int code, const FontInfo &font) const
{
    const MonochromeImage *best = nullptr;
    const auto range = m_images.equal_range(static_cast<signed char>(code));
    for (auto image = range.first; image != range.second; ++image) {
        const bool isFitting
            = image->isValid() && image->width() <= font.customWidth() && image->height() <= font.customHeight();
        const bool isLarger = best == nullptr || image->width() * image->height() > best->width() * best->height();
        best = isFitting && isLarger ? &*image : best;
    }
    return best == nullptr || !font.customSymbols() ? Raster() : Raster(*best);
}

Raster CellMaker::glyph(const PaperCharacter &character, QSize cell) const
{
    const bool isSymbol = character.code >= 1 && character.code <= LastSymbol && !has(character, ByNumber);
    const Raster image = isSymbol ? symbol(character.code, font(character.font)) : Raster();
    if (image.width() > 0) {
        return image.centred(cell.width(), cell.height());
    }
    if (isControl(character.code) && !isSymbol && !(has(character, ByNumber) && m_codec != nullptr)) {
        return Raster(cell.width(), cell.height());
    }
    const uint code = isSymbol ? QuestionMark : unicode(character);
    const Raster found
        = isControl(code) ? Raster(cell.width(), cell.height()) : fontGlyph(code, cell.width(), cell.height());
    return found.width() > 0 ? found : fontGlyph(QuestionMark, cell.width(), cell.height());
}

Raster CellMaker::make(const PaperCharacter &character) const
{
    const FontInfo type = font(character.font);
    Raster cell = glyph(character, {qMax<int>(1, type.width()), qMax<int>(1, type.height())});
    cell = has(character, Bold) ? bold(cell) : cell;
    cell = has(character, Italic) ? italic(cell) : cell;
    cell = has(character, Underline) ? underlined(cell) : cell;
    cell = has(character, Inverse) ? cell.inverted() : cell;
    const int horizontal = has(character, DoubleWidth) ? 2 : 1;
    const int vertical = has(character, DoubleHeight) ? 2 : 1;
    return horizontal * vertical == 1 ? cell : cell.scaled(horizontal, vertical);
}

} // namespace printsrv
