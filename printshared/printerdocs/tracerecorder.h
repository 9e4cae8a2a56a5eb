// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TRACERECORDER_H
#define PRINTSRV_TRACERECORDER_H

#include "receipttrace.h"

#include <QStringList>

#include <vector>

namespace printsrv {

using Origin = ReceiptTrace::Origin;
using Origins = QVector<Origin>;

/** The origins of one line while its tags are taken out, and the tags. */
struct LineTrace
{
    int line = 0;
    Origins origins;
    QVector<ReceiptTrace::Tag> tags;
};

/**
 * Follows the characters of a receipt: the steps of formatting, when they are given a recorder, tell it each move.
 *
 * Preprocessing goes over the lines in passes. In a pass each line is kept or dropped, from the first to the last;
 * where a step changes a line, it opens it and says of each stretch whether it keeps it, skips it or puts something
 * else there. The recorder does the same with the origins, in time proportional to the characters moved.
 */
class TraceRecorder
{
public:
    explicit TraceRecorder(const QStringList &templateLines);

    /** Starts a pass: all lines are ahead. */
    void startPass();
    /** The next line stays. */
    void keepLine();
    /** The next line goes. A line that is open goes as it was when it was opened. */
    void dropLine(ReceiptTrace::ELoss reason);
    /** A copy mark comes in front of the lines ahead; the number stands in the line kept last. */
    void insertCopyMark(const QString &text);
    /** The entry lines take the place of @p tagLength characters at @p tag of the next line. */
    void insertEntries(const QStringList &entryLines, int tag, int tagLength);
    /** A whole pass that turned @p before into @p after by dropping lines. */
    void dropLines(const QStringList &before, const QStringList &after, ReceiptTrace::ELoss reason);
    /** The pass ends; a "\n" joins all lines to one, which is opened. */
    void joinLines();
    /** The open line is @p text; it is parted at each "\n", and the pass starts anew. */
    void splitLine(const QString &text);

    /** Opens the next line, to walk over it. */
    void openLine();
    /** The next @p length characters stay, or go. */
    void keep(int length);
    void skip(int length);
    /** The next characters up to @p begin stay, those up to @p end are lost; the last @p again kept are ahead again. */
    void cut(int begin, int end, int again, ReceiptTrace::ELoss reason);
    /** The tag that is next has a value, @p tag being what stands between its brackets. */
    void substitute(QStringView tag, const QString &value);
    /** The value is kept, or put in front of what is ahead. */
    void putValue();
    void putValueBack();
    /** What was kept from @p start on, and what was skipped last, is a group that the value removed. */
    void removeGroup(int start);
    /** A limit ends the walk at the tag that is @p distance characters ahead. */
    void stop(int distance);
    /** The rest of the open line stays as it is; it is the next line. */
    void closeLine();
    /** Nothing stays of the next line, because of the tag at @p tag. */
    void clearLine(int tag);

    /** Hands out the line @p index for line formatting, and takes over what became of it. */
    LineTrace takeLine(int index);
    void setLine(LineTrace &&trace, ReceiptTrace::Line &&line);

    ReceiptTrace takeTrace();

private:
    int addSource(ReceiptTrace::Source source);
    void addLoss(ReceiptTrace::ELoss reason, Origin first, Origin last, int cause, int causeCount);

    ReceiptTrace m_trace;
    std::vector<Origins> m_kept;
    // What is ahead is taken from the end of its list: the next line is the last one, the next character is, too.
    std::vector<Origins> m_ahead;
    Origins m_rest; // of the open line
    Origins m_made; // of the open line
    Origin m_first; // of the open line, as it was
    Origin m_last;
    int m_firstSource = 0;
    Origin m_firstSkipped;
    Origin m_lastSkipped;
};

/** Tells @p trace of a step, unless it is null. */
template<typename... Parameters, typename... Arguments>
void tell(TraceRecorder *trace, void (TraceRecorder::*step)(Parameters...), const Arguments &...arguments)
{
    if (trace != nullptr) {
        (trace->*step)(arguments...);
    }
}

} // namespace printsrv

#endif
