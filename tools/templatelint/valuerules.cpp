// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "lintrules.h"

#include <QHash>

#include <algorithm>

namespace printsrv {

using ELoss = ReceiptTrace::ELoss;
using ESource = ReceiptTrace::ESource;

namespace {

constexpr int LongestQuote = 20;

void checkStops(const Trial &receipt, Findings &findings)
{
    const auto stops = receipt.trace.stops();
    for (const ReceiptTrace::Origin stop : stops) {
        const ReceiptTrace::Source &source = receipt.sources.at(stop.source);
        QString what = QStringLiteral("the values are too many or too long");
        if (source.kind == ESource::Entries) {
            what = QStringLiteral("the entries hold <ENTRIES> themselves");
        } else if (source.kind == ESource::Attribute) {
            what = QStringLiteral("the value of %1 leads back to itself").arg(source.name);
        }
        findings.add(ELintCode::EndlessValue, receipt.offsetOf(stop), what + QStringLiteral(", and stops at a limit"));
    }
}

/** Text that is read again at @p origin, and brings something else than tags of formatting. */
void addReadAgain(const Trial &receipt, ReceiptTrace::Origin origin, const QString &what, Findings &findings)
{
    if (findings.has(ELintCode::EndlessValue, receipt.offsetOf(origin))) {
        return;
    }
    const bool isEntry = receipt.kindOf(origin) == ESource::Entries;
    findings.addMade(ELintCode::ValueReadAgain, receipt.spotOf(origin), [&] {
        const QString how = isEntry ? QStringLiteral("a list of its two sides") : QStringLiteral("{\"text\": …}");
        return QStringLiteral("%1%2; escape text from outside, in data files with %3")
            .arg(what, receipt.whence(origin), how);
    });
}

/** True for what neither the template nor the copy mark brought. */
bool isFromData(const Trial &receipt, ReceiptTrace::Origin origin)
{
    const ESource kind = receipt.kindOf(origin);
    return kind == ESource::Attribute || kind == ESource::Entries;
}

void addTag(const Trial &receipt, ReceiptTrace::Origin origin, const QString &tag, Findings &findings)
{
    addReadAgain(receipt, origin, QStringLiteral("“%1” is read as a tag").arg(tag.left(LongestQuote)), findings);
}

void checkNestedValues(const Trial &receipt, Findings &findings)
{
    for (const ReceiptTrace::Source &source : receipt.sources) {
        if (source.kind == ESource::Attribute && isFromData(receipt, source.tag)) {
            addReadAgain(receipt, source.tag,
                         QStringLiteral("<%1> is read as a tag").arg(source.name.left(LongestQuote)), findings);
        }
    }
}

/** The tag of the data that emptied a line; its entry is known by the line. */
ReceiptTrace::Origin tagOfLine(const ReceiptTrace::Loss &loss)
{
    for (const ReceiptTrace::Origin end : {loss.first, loss.last}) {
        if (end.source == loss.cause) {
            return end;
        }
    }
    return {loss.cause, 0};
}

/** Parts and pictures that the data begins or ends, and lines that it empties. */
void checkLosses(const Trial &receipt, Findings &findings)
{
    for (const ReceiptTrace::Loss &loss : receipt.losses) {
        if (loss.reason == ELoss::XLine && loss.causeCount > 0) {
            addReadAgain(receipt, tagOfLine(loss), QStringLiteral("“<X>” is read as a tag and empties the line"),
                         findings);
        }
        const bool isPart = loss.reason == ELoss::XPart || loss.reason == ELoss::Image;
        const bool isBegun = isPart && isFromData(receipt, loss.first);
        if (isBegun || (isPart && isFromData(receipt, loss.last))) {
            const bool isImage = loss.reason == ELoss::Image;
            addReadAgain(receipt, isBegun ? loss.first : loss.last,
                         QStringLiteral("“%1” is read as a tag and takes text away")
                             .arg(isImage ? QStringLiteral("<I>") : QStringLiteral("<X:>")),
                         findings);
        }
    }
}

/** True for a code that escapeValue() does not make. */
bool isOddCode(const ReceiptTrace::Tag &tag)
{
    const QStringView code = insideOf(tag);
    const QStringView digits = code.mid(code.startsWith(QLatin1Char('#')) ? 1 : 0);
    const bool isNumber
        = !digits.isEmpty() && std::all_of(digits.begin(), digits.end(), [](QChar c) { return c.isDigit(); });
    return tag.isCode && !isNumber;
}

void checkTags(const Trial &receipt, Findings &findings)
{
    for (const ReceiptTrace::Tag &tag : receipt.tags) {
        if (!isFromData(receipt, tag.first)) {
            continue;
        }
        if (tag.text.size() == 1) {
            addReadAgain(receipt, tag.first, QStringLiteral("“%1” is read as that of a group").arg(tag.text), findings);
        } else if (isOddCode(tag)) {
            addTag(receipt, tag.first, tag.text, findings);
        }
    }
}

/** Spans that a value begins and leaves open, or ends without having begun them. */
void checkSpans(const Trial &receipt, Findings &findings)
{
    QHash<QString, ReceiptTrace::Origin> open;
    for (const ReceiptTrace::Tag &tag : receipt.tags) {
        const QString name = insideOf(tag).toString();
        if (tag.isCode || name.size() < 2 || !isFromData(receipt, tag.first)) {
            continue;
        }
        if (name.endsWith(QLatin1Char(':'))) {
            open.insert(name.chopped(1), tag.first);
        } else if (name.startsWith(QLatin1Char(':'))) {
            const auto begin = open.find(name.mid(1));
            const bool isOwn = begin != open.end() && begin->source == tag.first.source;
            if (isOwn) {
                open.erase(begin);
            } else {
                addTag(receipt, tag.first, tag.text, findings);
            }
        }
    }
    for (auto span = open.cbegin(); span != open.cend(); ++span) {
        addTag(receipt, *span, QStringLiteral("<%1:>").arg(span.key()), findings);
    }
}

/** TABs of values in a line of two sides, which they part once more. */
void checkTabs(const Trial &receipt, Findings &findings)
{
    const QString what = QStringLiteral("a TAB parts the line as <S> does");
    for (const ReceiptTrace::Line &line : receipt.lines) {
        const int end = line.alignment == TextAlignFullWidth ? line.text.size() : 0;
        for (int i = 0; i < end; ++i) {
            const ReceiptTrace::Origin origin = line.origins.at(i);
            const ReceiptTrace::Source &source = receipt.sources.at(origin.source);
            if (source.kind == ESource::Attribute && source.text.at(origin.offset) == QLatin1Char('\t')) {
                addReadAgain(receipt, origin, what, findings);
            }
        }
    }
}

void addEntry(ELintCode code, int tag, int index, const QString &text, Findings &findings)
{
    findings.addMade(code, {tag, index + 1}, [&] { return text.arg(index + 1); });
}

/** Entries that stood in a list: a TAB in one parts it. */
void checkEntryList(const QStringList &entries, int tag, Findings &findings)
{
    const QString what
        = QStringLiteral("the text of entry %1 holds a TAB, which parts it; escape text from outside, in "
                         "data files with a list of its two sides");
    for (int i = 0; i < entries.size(); ++i) {
        if (entries.at(i).contains(QLatin1Char('\t'))) {
            addEntry(ELintCode::EntryTab, tag, i, what, findings);
        }
    }
}

/** The only element for which @p isOdd is true; -1 when there is none, or more than one. */
template<typename IsOdd>
int onlyOne(const QStringList &entries, IsOdd isOdd)
{
    const auto first = std::find_if(entries.cbegin(), entries.cend(), isOdd);
    const bool isOnly = first != entries.cend() && std::none_of(first + 1, entries.cend(), isOdd);
    return isOnly && entries.size() > 1 ? int(first - entries.cbegin()) : -1;
}

/** One entry without "=" among others that have it: a TAB in a text has parted it from the next one. */
void checkOneSided(const QStringList &entries, int tag, Findings &findings)
{
    const int one = onlyOne(entries, [](const QString &entry) {
        return !entry.contains(QLatin1Char('=')) && !entry.startsWith(QLatin1Char(' ')) && !entry.trimmed().isEmpty();
    });
    if (one >= 0 && one + 1 < entries.size()) {
        addEntry(ELintCode::EntryTab, tag, one,
                 QStringLiteral("only entry %1 has no “=”: was it parted from the next one by a TAB in its text?"),
                 findings);
    }
}

/** One entry with "=", and a letter behind it, among others without: it was hardly meant to part the line. */
void checkOneEqualsSign(const QStringList &entries, int tag, Findings &findings)
{
    const int one = onlyOne(entries, [](const QString &entry) { return entry.contains(QLatin1Char('=')); });
    const QString behind = one < 0 ? QString() : entries.at(one).section(QLatin1Char('='), 1).trimmed();
    if (!behind.isEmpty() && behind.front().isLetter()) {
        addEntry(ELintCode::EntryEquals, tag, one,
                 QStringLiteral("only entry %1 has a “=”, which parts its line; escape a “=” that prints"), findings);
    }
}

/** Entries that are empty, or that look as if a TAB or a "=" in a text had parted them. */
void checkEntries(const LintContext &context, const LintReceipt &receipt, Findings &findings)
{
    const int tag = context.text.indexOf(QLatin1String("<ENTRIES>"), 0, Qt::CaseInsensitive);
    if (tag < 0 || receipt.document.entries().isEmpty()) {
        return;
    }
    const QStringList entries = receipt.entryList.value_or(receipt.document.entries().split(QLatin1Char('\t')));
    const QString empty = QStringLiteral("entry %1 is empty: a TAB parts entries, also one in a text");
    for (int i = 0; i < entries.size(); ++i) {
        if (entries.at(i).trimmed().isEmpty()) {
            addEntry(ELintCode::EntryTab, tag, i, empty, findings);
        }
    }
    if (receipt.entryList) {
        checkEntryList(entries, tag, findings);
    } else {
        checkOneSided(entries, tag, findings);
    }
    checkOneEqualsSign(entries, tag, findings);
}

} // namespace

void checkValues(const LintContext &context, Findings &findings)
{
    for (const Trial &receipt : context.receipts) {
        checkStops(receipt, findings);
        checkNestedValues(receipt, findings);
        checkLosses(receipt, findings);
        checkTags(receipt, findings);
        checkSpans(receipt, findings);
        checkTabs(receipt, findings);
    }
    for (const LintReceipt &receipt : context.options.receipts) {
        checkEntries(context, receipt, findings);
    }
}

} // namespace printsrv
