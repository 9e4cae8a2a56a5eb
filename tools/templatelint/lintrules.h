// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_LINTRULES_H
#define PRINTSRV_LINTRULES_H

#include "finding.h"
#include "templatelint.h"
#include "trial.h"

/** The rules of lint, one family a file. Each looks at the trials and adds what it finds. */
namespace printsrv {

/** A group of the template by the offsets of its brackets. */
struct Group
{
    int open = 0;
    int close = 0;
};

/** The template and the receipts that were made of it. */
struct LintContext
{
    LintContext(const LintOptions &lintOptions, const QString &templateText)
        : options(lintOptions)
        , text(templateText)
    {
    }

    const LintOptions &options;
    const QString text; /**< The template as it prints. */
    /** Without brackets and values, so that no group vanishes: each attribute tag of the template once. */
    Trial names;
    /** A copy with a short value for each attribute, so that nothing vanishes. */
    Trial samples;
    /** The receipts given; without any, the samples. */
    QVector<Trial> receipts;
    /** The attributes of the template, and of its other part, too. */
    QSet<QString> usedNames;
    /** False for the part behind "<FISCAL_INFO>" when there is one in front of it. */
    bool isFirstPart = true;
    /** Receipts of unusual values. */
    QVector<Trial> hostile;
    /** The groups of the template in the order of their beginnings, and the offsets of brackets without a partner. */
    QVector<Group> groups;
    QVector<int> loneBrackets;

    /** The attribute tags of the template; an index in the sources of the names. */
    QVector<int> attributes;
    /** What stands before the comma of such a tag. */
    QString nameOf(int attribute) const;
};

/** Names that no receipt has, names that are too short and codes that are too long, formats of whole numbers. */
void checkAttributes(const LintContext &context, Findings &findings);

/** Groups, X parts and spans without an end, and tags that slide in front of the walk when a group vanishes. */
void checkGroups(const LintContext &context, Findings &findings);

/** Symbols, pictures, the copy mark, TABs. */
void checkParts(const LintContext &context, Findings &findings);

/** Values and entries that are read as tags. */
void checkValues(const LintContext &context, Findings &findings);

/** What the printer's model, its paper and its code page cannot print. */
void checkPaper(const LintContext &context, Findings &findings);

} // namespace printsrv

#endif
