// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "specialcharacters.h"

#include "printerdocslog.h"
#include "xmlguard.h"

#include <boundedread.h>

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>

#include <new>

using printsrv::printerDocsLog;

namespace {

const QLatin1String RootElement("SpecialSymbolImages");
const QLatin1String FontElement("Font");
const QLatin1String SymbolElement("Symbol");
const QLatin1String LineElement("Line");
const QLatin1String HeightAttribute("Height");
const QLatin1String WidthAttribute("Width");
const QLatin1String CodeAttribute("Code");
constexpr QLatin1Char WhiteDot('0');
constexpr int LargestFileBytes = 16 * 1024 * 1024;
constexpr int DeepestNesting = 64;

int numberAttribute(const QXmlStreamReader &reader, QLatin1String name)
{
    return reader.attributes().value(name).toInt();
}

// As QXmlStreamReader::skipCurrentElement(), but for a depth that no honest file has, which would take a lot of memory.
void skipElement(QXmlStreamReader *reader)
{
    int depth = 1;
    while (depth > 0 && !reader->atEnd()) {
        reader->readNext();
        depth += reader->isStartElement() ? 1 : 0;
        depth -= reader->isEndElement() ? 1 : 0;
        if (depth > DeepestNesting) {
            reader->raiseError(QStringLiteral("elements are nested too deeply"));
        }
    }
}

bool readContent(const QString &path, QByteArray &content)
{
    QFile file(path);
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        qCCritical(printerDocsLog) << "Symbol file" << path << "is no regular file";
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        qCCritical(printerDocsLog) << "Cannot read the symbol file" << path << "error" << int(file.error())
                                   << file.errorString();
        return false;
    }
    content = printsrv::readBounded(file, LargestFileBytes);
    if (content.size() > LargestFileBytes) {
        qCCritical(printerDocsLog) << "Symbol file" << path << "is larger than 16 MiB";
        return false;
    }
    return true;
}

} // namespace

bool SpecialCharacters::load(const QString &path)
{
    clear();
    try {
        QByteArray content;
        if (!readContent(path, content)) {
            return false;
        }
        const QString refusal = printsrv::xmlRefusal(content);
        if (!refusal.isEmpty()) {
            qCCritical(printerDocsLog) << "Symbol file" << path << qPrintable(refusal);
            return false;
        }
        QXmlStreamReader reader(content);
        const bool isGood = parseDocument(&reader);
        if (reader.hasError()) {
            qCCritical(printerDocsLog) << "Symbol file" << path << "error" << int(reader.error())
                                       << reader.errorString() << "line" << reader.lineNumber() << "column"
                                       << reader.columnNumber();
        } else if (!isGood) {
            qCWarning(printerDocsLog) << "Symbol file" << path << "has a wrong root element or symbol, line"
                                      << reader.lineNumber();
        }
        return isGood;
    } catch (const std::bad_alloc &) {
        clear();
        qCCritical(printerDocsLog) << "Symbol file" << path << "needs more memory than there is";
        return false;
    }
}

void SpecialCharacters::clear()
{
    m_images.clear();
    m_fileName.clear();
}

QMultiMap<signed char, MonochromeImage> SpecialCharacters::images() const
{
    return m_images;
}

MonochromeImage SpecialCharacters::getImage(int code, int width, int height) const
{
    const auto key = static_cast<signed char>(code);
    const MonochromeImage *best = nullptr;
    qint64 bestArea = 0;
    for (auto it = m_images.constFind(key); it != m_images.constEnd() && it.key() == key; ++it) {
        const qint64 area = qint64(it->width()) * it->height();
        if (area > bestArea && it->isValid() && it->width() <= width && it->height() <= height) {
            best = &it.value();
            bestArea = area;
        }
    }
    return best != nullptr ? *best : MonochromeImage::createEmpty(width, height);
}

QString SpecialCharacters::fileName() const
{
    return m_fileName;
}

bool SpecialCharacters::operator==(const SpecialCharacters &other) const
{
    return m_images == other.m_images;
}

bool SpecialCharacters::operator!=(const SpecialCharacters &other) const
{
    return !(*this == other);
}

bool SpecialCharacters::parseDocument(QXmlStreamReader *reader)
{
    while (!reader->atEnd()) {
        const QXmlStreamReader::TokenType token = reader->readNext();
        if (token == QXmlStreamReader::DTD) {
            // Its entities could blow a small file up without bound.
            reader->raiseError(QStringLiteral("a document type declaration is not allowed"));
            return false;
        }
        if (token == QXmlStreamReader::StartElement && (reader->name() != RootElement || !parseImages(reader))) {
            return false;
        }
    }
    return true;
}

bool SpecialCharacters::parseImages(QXmlStreamReader *reader)
{
    if (!reader->isStartElement()) {
        return false;
    }
    while (reader->readNextStartElement()) {
        if (reader->name() != FontElement) {
            skipElement(reader);
        } else if (!parseFonts(reader)) {
            return false;
        }
    }
    return true;
}

bool SpecialCharacters::parseFonts(QXmlStreamReader *reader)
{
    const int height = numberAttribute(*reader, HeightAttribute);
    const int width = numberAttribute(*reader, WidthAttribute);
    while (reader->readNextStartElement()) {
        if (reader->name() != SymbolElement) {
            skipElement(reader);
        } else if (!parseSymbols(reader, width, height)) {
            return false;
        }
    }
    return true;
}

bool SpecialCharacters::parseSymbols(QXmlStreamReader *reader, int width, int height)
{
    if (!reader->isStartElement()) {
        return false;
    }
    const int code = numberAttribute(*reader, CodeAttribute);
    QStringList lines;
    while (reader->readNextStartElement()) {
        if (reader->name() != LineElement) {
            skipElement(reader);
            continue;
        }
        QString text;
        if (!parseLines(reader, text) || text.size() != width) {
            return false;
        }
        lines.append(text);
    }
    if (lines.size() != height) {
        return false;
    }
    createImage(code, lines, width, height);
    return true;
}

bool SpecialCharacters::parseLines(QXmlStreamReader *reader, QString &text)
{
    text = reader->readElementText();
    return !reader->hasError();
}

bool SpecialCharacters::strToData(const QString &text, int width, QByteArray &data)
{
    if (width < 1 || width > text.size()) {
        return false;
    }
    data.fill('\0', (width - 1) / 8 + 1);
    for (int dot = 0; dot < width; ++dot) {
        if (text.at(dot) != WhiteDot) {
            data[dot / 8] = static_cast<char>(data.at(dot / 8) | (0x80 >> (dot % 8)));
        }
    }
    return true;
}

bool SpecialCharacters::createImage(int code, const QStringList &lines, int width, int height)
{
    if (height <= 0 || height > lines.size()) {
        return false;
    }
    QByteArray rows;
    QByteArray row;
    for (const QString &line : lines) {
        if (!strToData(line, width, row)) {
            return false;
        }
        rows.append(row);
    }
    MonochromeImage image;
    image.setHeight(height);
    image.setWidth(width);
    image.setImage(rows);
    m_images.insert(static_cast<signed char>(code), image);
    return true;
}

QDebug operator<<(QDebug debug, const SpecialCharacters &symbols)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "SpecialCharacters(" << symbols.images().size() << " images)";
    return debug;
}
