// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptpreparation.h"

#include "attributesubstitution.h"
#include "printerdocument.h"
#include "printerdocumentformatter.h"
#include "templatelines.h"
#include "tracerecorder.h"

#include <algorithm>

namespace printsrv {

namespace {

void addCopyMark(QStringList &lines, const PrinterDocumentFormatter &formatter, const PrinterDocument &document,
                 TraceRecorder *trace)
{
    const QStringList before = lines;
    formatter.addCopyInfo(lines, document);
    if (trace == nullptr || lines.size() == before.size()) {
        return;
    }
    const auto mark = std::mismatch(before.cbegin(), before.cend(), lines.cbegin()).second;
    trace->startPass();
    for (auto line = lines.cbegin(); line != lines.cend(); ++line) {
        if (line == mark) {
            trace->insertCopyMark(*mark);
        } else {
            trace->keepLine();
        }
    }
}

void takeSymbols(QStringList &lines, const PrinterDocumentFormatter &formatter, TraceRecorder *trace)
{
    if (trace == nullptr) {
        formatter.loadSpecSymbols(lines);
        return;
    }
    const QStringList before = lines;
    (void)takeSymbolsLines(lines);
    trace->dropLines(before, lines, ReceiptTrace::ELoss::SymbolsLine);
}

} // namespace

QStringList preparedLines(const PrinterDocumentFormatter &formatter, const PrinterDocument &document,
                          TraceRecorder *trace)
{
    QStringList lines = formatter.getTemplate();
    addCopyMark(lines, formatter, document, trace);
    expandEntries(lines, document.entries(), trace);
    takeSymbols(lines, formatter, trace);
    AttributeSubstitution substitution(formatter, document, trace);
    substitution.process(lines);
    if (substitution.mayHaveLeftParts()) {
        cutXParts(lines, document.removeFiscalAttrs(), trace);
        stripInlineImages(lines, trace);
    }
    return lines;
}

} // namespace printsrv
