// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PAPERPAGE_H
#define PRINTSRV_PAPERPAGE_H

#include "cellmaker.h"
#include "paperrenderer.h"

#include <documentblock.h>

namespace printsrv {

/** The paper on which a document is printed, from the top downwards; stops at the first error. */
class PaperPage
{
public:
    /** @param width of the paper's line in dots */
    PaperPage(int width, const PrinterInfo &model, const CellMaker &cells);

    /** Prints a block of any kind; one that holds nothing to print leaves no trace. */
    void print(const DocumentBlock &block);

    /** Prints blank lines of font 0. */
    void feed(int lines);

    EPaperError error() const;
    const Raster &raster() const;

private:
    using Line = QVector<PaperCharacter>;

    int grow(qint64 rows);
    void printText(const DocumentBlock &block);
    void printLine(const Line &line, ETextAlignment alignment, int spacing);
    void printImage(const MonochromeImage &image, ETextAlignment alignment);
    void printCode(const DocumentBlock &block);
    qint64 width(const Line &line) const;
    int tabWidth(const Line &line, ETextAlignment alignment) const;
    int height(const Line &line) const;

    int m_width;
    bool m_hasLineSpacing;
    CellMaker m_cells;
    Raster m_raster;
    EPaperError m_error = PaperNoError;
};

} // namespace printsrv

#endif
