// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "lintrules.h"

#include <QHash>

#include <algorithm>

namespace printsrv {

using ESource = ReceiptTrace::ESource;

namespace {

void checkBrackets(const LintContext &context, Findings &findings)
{
    for (const int offset : context.loneBrackets) {
        const bool isOpen = context.text.at(offset) == QLatin1Char('[');
        findings.add(ELintCode::UnclosedGroup, offset,
                     isOpen ? QStringLiteral("this “[” has no “]” in its line; write <#91> for a “[” that prints")
                            : QStringLiteral("this “]” has no “[” in its line; write <#93> for a “]” that prints"));
    }
}

void checkXParts(const LintContext &context, Findings &findings)
{
    for (const ReceiptTrace::Tag &tag : context.samples.tags) {
        const int offset = context.samples.offsetOf(tag.first);
        if (tag.text == QLatin1String("<X:>")) {
            findings.add(ELintCode::UnclosedXPart, offset, QStringLiteral("no <:X> follows, nothing is left out"));
        } else if (tag.text == QLatin1String("<:X>")) {
            findings.add(ELintCode::UnclosedXPart, offset, QStringLiteral("no <X:> stands before it"));
        }
    }
}

/** The beginnings of spans are kept by their letter until the end comes. */
void checkSpans(const LintContext &context, Findings &findings)
{
    QHash<QString, int> open;
    for (const ReceiptTrace::Tag &tag : context.samples.tags) {
        const QString name = insideOf(tag).toString();
        const int offset = context.samples.offsetOf(tag.first);
        if (tag.isCode || name.size() < 2) {
            continue;
        }
        if (name.endsWith(QLatin1Char(':'))) {
            open.insert(name.chopped(1), offset);
        } else if (name.startsWith(QLatin1Char(':')) && open.remove(name.mid(1)) == 0) {
            findings.add(ELintCode::UnopenedSpan, offset,
                         QStringLiteral("no <%1:> is open here, the tag does nothing").arg(name.mid(1)));
        }
    }
    for (auto span = open.cbegin(); span != open.cend(); ++span) {
        findings.add(ELintCode::UnclosedSpan, *span,
                     QStringLiteral("no <:%1> follows, the format holds to the end of the receipt").arg(span.key()));
    }
}

/** Walks over one line after the other and knows how far the formatter's walk is ahead when a group vanishes. */
class GroupWalk
{
public:
    GroupWalk(const LintContext &context, Findings &findings)
        : m_context(context)
        , m_findings(findings)
    {
    }

    void open(int offset)
    {
        advance(offset);
        m_groups.append({m_made, -1});
    }

    void attribute(int offset, int length)
    {
        advance(offset);
        if (offset < m_danger && !m_findings.has(ELintCode::UnreadTag, offset)) {
            m_findings.add(
                ELintCode::TagBehindGroup, offset,
                QStringLiteral("when the group in front of it vanishes, this tag is passed over and prints as "
                               "a character of code 0; put it on a line of its own, or farther behind"));
        }
        if (!m_groups.isEmpty()) {
            m_groups.last().ahead = m_made - m_groups.last().begin;
        }
        // A value in a group that stays has one character at least.
        m_made += m_groups.isEmpty() ? 0 : 1;
        m_read = offset + length;
    }

    void close(int offset)
    {
        advance(offset);
        if (m_groups.isEmpty()) {
            return; // It began in a line before, with an X part over the line break between.
        }
        const Open group = m_groups.takeLast();
        advance(offset + 1);
        if (group.ahead >= 0) {
            m_danger = qMax(m_danger, offset + 1 + group.ahead);
            m_made = group.begin;
        }
    }

private:
    struct Open
    {
        int begin; // in the line that the walk has made
        int ahead; // how many characters its last attribute stands behind its beginning; -1 without one
    };

    /** What stands before @p offset is text; a new line begins anew. A bracket inside of a tag is behind the walk
     * already. */
    void advance(int offset)
    {
        if (offset <= m_read) {
            return;
        }
        const auto line = QStringView(m_context.text).mid(m_read, offset - m_read).lastIndexOf(QLatin1Char('\n'));
        if (line >= 0) {
            m_read += int(line) + 1;
            m_made = 0;
            m_danger = 0;
            m_groups.clear();
        }
        m_made += offset - m_read;
        m_read = offset;
    }

    const LintContext &m_context;
    Findings &m_findings;
    QVector<Open> m_groups;
    int m_read = 0; // offset in the template
    int m_made = 0; // least length of the line that the walk has made
    int m_danger = 0; // up to this offset tags may be passed over
};

/** Tags, beginnings and ends of groups in the order of their offsets. */
void checkTagsBehindGroups(const LintContext &context, Findings &findings)
{
    struct Step
    {
        int offset;
        int kind; // 0 begins, 1 attribute, 2 ends
        int length;
    };
    QVector<Step> steps;
    for (const Group &group : context.groups) {
        steps.append({group.open, 0, 1});
        steps.append({group.close, 2, 1});
    }
    for (const int attribute : context.attributes) {
        const int begin = context.names.sources.at(attribute).place;
        const int end = context.text.indexOf(QLatin1Char('>'), begin);
        steps.append({begin, 1, end - begin + 1});
    }
    std::sort(steps.begin(), steps.end(), [](const Step &a, const Step &b) { return a.offset < b.offset; });
    GroupWalk walk(context, findings);
    for (const Step &step : steps) {
        if (step.kind == 0) {
            walk.open(step.offset);
        } else if (step.kind == 1) {
            walk.attribute(step.offset, step.length);
        } else {
            walk.close(step.offset);
        }
    }
}

/** Attribute tags that were left for line formatting, which has no codes of that length. */
void checkUnreadTags(const Trial &receipt, const char *condition, Findings &findings)
{
    const auto stops = receipt.trace.stops();
    for (const ReceiptTrace::Tag &tag : receipt.tags) {
        if (!stops.isEmpty() || !tag.isCode || insideOf(tag).size() <= 3 || tag.first.source != 0) {
            continue;
        }
        findings.add(ELintCode::UnreadTag, receipt.offsetOf(tag.first),
                     QStringLiteral("this tag is passed over%1 and prints as a character of code 0, because a group in "
                                    "front of it vanishes; put it on a line of its own")
                         .arg(QLatin1String(condition)));
    }
}

} // namespace

void checkGroups(const LintContext &context, Findings &findings)
{
    checkBrackets(context, findings);
    checkXParts(context, findings);
    checkSpans(context, findings);
    for (const Trial &receipt : context.receipts) {
        checkUnreadTags(receipt, "", findings);
    }
    for (const Trial &receipt : context.hostile) {
        checkUnreadTags(receipt, " when values are empty", findings);
    }
    checkTagsBehindGroups(context, findings);
}

} // namespace printsrv
