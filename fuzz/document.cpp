// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "support.h"
#include "targets.h"

#include <specialcharacters.h>
#include <textprinterdocument.h>

void fuzz::document(const QByteArray &input)
{
    const LogCount log;
    const TextPrinterDocument read(jsonVariant(input).toMap());
    // Contract: a symbol of a negative code is written and read as symbol 0, so that it takes two rounds.
    const TextPrinterDocument normal(TextPrinterDocument(read.toMap()).toMap());
    require(TextPrinterDocument(normal.toMap()) == normal, "a document's map is its normal form");
    TextPrinterDocument changed = read;
    changed.toUpper();
    changed.toLower();
    require(changed.blocks().size() == read.blocks().size(), "the letters' case changes no block");
    read.toStringList();
    read.symbolsCount();
    const SpecialCharacters none;
    read.toHtml(true, none);
    read.toHtml(false, none);
    const auto blocks = read.blocks();
    for (const DocumentBlock &block : blocks) {
        block.img().pixel(block.img().width() / 2, block.img().height() / 2, 8);
        block.barcode();
    }
}
