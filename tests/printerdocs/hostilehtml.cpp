// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "hostilehtml.h"

#include <printerdocument.h>
#include <printerdocumentformatter.h>
#include <specialcharacters.h>
#include <textprinterdocument.h>

#include <functional>

namespace {

QStringList hostileValues(const QString &address)
{
    const QString request = QStringLiteral("<img src=\"%1a.png\" onerror=\"window.hit=1\">").arg(address);
    return {
        request,
        QStringLiteral("<script>window.hit=1</script>"),
        QStringLiteral("</td></tr></table><script>window.hit=1</script><table>"),
        QStringLiteral("</pre></div><svg onload=window.hit=1>"),
        QStringLiteral("\"><b onmouseover=window.hit=1 style=\"background:url(%1b)\">x").arg(address),
        QStringLiteral("' onclick='window.hit=1' a='"),
        QStringLiteral("<iframe src=%1c></iframe><link rel=stylesheet href=%1d>").arg(address),
        QStringLiteral("<meta http-equiv=refresh content=\"0;url=%1e\">").arg(address),
        QStringLiteral("<style>@import '%1f';</style><base href=%1>").arg(address),
        QStringLiteral("<!-- --><![CDATA[<?xml ?><!DOCTYPE html>]]>"),
        QStringLiteral("<b>bold</b> &lt;b&gt; &#60;i&#62; &amp;amp; &nbsp &copy"),
        QStringLiteral("<"),
        QStringLiteral("a<b>c</b"),
        QString::fromUtf8("\uFF1Cscript\uFF1Ewindow.hit=1 \u202E<u>"),
        QStringLiteral("</title></textarea></noscript><plaintext>"),
    };
}

// Font and format bytes that begin a new run at each character, with every flag.
DocumentBlock styled(const QString &text, ETextAlignment alignment)
{
    DocumentBlock block = DocumentBlock::createSimpleBlock({text}, alignment, 0, 0, 0, 0);
    QByteArray format;
    for (int i = 0; i < text.size(); ++i) {
        format.append(char(i % 0x40));
    }
    block.setFormat(QList<QByteArray>{format});
    return block;
}

QString blockHtml(const DocumentBlock &block, bool isTable)
{
    const QString html = block.toHtml(false, SpecialCharacters(), isTable, 40);
    return isTable ? QStringLiteral("<table>%1</table>").arg(html) : html;
}

PrinterDocument dataOf(const QString &value)
{
    using EValuePlace = PrinterDocumentFormatter::EValuePlace;
    PrinterDocument data;
    data.setAttributes(
        {{QStringLiteral("NAME"), PrinterDocumentFormatter::escapeValue(value, EValuePlace::Attribute)}});
    data.setEntries(PrinterDocumentFormatter::escapeValue(value, EValuePlace::Entry));
    return data;
}

QString formatted(const char *templateText, const QString &value)
{
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(QString::fromLatin1(templateText));
    return formatter.toHtml(dataOf(value), false);
}

struct Form
{
    const char *name;
    std::function<QString(const QString &value)> html;
};

QVector<Form> forms()
{
    const auto page = [](const QString &value, bool isTable) {
        TextPrinterDocument document;
        document.appendBlock(styled(value, TextAlignLeft));
        return document.toHtml(isTable, SpecialCharacters());
    };
    return {
        {"row",
         [](const QString &value) {
             return blockHtml(styled(value, TextAlignCenter), true);
         }},
        {"sides",
         [](const QString &value) {
             return blockHtml(styled(value + QLatin1Char('\t'), TextAlignFullWidth), true);
         }},
        {"preformatted",
         [](const QString &value) {
             return blockHtml(styled(value, TextAlignRight), false);
         }},
        {"document of rows",
         [page](const QString &value) {
             return page(value, true);
         }},
        {"document",
         [page](const QString &value) {
             return page(value, false);
         }},
        {"attribute",
         [](const QString &value) {
             return formatted("<B><NAME>", value);
         }},
        {"attribute in a group",
         [](const QString &value) {
             return formatted("[<C><NAME,0.00>]", value);
         }},
        {"entry",
         [](const QString &value) {
             return formatted("<U:><ENTRIES><:U>", value);
         }},
        {"right side",
         [](const QString &value) {
             return formatted("<S><F2><NAME>", value);
         }},
    };
}

} // namespace

QVector<HostileCase> hostileCases(const QString &address)
{
    QVector<HostileCase> cases;
    const QStringList values = hostileValues(address);
    const QVector<Form> all = forms();
    for (const Form &form : all) {
        for (const QString &value : values) {
            const QString name = QStringLiteral("%1: %2").arg(QLatin1String(form.name), value);
            cases.append({name, form.html(value), withPlainBlanks(value)});
        }
    }
    return cases;
}

QString withPlainBlanks(const QString &text)
{
    return text.simplified();
}
