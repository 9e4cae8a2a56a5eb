// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PAPERRENDERER_H
#define PRINTSRV_PAPERRENDERER_H

#include <printerinfo.h>
#include <specialcharacters.h>
#include <textprinterdocument.h>

#include <QImage>
#include <QString>

/** Why a document has no picture. */
enum EPaperError : int {
    PaperNoError = 0, /**< There is a picture. */
    PaperUnknown = 1, /**< The model has no such paper, or its lines have no dots or more than 8192. */
    PaperTooLong = 2, /**< The document is longer than PaperRenderer::LargestHeight, or has a picture over 64 MiB. */
    PaperNoMemory = 3, /**< The memory does not hold the picture. */
};

/**
 * Draws a text printer document as the paper of a printer model shows it, dot by dot.
 *
 * The picture is as wide as the paper's line (`pointsToLine`) and carries the model's resolution. No display, no
 * QGuiApplication and no installed font are needed, and equal documents give equal dots on every machine.
 *
 * Characters stand in the cell of their font (a font number that the model lacks is taken as its first font), at the
 * lower edge of their line. Bold (0x01), italic (0x02), underline (0x08), double width (0x10) and double height (0x20)
 * are shown where the model has them; 0x04, the flag that is the driver's own, is white on black where the model has
 * inversion. Line spacing n adds 4 * n white rows under a line (0 to 255) where the model can set it. Lines are aligned
 * by dots; what passes the paper's edge is cut. In a full-width line the first TAB takes up the room that is left,
 * every other TAB is one blank.
 *
 * A character of code 1 to 7 without the format bit 0x40 is the document's image of that code: the largest one that
 * fits into the font's cell of own symbols. A character that cannot be printed shows as a question mark: one that the
 * codec or the bundled font (see PaperFont) lacks, and a symbol without an image or in a font without own symbols.
 * Other control characters are blanks.
 *
 * Images are drawn at their size, cut at the paper's edge. The type of a barcode is a symbology number of libzint
 * (20 is Code 128, 13 EAN, 8 Code 39; `zint --types` lists them); bars are 80 dots high, a module is up to 3 dots wide,
 * of a QR code up to 6. Text under the bars is not printed. A code that libzint cannot make, or that is wider than the
 * paper, shows as a question mark and costs one warning (`printsrv.paper`).
 *
 * A value; reentrant. render() takes time in proportion to the dots of the picture.
 */
class Q_DECL_EXPORT PaperRenderer
{
public:
    /** The height in dots beyond which a document is refused: 25 m of paper at 203 dots per inch. */
    static constexpr int LargestHeight = 200000;

    /** Makes a renderer for pictureModel() and its paper. */
    PaperRenderer();

    /** Makes a renderer for the paper @p paperId of @p model, brought into the model's range of papers. */
    explicit PaperRenderer(const PrinterInfo &model, int paperId = 0);

    /**
     * The model of the pseudo-printer TextPrinterModels::MODEL_PNG, which the catalogue lacks: everything a printer
     * can, at 203 dots per inch on one paper of 72 mm (576 dots), fonts 0 and 1 of 12 x 24 dots, 2 and 3 of 16 x 32.
     */
    static PrinterInfo pictureModel();

    /** The model whose paper is drawn. */
    PrinterInfo model() const;
    void setModel(const PrinterInfo &model);

    /** Number of the paper type; one out of the model's range is taken as its nearest end. 0 by default. */
    int paperId() const;
    void setPaperId(int paperId);

    /**
     * Name of the code page that the printer is set to, "cp866"; empty by default, which prints all characters of the
     * bundled font.
     *
     * A character of code 128 to 255 that was put into the line by its number (format bit 0x40) is that byte of the
     * code page.
     */
    QString codec() const;
    /** Sets the code page; false, and nothing changes, for a name that Qt does not know. */
    [[nodiscard]] bool setCodec(const QString &name);

    /** Empty lines of font 0 behind the document, 0 by default; the setter brings it into 0 to 1000. */
    int emptyLinesAtEnd() const;
    void setEmptyLinesAtEnd(int count);

    /**
     * The picture of @p document, 1 bit a dot, black on white.
     *
     * @p symbols stands in for the images of codes that the document itself has no image of. A document without
     * anything to print is one white row. On failure the picture is null and @p error, unless it is null, says why;
     * otherwise it becomes PaperNoError.
     */
    QImage render(const TextPrinterDocument &document, const SpecialCharacters &symbols = {},
                  EPaperError *error = nullptr) const;

private:
    PrinterInfo m_model;
    int m_paperId = 0;
    QString m_codec;
    int m_emptyLinesAtEnd = 0;
};

#endif
