// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TRIAL_H
#define PRINTSRV_TRIAL_H

#include "entrynumbers.h"
#include "finding.h"

#include <printerdocument.h>
#include <receipttrace.h>

namespace printsrv {

/** One receipt made of the template to see what comes of it: with the data given, or with data that lint makes up. */
struct Trial
{
    Trial() = default;
    Trial(const QString &templateText, const PrinterDocument &filledFrom);

    PrinterDocument document;
    ReceiptTrace trace;
    QVector<ReceiptTrace::Line> lines;
    QVector<ReceiptTrace::Source> sources;
    QVector<ReceiptTrace::Loss> losses;
    QVector<ReceiptTrace::Tag> tags;
    EntryNumbers entryNumbers;

    /** False when the memory did not suffice for the trace. */
    bool isMade() const;

    /** What the character belongs to. */
    ReceiptTrace::ESource kindOf(ReceiptTrace::Origin origin) const;

    /** Offset in the template of the character, or of the tag that brought it. */
    int offsetOf(ReceiptTrace::Origin origin) const;

    /** That offset, and the number of the entry that the character belongs to. */
    Spot spotOf(ReceiptTrace::Origin origin) const;

    /** Names what brought the character, to stand behind a text: " in the value of NAME"; empty for the template. */
    QString whence(ReceiptTrace::Origin origin) const;
};

/** What stands between the brackets of a tag. */
QStringView insideOf(const ReceiptTrace::Tag &tag);

} // namespace printsrv

#endif
