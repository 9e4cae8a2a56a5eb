// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_LINEFORMATTER_H
#define PRINTSRV_LINEFORMATTER_H

#include "documentblock.h"

namespace printsrv {

struct LineTrace;

/** What one line hands on to the next. */
struct CarriedStyle
{
    uchar format = 0; // without characterformat::PlacedByCode
    uchar font = 0;
};

/** How much of a line is wanted. */
enum class LineDetail {
    Text, /**< Its text, alignment and spacing; the font and format bytes stay empty. */
    Styles, /**< All of it. */
};

/** A line without its tags: text with one font and one format byte for each character, as one value. */
struct FormattedLine
{
    QString text;
    QByteArray font;
    QByteArray format;
    ETextAlignment alignment = TextAlignLeft;
    int lineSpacing = 0;
};

/**
 * Takes the formatting tags out of @p line, which is not empty, and turns them into what they stand for.
 *
 * The steps work one after the other on the whole line, so that a tag that comes together when another one is taken out
 * of it counts for the later steps. A first look at the line tells which steps have anything to do; each of them
 * is one walk that moves the characters to the front, with their bytes, and looks at what it has moved when a ">"
 * comes.
 */
FormattedLine formatLine(QString line, CarriedStyle &carried, LineDetail detail, int lineSpacing);

/** The same with line spacing 0 and all styles: the origins in @p trace move with their characters, and it gets the
 * tags. */
FormattedLine formatTracedLine(QString line, CarriedStyle &carried, LineTrace &trace);

} // namespace printsrv

#endif
