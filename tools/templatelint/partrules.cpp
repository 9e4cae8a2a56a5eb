// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "lintrules.h"

#include <specialcharacters.h>

#include <QFileInfo>

#include <algorithm>

namespace printsrv {

using ELoss = ReceiptTrace::ELoss;
using ESource = ReceiptTrace::ESource;

namespace {

/** The offset of the last line that selects symbols; -1 when there is none. The others have no effect. */
int symbolsOffset(const LintContext &context, Findings &findings)
{
    int last = -1;
    for (const ReceiptTrace::Loss &loss : context.samples.losses) {
        if (loss.reason != ELoss::SymbolsLine) {
            continue;
        }
        if (last >= 0) {
            findings.add(ELintCode::SecondSymbolsLine, last,
                         QStringLiteral("a later <SPECSYMBOLS=…> counts, this one has no effect"));
        }
        last = context.samples.offsetOf(loss.first);
    }
    return last;
}

/** The file's path as the formatter makes it. */
QString symbolsPath(const LintContext &context, int offset)
{
    const int begin = context.text.indexOf(QLatin1Char('='), offset) + 1;
    const int end = context.text.indexOf(QLatin1Char('\n'), begin);
    const QString name = context.text.mid(begin, end < 0 ? -1 : end - begin).trimmed().chopped(1);
    const QString path = context.options.symbolsFolder + QLatin1Char('/') + name;
    const bool hasSuffix = path.contains(QLatin1String(".ssi")) || path.contains(QLatin1String(".SSI"));
    return hasSuffix ? path : path + QLatin1String(".ssi");
}

/** The symbols that the template has; none when their file cannot be read. */
SpecialCharacters loadSymbols(const LintContext &context, int offset, Findings &findings)
{
    SpecialCharacters symbols;
    const QString path = symbolsPath(context, offset);
    if (!QFileInfo(path).isFile()) {
        findings.add(ELintCode::MissingSymbols, offset, QStringLiteral("there is no file %1").arg(path));
    } else if (!symbols.load(path) || symbols.images().isEmpty()) {
        findings.add(ELintCode::MissingSymbols, offset, QStringLiteral("%1 is no file of special symbols").arg(path));
    }
    return symbols;
}

/** The code of a tag that prints a special symbol; 0 for any other tag. */
int symbolOf(const ReceiptTrace::Tag &tag)
{
    const QStringView code = insideOf(tag);
    const int number = code.startsWith(QLatin1Char('#')) ? code.mid(1).toString().toInt() : 0;
    return tag.isCode && number >= 1 && number <= 7 ? number : 0;
}

void checkSymbols(const LintContext &context, Findings &findings)
{
    const int offset = symbolsOffset(context, findings);
    const bool hasFile = offset >= 0 && !context.options.symbolsFolder.isEmpty();
    const auto images = hasFile ? loadSymbols(context, offset, findings).images() : SpecialCharacters().images();
    for (const ReceiptTrace::Tag &tag : context.samples.tags) {
        const int code = symbolOf(tag);
        if (code == 0 || images.contains(static_cast<signed char>(code))) {
            continue;
        }
        const int place = context.samples.offsetOf(tag.first);
        if (offset < 0) {
            findings.add(ELintCode::UnknownSymbol, place,
                         QStringLiteral("no line <SPECSYMBOLS=…> says where symbol %1 comes from").arg(code));
        } else if (!images.isEmpty()) {
            findings.add(ELintCode::UnknownSymbol, place, QStringLiteral("the symbol file has no symbol %1").arg(code));
        }
    }
}

void checkImages(const LintContext &context, Findings &findings)
{
    for (const ReceiptTrace::Loss &loss : context.samples.losses) {
        if (loss.reason == ELoss::Image) {
            findings.add(ELintCode::DroppedImage, context.samples.offsetOf(loss.first),
                         QStringLiteral("a picture in a line is taken out and not printed"));
        }
    }
    for (const ReceiptTrace::Tag &tag : context.samples.tags) {
        if (tag.text == QLatin1String("<I>") || tag.text == QLatin1String("</I>")) {
            findings.add(ELintCode::DroppedImage, context.samples.offsetOf(tag.first),
                         QStringLiteral("half of a picture in a line: the tag prints as a character of code 0"));
        }
    }
}

/** The samples are a copy: they have the mark when the template has a place for it. */
void checkCopyMark(const LintContext &context, Findings &findings)
{
    const auto &sources = context.samples.sources;
    const bool hasMark = std::any_of(sources.cbegin(), sources.cend(), [](const ReceiptTrace::Source &source) {
        return source.kind == ESource::CopyMark;
    });
    if (hasMark || !context.isFirstPart) {
        return;
    }
    for (const int attribute : context.attributes) {
        if (context.nameOf(attribute).compare(QLatin1String("DOCNO"), Qt::CaseInsensitive) == 0) {
            findings.add(ELintCode::NoDocno, context.names.sources.at(attribute).place,
                         QStringLiteral("a copy gets its mark behind <DOCNO> without a format only"));
            return;
        }
    }
    findings.add(ELintCode::NoDocno, 0, QStringLiteral("the template has no <DOCNO>, a copy gets no mark"));
}

void addSide(const Trial &receipt, ReceiptTrace::Origin origin, Findings &findings)
{
    const bool isEntry = receipt.kindOf(origin) == ESource::Entries;
    findings.addMade(isEntry ? ELintCode::EntryEquals : ELintCode::SecondSide, receipt.spotOf(origin), [&] {
        return (isEntry ? QStringLiteral("a second “=”%1 parts its line once more; escape a “=” that prints")
                        : QStringLiteral("a second <S>%1 parts the line once more"))
            .arg(receipt.whence(origin));
    });
}

/** Lines with more than one "<S>". */
void checkSides(const Trial &receipt, Findings &findings)
{
    int line = -1;
    for (const ReceiptTrace::Tag &tag : receipt.tags) {
        if (tag.text != QLatin1String("<S>")) {
            continue;
        }
        if (line == tag.line) {
            addSide(receipt, tag.first, findings);
        }
        line = tag.line;
    }
}

/** TABs that stand in the template itself. */
void checkTabs(const LintContext &context, Findings &findings)
{
    const QLatin1Char tab('\t');
    for (int at = context.text.indexOf(tab); at >= 0; at = context.text.indexOf(tab, at + 1)) {
        findings.add(ELintCode::TabInLine, at,
                     QStringLiteral("a TAB is no column: write <S> to part the line, or blanks"));
    }
}

} // namespace

void checkParts(const LintContext &context, Findings &findings)
{
    checkSymbols(context, findings);
    checkImages(context, findings);
    checkCopyMark(context, findings);
    checkTabs(context, findings);
    checkSides(context.samples, findings);
    for (const Trial &receipt : context.receipts) {
        checkSides(receipt, findings);
    }
}

} // namespace printsrv
