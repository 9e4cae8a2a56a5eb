// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptcomparison.h"

#include "fakeprintsettings.h"
#include "printerdocumentformatter.h"
#include "receiptreference.h"
#include "textprinterdocument.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

QStringList mismatch(const char *what, const QString &expected, const QString &actual)
{
    return expected == actual ? QStringList() : QStringList{QString::fromLatin1(what), expected, actual};
}

QString joined(const QStringList &lines)
{
    return QString::number(lines.size()) + QStringLiteral(" lines\n") + lines.join(QLatin1Char('\n'));
}

/** The blocks as reference::documentBlocks() describes them. */
QStringList describe(const TextPrinterDocument &document)
{
    QStringList description;
    const auto blocks = document.blocks();
    for (const DocumentBlock &block : blocks) {
        description.append(reference::describeHead(block.alignment()));
        for (int i = 0; i < block.text().size(); ++i) {
            description.append(reference::describeLine(block.text().at(i), block.font().at(i), block.format().at(i),
                                                       block.lineSpacing().at(i)));
        }
    }
    return description;
}

/** The rows of @p html without their wrapper and without what the browser's layout is free to choose. */
QString rowsOf(QString html)
{
    html.remove(QStringLiteral("<p><table width=\"100%\" cellspacing=0 cellpadding=0>"));
    html.remove(QStringLiteral("</table></p>"));
    html.remove(QRegularExpression(QStringLiteral(" width=\"[0-9]+%\"")));
    return html.replace(QStringLiteral("&nbsp;"), QStringLiteral(" "));
}

/** Pictures of special symbols are a matter of the blocks' own tests. */
bool hasPictures(const QStringList &lines)
{
    static const QRegularExpression code(QStringLiteral("[\\x01-\\x07]"));
    const auto formatted = reference::formatLines(lines, reference::LetterCase::Kept);
    return std::any_of(formatted.begin(), formatted.end(), [](const auto &line) { return line.text.contains(code); });
}

QString walked(QString line, const PrinterDocument &document)
{
    const PrinterDocumentFormatter formatter;
    int pos = 0;
    for (;;) {
        QString name = formatter.extractAttr(line, pos);
        if (name.isEmpty() && pos >= line.size()) {
            return line;
        }
        if (!name.isEmpty()) {
            QString format;
            formatter.extractFormat(name, format);
            const bool isSum = formatter.summAttributes(name, document, format);
            const QString value = isSum ? name : formatter.nameToVal(name, document, format);
            line.insert(pos, value);
            formatter.removeGroupIfZero(pos, line, value);
        }
    }
}

} // namespace

namespace comparison {

QStringList prepared(const Receipt &receipt, const std::function<void()> &announceWarning)
{
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(receipt.lines.join(QLatin1Char('\n')));
    const auto expected = reference::prepare(formatter.getTemplate(), receipt.document());
    for (int i = 0; i < expected.warnings; ++i) {
        announceWarning();
    }
    return mismatch("prepared lines", joined(expected.lines), joined(formatter.prepareDocument(receipt.document())));
}

QStringList outputs(const Receipt &receipt)
{
    const PrinterDocumentFormatter formatter;
    const RegisteredMode registered(receipt.charactersMode);
    const auto letterCase = static_cast<reference::LetterCase>(receipt.charactersMode);
    const auto filled = reference::prepare(receipt.lines, receipt.document());
    const QStringList texts{filled.lines.join(QLatin1Char('\n')), receipt.lines.join(QLatin1Char('\n'))};
    for (const QString &all : texts) {
        const QString text = all.left(2000); // the reference takes too long for lines at the limits
        const QStringList lines = text.split(QLatin1Char('\n'));
        QStringList found = mismatch("plain text", reference::plainText(lines, receipt.width, letterCase),
                                     formatter.plainTextToFormattedPlainText(text, receipt.width));
        if (found.isEmpty()) {
            found = mismatch("blocks", joined(reference::documentBlocks(lines, letterCase)),
                             joined(describe(formatter.plainTextToTextPrinterDocument(text))));
        }
        if (found.isEmpty() && !hasPictures(lines)) {
            found = mismatch("HTML", reference::htmlRows(lines, letterCase),
                             rowsOf(formatter.plainTextToHtml(text, false)));
        }
        if (!found.isEmpty()) {
            return found;
        }
    }
    return {};
}

QStringList whole(const Receipt &receipt)
{
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(receipt.lines.join(QLatin1Char('\n')));
    const PrinterDocument document = receipt.document();
    const auto filled = reference::prepare(formatter.getTemplate(), document);
    if (filled.warnings > 0 || filled.lines.isEmpty()) {
        return {};
    }
    const QString text = filled.lines.join(QLatin1Char('\n'));
    QStringList found
        = mismatch("document of all steps", joined(describe(formatter.plainTextToTextPrinterDocument(text))),
                   joined(describe(formatter.toTextPrinterDocument(document))));
    if (found.isEmpty()) {
        found = mismatch("plain text of all steps", formatter.plainTextToFormattedPlainText(text, receipt.width),
                         formatter.toPlainText(document, receipt.width));
    }
    return found;
}

QStringList steps(const Receipt &receipt)
{
    for (const QString &line : receipt.lines) {
        int valueLength = 0;
        int warnings = 0;
        reference::substitute(line, receipt.attributes, valueLength, warnings);
        const PrinterDocument document = receipt.document();
        const QStringList found = warnings > 0
            ? QStringList()
            : mismatch("public steps", walked(line, document),
                       PrinterDocumentFormatter().processDocAttributes(line, document));
        if (!found.isEmpty()) {
            return found;
        }
    }
    return {};
}

} // namespace comparison
