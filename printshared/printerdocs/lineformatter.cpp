// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "lineformatter.h"

#include "characterformat.h"
#include "linetags.h"
#include "tracerecorder.h"

#include <algorithm>

namespace printsrv {

namespace {

/** The part of a line that a walk has moved to the front already; its last stretch begins at @c begin. */
struct Moved
{
    QChar *text;
    char *font; // null while the line has no bytes yet
    char *format;
    int begin;
    int size;

    QChar last() const
    {
        return text[size - 1];
    }

    /** What stands between the "<" and ">" that the part ends with when that is @p length characters; or nothing. */
    QStringView lastTag(int length) const
    {
        const bool isTag
            = size >= length + 2 && last() == QLatin1Char('>') && text[size - length - 2] == QLatin1Char('<');
        return isTag ? QStringView(text + size - length - 1, length) : QStringView();
    }

    bool endsWithTag(QLatin1String name) const
    {
        return lastTag(name.size()) == name;
    }

    /** Moves the stretch of the line from @p from up to @p to behind what was moved before. */
    void take(int from, int to)
    {
        begin = size;
        if (from != size) {
            std::copy(text + from, text + to, text + size);
        }
        if (from != size && format != nullptr) {
            std::copy(font + from, font + to, font + size);
            std::copy(format + from, format + to, format + size);
        }
        size += to - from;
    }

    /** Tells that the last @p length characters are a tag that is taken out; returns @p length. */
    int taken(int length) const
    {
        return length;
    }

    /** The same for a tag that a character is put in place of. */
    void replaced(int) const
    {
    }
};

/** The same while the line is traced: the origins move too, and the trace gets the tags. */
struct TracedMoved : Moved
{
    LineTrace *trace;
    Origin *origins;

    void take(int from, int to)
    {
        std::copy(origins + from, origins + to, origins + size);
        Moved::take(from, to);
    }

    int taken(int length) const
    {
        const int first = size - length;
        trace->tags.append({trace->line, QString(text + first, length), origins[first], origins[size - 1], false});
        return length;
    }

