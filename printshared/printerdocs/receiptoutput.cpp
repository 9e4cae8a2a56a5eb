// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptoutput.h"

#include "documentblockhtml.h"
#include "lineformatter.h"
#include "linelayout.h"
#include "symbolpictures.h"
#include "tracerecorder.h"

#include <iprintdevicesettings.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace printsrv {

namespace {

/** Formats the lines of one receipt, from the first to the last. */
class LineWalk
{
public:
    explicit LineWalk(LineDetail detail)
        : m_detail(detail)
    {
        const auto settings = IPrintDeviceSettings::printDeviceSettings();
        if (settings) {
            m_charactersMode = settings->charactersMode();
        }
    }

    /** Takes the line over, so that its text is changed in place when nobody else holds it. */
    FormattedLine formatted(QString &&line)
    {
        FormattedLine formatted = line.isEmpty() ? emptyLine() : formatLine(std::move(line), m_carried, m_detail, 0);
        finish(formatted);
        return formatted;
    }

    /** The same for a line that is traced. */
    FormattedLine traced(QString &&line, LineTrace &trace)
    {
        FormattedLine formatted = line.isEmpty() ? emptyLine() : formatTracedLine(std::move(line), m_carried, trace);
        if (m_charactersMode != IPrintDeviceSettings::CharactersAsWritten) {
            followCase(formatted.text, trace.origins);
        }
        finish(formatted);
        return formatted;
    }

private:
    /** Upper and lower case can be longer than the character: it has the origin of the character then. */
    void followCase(const QString &text, Origins &origins) const
    {
        Origins followed;
        for (int i = 0, length = 0; i < text.size(); i += length) {
            const bool isPair = text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
            length = isPair ? 2 : 1;
            const QString character = text.mid(i, length);
            const bool isUpper = m_charactersMode == IPrintDeviceSettings::CharactersUpper;
            const int made = (isUpper ? character.toUpper() : character.toLower()).size();
            followed += Origins(made, origins.at(i));
        }
        origins = followed;
    }

    void finish(FormattedLine &formatted)
    {
        m_alignment = formatted.alignment;
        if (m_charactersMode == IPrintDeviceSettings::CharactersUpper) {
            formatted.text = std::move(formatted.text).toUpper();
        } else if (m_charactersMode == IPrintDeviceSettings::CharactersLower) {
            formatted.text = std::move(formatted.text).toLower();
        }
    }

    FormattedLine emptyLine() const
    {
        FormattedLine line;
        line.alignment = m_alignment;
        return line;
    }

    LineDetail m_detail;
    IPrintDeviceSettings::ECharactersMode m_charactersMode = IPrintDeviceSettings::CharactersAsWritten;
    CarriedStyle m_carried;
    ETextAlignment m_alignment = TextAlignLeft;
};

using Lines = std::vector<FormattedLine>;

/** One list of what @p part takes from each of the lines. */
template<typename List, typename Part>
List listOf(Lines::iterator begin, Lines::iterator end, Part part)
{
    List list;
    list.reserve(int(end - begin));
    for (auto line = begin; line != end; ++line) {
        list.append(std::move((*line).*part));
    }
    return list;
}

/** Makes a block of lines that are aligned alike, whose contents it takes over. */
DocumentBlock blockOf(Lines::iterator begin, Lines::iterator end)
{
    DocumentBlock block;
    block.setAlignment(begin->alignment);
    block.setText(listOf<QStringList>(begin, end, &FormattedLine::text));
    block.setFont(listOf<QList<QByteArray>>(begin, end, &FormattedLine::font));
    block.setFormat(listOf<QList<QByteArray>>(begin, end, &FormattedLine::format));
    block.setLineSpacing(listOf<QList<int>>(begin, end, &FormattedLine::lineSpacing));
    return block;
}

/** Makes blocks of @p lines: a line joins the block before it when they are aligned alike. */
QList<DocumentBlock> blocksOf(Lines lines)
{
    QList<DocumentBlock> blocks;
    for (auto begin = lines.begin(); begin != lines.end();) {
        const auto isAlignedOtherwise = [begin](const FormattedLine &line) {
            return line.alignment != begin->alignment;
        };
        const auto end = std::find_if(begin, lines.end(), isAlignedOtherwise);
        blocks.append(blockOf(begin, end));
        begin = end;
    }
    return blocks;
}

/** What stands between two lines of output, none before the first one. */
void appendLineBreak(QString &out, bool &isFirst)
{
    if (!isFirst) {
        out += QLatin1Char('\n');
    }
    isFirst = false;
}

} // namespace

QString plainTextOf(QStringList lines, int width)
{
    LineWalk walk(LineDetail::Text);
    const QString blanks(qBound(0, width, LargestLineWidth), QLatin1Char(' '));
    QString text;
    bool isFirst = true;
    for (QString &line : lines) {
        appendLineBreak(text, isFirst);
        const bool isEmpty = line.isEmpty();
        const FormattedLine formatted = walk.formatted(std::move(line));
        if (isEmpty) {
            text += blanks;
        } else {
            appendLaidOutLine(text, formatted.text, formatted.alignment, width);
        }
    }
    return text;
}

QString htmlOf(QStringList lines, const SpecialCharacters &symbols, QLatin1String opening, QLatin1String closing)
{
    LineWalk walk(LineDetail::Styles);
    SymbolPictures pictures(symbols);
    const HtmlStyle style{EHtmlForm::TableRow, 0, &pictures};
    QString html = opening;
    bool isFirst = true;
    for (QString &line : lines) {
        appendLineBreak(html, isFirst);
        const FormattedLine formatted = walk.formatted(std::move(line));
        appendLineHtml(html, {formatted.text, formatted.font, formatted.format}, formatted.alignment, style);
    }
    return html += closing;
}

TextPrinterDocument documentOf(QStringList lines, const SpecialCharacters &symbols)
{
    LineWalk walk(LineDetail::Styles);
    Lines formatted;
    formatted.reserve(size_t(lines.size()) + 1);
    if (!lines.isEmpty()) {
        formatted.emplace_back();
    }
    for (QString &line : lines) {
        formatted.push_back(walk.formatted(std::move(line)));
    }
    TextPrinterDocument document;
    document.setBlocks(blocksOf(std::move(formatted)));
    document.setCharImages(symbols.images());
    document.setCurrentTicketAction({});
    return document;
}

void traceLines(QStringList lines, TraceRecorder &trace)
{
    LineWalk walk(LineDetail::Styles);
    for (int i = 0; i < lines.size(); ++i) {
        LineTrace followed = trace.takeLine(i);
        FormattedLine line = walk.traced(std::move(lines[i]), followed);
        trace.setLine(std::move(followed), {line.text, line.font, line.format, line.alignment, line.lineSpacing, {}});
    }
}

} // namespace printsrv
