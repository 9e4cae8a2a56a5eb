// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_NUMBEREDDOCUMENT_H
#define PRINTSRV_NUMBEREDDOCUMENT_H

#include <textprinterdocument.h>

/** A document of several disk blocks that is told from others by a number in each of its lines. */
inline TextPrinterDocument numberedDocument(int number, int lineCount = 300)
{
    QStringList lines;
    for (int i = 0; i < lineCount; ++i) {
        lines.append(QStringLiteral("Документ %1, строка %2").arg(number).arg(i));
    }
    TextPrinterDocument document;
    document.appendBlock(DocumentBlock::createSimpleBlock(lines, TextAlignLeft, 0, 0, 0, 0));
    document.setSymbolsPerLine(number);
    return document;
}

#endif
