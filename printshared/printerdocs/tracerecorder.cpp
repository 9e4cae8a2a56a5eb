// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "tracerecorder.h"

#include <algorithm>

namespace printsrv {

namespace {

using ELoss = ReceiptTrace::ELoss;
using ESource = ReceiptTrace::ESource;

Origins originsOf(int source, int offset, int length)
{
    Origins origins(length);
    for (int i = 0; i < length; ++i) {
        origins[i] = {source, offset + i};
    }
    return origins;
}

/** Moves the last @p count elements of @p from behind those of @p to, in reverse. */
void moveOver(Origins &from, Origins &to, int count)
{
    // Not reserve(), which makes room for no more than that, so that the next call would move all once more.
    std::copy_n(from.crbegin(), count, std::back_inserter(to));
    from.resize(from.size() - count);
}

/** The line from its other end. */
Origins turned(Origins line)
{
    std::reverse(line.begin(), line.end());
    return line;
}

} // namespace

TraceRecorder::TraceRecorder(const QStringList &templateLines)
{
    ReceiptTrace::Source source;
    source.text = templateLines.join(QLatin1Char('\n'));
    m_trace.m_sources.append(source);
    int begin = 0;
    for (const QString &line : templateLines) {
        m_trace.m_lineBegins.append(begin);
        m_kept.push_back(originsOf(0, begin, line.size()));
        begin += line.size() + 1;
    }
    for (int i = 0; i < source.text.size(); ++i) {
        if (source.text.at(i).isLowSurrogate()) {
            m_trace.m_secondHalves.append(i);
        }
    }
}

void TraceRecorder::startPass()
{
    m_ahead.clear();
    for (; !m_kept.empty(); m_kept.pop_back()) {
        m_ahead.push_back(turned(std::move(m_kept.back())));
    }
}

void TraceRecorder::keepLine()
{
    m_kept.push_back(turned(std::move(m_ahead.back())));
    m_ahead.pop_back();
}

void TraceRecorder::dropLine(ELoss reason)
{
    const Origins &line = m_ahead.back();
    if (reason == ELoss::EmptyLine) {
        addLoss(reason, m_first, m_last, m_firstSource, m_trace.m_sources.size() - m_firstSource);
    } else if (!line.isEmpty()) {
        addLoss(reason, line.last(), line.first(), 0, 0);
    }
    m_ahead.pop_back();
}

void TraceRecorder::insertCopyMark(const QString &text)
{
    ReceiptTrace::Source source;
    source.kind = ESource::CopyMark;
    source.text = text;
    source.tag = m_kept.back().isEmpty() ? Origin() : m_kept.back().first();
    m_kept.push_back(originsOf(addSource(source), 0, text.size()));
}

void TraceRecorder::insertEntries(const QStringList &entryLines, int tag, int tagLength)
{
    Origins rest = std::move(m_ahead.back());
    m_ahead.pop_back();
    Origins before;
    moveOver(rest, before, tag);
    ReceiptTrace::Source source;
    source.kind = ESource::Entries;
    source.text = entryLines.join(QLatin1Char('\t'));
    source.tag = rest.last();
    rest.resize(rest.size() - tagLength);
    const int index = addSource(source);
    // From the last line, which goes on with what is left of the template's, to the first one behind what came before.
    int end = source.text.size();
    for (auto entry = entryLines.crbegin(); entry != entryLines.crend(); ++entry) {
        const int begin = end - entry->size();
        rest += turned(originsOf(index, begin, entry->size()));
        end = begin - 1;
        if (std::next(entry) == entryLines.crend()) {
            moveOver(before, rest, tag);
        }
        m_ahead.push_back(std::move(rest));
        rest = Origins();
    }
}

void TraceRecorder::dropLines(const QStringList &before, const QStringList &after, ELoss reason)
{
    startPass();
    int next = 0;
    for (const QString &line : before) {
        const bool isKept = next < after.size() && after.at(next) == line;
        next += isKept ? 1 : 0;
        if (isKept) {
            keepLine();
        } else {
            dropLine(reason);
        }
    }
}

void TraceRecorder::joinLines()
{
    Origins joined;
    for (const Origins &line : m_kept) {
        // The origin of the "\n" itself is nobody's: the lines are parted there again.
        joined += line;
        joined.append(Origin());
    }
    if (!joined.isEmpty()) {
        joined.removeLast();
    }
    m_kept.clear();
    m_ahead.assign(1, turned(joined));
    openLine();
}

void TraceRecorder::splitLine(const QString &text)
{
    keep(m_rest.size());
    const Origins line = std::move(m_made);
    m_ahead.clear();
    for (int begin = 0; begin <= text.size();) {
        const int found = text.indexOf(QLatin1Char('\n'), begin);
        const int end = found < 0 ? text.size() : found;
        m_kept.push_back(line.mid(begin, end - begin));
        begin = end + 1;
    }
}

void TraceRecorder::openLine()
{
    Origins &line = m_ahead.back();
    m_first = line.isEmpty() ? Origin() : line.last();
    m_last = line.isEmpty() ? Origin() : line.first();
    m_firstSource = m_trace.m_sources.size();
    // Not clear(), which would keep the room of the longest line for each line.
    m_made = Origins();
    m_rest = std::move(line);
}

void TraceRecorder::keep(int length)
{
    moveOver(m_rest, m_made, length);
}

void TraceRecorder::skip(int length)
{
    if (length > 0) {
        m_firstSkipped = m_rest.last();
        m_lastSkipped = m_rest.at(m_rest.size() - length);
        m_rest.resize(m_rest.size() - length);
    }
}

void TraceRecorder::cut(int begin, int end, int again, ELoss reason)
{
    keep(begin);
    skip(end - begin);
    addLoss(reason, m_firstSkipped, m_lastSkipped, 0, 0);
    moveOver(m_made, m_rest, again);
}

void TraceRecorder::substitute(QStringView tag, const QString &value)
{
    const auto comma = tag.indexOf(QLatin1Char(','));
    ReceiptTrace::Source source;
    source.kind = ESource::Attribute;
    source.name = (comma < 0 ? tag : tag.left(comma)).toString();
    source.format = comma < 0 ? QString() : tag.mid(comma + 1).toString();
    source.text = value;
    source.tag = m_rest.last();
    addSource(source);
}

void TraceRecorder::putValue()
{
    const int index = m_trace.m_sources.size() - 1;
    m_made += originsOf(index, 0, m_trace.m_sources.last().text.size());
}

void TraceRecorder::putValueBack()
{
    const int index = m_trace.m_sources.size() - 1;
    Origins value = originsOf(index, 0, m_trace.m_sources.last().text.size());
    moveOver(value, m_rest, value.size());
}

void TraceRecorder::removeGroup(int start)
{
    addLoss(ELoss::Group, m_made.at(start), m_lastSkipped, m_trace.m_sources.size() - 1, 1);
    m_made.resize(start);
}

void TraceRecorder::stop(int distance)
{
    const Origins &rest = m_rest.isEmpty() ? m_ahead.back() : m_rest;
    m_trace.m_stops.append(rest.value(rest.size() - 1 - distance));
}

void TraceRecorder::closeLine()
{
    keep(m_rest.size());
    m_ahead.back() = turned(std::move(m_made));
}

void TraceRecorder::clearLine(int tag)
{
    const Origins &line = m_ahead.back();
    const int source = line.at(line.size() - 1 - tag).source;
    addLoss(ELoss::XLine, line.last(), line.first(), source, source == 0 ? 0 : 1);
    m_ahead.back().clear();
}

LineTrace TraceRecorder::takeLine(int index)
{
    return {index, std::move(m_kept[size_t(index)]), {}};
}

void TraceRecorder::setLine(LineTrace &&trace, ReceiptTrace::Line &&line)
{
    line.origins = std::move(trace.origins);
    m_trace.m_lines.append(std::move(line));
    m_trace.m_tags += trace.tags;
}

ReceiptTrace TraceRecorder::takeTrace()
{
    return std::move(m_trace);
}

int TraceRecorder::addSource(ReceiptTrace::Source source)
{
    source.outer = source.tag.source;
    source.place = m_trace.offsetInTemplate(source.tag);
    m_trace.m_sources.append(source);
    return m_trace.m_sources.size() - 1;
}

void TraceRecorder::addLoss(ELoss reason, Origin first, Origin last, int cause, int causeCount)
{
    m_trace.m_losses.append({reason, first, last, cause, causeCount});
}

} // namespace printsrv
