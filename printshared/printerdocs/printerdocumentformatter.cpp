// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

// How a receipt is made fast: by leaving out what a line does not need.
// - A prepared line shares its text with the template until a step changes it; a step first looks for its mark.
// - Attributes are replaced in one walk from the left to the right (AttributeSubstitution): what it has passed is
// appended
//   to the line made, and no character moves twice.
// - The formatting tags are looked up in one scan of the filled line (formatLine), and only the steps of the tags found
//   run, in the order that the rules give, each moving the characters and their bytes to the front in one pass.
// - Text, HTML and blocks are written from the formatted lines into one growing output (receiptoutput.cpp).
// Nothing is kept from one receipt to the next but the template and the symbol font, so that nothing can be stale.

#include "printerdocumentformatter.h"

#include "attributesubstitution.h"
#include "characterformat.h"
#include "lineformatter.h"
#include "memoryguard.h"
#include "printerdocslog.h"
#include "printerdocument.h"
#include "receiptoutput.h"
#include "receiptpreparation.h"
#include "templatelines.h"
#include "valueescape.h"
#include "valueformat.h"

#include <checktemplatessettings.h>
#include <logtab.h>

#include <QFile>
#include <QTextStream>

#include <algorithm>

using namespace printsrv;

namespace {

const QLatin1String FiscalInfoTag("<FISCAL_INFO>");
const QLatin1String DocumentNumberTag("<DOCNO>");

// Far more than any receipt; a pipe or a damaged file system may offer text without an end.
constexpr int MaxTemplateLength = 33554432;

const QLatin1String TableClosing("</table></p>");
// Contract: without a blank before "cellspacing", unlike the others.
const QLatin1String TableOpening("<p><table width=\"100%\"cellspacing=0 cellpadding=0>");
const QLatin1String TextTableOpening("<p><table width=\"100%\" cellspacing=0 cellpadding=0>");
const QLatin1String PageOpening("<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\">"
                                "</head><body><table width=\"100%\" cellspacing=0 cellpadding=0>");
const QLatin1String PageClosing("</table></body></html>");

QStringList linesOf(const QString &text)
{
    return text.split(QLatin1Char('\n'));
}

/** Reads all lines of @p file into @p lines; the reason when that fails, otherwise an empty text. */
QString readLines(QFile &file, const char *codec, QStringList &lines)
{
    if (!file.open(QIODevice::ReadOnly)) {
        return file.errorString();
    }
    QTextStream stream(&file);
    stream.setCodec(codec);
    qint64 length = 0;
    while (!stream.atEnd() && length <= MaxTemplateLength) {
        lines.append(stream.readLine(MaxTemplateLength));
        length += lines.last().size() + 1;
    }
    if (length > MaxTemplateLength) {
        return QStringLiteral("longer than %1 characters").arg(MaxTemplateLength);
    }
    return file.error() == QFileDevice::NoError ? QString() : file.errorString();
}

void appendTrimmed(QStringList &lines, const QString &part)
{
    const QString trimmed = part.trimmed();
    if (!trimmed.isEmpty()) {
        lines.append(trimmed);
    }
}

} // namespace

PrinterDocumentFormatter::PrinterDocumentFormatter(int number, QObject *parent)
    : QObject(parent)
    , m_specCharsPath(CheckTemplatesSettings().checkTemplatesPath())
    , m_number(number)
{
}

PrinterDocumentFormatter::~PrinterDocumentFormatter() = default;

bool PrinterDocumentFormatter::isValid() const
{
    return !m_template.isEmpty();
}

void PrinterDocumentFormatter::setTemplate(const QString &text)
{
    m_template = linesOf(text);
}

QStringList PrinterDocumentFormatter::getTemplate() const
{
    return m_template;
}

bool PrinterDocumentFormatter::loadTemplate(const QString &fileName, const char *codec)
{
    return madeOrEmpty("template", [&] {
        QFile file(fileName);
        QStringList lines;
        const QString failure = readLines(file, codec, lines);
        if (!failure.isEmpty()) {
            qCWarning(printerDocsLog) << fileName << logtab << failure;
            return false;
        }
        m_template = lines;
        return isValid();
    });
}

QString PrinterDocumentFormatter::specCharsPath() const
{
    return m_specCharsPath;
}

void PrinterDocumentFormatter::setSpecCharsPath(const QString &path)
{
    m_specCharsPath = path;
}

