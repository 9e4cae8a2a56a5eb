// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "fontface.h"

#include "paperfont.h"

#include <QFile>

#include <algorithm>

namespace printsrv {

namespace {

constexpr int LargestCell = 255;

bool isBoxDrawing(uint character)
{
    return character >= 0x2500 && character <= 0x259F;
}

QByteArray resource(const QString &name)
{
    QFile file(QStringLiteral(":/printsrvpaper/face-") + name + QStringLiteral(".hex"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QVector<FontFace> loadFaces()
{
    QVector<FontFace> faces;
    for (const char *name : {"8x16", "10x20", "12x24", "16x32"}) {
        faces.append(parseFontFace(resource(QLatin1String(name))));
    }
    return faces;
}

// The glyph in the middle; what lies beyond its edge repeats the dots of the edge, so that lines go on.
Raster extended(const Raster &glyph, int width, int height)
{
    const int left = (width - glyph.width()) / 2;
    const int top = (height - glyph.height()) / 2;
    Raster cell(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (glyph.dot(qBound(0, x - left, glyph.width() - 1), qBound(0, y - top, glyph.height() - 1))) {
                cell.setDot(x, y);
            }
        }
    }
    return cell;
}

// A dot of the small cell is black when any dot is black that it stands for.
Raster shrunk(const Raster &glyph, int width, int height)
{
    Raster cell(width, height);
    for (int y = 0; y < glyph.height(); ++y) {
        for (int x = 0; x < glyph.width(); ++x) {
            if (glyph.dot(x, y)) {
                cell.setDot(x * width / glyph.width(), y * height / glyph.height());
            }
        }
    }
    return cell;
}

Raster inCell(const Raster &glyph, uint character, int width, int height)
{
    if (glyph.width() > width || glyph.height() > height) {
        return shrunk(glyph, qMin(width, glyph.width()), qMin(height, glyph.height())).centred(width, height);
    }
    const int factor = qMin(width / glyph.width(), height / glyph.height());
    const Raster large = glyph.scaled(factor, factor);
    return isBoxDrawing(character) ? extended(large, width, height) : large.centred(width, height);
}

} // namespace

Raster FontFace::glyph(uint character) const
{
    MonochromeImage image;
    image.setWidth(width);
    image.setHeight(height);
    image.setImage(glyphs.value(character));
    return Raster(image);
}

const QVector<FontFace> &fontFaces()
{
    static const QVector<FontFace> Faces = loadFaces();
    return Faces;
}

FontFace parseFontFace(const QByteArray &text)
{
    FontFace face;
    const QList<QByteArray> lines = text.split('\n');
    const QList<QByteArray> size = lines.first().mid(2).split('x');
    face.width = size.first().toInt();
    face.height = size.last().toInt();
    face.glyphs.reserve(lines.size());
    for (const QByteArray &line : lines) {
        const int colon = line.indexOf(':');
        if (colon > 0 && !line.startsWith('#')) {
            face.glyphs.insert(line.left(colon).toUInt(nullptr, 16), QByteArray::fromHex(line.mid(colon + 1)));
        }
    }
    return face;
}

Raster fontGlyph(uint character, int width, int height)
{
    const FontFace *chosen = nullptr;
    for (const FontFace &face : fontFaces()) {
        const bool isFitting = face.width <= width && face.height <= height;
        if (face.glyphs.contains(character) && (chosen == nullptr || isFitting)) {
            chosen = &face;
        }
    }
    return chosen == nullptr ? Raster() : inCell(chosen->glyph(character), character, width, height);
}

} // namespace printsrv

bool PaperFont::has(uint character)
{
    const auto &faces = printsrv::fontFaces();
    return std::any_of(faces.begin(), faces.end(),
                       [character](const printsrv::FontFace &face) { return face.glyphs.contains(character); });
}

MonochromeImage PaperFont::glyph(uint character, int width, int height)
{
    const bool isSize = qMin(width, height) >= 1 && qMax(width, height) <= printsrv::LargestCell;
    if (!isSize || !has(character)) {
        return {};
    }
    return printsrv::fontGlyph(character, width, height).toMonochromeImage();
}
