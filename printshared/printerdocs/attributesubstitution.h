// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_ATTRIBUTESUBSTITUTION_H
#define PRINTSRV_ATTRIBUTESUBSTITUTION_H

#include <QStringList>
#include <QVector>

class PrinterDocument;
class PrinterDocumentFormatter;

namespace printsrv {

class TraceRecorder;

/** From "<" to ">" of the longest tag that belongs to line formatting; a longer one is an attribute. */
constexpr int LongestFormattingTag = 4;

/** True when @p value removes the group around it: an empty text, or a number of a magnitude of at most 1e-12. */
bool isZeroOrEmpty(const QString &value);

/**
 * The groups in what is still to be read of a line: at which "]" the group ends that is open at its beginning.
 *
 * Places count from the end of the line, so that they hold while its beginning changes. Each bracket that comes in
 * front, and each that is passed, costs the same small time.
 */
class GroupsAhead
{
public:
    /** Tells of @p c, which now stands in front of all others, @p place characters from the end. */
    void putInFront(QChar c, int place);

    /** Tells that @p c, the first of all, is no longer ahead. */
    void pass(QChar c);

    /** Place of the first "]" that no "[" ahead opens; 0 when there is none. */
    int firstEnd() const;

private:
    QVector<int> m_ends; // of each "]" that no "[" ahead opens, the nearest one last
    QVector<int> m_closings; // for each "[" the "]" that closes it, 0 when none does; the nearest "[" last
};

/**
 * Replaces the attribute tags of lines by their values, in one walk from the left to the right.
 *
 * What the walk has passed is appended to the line made; a value that holds a tag itself goes back in front of what is
 * still to be read. The groups that are open at the walk's place are kept on a stack, so that a group that vanishes is
 * cut off the line made and skipped in the rest. No character is moved twice, whatever the number of tags.
 */
class AttributeSubstitution
{
public:
    /** All outlive the substitution, which tells @p trace what it does, unless it is null. */
    AttributeSubstitution(const PrinterDocumentFormatter &formatter, const PrinterDocument &document,
                          TraceRecorder *trace = nullptr);

    /** Replaces the tags of all @p lines, up to the limit for all of them; a line that this empties goes. */
    void process(QStringList &lines);

    /**
     * False when no line made so far can hold an X part, an inline picture or a line break: the walk has seen every tag
     * that stays. True when one may.
     */
    bool mayHaveLeftParts() const;

    /** Returns @p line with its tags replaced; @p number, counted from 1, names it in a warning. */
    QString processed(const QString &line, int number);

private:
    /** A tag by the positions of its "<" and its ">" in the source. */
    struct Tag
    {
        int open;
        int close;
    };

    QString rewritten(Tag tag, int number);
    void stop(int number) const;
    Tag nextAttribute();
    bool replaceTag(Tag tag);
    QString valueOf(QStringView tag) const;
    void put(const QString &value);
    void putBack(const QString &value);
    void removeGroup(int end);
    int innermostGroupEnd();
    void lookAhead();
    void skip(int end);
    void keep(int length);
    int remaining() const;

    const PrinterDocumentFormatter &m_formatter;
    const PrinterDocument &m_document;
    TraceRecorder *m_trace;
    QString m_made;
    QString m_source; // what is still to be read begins at m_next
    int m_next = 0;
    int m_substitutions = 0;
    int m_lengthLeft; // of the values of all lines; negative when that limit is reached
    QVector<int> m_openGroups; // the places of their "[" in the line made
    GroupsAhead m_groupsAhead; // unless the first value that may remove a group is still to come
    bool m_hasLookedAhead = false;
    bool m_mayHaveLeftParts = false;
};

} // namespace printsrv

#endif
