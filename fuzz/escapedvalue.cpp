// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "support.h"
#include "targets.h"

#include <printerdocument.h>
#include <printerdocumentformatter.h>

#include <algorithm>
#include <iterator>

namespace {

constexpr int LongestPrinted = 100000;

// As documented: control characters go.
QString printed(const QString &text)
{
    QString kept;
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept),
                 [](QChar c) { return c.category() != QChar::Other_Control; });
    return kept;
}

/** A template, set once: making a formatter reads the terminal's configuration. */
class Template
{
public:
    explicit Template(const char *text)
    {
        m_formatter.setTemplate(QString::fromUtf8(text));
    }

    QString filled(const PrinterDocument &data) const
    {
        return m_formatter.toPlainText(data, 0);
    }

private:
    PrinterDocumentFormatter m_formatter;
};

} // namespace

void fuzz::escapedValue(const QByteArray &input)
{
    using EValuePlace = PrinterDocumentFormatter::EValuePlace;
    const LogCount log;
    static const Template attribute("<TEXT>");
    static const Template inGroup("[a<TEXT,0.00>b]");
    static const Template entry("<ENTRIES>");
    const QString text = input.startsWith('!')
        ? QString::fromUtf16(reinterpret_cast<const ushort *>(input.constData()), input.size() / 2)
        : QString::fromUtf8(input);
    const QString expected = printed(text);
    PrinterDocument data;
    data.setAttributes({{QStringLiteral("TEXT"), PrinterDocumentFormatter::escapeValue(text, EValuePlace::Attribute)}});
    data.setEntries(PrinterDocumentFormatter::escapeValue(text, EValuePlace::Entry));
    if (expected.size() > LongestPrinted) {
        return; // a line takes a million characters
    }
    requireEqual(expected, attribute.filled(data), "an escaped attribute prints as it is");
    const QString group = expected.isEmpty() ? QString() : QLatin1Char('a') + expected + QLatin1Char('b');
    requireEqual(group, inGroup.filled(data), "an escaped attribute removes no group");
    requireEqual(expected, entry.filled(data), "an escaped entry prints as it is");
}
