// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "lintcode.h"

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace printsrv {

namespace {

struct CodeInfo
{
    ELintCode code;
    const char *name;
    ESeverity severity;
};

constexpr CodeInfo Codes[] = {
    {ELintCode::UnknownAttribute, "unknown-attribute", ESeverity::Error},
    {ELintCode::SimilarAttribute, "similar-attribute", ESeverity::Warning},
    {ELintCode::ShortAttribute, "short-attribute", ESeverity::Error},
    {ELintCode::LongCode, "long-code", ESeverity::Error},
    {ELintCode::CodeOutOfRange, "code-out-of-range", ESeverity::Error},
    {ELintCode::UnclosedTag, "unclosed-tag", ESeverity::Error},
    {ELintCode::SymbolsInLine, "symbols-in-line", ESeverity::Error},
    {ELintCode::WholeNumberFormat, "whole-number-format", ESeverity::Warning},
    {ELintCode::UnclosedGroup, "unclosed-group", ESeverity::Error},
    {ELintCode::UnclosedXPart, "unclosed-x-part", ESeverity::Error},
    {ELintCode::UnclosedSpan, "unclosed-span", ESeverity::Warning},
    {ELintCode::UnopenedSpan, "unopened-span", ESeverity::Warning},
    {ELintCode::TagBehindGroup, "tag-behind-group", ESeverity::Warning},
    {ELintCode::UnreadTag, "unread-tag", ESeverity::Error},
    {ELintCode::MissingSymbols, "missing-symbols", ESeverity::Error},
    {ELintCode::SecondSymbolsLine, "second-symbols-line", ESeverity::Warning},
    {ELintCode::UnknownSymbol, "unknown-symbol", ESeverity::Warning},
    {ELintCode::DroppedImage, "dropped-image", ESeverity::Warning},
    {ELintCode::NoDocno, "no-docno", ESeverity::Warning},
    {ELintCode::TabInLine, "tab-in-line", ESeverity::Warning},
    {ELintCode::SecondSide, "second-side", ESeverity::Warning},
    {ELintCode::EndlessValue, "endless-value", ESeverity::Error},
    {ELintCode::ValueReadAgain, "value-read-again", ESeverity::Warning},
    {ELintCode::EntryEquals, "entry-equals", ESeverity::Warning},
    {ELintCode::EntryTab, "entry-tab", ESeverity::Warning},
    {ELintCode::CodecLacksCharacter, "codec-lacks-character", ESeverity::Error},
    {ELintCode::ModelLacksFormat, "model-lacks-format", ESeverity::Warning},
    {ELintCode::ModelLacksSymbols, "model-lacks-symbols", ESeverity::Warning},
    {ELintCode::LineTooWide, "line-too-wide", ESeverity::Error},
    {ELintCode::NoGap, "no-gap", ESeverity::Error},
    {ELintCode::HostileWidth, "hostile-width", ESeverity::Warning},
};

constexpr bool isInOrder()
{
    for (size_t i = 0; i < std::size(Codes); ++i) {
        if (static_cast<size_t>(Codes[i].code) != i) {
            return false;
        }
    }
    return true;
}
static_assert(isInOrder(), "a code is the index of its row");

} // namespace

QString lintCodeName(ELintCode code)
{
    return QLatin1String(Codes[static_cast<size_t>(code)].name);
}

ESeverity lintSeverity(ELintCode code)
{
    return Codes[static_cast<size_t>(code)].severity;
}

std::optional<ELintCode> lintCodeOf(const QString &name)
{
    const auto found = std::find_if(std::begin(Codes), std::end(Codes),
                                    [&name](const CodeInfo &info) { return name == QLatin1String(info.name); });
    return found == std::end(Codes) ? std::nullopt : std::optional<ELintCode>(found->code);
}

QStringList lintCodeNames()
{
    QStringList names;
    for (const CodeInfo &info : Codes) {
        names.append(QLatin1String(info.name));
    }
    return names;
}

} // namespace printsrv
