// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RECEIPTOUTPUT_H
#define PRINTSRV_RECEIPTOUTPUT_H

#include "textprinterdocument.h"

#include <QStringList>

/** What prepared lines become; the characters mode of the registered printer settings decides on upper and lower case.
 */
namespace printsrv {

class TraceRecorder;

/** The lines laid out for @p width characters, joined with "\n". */
QString plainTextOf(QStringList lines, int width);

/** The lines as rows of an HTML table, between @p opening and @p closing. */
QString htmlOf(QStringList lines, const SpecialCharacters &symbols, QLatin1String opening, QLatin1String closing);

/** The lines as blocks, each as long as the alignment stays the same, with the images of @p symbols. */
TextPrinterDocument documentOf(QStringList lines, const SpecialCharacters &symbols);

/** Tells @p trace, which has followed the lines up to here, what becomes of them. */
void traceLines(QStringList lines, TraceRecorder &trace);

} // namespace printsrv

#endif