    void replaced(int length) const
    {
        taken(length);
        trace->tags.last().isCode = true;
    }
};

bool endsTag(QChar c)
{
    return c == QLatin1Char('>');
}

bool endsTagOrGroup(QChar c)
{
    return endsTag(c) || isBracket(c);
}

/** A line that is traced. The steps are made for it and for a plain line, so that the trace costs a plain line nothing.
 */
struct TracedLine : FormattedLine
{
    LineTrace *trace;
};

Q_ALWAYS_INLINE Moved movedOf(FormattedLine &line)
{
    const bool hasStyles = !line.format.isEmpty();
    return {line.text.data(), hasStyles ? line.font.data() : nullptr, hasStyles ? line.format.data() : nullptr, 0, 0};
}

TracedMoved movedOf(TracedLine &line)
{
    return {movedOf(static_cast<FormattedLine &>(line)), line.trace, line.trace->origins.data()};
}

void truncate(FormattedLine &line, int size)
{
    line.text.truncate(size);
    line.font.truncate(size);
    line.format.truncate(size);
}

void truncate(TracedLine &line, int size)
{
    truncate(static_cast<FormattedLine &>(line), size);
    line.trace->origins.resize(size);
}

/**
 * Moves the line's characters to its front, a stretch after the other. A stretch ends with a character that @p isEnd
 * is true for, or with the line; @p visit is asked then how many characters to drop from the end again.
 */
template<typename Line, typename IsEnd, typename Visit>
void rewrite(Line &line, IsEnd isEnd, Visit visit)
{
    auto moved = movedOf(line);
    const QChar *const text = moved.text;
    const int size = line.text.size();
    for (int from = 0; from < size;) {
        int to = from;
        while (to < size && !isEnd(text[to])) {
            ++to;
        }
        to = qMin(to + 1, size);
        moved.take(from, to);
        moved.size -= visit(moved);
        from = to;
    }
    truncate(line, moved.size);
}

/** Takes every @p tag out; true when there was one. */
template<typename Line>
bool takeOut(Line &line, QLatin1String tag)
{
    const int size = line.text.size();
    rewrite(line, endsTag,
            [tag](const auto &moved) { return moved.endsWithTag(tag) ? moved.taken(tag.size() + 2) : 0; });
    return line.text.size() != size;
}

/** Puts a TAB in place of every "<S>"; true when there was one. */
template<typename Line>
bool partSides(Line &line)
{
    const int size = line.text.size();
    rewrite(line, endsTag, [](auto &moved) {
        if (!moved.endsWithTag(SidesTag)) {
            return 0;
        }
        moved.text[moved.size - moved.taken(3)] = QLatin1Char('\t');
        return 2;
    });
    return line.text.size() != size;
}

template<typename Line>
void takeSpacing(Line &line)
{
    rewrite(line, endsTag, [&line](const auto &moved) {
        const QStringView tag = moved.lastTag(3);
        if (!isSpacing(tag)) {
            return 0;
        }
        line.lineSpacing = tag[2].unicode() - '0';
        return moved.taken(5);
    });
}

uchar withBit(uchar format, uchar bit, bool isSet)
{
    return isSet ? uchar(format | bit) : uchar(format & ~bit);
}

/** Takes the span markers of @p letter out; from each on, here and in the lines that follow, its bit is set or clear.
 */
template<typename Line>
void takeSpans(Line &line, const characterformat::Letter &letter, CarriedStyle &carried)
{
    bool hasMarker = false;
    rewrite(line, endsTag, [&](const auto &moved) {
        if (hasMarker && moved.format != nullptr) {
            const bool isSet = (carried.format & letter.bit) != 0;
            std::transform(moved.format + moved.begin, moved.format + moved.size, moved.format + moved.begin,
                           [&](char format) { return char(withBit(uchar(format), letter.bit, isSet)); });
        }
        const QStringView tag = moved.lastTag(letter.name.size() + 1);
        const bool isStart = isSpanStart(tag, letter.name);
        if (!isStart && !isSpanEnd(tag, letter.name)) {
            return 0;
        }
        hasMarker = true;
        carried.format = withBit(carried.format, letter.bit, isStart);
        return moved.taken(int(tag.size()) + 2);
    });
}

/** Takes the brackets of groups out, and the tag "<:>". */
template<typename Line>
void takeMarks(Line &line)
{
    rewrite(line, endsTagOrGroup, [](const auto &moved) {
        if (isBracket(moved.last())) {
            return moved.taken(1);
        }
        return moved.endsWithTag(EmptySpanTag) ? moved.taken(3) : 0;
    });
}

/** Reads the number of a font tag: 1 to 4 are the fonts 0 to 3, greater ones count modulo 4. */
uchar fontOf(QStringView tag)
{
    const int digits = int(tag.size()) - 1;
    // Four divides a hundred, so that the last two digits decide.
    const int last = tag.right(qMin(digits, 2)).toInt();
    const auto head = tag.mid(1, qMax(0, digits - 1));
    const bool isUpToFour
        = last <= 4 && std::all_of(head.begin(), head.end(), [](QChar c) { return c == QLatin1Char('0'); });
    return uchar(isUpToFour ? last - 1 : last % 4);
}

/** Takes the font tags out; each sets the font from its place on, here and in the lines that follow. */
template<typename Line>
void takeFonts(Line &line, CarriedStyle &carried)
{
    bool hasTag = false;
    rewrite(line, endsTag, [&](const auto &moved) {
        if (hasTag && moved.font != nullptr) {
            std::fill(moved.font + moved.begin, moved.font + moved.size, char(carried.font));
        }
        int digits = 0;
        while (digits + 1 < moved.size && isDigit(moved.text[moved.size - 2 - digits])) {
            ++digits;
        }
        const QStringView tag = moved.lastTag(digits + 1);
        if (!isFont(tag)) {
            return 0;
        }
        hasTag = true;
        carried.font = fontOf(tag);
        return moved.taken(digits + 3);
    });
}

/** The character of a code: a decimal number of at most nine digits, modulo 256; anything else is 0. */
QChar characterOf(QStringView code)
{
    constexpr int MostDigits = 9;
    const bool isNumber
        = !code.isEmpty() && code.size() <= MostDigits && std::all_of(code.begin(), code.end(), isDigit);
    return QChar(isNumber ? code.toUInt() % 256 : 0);
}

/** Puts characters in place of all tags that are left, from each "<" to the next ">". */
template<typename Line>
void placeCodes(Line &line)
{
    rewrite(line, endsTag, [](auto &moved) {
        const QChar *const stretch = moved.text + moved.begin;
        const int open = int(std::find(stretch, stretch + moved.size - moved.begin, QLatin1Char('<')) - moved.text);
        if (open == moved.size || moved.last() != QLatin1Char('>')) {
            return 0;
        }
        moved.replaced(moved.size - open);
        const QStringView code(moved.text + open + 1, moved.size - open - 2);
        const bool isPrinterCharacter = code.startsWith(QLatin1Char('#'));
        if (!isPrinterCharacter && moved.format != nullptr) {
            moved.format[open] = char(uchar(moved.format[open]) | characterformat::PlacedByCode);
        }
        moved.text[open] = characterOf(isPrinterCharacter ? code.mid(1) : code);
        return moved.size - open - 1;
    });
}

/** Takes the tags out that count for the whole line, and returns the format bits that they set. */
template<typename Line>
uchar takeWholeLineTags(Line &line, quint32 steps)
{
    const bool hasSides = (steps & SidesStep) != 0 && partSides(line);
    uchar format = 0;
    for (size_t i = 0; i < WholeLineTagCount; ++i) {
        if ((steps & FirstWholeLineStep << i) != 0 && takeOut(line, WholeLineTags[i].name)) {
            format |= WholeLineTags[i].formatBit;
        }
    }
    if ((steps & SpacingStep) != 0) {
        takeSpacing(line);
    }
    const bool isCentered = (steps & CenterStep) != 0 && takeOut(line, CenterTag);
    const bool isRight = (steps & RightStep) != 0 && takeOut(line, RightTag);
    if (hasSides) {
        line.alignment = TextAlignFullWidth;
    } else if (isCentered) {
        line.alignment = TextAlignCenter;
    } else if (isRight) {
        line.alignment = TextAlignRight;
    }
    return format;
}

void addFormat(QByteArray &format, uchar bits)
{
    std::transform(format.cbegin(), format.cend(), format.begin(), [bits](char c) { return char(uchar(c) | bits); });
}

/** Takes all tags out of @p formatted, which has its text and its line spacing. */
template<typename Line>
void takeTags(Line &formatted, CarriedStyle &carried, LineDetail detail)
{
    const quint32 steps = stepsOf(formatted.text);
    const uchar lineFormat = steps == 0 ? 0 : takeWholeLineTags(formatted, steps);
    if (detail == LineDetail::Styles) {
        formatted.format = QByteArray(formatted.text.size(), char(carried.format));
        // Most lines have font 0 and format 0: one array serves as both until one of them is changed.
        formatted.font
            = carried.font == carried.format ? formatted.format : QByteArray(formatted.text.size(), char(carried.font));
    }
    for (size_t i = 0; i < LetterCount; ++i) {
        if ((steps & FirstSpanStep << i) != 0) {
            takeSpans(formatted, characterformat::Letters[i], carried);
        }
    }
    if ((steps & MarksStep) != 0) {
        takeMarks(formatted);
    }
    if ((steps & FontStep) != 0) {
        takeFonts(formatted, carried);
    }
    if ((steps & CodeStep) != 0) {
        placeCodes(formatted);
    }
    if (lineFormat != 0) {
        addFormat(formatted.format, lineFormat);
    }
}

} // namespace

FormattedLine formatLine(QString line, CarriedStyle &carried, LineDetail detail, int lineSpacing)
{
    FormattedLine formatted;
    formatted.text = std::move(line);
    formatted.lineSpacing = lineSpacing;
    takeTags(formatted, carried, detail);
    return formatted;
}

FormattedLine formatTracedLine(QString line, CarriedStyle &carried, LineTrace &trace)
{
    TracedLine formatted;
    formatted.text = std::move(line);
    formatted.trace = &trace;
    takeTags(formatted, carried, LineDetail::Styles);
    return std::move(formatted);
}

} // namespace printsrv
