// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "symbolfile.h"

#include <paperfont.h>
#include <printerinfo.h>

#include <QMap>
#include <QPair>
#include <QXmlStreamWriter>

namespace printsrv {

namespace {

constexpr int Gap = 4;
constexpr int RowAlignment = 8;
constexpr int MiddleGrey = 128;
// What a hostile file may ask for; symbols of printers are far smaller.
constexpr int LargestSide = 1024;

/** Width and height; sorts by both. */
using Size = QPair<int, int>;
using SymbolMap = QMap<Size, QMap<int, MonochromeImage>>;

Size sizeOf(const MonochromeImage &image)
{
    return {image.width(), image.height()};
}

QString lineOf(const MonochromeImage &image, int y)
{
    QString line(image.width(), QLatin1Char('0'));
    for (int x = 0; x < image.width(); ++x) {
        if (image.pixel(x, y, RowAlignment)) {
            line[x] = QLatin1Char('1');
        }
    }
    return line;
}

void writeSymbol(QXmlStreamWriter &xml, int code, const MonochromeImage &image)
{
    xml.writeStartElement(QStringLiteral("Symbol"));
    xml.writeAttribute(QStringLiteral("Code"), QString::number(code));
    for (int y = 0; y < image.height(); ++y) {
        xml.writeTextElement(QStringLiteral("Line"), lineOf(image, y));
    }
    xml.writeEndElement();
}

void writeFont(QXmlStreamWriter &xml, Size size, const QMap<int, MonochromeImage> &symbols)
{
    xml.writeStartElement(QStringLiteral("Font"));
    xml.writeAttribute(QStringLiteral("Height"), QString::number(size.second));
    xml.writeAttribute(QStringLiteral("Width"), QString::number(size.first));
    for (auto symbol = symbols.begin(); symbol != symbols.end(); ++symbol) {
        writeSymbol(xml, symbol.key(), *symbol);
    }
    xml.writeEndElement();
}

SymbolMap showable(const SpecialCharacters &symbols)
{
    SymbolMap map;
    const auto images = symbols.images();
    for (auto image = images.begin(); image != images.end(); ++image) {
        if (image->isValid() && qMax(image->width(), image->height()) <= LargestSide) {
            map[sizeOf(*image)].insert(image.key(), *image);
        }
    }
    return map;
}

QSize pictureSize(const SymbolMap &map)
{
    QSize size(0, Gap);
    for (auto row = map.begin(); row != map.end(); ++row) {
        size.rwidth() = qMax(size.width(), row->size() * (row.key().first + Gap) + Gap);
        size.rheight() += row.key().second + Gap;
    }
    return size;
}

void draw(QImage &picture, const MonochromeImage &image, QPoint place)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y, RowAlignment)) {
                picture.setPixel(place.x() + x, place.y() + y, 1);
            }
        }
    }
}

} // namespace

QVector<QSize> catalogueSizes()
{
    QMap<Size, QSize> sizes;
    const auto models = PrinterInfo::fromResources();
    for (const PrinterInfo &model : models) {
        const auto fonts = model.fontTypes();
        for (const FontInfo &font : fonts) {
            if (font.customSymbols()) {
                sizes.insert({font.customWidth(), font.customHeight()}, {font.customWidth(), font.customHeight()});
            }
        }
    }
    return {sizes.cbegin(), sizes.cend()};
}

Outcome<QVector<SymbolImage>> symbolsOfText(const QString &text, const QVector<QSize> &sizes)
{
    const QVector<uint> characters = text.toUcs4();
    if (characters.isEmpty() || characters.size() > LastSymbolCode) {
        return Failure{QStringLiteral("has %1 characters, 1 to 7 are possible").arg(characters.size())};
    }
    QVector<SymbolImage> symbols;
    for (int index = 0; index < characters.size(); ++index) {
        const uint character = characters.at(index);
        if (!PaperFont::has(character)) {
            return Failure{QStringLiteral("the bundled font has no '%1'; draw it and give its picture")
                               .arg(QString::fromUcs4(&character, 1))};
        }
        for (const QSize &size : sizes) {
            symbols.append({index + 1, PaperFont::glyph(character, size.width(), size.height())});
        }
    }
    return symbols;
}

SymbolImage symbolOfPicture(int code, const QImage &picture)
{
    const int rowBytes = (picture.width() + 7) / 8;
    QByteArray bits(rowBytes * picture.height(), '\0');
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb colour = picture.pixel(x, y);
            if (qAlpha(colour) >= MiddleGrey && qGray(colour) < MiddleGrey) {
                char &byte = bits.data()[y * rowBytes + x / 8];
                byte = static_cast<char>(byte | (0x80 >> (x % 8)));
            }
        }
    }
    SymbolImage symbol;
    symbol.code = code;
    symbol.image.setWidth(picture.width());
    symbol.image.setHeight(picture.height());
    symbol.image.setImage(bits);
    return symbol;
}

QByteArray symbolFile(const QVector<SymbolImage> &symbols)
{
    SymbolMap map;
    for (const SymbolImage &symbol : symbols) {
        map[sizeOf(symbol.image)].insert(symbol.code, symbol.image);
    }
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("SpecialSymbolImages"));
    for (auto font = map.begin(); font != map.end(); ++font) {
        writeFont(xml, font.key(), *font);
    }
    xml.writeEndDocument();
    return bytes;
}

QImage symbolPicture(const SpecialCharacters &symbols)
{
    const SymbolMap map = showable(symbols);
    if (map.isEmpty()) {
        return {};
    }
    QImage picture(pictureSize(map), QImage::Format_Mono);
    if (picture.isNull()) {
        return {};
    }
    picture.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    picture.fill(0);
    int y = Gap;
    for (auto row = map.begin(); row != map.end(); ++row) {
        int x = Gap;
        for (const MonochromeImage &image : *row) {
            draw(picture, image, {x, y});
            x += row.key().first + Gap;
        }
        y += row.key().second + Gap;
    }
    return picture;
}

} // namespace printsrv
