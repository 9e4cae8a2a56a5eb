// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "explanation.h"

#include <entrynumbers.h>
#include <printerdocumentformatter.h>
#include <receipttrace.h>

#include <algorithm>

namespace printsrv {

using ELoss = ReceiptTrace::ELoss;
using ESource = ReceiptTrace::ESource;

namespace {

/** Writes the trace of one receipt as text. */
class Explanation
{
public:
    Explanation(const TemplateText &templateText, const ReceiptTrace &trace)
        : m_templateText(templateText)
        , m_trace(trace)
        , m_sources(trace.sources())
        , m_entryNumbers(m_sources)
    {
    }

    QString text()
    {
        int number = 0;
        const auto lines = m_trace.lines();
        for (const ReceiptTrace::Line &line : lines) {
            m_text += QStringLiteral("%1: %2\n").arg(++number).arg(visible(line.text));
            addStretches(line);
        }
        const auto losses = m_trace.losses();
        for (const ReceiptTrace::Loss &loss : losses) {
            m_text += place(loss.first) + QStringLiteral(": ") + reason(loss) + QLatin1Char('\n');
        }
        const auto stops = m_trace.stops();
        for (const ReceiptTrace::Origin stop : stops) {
            m_text += place(stop) + QStringLiteral(": a limit is reached, the rest of the line stays as it is\n");
        }
        return m_text;
    }

private:
    /** A TAB as an arrow and other control characters as dots, so that each character is one column. */
    static QString visible(QString text)
    {
        for (QChar &c : text) {
            if (c == QLatin1Char('\t')) {
                c = QChar(0x2192);
            } else if (c.category() == QChar::Other_Control) {
                c = QChar(0x00b7);
            }
        }
        return text;
    }

    QString place(ReceiptTrace::Origin origin) const
    {
        const ReceiptTrace::Place found = m_templateText.inFile(m_trace.placeOf(origin));
        return QStringLiteral("template %1:%2").arg(found.line).arg(found.column);
    }

    QString whence(ReceiptTrace::Origin origin) const
    {
        const ReceiptTrace::Source &source = m_sources.at(origin.source);
        switch (source.kind) {
        case ESource::Template:
            return place(origin);
        case ESource::Entries:
            return QStringLiteral("entry %1, %2").arg(m_entryNumbers.numberOf(origin)).arg(place(origin));
        case ESource::CopyMark:
            return QStringLiteral("the mark of a copy, %1").arg(place(origin));
        case ESource::Attribute:
            break;
        }
        return QStringLiteral("%1, %2").arg(source.name, place(origin));
    }

    /** One beyond 65535 counts once, as in the columns of the template. */
    static int charactersIn(QStringView text)
    {
        const auto seconds = std::count_if(text.begin(), text.end(), [](QChar c) { return c.isLowSurrogate(); });
        return int(text.size() - seconds);
    }

    /** One line for each stretch of characters that follow each other in their source, too. */
    void addStretches(const ReceiptTrace::Line &line)
    {
        const QVector<ReceiptTrace::Origin> &origins = line.origins;
        int column = 1;
        for (int begin = 0; begin < origins.size();) {
            int end = begin + 1;
            while (end < origins.size() && origins.at(end).source == origins.at(begin).source
                   && origins.at(end).offset == origins.at(end - 1).offset + 1) {
                ++end;
            }
            const int last = column + charactersIn(QStringView(line.text).mid(begin, end - begin)) - 1;
            const QString columns
                = last <= column ? QString::number(column) : QStringLiteral("%1-%2").arg(column).arg(last);
            column = last + 1;
            m_text += QStringLiteral("    %1 %2\n").arg(columns, -8).arg(whence(origins.at(begin)));
            begin = end;
        }
    }

    QString values(const ReceiptTrace::Loss &loss) const
    {
        QStringList texts;
        const auto causes = m_sources.mid(loss.cause, loss.causeCount);
        for (const ReceiptTrace::Source &source : causes) {
            const QString text
                = source.text.isEmpty() ? QStringLiteral("empty") : QStringLiteral("“%1”").arg(source.text);
            texts.append(QStringLiteral("%1 is %2").arg(source.name, text));
        }
        return texts.join(QStringLiteral(", "));
    }

    /** "it holds", or what brought a tag that is not the template's. */
    QString holders(const ReceiptTrace::Loss &loss) const
    {
        const ReceiptTrace::Source &source = m_sources.at(loss.cause);
        if (loss.causeCount == 0) {
            return QStringLiteral("it holds");
        }
        return source.kind == ESource::Entries ? QStringLiteral("its entry holds")
                                               : QStringLiteral("%1 holds").arg(source.name);
    }

    QString reason(const ReceiptTrace::Loss &loss) const
    {
        switch (loss.reason) {
        case ELoss::Group:
            return QStringLiteral("the group up to %1 vanished, %2").arg(place(loss.last), values(loss));
        case ELoss::EmptyLine:
            return QStringLiteral("the line vanished, %1").arg(values(loss));
        case ELoss::XPart:
            return QStringLiteral("left out up to %1, an X part").arg(place(loss.last));
        case ELoss::XLine:
            return QStringLiteral("the line is emptied, %1 <X>").arg(holders(loss));
        case ELoss::Image:
            return QStringLiteral("a picture in the line is not printed");
        case ELoss::SymbolsLine:
            break;
        }
        return QStringLiteral("the line selects the special symbols");
    }

    const TemplateText &m_templateText;
    const ReceiptTrace &m_trace;
    const QVector<ReceiptTrace::Source> m_sources;
    const EntryNumbers m_entryNumbers;
    QString m_text;
};

} // namespace

std::optional<QByteArray> explanationOf(const TemplateText &templateText, const PrinterDocument &receipt)
{
    PrinterDocumentFormatter formatter;
    formatter.setTemplate(templateText.text());
    const ReceiptTrace trace = ReceiptTrace::of(formatter, receipt);
    if (trace.sources().isEmpty()) {
        return {};
    }
    return Explanation(templateText, trace).text().toUtf8();
}

} // namespace printsrv