QList<QSharedPointer<PrinterDocumentFormatter>> PrinterDocumentFormatter::splitByFiscalInfo()
{
    QStringList parts[2];
    int current = 0;
    for (const QString &line : qAsConst(m_template)) {
        const int tag = indexOfTag(line, FiscalInfoTag);
        if (tag < 0) {
            parts[current].append(line);
            continue;
        }
        appendTrimmed(parts[current], line.left(tag));
        current = 1;
        appendTrimmed(parts[current], line.mid(tag + FiscalInfoTag.size()));
    }
    QList<QSharedPointer<PrinterDocumentFormatter>> formatters;
    for (const QStringList &part : parts) {
        if (part.isEmpty()) {
            continue;
        }
        const auto formatter = QSharedPointer<PrinterDocumentFormatter>::create(m_number);
        formatter->m_template = part;
        formatter->m_specCharsPath = m_specCharsPath;
        formatters.append(formatter);
    }
    return formatters;
}

QString PrinterDocumentFormatter::toPlainText(const PrinterDocument &document, int width) const
{
    return madeOrEmpty("text", [&] { return plainTextOf(prepareDocument(document), width); });
}

QString PrinterDocumentFormatter::plainTextToFormattedPlainText(const QString &text, int width) const
{
    return madeOrEmpty("text", [&] { return plainTextOf(linesOf(text), width); });
}

QString PrinterDocumentFormatter::toHtml(const PrinterDocument &document, bool flag) const
{
    Q_UNUSED(flag)
    return madeOrEmpty(
        "HTML", [&] { return htmlOf(prepareDocument(document), m_specialCharacters, TableOpening, TableClosing); });
}

QString PrinterDocumentFormatter::plainTextToHtml(const QString &text, bool flag) const
{
    Q_UNUSED(flag)
    return madeOrEmpty("HTML",
                       [&] { return htmlOf(linesOf(text), m_specialCharacters, TextTableOpening, TableClosing); });
}

QString PrinterDocumentFormatter::toHtmlDocument(const PrinterDocument &document, bool flag) const
{
    Q_UNUSED(flag)
    return madeOrEmpty(
        "HTML", [&] { return htmlOf(prepareDocument(document), m_specialCharacters, PageOpening, PageClosing); });
}

QString PrinterDocumentFormatter::plainTextToHtmlDocument(const QString &text, bool flag) const
{
    Q_UNUSED(flag)
    return madeOrEmpty("HTML", [&] { return htmlOf(linesOf(text), m_specialCharacters, PageOpening, PageClosing); });
}

TextPrinterDocument PrinterDocumentFormatter::toTextPrinterDocument(const PrinterDocument &document) const
{
    return madeOrEmpty("document", [&] { return documentOf(prepareDocument(document), m_specialCharacters); });
}

TextPrinterDocument PrinterDocumentFormatter::plainTextToTextPrinterDocument(const QString &text) const
{
    return madeOrEmpty("document", [&] { return documentOf(linesOf(text), m_specialCharacters); });
}

DocumentBlock PrinterDocumentFormatter::formatPrintStr(const QString &line, unsigned char &format, unsigned char &font,
                                                       ETextAlignment &alignment, int lineSpacing) const
{
    format = uchar(format & ~characterformat::PlacedByCode);
    FormattedLine formatted;
    formatted.alignment = alignment;
    formatted.lineSpacing = lineSpacing;
    if (!line.isEmpty()) {
        CarriedStyle carried{format, font};
        formatted = formatLine(line, carried, LineDetail::Styles, lineSpacing);
        format = carried.format;
        font = carried.font;
        alignment = formatted.alignment;
    }
    DocumentBlock block;
    block.setText({formatted.text});
    block.setFont(QList<QByteArray>{formatted.font});
    block.setFormat(QList<QByteArray>{formatted.format});
    block.setLineSpacing(formatted.lineSpacing);
    block.setAlignment(formatted.alignment);
    return block;
}

QStringList PrinterDocumentFormatter::prepareDocument(const PrinterDocument &document) const
{
    return madeOrEmpty("receipt lines", [&] { return preparedLines(*this, document, nullptr); });
}

void PrinterDocumentFormatter::addCopyInfo(QStringList &lines, const PrinterDocument &document) const
{
    if (!document.isCopy()) {
        return;
    }
    const auto numberLine = std::find_if(lines.cbegin(), lines.cend(),
                                         [](const QString &line) { return indexOfTag(line, DocumentNumberTag) >= 0; });
    if (numberLine != lines.cend()) {
        lines.insert(int(numberLine - lines.cbegin()) + 1, tr("<C>CHECK_COPY"));
    }
}

