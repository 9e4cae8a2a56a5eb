// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "paperpage.h"

#include "papercode.h"

namespace printsrv {

namespace {

constexpr ushort Tab = '\t';
constexpr ushort Blank = ' ';
constexpr int LargestSpacing = 255;
constexpr int DotsASpacing = 4;
constexpr qint64 LargestImageBytes = 64LL * 1024 * 1024;

uchar byteAt(const QByteArray &bytes, int index)
{
    return index < bytes.size() ? static_cast<uchar>(bytes.at(index)) : 0;
}

// A character beyond the first 65536 is one character that no printer has, not two.
QVector<PaperCharacter> characters(const QString &text, const QByteArray &font, const QByteArray &format)
{
    QVector<PaperCharacter> line;
    line.reserve(text.size());
    for (int index = 0; index < text.size(); ++index) {
        line.append({text.at(index).unicode(), byteAt(font, index), byteAt(format, index)});
        const bool isPair = text.at(index).isHighSurrogate() && index + 1 < text.size();
        index += isPair && text.at(index + 1).isLowSurrogate() ? 1 : 0;
    }
    return line;
}

// Where something of this width begins; too wide, it begins at the left edge and is cut at the right one.
int leftEdge(ETextAlignment alignment, int paper, qint64 width)
{
    const int room = static_cast<int>(qMax<qint64>(0, paper - width));
    switch (alignment) {
    case TextAlignRight:
        return room;
    case TextAlignCenter:
        return room / 2;
    default:
        return 0;
    }
}

bool isTooLarge(const MonochromeImage &image)
{
    return (qint64(image.width()) + 7) / 8 * image.height() > LargestImageBytes;
}

} // namespace

PaperPage::PaperPage(int width, const PrinterInfo &model, const CellMaker &cells)
    : m_width(width)
    , m_hasLineSpacing(model.lineSpacing())
    , m_cells(cells)
    , m_raster(width, 0)
{
}

EPaperError PaperPage::error() const
{
    return m_error;
}

const Raster &PaperPage::raster() const
{
    return m_raster;
}

// Adds the rows and returns the first of them; -1 when the paper ends before.
int PaperPage::grow(qint64 rows)
{
    if (m_error != PaperNoError || m_raster.height() + rows > PaperRenderer::LargestHeight) {
        m_error = PaperTooLong;
        return -1;
    }
    const int top = m_raster.height();
    m_raster.grow(static_cast<int>(rows));
    return top;
}

void PaperPage::print(const DocumentBlock &block)
{
    if (m_error != PaperNoError) {
        return;
    }
    if (block.isText()) {
        printText(block);
    } else if (block.isImage()) {
        printImage(block.img(), block.alignment());
    } else if (block.isBarcode() || block.isQrCode()) {
        printCode(block);
    }
}

void PaperPage::feed(int lines)
{
    for (int line = 0; line < lines && m_error == PaperNoError; ++line) {
        printLine({}, TextAlignLeft, 0);
    }
}

void PaperPage::printText(const DocumentBlock &block)
{
    const QStringList text = block.text();
    const QList<QByteArray> font = block.font();
    const QList<QByteArray> format = block.format();
    const QList<int> spacing = block.lineSpacing();
    for (int index = 0; index < text.size() && m_error == PaperNoError; ++index) {
        printLine(characters(text.at(index), font.at(index), format.at(index)), block.alignment(), spacing.at(index));
    }
}

qint64 PaperPage::width(const Line &line) const
{
    qint64 sum = 0;
    for (const PaperCharacter &character : line) {
        sum += m_cells.size(character).width();
    }
    return sum;
}

int PaperPage::height(const Line &line) const
{
    int largest = line.isEmpty() ? m_cells.size({}).height() : 0;
    for (const PaperCharacter &character : line) {
        largest = qMax(largest, m_cells.size(character).height());
    }
    return largest;
}

// Width of the first TAB of a full-width line in dots; 0 for a line whose TABs are blanks.
int PaperPage::tabWidth(const Line &line, ETextAlignment alignment) const
{
    for (int index = 0; alignment == TextAlignFullWidth && index < line.size(); ++index) {
        if (line.at(index).code == Tab) {
            const qint64 room = m_width - width(line);
            return room > 0 ? static_cast<int>(room) + m_cells.size(line.at(index)).width() : 0;
        }
    }
    return 0;
}

void PaperPage::printLine(const Line &line, ETextAlignment alignment, int spacing)
{
    const int lineHeight = height(line);
    const int below = m_hasLineSpacing ? qBound(0, spacing, LargestSpacing) * DotsASpacing : 0;
    const int top = grow(lineHeight + below);
    if (top < 0) {
        return;
    }
    int tab = tabWidth(line, alignment);
    int x = leftEdge(alignment, m_width, width(line));
    for (int index = 0; index < line.size() && x < m_width; ++index) {
        PaperCharacter character = line.at(index);
        const bool isTab = character.code == Tab;
        character.code = isTab ? Blank : character.code;
        const QSize size = m_cells.size(character);
        const int advance = isTab && tab > 0 ? tab : size.width();
        tab = isTab ? 0 : tab;
        // The format shows over the whole of a wide TAB: an underline has no hole.
        for (int done = 0; done < advance && x + done < m_width; done += size.width()) {
            const Raster &cell = m_cells.cell(character);
            const int left = x + qMin(done, advance - size.width());
            m_raster.draw(cell, left, top + lineHeight - size.height());
        }
        x += advance;
    }
}

void PaperPage::printImage(const MonochromeImage &image, ETextAlignment alignment)
{
    if (isTooLarge(image)) {
        m_error = PaperTooLong;
        return;
    }
    const int top = grow(image.height());
    if (top >= 0) {
        m_raster.draw(Raster(image), leftEdge(alignment, m_width, image.width()), top);
    }
}

void PaperPage::printCode(const DocumentBlock &block)
{
    const Raster code = codeRaster(block, m_width);
    if (code.width() == 0) {
        printLine({{'?', 0, 0}}, block.alignment(), 0);
        return;
    }
    const int top = grow(code.height());
    if (top >= 0) {
        m_raster.draw(code, leftEdge(block.alignment(), m_width, code.width()), top);
    }
}

} // namespace printsrv
