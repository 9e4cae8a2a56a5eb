// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptcomparison.h"
#include "support.h"
#include "targets.h"

#include <printerdocumentformatter.h>
#include <specialcharacters.h>
#include <textprinterdocument.h>

#include <QDateTime>

namespace {

// The reference follows the rules one after the other, which takes long for long lines.
constexpr int LongestCompared = 1024;
constexpr int LongestRepeated = 64;

// "#12.5" is a number, "@2024-03-05T14:07" a moment, anything else a text.
QVariant attributeValue(const QString &text)
{
    bool isWhole = false;
    const QString rest = text.mid(1);
    const qlonglong whole = rest.toLongLong(&isWhole);
    if (text.startsWith(QLatin1Char('#'))) {
        return isWhole ? QVariant(whole) : QVariant(rest.toDouble());
    }
    return text.startsWith(QLatin1Char('@')) ? QVariant(QDateTime::fromString(rest, Qt::ISODate)) : QVariant(text);
}

Receipt receiptFrom(const QByteArray &input)
{
    const QStringList parts = QString::fromUtf8(input).split(QLatin1Char(fuzz::Separator));
    Receipt receipt;
    receipt.lines = parts.first().split(QLatin1Char('\n'));
    receipt.entries = parts.value(1);
    const QStringList attributes = parts.mid(2);
    for (const QString &attribute : attributes) {
        const int equals = attribute.indexOf(QLatin1Char('='));
        receipt.attributes.insert(attribute.left(equals), attributeValue(attribute.mid(equals + 1)));
    }
    receipt.isCopy = input.size() % 2 == 1;
    receipt.width = input.size() % 50 - 1;
    receipt.charactersMode = input.size() % 3;
    return receipt;
}

void requireNone(const QStringList &difference)
{
    fuzz::requireEqual(difference.value(1), difference.value(2), qPrintable(difference.value(0)));
}

} // namespace

void fuzz::receipt(const QByteArray &input)
{
    const LogCount log;
    const Receipt receipt = receiptFrom(input);
    if (receipt.entries.contains(QLatin1String("<ENTRIES>"), Qt::CaseInsensitive) && input.size() > LongestRepeated) {
        return; // up to the limit, which takes long
    }
    const PrinterDocument data = receipt.document();
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(receipt.lines.join(QLatin1Char('\n')));
    const auto parts = formatter.splitByFiscalInfo();
    for (const auto &part : parts) {
        require(part->isValid(), "a part of a template has lines");
    }
    QStringList kept = receipt.lines;
    formatter.removeXParts(kept, false);
    const QStringList lines = formatter.prepareDocument(data);
    if (log.lines() > 0) {
        return; // a limit was met, which takes long
    }
    formatter.toHtmlDocument(data, false);
    formatter.toTextPrinterDocument(data).toHtml(true, SpecialCharacters());
    if (input.size() <= LongestCompared && lines.size() <= LongestCompared) {
        requireNone(comparison::prepared(receipt, [] {}));
        requireNone(comparison::outputs(receipt));
    }
}