void PrinterDocumentFormatter::unpackEntries(QStringList &lines, const PrinterDocument &document) const
{
    expandEntries(lines, document.entries());
}

void PrinterDocumentFormatter::loadSpecSymbols(QStringList &lines) const
{
    const QString name = takeSymbolsLines(lines);
    if (name.isNull()) {
        return;
    }
    QString path = m_specCharsPath + QLatin1Char('/') + name;
    if (!path.contains(QLatin1String(".ssi")) && !path.contains(QLatin1String(".SSI"))) {
        path += QLatin1String(".ssi");
    }
    if (m_specialCharacters.fileName() != path && QFile::exists(path)) {
        m_specialCharacters.load(path);
    }
}

void PrinterDocumentFormatter::removeXParts(QStringList &lines, bool remove) const
{
    cutXParts(lines, remove);
}

void PrinterDocumentFormatter::removeXParts(QString &line, bool remove) const
{
    cutXLine(line, remove);
}

QString PrinterDocumentFormatter::processDocAttributes(const QString &line, const PrinterDocument &document) const
{
    return AttributeSubstitution(*this, document).processed(line, 1);
}

QString PrinterDocumentFormatter::nameToVal(const QString &name, const PrinterDocument &document, QString &format) const
{
    if (!document.hasAttribute(name)) {
        return tr("Unknown attribute");
    }
    return valueText(format, document.attributeValue(name));
}

bool PrinterDocumentFormatter::summAttributes(QString &expression, const PrinterDocument &document,
                                              QString &format) const
{
    if (!expression.contains(QLatin1Char('+'))) {
        return false;
    }
    expression = floatToString(format, attributeSum(expression, document));
    return true;
}

QString PrinterDocumentFormatter::extractAttr(QString &line, int &pos) const
{
    const int open = line.indexOf(QLatin1Char('<'), qMax(pos, 0));
    const int close = open < 0 ? -1 : line.indexOf(QLatin1Char('>'), open);
    if (close < 0) {
        pos = line.size();
        return QString();
    }
    const int length = close - open;
    if (length <= LongestFormattingTag) {
        pos = close + 1;
        return QString();
    }
    const QString name = line.mid(open + 1, length - 1);
    line.remove(open, length + 1);
    pos = open;
    return name;
}

void PrinterDocumentFormatter::extractFormat(QString &name, QString &format) const
{
    const int comma = name.indexOf(QLatin1Char(','));
    format = comma < 0 ? QString() : name.mid(comma + 1);
    if (comma >= 0) {
        name.truncate(comma);
    }
}

void PrinterDocumentFormatter::removeGroupIfZero(int pos, QString &line, const QString &value) const
{
    if (!isZeroOrEmpty(value)) {
        return;
    }
    const int start = scanL(line, pos - 1);
    const int end = scanR(line, pos);
    if (start >= 0 && end >= 0) {
        line.remove(start, end - start + 1);
    }
}

int PrinterDocumentFormatter::scanL(const QString &line, int from) const
{
    int depth = 0;
    for (int i = qMin(from, line.size() - 1); i >= 0; --i) {
        if (line.at(i) == QLatin1Char(']')) {
            ++depth;
        } else if (line.at(i) == QLatin1Char('[') && depth-- == 0) {
            return i;
        }
    }
    return -1;
}

int PrinterDocumentFormatter::scanR(const QString &line, int from) const
{
    int depth = 0;
    for (int i = qMax(from, 0); i < line.size(); ++i) {
        if (line.at(i) == QLatin1Char('[')) {
            ++depth;
        } else if (line.at(i) == QLatin1Char(']') && depth-- == 0) {
            return i;
        }
    }
    return -1;
}

QString PrinterDocumentFormatter::intToString(const QString &format, qint64 value) const
{
    return integerText(format, value);
}

QString PrinterDocumentFormatter::floatToString(const QString &format, double value) const
{
    return decimalText(format, value);
}

QString PrinterDocumentFormatter::dateToString(const QString &format, const QDate &date) const
{
    return dateText(format, date);
}

QString PrinterDocumentFormatter::timeToString(const QString &format, const QTime &time) const
{
    return timeText(format, time);
}

QString PrinterDocumentFormatter::dtToString(const QString &format, const QDateTime &dateTime) const
{
    return dateTimeText(format, dateTime);
}

QString PrinterDocumentFormatter::escapeValue(const QString &text, EValuePlace place)
{
    return place == EValuePlace::Entry ? escapedEntry(text) : escapedAttribute(text);
}
