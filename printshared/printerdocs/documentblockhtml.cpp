// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "documentblockhtml.h"

#include "characterformat.h"
#include "memoryguard.h"
#include "symbolpictures.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

using printsrv::EHtmlForm;
using printsrv::HtmlLine;
using printsrv::HtmlStyle;

using printsrv::characterformat::Bold;
using printsrv::characterformat::Italic;
using printsrv::characterformat::PlacedByCode;
using printsrv::characterformat::Underline;

constexpr QLatin1Char Tab('\t');
constexpr QLatin1Char Blank(' ');

template<std::size_t Size>
constexpr QLatin1String latin1(const char (&text)[Size])
{
    return QLatin1String(text, static_cast<int>(Size) - 1);
}

// The beginnings of runs by their width factor, as far as the fonts of text printers go.
constexpr QLatin1String FontBegin[] = {
    latin1("<font size = 0>"), latin1("<font size = 1>"), latin1("<font size = 2>"),
    latin1("<font size = 3>"), latin1("<font size = 4>"), latin1("<font size = 5>"),
    latin1("<font size = 6>"), latin1("<font size = 7>"), latin1("<font size = 8>"),
};
constexpr int FontBegins = static_cast<int>(std::size(FontBegin));

struct Element
{
    uchar bit;
    QLatin1String begin;
    QLatin1String end;
};

// In the order of nesting.
constexpr Element Elements[] = {
    {Bold, latin1("<b>"), latin1("</b>")},
    {Italic, latin1("<i>"), latin1("</i>")},
    {Underline, latin1("<u>"), latin1("</u>")},
};

constexpr quint64 bitOf(int code)
{
    return quint64(1) << code;
}

// A bit for each character that can need anything but itself; all of them are below 64.
constexpr quint64 SuspectCodes = bitOf('<') | bitOf('>') | bitOf('&') | bitOf('"') | bitOf(' ')
    | (bitOf(printsrv::LastSymbolCode + 1) - bitOf(printsrv::FirstSymbolCode));

bool isSuspect(QChar character)
{
    return character.unicode() < 64 && ((SuspectCodes >> character.unicode()) & 1) != 0;
}

// Half-open range of character positions in a line.
struct Range
{
    int begin;
    int end;
};

uchar byteAt(const QByteArray &bytes, int position)
{
    return position < bytes.size() ? static_cast<uchar>(bytes.at(position)) : uchar(0);
}

// Whether all characters in a range that is not empty have the same byte. Most lines are of one style.
bool isUniform(const QByteArray &bytes, Range range)
{
    const char *first = bytes.constData() + range.begin;
    return bytes.size() <= range.begin
        || (bytes.size() >= range.end
            && std::memcmp(first, first + 1, static_cast<std::size_t>(range.end - range.begin - 1)) == 0);
}

// Writes the characters of one line in cells.
class LineWriter
{
public:
    LineWriter(QString &out, const HtmlLine &line, const HtmlStyle &style)
        : m_out(out)
        , m_line(line)
        , m_style(style)
    {
    }

    void writeCell(Range cell)
    {
        if (cell.begin == cell.end) {
            return;
        }
        // Looked at once, not again for the rest of the cell at each run: there can be as many runs as characters.
        const bool isOneRun = isUniform(m_line.font, cell) && isUniform(m_line.format, cell);
        Range run{cell.begin, cell.begin};
        while (run.end < cell.end) {
            run = {run.end, isOneRun ? cell.end : runEnd({run.end, cell.end})};
            writeRun(run, cell);
        }
    }

private:
    uchar font(int position) const
    {
        return byteAt(m_line.font, position);
    }

    uchar format(int position) const
    {
        return byteAt(m_line.format, position);
    }

    // The first position in the range with another font or format than the range's beginning.
    int runEnd(Range range) const
    {
        int end = range.begin + 1;
        while (end < range.end && font(end) == font(range.begin) && format(end) == format(range.begin)) {
            ++end;
        }
        return end;
    }

    void writeRun(Range run, Range cell)
    {
        const uchar runFormat = format(run.begin);
        const bool isStyled = (runFormat & (Bold | Italic | Underline)) != 0;
        if (isStyled) {
            writeElementBegins(runFormat);
        }
        writeFont(printsrv::widthFactor(runFormat, font(run.begin)));
        writeCharacters(run, cell, runFormat);
        m_out += QLatin1String("</font>");
        if (isStyled) {
            writeElementEnds(runFormat);
        }
    }

    void writeFont(int widthFactor)
    {
        if (widthFactor < FontBegins) {
            m_out += FontBegin[widthFactor];
        } else {
            m_out += QStringLiteral("<font size = %1>").arg(widthFactor);
        }
    }

    void writeElementBegins(uchar runFormat)
    {
        for (const Element &element : Elements) {
            m_out += (runFormat & element.bit) != 0 ? element.begin : QLatin1String();
        }
    }

    void writeElementEnds(uchar runFormat)
    {
        for (auto element = std::crbegin(Elements); element != std::crend(Elements); ++element) {
            m_out += (runFormat & element->bit) != 0 ? element->end : QLatin1String();
        }
    }

    void writeCharacters(Range run, Range cell, uchar runFormat)
    {
        const QChar *text = m_line.text.constData();
        int plain = run.begin;
        for (int position = run.begin; position < run.end; ++position) {
            if (!isSuspect(text[position]) || isPlain(position, cell, runFormat)) {
                continue;
            }
            m_out.append(text + plain, position - plain);
            writeSpecial(text[position]);
            plain = position + 1;
        }
        m_out.append(text + plain, run.end - plain);
    }

