// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RECEIPTTRACE_H
#define PRINTSRV_RECEIPTTRACE_H

#include "documentblock.h"

#include <QVector>

class PrinterDocument;
class PrinterDocumentFormatter;

namespace printsrv {
class TraceRecorder;
}

/**
 * The lines of one receipt with the origin of every character, the tags that were taken out of them, and what of the
 * template vanished and why. For programs that check templates or show how a receipt comes about.
 *
 * A trace is recorded by the formatter's own walk, so that it never disagrees with what prints: the lines are those of
 * PrinterDocumentFormatter::toTextPrinterDocument(). Symbol files are not loaded, and a limit of the formatter that is
 * reached is told by stops(), not by a warning.
 *
 * A value; reentrant. Time and memory grow as the formatter's do.
 */
class Q_DECL_EXPORT ReceiptTrace
{
public:
    /** What characters come from. */
    enum class ESource {
        Template, /**< The template; always the source 0. */
        Entries, /**< The entry lines of the document, put in for "<ENTRIES>". */
        CopyMark, /**< The line that marks a copy. */
        Attribute, /**< The value of an attribute, or the sum of several. */
    };

    /** A character of a source. */
    struct Origin
    {
        int source = 0; /**< Index in sources(). */
        int offset = 0; /**< Index of the character in the source's text. */
    };

    /** A text that was put into the receipt, each time it was. */
    struct Source
    {
        ESource kind = ESource::Template; /**< Where the text came from. */
        QString name; /**< Attributes: what stands before the comma of the tag, a name or a sum of names. */
        QString format; /**< Attributes: what stands behind the comma. */
        /** The text: of the template its lines, parted by "\n"; of entries the lines as they were put in, by TAB. */
        QString text;
        Origin tag; /**< The "<" of the tag that it was put in for, which a value may have brought itself. */
        int place = 0; /**< Offset in the template of the outermost tag that led to it. */
        int outer = 0; /**< Index of the source that the tag stands in. */
    };

    /** Why something of the template is not in the receipt. */
    enum class ELoss {
        Group, /**< A value removed the group around it. */
        EmptyLine, /**< The values and groups of a line left nothing of it. */
        XPart, /**< It stands in an X part. */
        XLine, /**< The line holds "<X>". It stays as an empty line. */
        Image, /**< It is an inline picture. */
        SymbolsLine, /**< The line selects the special symbols. */
    };

    /** Something that vanished, from its first to its last character. */
    struct Loss
    {
        ELoss reason = ELoss::Group; /**< Why it vanished. */
        Origin first; /**< Its first character. */
        Origin last; /**< Its last character. */
        /** The sources that did it, from this index on: one for a group and for an "<X>" that did not stand in the
         * template, all those of the line for an empty line. */
        int cause = 0;
        int causeCount = 0; /**< 0 when no value did it. */
    };

    /** A tag, or a bracket of a group, that line formatting took out of a line. */
    struct Tag
    {
        int line = 0; /**< Index in lines(). */
        QString text; /**< "<B>", "[", "<#60>"; what prints in place of it is in the line. */
        Origin first; /**< The "<" or the bracket. */
        Origin last; /**< The ">"; it can stand in another source than the "<". */
        bool isCode = false; /**< It was read as a character code, as what none of the other steps knows. */
    };

    /** A line of the receipt: text with a font byte, a format byte and an origin for each character. */
    struct Line
    {
        QString text; /**< Without the tags. */
        QByteArray font; /**< As in DocumentBlock::font(). */
        QByteArray format; /**< As in DocumentBlock::format(). */
        ETextAlignment alignment = TextAlignLeft; /**< Where the text goes. */
        int lineSpacing = 0; /**< As in DocumentBlock::lineSpacing(). */
        QVector<Origin> origins; /**< Of a character that a tag stands for ("<S>", "<#60>"): the tag's "<". */
    };

    /** A place in the template, as editors count. */
    struct Place
    {
        int line = 1; /**< From 1. */
        int column = 1; /**< Character of the line, from 1; one beyond 65535 counts once. */
    };

    /** A trace of nothing. */
    ReceiptTrace();

    /** Fills the template of @p formatter from @p document. When the memory does not suffice, the trace is empty and
     * one critical line says so. */
    static ReceiptTrace of(const PrinterDocumentFormatter &formatter, const PrinterDocument &document);

    /** The lines of the receipt, without the empty line that a document begins with. */
    QVector<Line> lines() const;

    /** The template, and everything that was put in, in the order in which it was. */
    QVector<Source> sources() const;

    /** What vanished, in the order in which it did. */
    QVector<Loss> losses() const;

    /** The tags taken out of the lines: from line to line, and in one line in the order of the formatter's steps. */
    QVector<Tag> tags() const;

    /** The tags at which the formatter stopped because a limit was reached. */
    QVector<Origin> stops() const;

    /** Offset in the template of @p origin, or of the outermost tag that led to it. */
    int offsetInTemplate(Origin origin) const;

    /** The place of that offset; an offset outside the template gives the nearest place in it. */
    Place placeOf(int offset) const;
    Place placeOf(Origin origin) const;

private:
    friend class printsrv::TraceRecorder;

    QVector<Line> m_lines;
    QVector<Source> m_sources;
    QVector<Loss> m_losses;
    QVector<Tag> m_tags;
    QVector<Origin> m_stops;
    QVector<int> m_lineBegins;
    QVector<int> m_secondHalves; // offsets in the template, of characters beyond 65535
};

Q_DECLARE_TYPEINFO(ReceiptTrace::Origin, Q_MOVABLE_TYPE);

#endif
