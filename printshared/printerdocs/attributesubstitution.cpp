// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "attributesubstitution.h"

#include "printerdocslog.h"
#include "printerdocumentformatter.h"
#include "templatelines.h"
#include "templatemarks.h"
#include "tracerecorder.h"

#include <algorithm>
#include <cmath>

namespace printsrv {

namespace {

// Values that name themselves or two others would never end.
constexpr int MaxSubstitutions = 10000;
constexpr int MaxLineLength = 1048576;
// In groups that vanish again and in many lines they would still take minutes.
constexpr int MaxValueLength = 16777216;

/** True for a line break, and for a short tag that belongs to an X part or a picture, or that leaves one when the group
 * that begins or ends in it vanishes. */
bool mayBelongToPart(QStringView mark)
{
    if (mark.size() == 1) {
        return mark[0] == QLatin1Char('\n');
    }
    return std::any_of(mark.begin() + 1, mark.end() - 1,
                       [](QChar c) { return c == QLatin1Char('X') || c == QLatin1Char('I') || isMark(c); });
}

} // namespace

void GroupsAhead::putInFront(QChar c, int place)
{
    if (c == QLatin1Char(']')) {
        m_ends.append(place);
    } else if (c == QLatin1Char('[')) {
        m_closings.append(m_ends.isEmpty() ? 0 : m_ends.takeLast());
    }
}

void GroupsAhead::pass(QChar c)
{
    if (c == QLatin1Char(']')) {
        m_ends.removeLast();
    } else if (c == QLatin1Char('[')) {
        const int closing = m_closings.takeLast();
        if (closing > 0) {
            m_ends.append(closing);
        }
    }
}

int GroupsAhead::firstEnd() const
{
    return m_ends.isEmpty() ? 0 : m_ends.last();
}

bool isZeroOrEmpty(const QString &value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber ? !(std::abs(number) > 1e-12) : value.isEmpty();
}

AttributeSubstitution::AttributeSubstitution(const PrinterDocumentFormatter &formatter, const PrinterDocument &document,
                                             TraceRecorder *trace)
    : m_formatter(formatter)
    , m_document(document)
    , m_trace(trace)
    , m_lengthLeft(MaxValueLength)
{
}

void AttributeSubstitution::process(QStringList &lines)
{
    QStringList kept;
    kept.reserve(lines.size());
    tell(m_trace, &TraceRecorder::startPass);
    for (int i = 0; i < lines.size(); ++i) {
        const QString &line = lines.at(i);
        const QString made = line.isEmpty() || m_lengthLeft < 0 ? line : processed(line, i + 1);
        if (line.isEmpty() || !made.isEmpty()) {
            kept.append(made);
            tell(m_trace, &TraceRecorder::keepLine);
        } else {
            tell(m_trace, &TraceRecorder::dropLine, ReceiptTrace::ELoss::EmptyLine);
        }
    }
    lines = std::move(kept);
}

bool AttributeSubstitution::mayHaveLeftParts() const
{
    return m_mayHaveLeftParts;
}

QString AttributeSubstitution::processed(const QString &line, int number)
{
    m_source = line;
    m_next = 0;
    const Tag tag = nextAttribute();
    return tag.close < 0 ? line : rewritten(tag, number);
}

/** Returns the line with its tags replaced, from the first one, @p tag, on. */
QString AttributeSubstitution::rewritten(Tag tag, int number)
{
    m_substitutions = 0;
    m_made = QString();
    m_made.reserve(m_source.size());
    m_openGroups.clear();
    m_groupsAhead = GroupsAhead();
    m_hasLookedAhead = false;
    tell(m_trace, &TraceRecorder::openLine);
    while (tag.close >= 0) {
        keep(tag.open - m_next);
        if (!replaceTag(tag)) {
            stop(number);
            m_mayHaveLeftParts = true;
            break;
        }
        tag = nextAttribute();
    }
    keep(remaining());
    tell(m_trace, &TraceRecorder::closeLine);
    return m_made;
}

/** Tells that a limit is reached in the line @p number. */
void AttributeSubstitution::stop(int number) const
{
    if (m_trace != nullptr) {
        m_trace->stop(0);
        return;
    }
    if (m_lengthLeft < 0) {
        qCWarning(printerDocsLog,
                  "Line %d: the values of one receipt have more than %d characters, its rest stays as it is", number,
                  MaxValueLength);
        return;
    }
    qCWarning(printerDocsLog, "Line %d takes more than %d substitutions or %d characters, the rest stays as it is",
              number, MaxSubstitutions, MaxLineLength);
}

/** The next attribute tag in the rest, behind any tags of line formatting; { -1, -1 } when there is none. */
AttributeSubstitution::Tag AttributeSubstitution::nextAttribute()
{
    const QStringView source(m_source);
    int open = m_next;
    for (;;) {
        open = nextMark(source, open);
        if (open == source.size()) {
            return {-1, -1};
        }
        const int close = source[open] == QLatin1Char('<') ? m_source.indexOf(QLatin1Char('>'), open) : open;
        if (close < 0) {
            m_mayHaveLeftParts = true;
            return {-1, -1};
        }
        if (close - open > LongestFormattingTag) {
            return {open, close};
        }
        m_mayHaveLeftParts = m_mayHaveLeftParts || mayBelongToPart(source.mid(open, close - open + 1));
        open = close + 1;
    }
}

/** Replaces @p tag, which the rest begins with; false leaves it there because a limit is reached. */
bool AttributeSubstitution::replaceTag(Tag tag)
{
    if (m_substitutions == MaxSubstitutions) {
        return false;
    }
    const QStringView name = QStringView(m_source).mid(tag.open + 1, tag.close - tag.open - 1);
    const QString value = valueOf(name);
    const qint64 length = qint64(m_made.size()) + value.size() + m_source.size() - tag.close - 1;
    if (length > MaxLineLength) {
        return false;
    }
    m_lengthLeft -= value.size();
    if (m_lengthLeft < 0) {
        return false;
    }
    ++m_substitutions;
    tell(m_trace, &TraceRecorder::substitute, name, value);
    skip(tag.close + 1);
    const bool mayRemoveGroup = !m_openGroups.isEmpty() && isZeroOrEmpty(value);
    const int groupEnd = mayRemoveGroup ? innermostGroupEnd() : -1;
    if (groupEnd < 0) {
        put(value);
    } else {
        removeGroup(groupEnd);
    }
    return true;
}

/** The value of a tag by what stands between its brackets: a name or a sum, and a format behind the first comma. */
QString AttributeSubstitution::valueOf(QStringView tag) const
{
    const auto comma = tag.indexOf(QLatin1Char(','));
    QString name = (comma < 0 ? tag : tag.left(comma)).toString();
    QString format = comma < 0 ? QString() : tag.mid(comma + 1).toString();
    if (m_formatter.summAttributes(name, m_document, format)) {
        return name;
    }
    return m_formatter.nameToVal(name, m_document, format);
}

void AttributeSubstitution::put(const QString &value)
{
    if (nextMark(value, 0) == value.size()) {
        m_made += value;
        tell(m_trace, &TraceRecorder::putValue);
    } else {
        putBack(value);
        tell(m_trace, &TraceRecorder::putValueBack);
    }
}

/** Puts @p value in front of the rest. */
void AttributeSubstitution::putBack(const QString &value)
{
    for (int i = value.size() - 1; i >= 0 && m_hasLookedAhead; --i) {
        m_groupsAhead.putInFront(value.at(i), remaining() + value.size() - i);
    }
    putInFront(m_source, m_next, value);
}

/** Removes the innermost group up to @p end; the walk goes on at the same numeric position of the shorter line. */
void AttributeSubstitution::removeGroup(int end)
{
    const int start = m_openGroups.takeLast();
    skip(end + 1);
    const int passed = qMin(m_made.size() - start, remaining());
    m_made.truncate(start);
    tell(m_trace, &TraceRecorder::removeGroup, start);
    m_mayHaveLeftParts = m_mayHaveLeftParts || nextMark(m_source, m_next) < m_next + passed;
    keep(passed);
}

/** Index in the source of the "]" that closes the innermost open group, -1 when nothing does. */
int AttributeSubstitution::innermostGroupEnd()
{
    lookAhead();
    const int place = m_groupsAhead.firstEnd();
    return place == 0 ? -1 : m_source.size() - place;
}

/** Reads the groups of the rest, once for a line; they are kept up to date from then on. */
void AttributeSubstitution::lookAhead()
{
    if (m_hasLookedAhead) {
        return;
    }
    m_hasLookedAhead = true;
    for (int i = m_source.size() - 1; i >= m_next; --i) {
        m_groupsAhead.putInFront(m_source.at(i), m_source.size() - i);
    }
}

/** Leaves out what stands between the walk's place and @p end. */
void AttributeSubstitution::skip(int end)
{
    for (int i = m_next; i < end && m_hasLookedAhead; ++i) {
        m_groupsAhead.pass(m_source.at(i));
    }
    tell(m_trace, &TraceRecorder::skip, end - m_next);
    m_next = end;
}

/** Moves the next @p length characters to the line made, without reading tags in them. */
void AttributeSubstitution::keep(int length)
{
    const QStringView kept = QStringView(m_source).mid(m_next, length);
    for (int i = nextMark(kept, 0); i < length; i = nextMark(kept, i + 1)) {
        if (kept[i] == QLatin1Char('[')) {
            m_openGroups.append(m_made.size() + i);
        } else if (kept[i] == QLatin1Char(']') && !m_openGroups.isEmpty()) {
            m_openGroups.removeLast();
        }
        if (m_hasLookedAhead) {
            m_groupsAhead.pass(kept[i]);
        }
    }
    m_made.append(m_source.constData() + m_next, length);
    m_next += length;
    tell(m_trace, &TraceRecorder::keep, length);
}

int AttributeSubstitution::remaining() const
{
    return m_source.size() - m_next;
}

} // namespace printsrv
