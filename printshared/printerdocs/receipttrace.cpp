// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receipttrace.h"

#include "memoryguard.h"
#include "printerdocument.h"
#include "printerdocumentformatter.h"
#include "receiptoutput.h"
#include "receiptpreparation.h"
#include "tracerecorder.h"

#include <algorithm>

using namespace printsrv;

ReceiptTrace::ReceiptTrace() = default;

ReceiptTrace ReceiptTrace::of(const PrinterDocumentFormatter &formatter, const PrinterDocument &document)
{
    return madeOrEmpty("trace", [&] {
        TraceRecorder recorder(formatter.getTemplate());
        traceLines(preparedLines(formatter, document, &recorder), recorder);
        return recorder.takeTrace();
    });
}

QVector<ReceiptTrace::Line> ReceiptTrace::lines() const
{
    return m_lines;
}

QVector<ReceiptTrace::Source> ReceiptTrace::sources() const
{
    return m_sources;
}

QVector<ReceiptTrace::Loss> ReceiptTrace::losses() const
{
    return m_losses;
}

QVector<ReceiptTrace::Tag> ReceiptTrace::tags() const
{
    return m_tags;
}

QVector<ReceiptTrace::Origin> ReceiptTrace::stops() const
{
    return m_stops;
}

int ReceiptTrace::offsetInTemplate(Origin origin) const
{
    return origin.source == 0 ? origin.offset : m_sources.at(origin.source).place;
}

ReceiptTrace::Place ReceiptTrace::placeOf(int offset) const
{
    if (m_lineBegins.isEmpty()) {
        return {};
    }
    const QString &text = m_sources.first().text;
    const int place = qBound(0, offset, text.size());
    const auto line = std::prev(std::upper_bound(m_lineBegins.cbegin(), m_lineBegins.cend(), place));
    const auto halvesBefore = [this](int end) {
        return int(std::lower_bound(m_secondHalves.cbegin(), m_secondHalves.cend(), end) - m_secondHalves.cbegin());
    };
    const int halves = halvesBefore(place) - halvesBefore(*line);
    return {int(line - m_lineBegins.cbegin()) + 1, place - *line - halves + 1};
}

ReceiptTrace::Place ReceiptTrace::placeOf(Origin origin) const
{
    return placeOf(offsetInTemplate(origin));
}
