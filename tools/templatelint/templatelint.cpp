// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "templatelint.h"

#include "lintrules.h"
#include "samplevalues.h"

#include <algorithm>
#include <vector>

namespace printsrv {

using ELoss = ReceiptTrace::ELoss;
using ESource = ReceiptTrace::ESource;

namespace {

QString withoutBrackets(QString text)
{
    return text.replace(QLatin1Char('['), QLatin1Char(' ')).replace(QLatin1Char(']'), QLatin1Char(' '));
}

/** What a value left empty is no longer part of an X line's loss: the lines that it stood in are lost. */
QPair<int, int> wholeLines(const QString &text, QPair<int, int> extent)
{
    const int end = text.indexOf(QLatin1Char('\n'), extent.second);
    return {text.lastIndexOf(QLatin1Char('\n'), extent.first) + 1, end < 0 ? text.size() : end};
}

/** The attribute tags that print: those that stand in no X part, X line or picture. */
QVector<int> attributesOf(const Trial &names)
{
    const QString &text = names.sources.constFirst().text;
    QVector<QPair<int, int>> leftOut;
    for (const ReceiptTrace::Loss &loss : names.losses) {
        if (loss.reason == ELoss::XPart || loss.reason == ELoss::XLine || loss.reason == ELoss::Image) {
            const QPair<int, int> extent{names.offsetOf(loss.first), names.offsetOf(loss.last)};
            leftOut.append(loss.reason == ELoss::XLine ? wholeLines(text, extent) : extent);
        }
    }
    std::sort(leftOut.begin(), leftOut.end());
    QVector<int> attributes;
    auto next = leftOut.cbegin();
    for (int i = 0; i < names.sources.size(); ++i) {
        const ReceiptTrace::Source &source = names.sources.at(i);
        while (next != leftOut.cend() && next->second < source.place) {
            ++next;
        }
        const bool isLeftOut = next != leftOut.cend() && next->first <= source.place;
        if (source.kind == ESource::Attribute && !isLeftOut) {
            attributes.append(i);
        }
    }
    return attributes;
}

/** The value of an attribute in the first receipt that has one. */
QVariant givenValue(const QVector<LintReceipt> &receipts, const QString &name)
{
    for (const LintReceipt &receipt : receipts) {
        const QVariant value = receipt.document.attributeValue(name);
        if (!value.toString().isEmpty()) {
            return value;
        }
    }
    return {};
}

AttributeUses usesOf(const LintContext &context)
{
    const auto isDecimal = [](const QString &format) {
        return format.contains(QLatin1Char('.')) && !isDateFormat(format);
    };
    AttributeUses uses;
    for (int i = 0; i < context.names.sources.size(); ++i) {
        const ReceiptTrace::Source &source = context.names.sources.at(i);
        const QStringList parts
            = source.kind == ESource::Attribute ? context.nameOf(i).split(QLatin1Char('+')) : QStringList();
        for (const QString &part : parts) {
            const bool isNew = !uses.contains(part);
            AttributeUse &use = uses[part];
            use.given = isNew ? givenValue(context.options.receipts, part) : use.given;
            use.format = isNew || isDecimal(source.format) ? source.format : use.format;
            use.isInSum = use.isInSum || parts.size() > 1;
        }
    }
    return uses;
}

/** The brackets that print nothing, paired in the lines that print. */
void findGroups(LintContext &context)
{
    QVector<int> open;
    int line = -1;
    for (const ReceiptTrace::Tag &tag : qAsConst(context.samples.tags)) {
        if (tag.text.size() != 1 || tag.first.source != 0) {
            continue;
        }
        if (tag.line != line) {
            context.loneBrackets += open;
            open.clear();
            line = tag.line;
        }
        if (tag.text == QLatin1String("[")) {
            open.append(tag.first.offset);
        } else if (open.isEmpty()) {
            context.loneBrackets.append(tag.first.offset);
        } else {
            context.groups.append({open.takeLast(), tag.first.offset});
        }
    }
    context.loneBrackets += open;
    std::sort(context.groups.begin(), context.groups.end(),
              [](const Group &a, const Group &b) { return a.open < b.open; });
}

/** False when the memory does not suffice. */
bool tryOut(LintContext &context)
{
    context.names = Trial(withoutBrackets(context.text), PrinterDocument());
    if (!context.names.isMade()) {
        return false;
    }
    context.attributes = attributesOf(context.names);
    const AttributeUses uses = usesOf(context);
    context.samples = Trial(context.text, sampleReceipt(uses, ESample::Short));
    findGroups(context);
    for (const LintReceipt &receipt : context.options.receipts) {
        context.receipts.append(Trial(context.text, receipt.document));
    }
    if (context.receipts.isEmpty()) {
        context.receipts.append(context.samples);
    }
    if (context.options.isHostile) {
        for (const ESample sample : {ESample::Empty, ESample::Long, ESample::Negative}) {
            context.hostile.append(Trial(context.text, sampleReceipt(uses, sample)));
        }
    }
    const auto isMade = [](const Trial &trial) {
        return trial.isMade();
    };
    return context.samples.isMade() && std::all_of(context.receipts.cbegin(), context.receipts.cend(), isMade)
        && std::all_of(context.hostile.cbegin(), context.hostile.cend(), isMade);
}

/** A part of the template, tried out. */
struct PartTrial
{
    PartTrial(const QStringList &lines, const LintOptions &options, EPart part)
        : text(lines, part)
        , context(options, text.text())
    {
    }

    TemplateText text;
    LintContext context;
};

/** The parts that print one by one. */
QVector<EPart> partsOf(const QStringList &lines, EPart part)
{
    if (part != EPart::All || TemplateText(lines, EPart::Main).isEmpty()) {
        return {part};
    }
    return TemplateText(lines, EPart::Fiscal).isEmpty() ? QVector<EPart>{part}
                                                        : QVector<EPart>{EPart::Main, EPart::Fiscal};
}

QSet<QString> namesIn(const LintContext &context)
{
    QSet<QString> names;
    for (const int attribute : context.attributes) {
        const QStringList parts = context.nameOf(attribute).split(QLatin1Char('+'));
        for (const QString &part : parts) {
            names.insert(part);
        }
    }
    return names;
}

QVector<Finding> findingsIn(const PartTrial &part)
{
    Findings findings;
    for (const auto check : {checkAttributes, checkGroups, checkParts, checkValues, checkPaper}) {
        check(part.context, findings);
    }
    QVector<Finding> result;
    const auto sorted = findings.sorted();
    for (const Findings::Found &found : sorted) {
        const ReceiptTrace::Place place = part.text.inFile(part.context.names.trace.placeOf(found.offset));
        result.append({found.code, place.line, place.column, found.text});
    }
    return result;
}

} // namespace

QString LintContext::nameOf(int attribute) const
{
    const ReceiptTrace::Source &source = names.sources.at(attribute);
    return text.mid(source.place + 1, source.name.size());
}

std::optional<QVector<Finding>> lintTemplate(const QStringList &lines, const LintOptions &options)
{
    std::vector<PartTrial> trials;
    QSet<QString> usedNames;
    const QVector<EPart> parts = partsOf(lines, options.part);
    for (const EPart part : parts) {
        trials.emplace_back(lines, options, part);
        if (!tryOut(trials.back().context)) {
            return {};
        }
        usedNames += namesIn(trials.back().context);
    }
    QVector<Finding> findings;
    for (PartTrial &trial : trials) {
        trial.context.usedNames = usedNames;
        trial.context.isFirstPart = &trial == &trials.front();
        findings += findingsIn(trial);
    }
    return findings;
}

} // namespace printsrv
