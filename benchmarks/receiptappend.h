// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RECEIPTAPPEND_H
#define PRINTSRV_RECEIPTAPPEND_H

#include "receiptworkload.h"

#include <documentblock.h>

/** The receipt of the workload written by hand, with QString appends and nothing else: what formatting is measured by.
 */
namespace workload {

/** A run of lines with one alignment, as a printer driver takes them. */
struct AppendedLines
{
    ETextAlignment alignment;
    QStringList text;
    QList<QByteArray> font;
    QList<QByteArray> format;
    QList<int> lineSpacing;
};

QString appendedText(const Texts &texts, const Receipt &receipt);
QString appendedHtml(const Texts &texts, const Receipt &receipt);
QList<AppendedLines> appendedLines(const Texts &texts, const Receipt &receipt);

} // namespace workload

#endif
