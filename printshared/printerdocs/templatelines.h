// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TEMPLATELINES_H
#define PRINTSRV_TEMPLATELINES_H

#include <QStringList>

/**
 * The steps of preprocessing that work on whole lines: entries, symbols, X parts, inline images. Those that take a
 * trace tell it what they do, unless it is null.
 */
namespace printsrv {

class TraceRecorder;

/** Index of the first @p tag, which begins with "<", in @p line from @p from on, in upper or lower case; or -1. */
int indexOfTag(QStringView line, QLatin1String tag, int from = 0);

/**
 * Puts @p text in front of what @p source holds from @p next on, and moves @p next to its beginning.
 *
 * It goes into the room of what was read already, or into new room that doubles the rest: however often that is done, a
 * character of the rest moves only a few times.
 */
void putInFront(QString &source, int &next, const QString &text);

/**
 * Replaces "<ENTRIES>" by the lines of @p entries, which a TAB separates. The line that the first entry line ends up in
 * is not looked at again, the others are: entry text may hold the tag itself, up to the limits that
 * PrinterDocumentFormatter states.
 */
void expandEntries(QStringList &lines, const QString &entries, TraceRecorder *trace = nullptr);

/** Takes out all lines that hold nothing but "<SPECSYMBOLS=name>"; the name in the last of them, or a null text. */
QString takeSymbolsLines(QStringList &lines);

/** Removes X parts, or only their markers; a line break in a line, which a value can bring, parts it in two. */
void cutXParts(QStringList &lines, bool remove, TraceRecorder *trace = nullptr);

/** Empties a line that holds "<X>", or only deletes the tag. */
void cutXLine(QString &line, bool remove);

/** Strips the inline images "<I>…</I>", which are not printed, and empties X lines; a line that held no more goes. */
void stripInlineImages(QStringList &lines, TraceRecorder *trace = nullptr);

} // namespace printsrv

#endif
