// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "paperline.h"

#include <algorithm>

namespace printsrv {

namespace {

/** A font that the model lacks prints as its first one. */
int widthOfFont(const QList<FontInfo> &fonts, int number)
{
    const auto found
        = std::find_if(fonts.cbegin(), fonts.cend(), [number](const FontInfo &font) { return font.id() == number; });
    return qMax<int>(1, found == fonts.cend() ? fonts.first().width() : found->width());
}

} // namespace

PaperLine::PaperLine(const LintOptions &options)
    : m_width(options.width)
{
    if (!options.model) {
        return;
    }
    m_isDots = true;
    m_width = options.model->paperType(options.paperId).pointsToLine();
    m_hasDoubleWidth = options.model->doubleWidth();
    const auto fonts = options.model->fontTypes();
    for (int number = 0; number < m_cells.size() && !fonts.isEmpty(); ++number) {
        m_cells[number] = widthOfFont(fonts, number);
    }
}

int PaperLine::width() const
{
    return m_width;
}

QString PaperLine::share(qint64 width) const
{
    return (m_isDots ? QStringLiteral("%1 of %2 dots") : QStringLiteral("%1 of %2 characters")).arg(width).arg(m_width);
}

LineWidth PaperLine::measured(const ReceiptTrace::Line &line) const
{
    LineWidth width;
    const int side = line.alignment == TextAlignFullWidth ? line.text.indexOf(QLatin1Char('\t')) : -1;
    const bool hasBothSides = side >= 0 && !QStringView(line.text).mid(side).trimmed().isEmpty();
    for (int i = 0; i < line.text.size(); ++i) {
        const int cell = isSecondOfPair(line.text, i) ? 0 : cellWidth(line, i);
        if (i == side) {
            width.blank = hasBothSides ? cell : 0;
            continue;
        }
        width.text += cell;
        if (width.all() > m_width && width.edge < 0) {
            width.edge = i;
        }
    }
    return width;
}

int PaperLine::cellWidth(const ReceiptTrace::Line &line, int index) const
{
    const bool isDouble = m_hasDoubleWidth && (byteAt(line.format, index) & CharFormatDoubleWidth) != 0;
    return m_cells.value(byteAt(line.font, index), m_cells.first()) * (isDouble ? 2 : 1);
}

uchar byteAt(const QByteArray &bytes, int index)
{
    return index < bytes.size() ? static_cast<uchar>(bytes.at(index)) : 0;
}

bool isSecondOfPair(const QString &text, int index)
{
    return index > 0 && text.at(index).isLowSurrogate() && text.at(index - 1).isHighSurrogate();
}

} // namespace printsrv
