// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RECEIPTPREPARATION_H
#define PRINTSRV_RECEIPTPREPARATION_H

#include <QStringList>

class PrinterDocument;
class PrinterDocumentFormatter;

namespace printsrv {

class TraceRecorder;

/**
 * The template's lines filled from @p document, as PrinterDocumentFormatter::prepareDocument() describes. They are told
 * to @p trace, unless it is null; then the formatter loads no symbols.
 */
QStringList preparedLines(const PrinterDocumentFormatter &formatter, const PrinterDocument &document,
                          TraceRecorder *trace);

} // namespace printsrv

#endif
