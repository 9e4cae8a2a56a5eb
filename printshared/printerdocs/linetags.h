// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_LINETAGS_H
#define PRINTSRV_LINETAGS_H

#include "characterformat.h"
#include "templatemarks.h"

#include <algorithm>
#include <array>
#include <iterator>

/** The tags of line formatting, and which steps of it a line asks for. */
namespace printsrv {

/** A tag by what stands between its "<" and ">". */
struct WholeLineTag
{
    QLatin1String name;
    uchar formatBit;
};

// In the order of the steps. "L1" is taken out and has no further effect.
constexpr WholeLineTag WholeLineTags[] = {
    {QLatin1String("L1", 2), 0},
    {QLatin1String("Z", 1), characterformat::Driver},
    {QLatin1String("B", 1), characterformat::Bold},
    {QLatin1String("H2", 2), characterformat::DoubleHeight},
    {QLatin1String("W2", 2), characterformat::DoubleWidth},
    {QLatin1String("N", 1), characterformat::Italic},
    {QLatin1String("U", 1), characterformat::Underline},
};

// Which steps a line asks for: the bits from the first two on, one for each entry of the tables, and the single ones.
constexpr quint32 FirstWholeLineStep = 0x1;
constexpr quint32 FirstSpanStep = 0x100;
constexpr quint32 SidesStep = 0x10000;
constexpr quint32 SpacingStep = 0x20000;
constexpr quint32 CenterStep = 0x40000;
constexpr quint32 RightStep = 0x80000;
constexpr quint32 MarksStep = 0x100000;
constexpr quint32 FontStep = 0x200000;
constexpr quint32 CodeStep = 0x400000;
constexpr quint32 AllSteps = 0xffffffff;

constexpr QLatin1String SidesTag("S", 1);
constexpr QLatin1String CenterTag("C", 1);
constexpr QLatin1String RightTag("R", 1);
constexpr QLatin1String EmptySpanTag(":", 1);

constexpr int LongestFixedName = 3;
constexpr int KeyBitsOfCharacter = 10;

constexpr quint32 keyOf(char c)
{
    return static_cast<uchar>(c);
}

/** All characters from U+03FF on, which stand in no tag, have one key. */
constexpr quint32 keyOf(QChar c)
{
    constexpr quint32 LargestKey = (1U << KeyBitsOfCharacter) - 1;
    return c.unicode() < LargestKey ? c.unicode() : LargestKey;
}

/** A name of at most LongestFixedName characters as one number, for a look-up without text comparisons. */
template<typename Name>
constexpr quint32 keyOf(const Name &name)
{
    quint32 key = 0;
    for (int i = 0; i < int(name.size()); ++i) {
        key = key << KeyBitsOfCharacter | keyOf(name.data()[i]);
    }
    return key;
}

struct StepOfTag
{
    quint32 key;
    quint32 step;
};

constexpr size_t WholeLineTagCount = std::size(WholeLineTags);
constexpr size_t LetterCount = std::size(characterformat::Letters);

/** All tags with a fixed name, the most frequent ones first. */
constexpr auto stepTable()
{
    std::array<StepOfTag, WholeLineTagCount + 2 * LetterCount + 4> table{};
    size_t count = 0;
    table[count++] = {keyOf(SidesTag), SidesStep};
    table[count++] = {keyOf(CenterTag), CenterStep};
    table[count++] = {keyOf(RightTag), RightStep};
    for (size_t i = 0; i < WholeLineTagCount; ++i) {
        table[count++] = {keyOf(WholeLineTags[i].name), FirstWholeLineStep << i};
    }
    const quint32 colon = keyOf(EmptySpanTag);
    for (size_t i = 0; i < LetterCount; ++i) {
        const QLatin1String letter = characterformat::Letters[i].name;
        table[count++] = {keyOf(letter) << KeyBitsOfCharacter | colon, FirstSpanStep << i};
        table[count++] = {colon << KeyBitsOfCharacter * letter.size() | keyOf(letter), FirstSpanStep << i};
    }
    table[count++] = {colon, MarksStep};
    return table;
}

constexpr auto StepTable = stepTable();

inline bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

inline bool isBracket(QChar c)
{
    return c == QLatin1Char('[') || c == QLatin1Char(']');
}

inline bool isSpacing(QStringView tag)
{
    return tag.size() == 3 && tag.startsWith(QLatin1String("LS")) && tag[2] >= QLatin1Char('0')
        && tag[2] <= QLatin1Char('7');
}

/** True for "F" and a decimal number greater than 0. */
inline bool isFont(QStringView tag)
{
    const QStringView digits = tag.mid(1);
    return tag.startsWith(QLatin1Char('F')) && std::all_of(digits.begin(), digits.end(), isDigit)
        && std::any_of(digits.begin(), digits.end(), [](QChar c) { return c != QLatin1Char('0'); });
}

inline bool isSpanStart(QStringView tag, QLatin1String letter)
{
    return tag.size() == letter.size() + 1 && tag.startsWith(letter) && tag.endsWith(QLatin1Char(':'));
}

inline bool isSpanEnd(QStringView tag, QLatin1String letter)
{
    return tag.size() == letter.size() + 1 && tag.startsWith(QLatin1Char(':')) && tag.endsWith(letter);
}

/** The step that takes @p tag out. */
inline quint32 stepOf(QStringView tag)
{
    if (tag.size() <= LongestFixedName) {
        const quint32 key = keyOf(tag);
        const auto found = std::find_if(StepTable.begin(), StepTable.end(),
                                        [key](const StepOfTag &entry) { return entry.key == key; });
        if (found != StepTable.end()) {
            return found->step;
        }
    }
    if (isSpacing(tag)) {
        return SpacingStep;
    }
    return isFont(tag) ? FontStep : CodeStep;
}

/** The steps that @p line asks for: all of them when another mark stands between a "<" and its ">". Inline, as a second
 * caller makes the compiler call it, which costs a receipt one percent. */
Q_ALWAYS_INLINE quint32 stepsOf(QStringView line)
{
    quint32 steps = 0;
    const auto size = int(line.size());
    for (int at = nextMark(line, 0); at < size; at = nextMark(line, at + 1)) {
        if (isBracket(line[at])) {
            steps |= MarksStep;
        }
        if (line[at] != QLatin1Char('<')) {
            continue;
        }
        const int stop = nextMark(line, at + 1);
        if (stop < size && line[stop] != QLatin1Char('>')) {
            return AllSteps;
        }
        if (stop < size) {
            steps |= stepOf(line.mid(at + 1, stop - at - 1));
        }
        at = stop;
    }
    return steps;
}

} // namespace printsrv

#endif
