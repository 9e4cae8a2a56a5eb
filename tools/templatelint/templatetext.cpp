// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "templatetext.h"

#include <algorithm>

namespace printsrv {

namespace {

const QLatin1String FiscalTag("<FISCAL_INFO>");

} // namespace

TemplateText::TemplateText(const QStringList &fileLines, EPart part)
{
    bool isFiscal = false;
    for (int index = 0; index < fileLines.size(); ++index) {
        const QString &line = fileLines.at(index);
        const int tag = line.indexOf(FiscalTag, 0, Qt::CaseInsensitive);
        const bool hasPart = part == EPart::All || isFiscal == (part == EPart::Fiscal);
        if (tag < 0 && hasPart) {
            append(line, index + 1, 1);
        }
        if (tag < 0) {
            continue;
        }
        if (hasPart) {
            appendTrimmed(line, 0, tag, index + 1);
        }
        isFiscal = true;
        if (part != EPart::Main) {
            appendTrimmed(line, tag + FiscalTag.size(), line.size(), index + 1);
        }
    }
}

bool TemplateText::isEmpty() const
{
    return m_lines.isEmpty();
}

QString TemplateText::text() const
{
    return m_lines.join(QLatin1Char('\n'));
}

ReceiptTrace::Place TemplateText::inFile(ReceiptTrace::Place place) const
{
    if (m_begins.isEmpty()) {
        return place;
    }
    const ReceiptTrace::Place begin = m_begins.at(qBound(0, place.line - 1, m_begins.size() - 1));
    return {begin.line, begin.column + place.column - 1};
}

void TemplateText::append(const QString &text, int line, int firstColumn)
{
    m_lines.append(text);
    m_begins.append({line, firstColumn});
}

void TemplateText::appendTrimmed(const QString &line, int begin, int end, int number)
{
    while (begin < end && line.at(begin).isSpace()) {
        ++begin;
    }
    const QString text = line.mid(begin, end - begin).trimmed();
    if (!text.isEmpty()) {
        const auto seconds
            = std::count_if(line.cbegin(), line.cbegin() + begin, [](QChar c) { return c.isLowSurrogate(); });
        append(text, number, begin - int(seconds) + 1);
    }
}

} // namespace printsrv
