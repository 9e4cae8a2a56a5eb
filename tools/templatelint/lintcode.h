// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_LINTCODE_H
#define PRINTSRV_LINTCODE_H

#include <QString>

#include <optional>

namespace printsrv {

/** What can be found in a template, in the order of the table of names; docs/lint has a page for each. */
enum class ELintCode {
    UnknownAttribute,
    SimilarAttribute,
    ShortAttribute,
    LongCode,
    CodeOutOfRange,
    UnclosedTag,
    SymbolsInLine,
    WholeNumberFormat,
    UnclosedGroup,
    UnclosedXPart,
    UnclosedSpan,
    UnopenedSpan,
    TagBehindGroup,
    UnreadTag,
    MissingSymbols,
    SecondSymbolsLine,
    UnknownSymbol,
    DroppedImage,
    NoDocno,
    TabInLine,
    SecondSide,
    EndlessValue,
    ValueReadAgain,
    EntryEquals,
    EntryTab,
    CodecLacksCharacter,
    ModelLacksFormat,
    ModelLacksSymbols,
    LineTooWide,
    NoGap,
    HostileWidth,
};

/** How bad a finding is. */
enum class ESeverity {
    Warning, /**< The receipt may be as it was meant. */
    Error, /**< It prints what nobody can have meant, or lacks what was meant to print. */
};

/** A code's stable name, "unknown-attribute". */
QString lintCodeName(ELintCode code);

/** How bad the code's findings are. */
ESeverity lintSeverity(ELintCode code);

/** The code of a name; nothing when there is none. */
std::optional<ELintCode> lintCodeOf(const QString &name);

/** All names, in the order of the codes. */
QStringList lintCodeNames();

} // namespace printsrv

#endif