    // Whether one of the suspect characters stands for itself.
    bool isPlain(int position, Range cell, uchar runFormat) const
    {
        const QChar character = m_line.text.at(position);
        if (character == Blank) {
            return m_style.form != EHtmlForm::TableRow || !isLostBlank(position, cell);
        }
        return character.unicode() <= printsrv::LastSymbolCode && (runFormat & PlacedByCode) != 0;
    }

    // A blank that a browser would drop in a table: one beside another, or at an end of the cell.
    bool isLostBlank(int position, Range cell) const
    {
        return position == cell.begin || position + 1 == cell.end || m_line.text.at(position - 1) == Blank
            || m_line.text.at(position + 1) == Blank;
    }

    // The one place that escapes.
    void writeSpecial(QChar character)
    {
        switch (character.unicode()) {
        case '<':
            m_out += QLatin1String("&lt;");
            break;
        case '>':
            m_out += QLatin1String("&gt;");
            break;
        case '&':
            m_out += QLatin1String("&amp;");
            break;
        case '"':
            m_out += QLatin1String("&quot;");
            break;
        case ' ':
            m_out += QLatin1String("&nbsp;");
            break;
        default:
            m_out += m_style.symbols->html(character.unicode());
        }
    }

    QString &m_out;
    const HtmlLine &m_line;
    const HtmlStyle &m_style;
};

QLatin1String wholeRowBegin(ETextAlignment alignment)
{
    switch (alignment) {
    case TextAlignCenter:
        return QLatin1String("<tr><td colspan=\"2\" align = \"center\"> ");
    case TextAlignRight:
        return QLatin1String("<tr><td colspan=\"2\" align = \"right\"> ");
    default:
        return QLatin1String("<tr><td colspan=\"2\" align = \"left\"> ");
    }
}

void writeWidth(QString &out, int percent)
{
    if (percent > 0) {
        out += QStringLiteral(" width=\"%1%\"").arg(percent);
    }
}

// The text before and after the TAB in two cells.
void writeSplitRow(QString &out, LineWriter &writer, int tab, int end, int leftPercent)
{
    const bool hasWidth = leftPercent > 0 && leftPercent < 100;
    out += QLatin1String("<tr><td align = \"left\"");
    writeWidth(out, hasWidth ? leftPercent : 0);
    out += QLatin1String("> ");
    writer.writeCell({0, tab});
    out += QLatin1String(" </td><td align = \"right\"");
    writeWidth(out, hasWidth ? 100 - leftPercent : 0);
    out += QLatin1String("> ");
    writer.writeCell({tab + 1, end});
    out += QLatin1String(" </td></tr>");
}

void writeTableRow(QString &out, const HtmlLine &line, ETextAlignment alignment, const HtmlStyle &style)
{
    LineWriter writer(out, line, style);
    const int end = line.text.size();
    const int tab = alignment == TextAlignFullWidth ? line.text.indexOf(Tab) : -1;
    if (tab >= 0) {
        writeSplitRow(out, writer, tab, end, style.leftCellPercent);
        return;
    }
    out += wholeRowBegin(alignment);
    writer.writeCell({0, end});
    out += QLatin1String(" </td></tr>");
}

QLatin1String divisionBegin(ETextAlignment alignment)
{
    switch (alignment) {
    case TextAlignCenter:
        return QLatin1String("<div align=\"center\">");
    case TextAlignRight:
        return QLatin1String("<div align=\"right\">");
    default:
        return QLatin1String("<div align=\"left\">");
    }
}

void writeDivision(QString &out, const HtmlLine &line, ETextAlignment alignment, const HtmlStyle &style)
{
    out += divisionBegin(alignment);
    LineWriter(out, line, style).writeCell({0, line.text.size()});
    out += QLatin1String("</div>");
}

bool isBlank(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar character) { return character.isSpace(); });
}

void writeLine(QString &out, const HtmlLine &line, ETextAlignment alignment, const HtmlStyle &style)
{
    if (isBlank(line.text)) {
        out += QLatin1String("<br>");
    } else if (style.form == EHtmlForm::TableRow) {
        writeTableRow(out, line, alignment, style);
    } else {
        writeDivision(out, line, alignment, style);
    }
}

} // namespace

void printsrv::appendLineHtml(QString &out, const HtmlLine &line, ETextAlignment alignment, const HtmlStyle &style)
{
    if (style.form == EHtmlForm::TableRow) {
        writeLine(out, line, alignment, style);
        return;
    }
    out += QLatin1String("<pre>\n");
    writeLine(out, line, alignment, style);
    out += QLatin1String("\n</pre>");
}

void printsrv::appendBlockHtml(QString &out, const DocumentBlock &block, const HtmlStyle &style)
{
    if (!block.isText()) {
        return;
    }
    const QStringList text = block.text();
    const QList<QByteArray> font = block.font();
    const QList<QByteArray> format = block.format();
    for (int i = 0; i < text.size(); ++i) {
        if (i > 0) {
            out += QLatin1Char('\n');
        }
        appendLineHtml(out, {text.at(i), font.at(i), format.at(i)}, block.alignment(), style);
    }
}

QString printsrv::blockHtml(const DocumentBlock &block, const SpecialCharacters &symbols, EHtmlForm form,
                            int leftCellPercent)
{
    return madeOrEmpty("HTML of a block", [&] {
        SymbolPictures pictures(symbols);
        QString html;
        appendBlockHtml(html, block, {form, leftCellPercent, &pictures});
        return html;
    });
}
