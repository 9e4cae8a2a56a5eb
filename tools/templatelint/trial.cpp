// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "trial.h"

#include <printerdocumentformatter.h>

namespace printsrv {

using ESource = ReceiptTrace::ESource;

namespace {

ReceiptTrace traceOf(const QString &templateText, const PrinterDocument &document)
{
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(templateText);
    return ReceiptTrace::of(formatter, document);
}

} // namespace

Trial::Trial(const QString &templateText, const PrinterDocument &filledFrom)
    : document(filledFrom)
    , trace(traceOf(templateText, filledFrom))
    , lines(trace.lines())
    , sources(trace.sources())
    , losses(trace.losses())
    , tags(trace.tags())
    , entryNumbers(sources)
{
}

bool Trial::isMade() const
{
    return !sources.isEmpty();
}

ESource Trial::kindOf(ReceiptTrace::Origin origin) const
{
    return sources.at(origin.source).kind;
}

int Trial::offsetOf(ReceiptTrace::Origin origin) const
{
    return trace.offsetInTemplate(origin);
}

Spot Trial::spotOf(ReceiptTrace::Origin origin) const
{
    const bool isValue = kindOf(origin) == ESource::Attribute;
    return {offsetOf(origin), entryNumbers.numberOf(isValue ? sources.at(origin.source).tag : origin)};
}

QString Trial::whence(ReceiptTrace::Origin origin) const
{
    const ReceiptTrace::Source &source = sources.at(origin.source);
    switch (source.kind) {
    case ESource::Attribute:
        return QStringLiteral(" in the value of %1").arg(source.name)
            + (sources.at(source.outer).kind == ESource::Entries ? whence(source.tag) : QString());
    case ESource::Entries:
        return QStringLiteral(" in entry %1").arg(entryNumbers.numberOf(origin));
    case ESource::CopyMark:
        return QStringLiteral(" in the mark of a copy");
    default:
        return {};
    }
}

QStringView insideOf(const ReceiptTrace::Tag &tag)
{
    return QStringView(tag.text).mid(1, qMax(0, tag.text.size() - 2));
}

} // namespace printsrv
