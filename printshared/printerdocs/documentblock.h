// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_DOCUMENTBLOCK_H
#define PRINTSRV_DOCUMENTBLOCK_H

#include "monochromeimage.h"

#include <QByteArray>
#include <QDebug>
#include <QList>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariant>

class SpecialCharacters;

/** Where the text of a line goes. A number without a name here is laid out as left. */
enum ETextAlignment : int {
    TextAlignLeft = 0, /**< At the left margin. */
    TextAlignRight = 1, /**< At the right margin. */
    TextAlignCenter = 2, /**< In the middle of the line. */
    TextAlignFullWidth = 3, /**< Over the whole line: the line's TAB takes up the room that is left. */
};

/** The bits of a character's format byte. A template names the first six by the letters given here. */
enum ECharFormat : int {
    CharFormatBold = 0x01, /**< "B" */
    CharFormatItalic = 0x02, /**< "N" */
    CharFormatDriver = 0x04, /**< "Z"; its meaning is the printer driver's own. */
    CharFormatUnderline = 0x08, /**< "U" */
    CharFormatDoubleWidth = 0x10, /**< "W2" */
    CharFormatDoubleHeight = 0x20, /**< "H2" */
    CharFormatPlacedByCode = 0x40, /**< No letter: a number such as "<65>" put the character into the line. */
};

/**
 * One block of a text printer document: lines of text with one alignment, a picture, a barcode or a QR code.
 *
 * Text carries one font byte and one format byte for each character, and one line spacing for each line. The setters of
 * whole lists and the maps take lists and byte arrays of any length; isText() tells whether the lists fit together, and
 * every reader of the bytes takes a missing one as 0 and leaves those past the line's end unread.
 * An implicitly shared value; reentrant.
 */
class Q_DECL_EXPORT DocumentBlock
{
public:
    /** What a block holds. A number without a name here, from a map, is kept and is none of them. */
    enum EBlockType : int {
        TextBlock = 0, /**< Lines of text. */
        ImageBlock = 1, /**< A picture. */
        BarcodeBlock = 2, /**< A barcode. */
        QrCodeBlock = 3, /**< A QR code. */
    };

    /** The symbology of a barcode: any other number is the printer driver's own and is handed on unchanged. */
    enum EBarcodeType : int {
        NoBarcode = 0, /**< Not set; a block with it is no barcode. */
    };

    /** Makes a text block without lines, which is not isText(). */
    DocumentBlock() = default;

    /** Makes a default block and fills it as setMap() does. */
    explicit DocumentBlock(const QMap<QString, QVariant> &map);

    /**
     * Makes a text block of @p count empty lines, each with the line spacing @p spacing.
     *
     * No lines are asked for, or more than 1,000,000: a default block.
     */
    static DocumentBlock emptyBlock(int count, ETextAlignment align, int spacing);

    /**
     * Makes a text block of @p lines with one font, format and line spacing, and @p spacesBefore blanks in front of
     * each line (see setSpacesBefore()).
     *
     * Contract: the blanks come last, so that they have font 0 and format 0.
     */
    static DocumentBlock createSimpleBlock(const QStringList &lines, ETextAlignment align, uchar font, uchar format,
                                           int spacing, int spacesBefore);

    /** What the block holds; TextBlock by default. */
    EBlockType type() const;
    /** Sets the type alone; the content stays. */
    void setType(const EBlockType &type);

    /** The symbology of the barcode; NoBarcode by default. */
    EBarcodeType barCodeType() const;
    /** Sets the symbology, and the type to BarcodeBlock unless it is NoBarcode. */
    void setBarCodeType(const EBarcodeType &barCodeType);

    /** The lines of text; for a barcode or QR code one line, the Base64 text of its bytes. Empty by default. */
    QStringList text() const;
    /** Replaces the lines; font, format and line spacing stay as they are. */
    void setText(const QStringList &text);

    /** For each line the printer's font number of each character, 0 to 3. Empty by default. */
    QList<QByteArray> font() const;
    void setFont(const QList<QByteArray> &font);
    /** Gives each character of the present lines the font @p font. */
    void setFont(uchar font);

    /** For each line the format byte of each character, bits of ECharFormat. Empty by default. */
    QList<QByteArray> format() const;
    void setFormat(const QList<QByteArray> &format);
    /** Gives each character of the present lines the format @p format. */
    void setFormat(uchar format);

    /** The alignment of all lines; left by default. */
    ETextAlignment alignment() const;
    void setAlignment(const ETextAlignment &alignment);

    /** For each line its spacing, 0 to 7 in templates, otherwise whatever the driver takes. Empty by default. */
    QList<int> lineSpacing() const;
    void setLineSpacing(const QList<int> &lineSpacing);
    /** Gives each of the present lines the spacing @p lineSpacing. */
    void setLineSpacing(int lineSpacing);

    /** The picture of an image block; empty by default. */
    MonochromeImage img() const;
    /** Sets the picture and the type ImageBlock. */
    void setImg(const MonochromeImage &img);

    /** True for a text block with at least one line and as many fonts, formats and line spacings as lines. */
    bool isText() const;
    /** True for an image block with a valid picture. */
    bool isImage() const;
    /** True for a barcode block that has a line and a symbology. */
    bool isBarcode() const;
    /** True for a QR code block that has a line. */
    bool isQrCode() const;
    /** True when isImage() or isText(). Contract: barcodes and QR codes are not valid by this test. */
    bool isValid() const;

    /** Makes the block a barcode of the bytes @p data with the symbology @p barCodeType. */
    void setBarCode(const QByteArray &data, EBarcodeType barCodeType);
    /** Makes the block a barcode of the bytes @p data; the symbology stays. */
    void setBarCode(const QByteArray &data);
    /** The bytes of the first line's Base64 text, whatever the type; empty when there is no line. */
    QByteArray barcode() const;

    /** Makes the block a QR code of the bytes @p data. */
    void setQrCode(const QByteArray &data);
    /** The same bytes as barcode(). */
    QByteArray qrCode() const;

    /** The width factor of a character: @p font + 1, doubled when @p format has both 0x10 and 0x20. */
    int prepareFont(char format, char font) const;

    /** The number of characters in all lines of a text block, 0 for any other type. */
    int symbolsCount() const;

    /**
     * Puts the lines of @p other, with all that belongs to them, behind the lines of this block.
     *
     * Only when both are isText() and have the same alignment; otherwise nothing changes and the result is false.
     * A block can be appended to itself.
     */
    bool append(const DocumentBlock &other);

    /**
     * The lines of a text block laid out for a printer with @p width characters a line, one string for each line; an
     * empty list when the block is not isText(), or with one critical line when the memory does not hold the result.
     * The block stays as it is.
     *
     * Lines are never wrapped or cut. In a line that fills the width each TAB becomes one blank. A shorter line gets
     * blanks in front (right, centre), or blanks for each TAB (full width), so that one TAB fills the line up; a left
     * line stays as it is, TABs included.
     *
     * A width of 0 or less is filled by every line; one above 4096 is taken as 4096. The TABs of one line together grow
     * by at most 65,536 blanks; the TABs behind those become one blank each.
     */
    QStringList toStringList(int width);

    /**
     * Puts @p count blanks in front of each line, with font 0 and format 0.
     *
     * Only for 1 to 16; any other number changes nothing.
     */
    void setSpacesBefore(int count);

    /**
     * Makes the lines lower case by the Unicode rules; a line can change its length, its font and format bytes stay.
     *
     * Contract: the Base64 line of a barcode or QR code is changed as well, and so is spoilt.
     */
    void toLower();
    /** Makes the lines upper case; otherwise as toLower(). */
    void toUpper();

    /**
     * The lines of a text block as HTML for a preview; the empty text when the block is not isText(), or with one
     * critical line when the memory does not hold the result.
     *
     * With @p table each line is a row of a table with two columns, otherwise it stands in "<pre>". An empty or blank
     * line is "<br>". Text is escaped, and in table rows blanks that a browser would drop are "&nbsp;". A character of
     * code 1 to 7 without the format bit 0x40 is a picture of that symbol of @p symbols, written as a PNG file under
     * the folder "tempimg" of the system's temporary folder; where that cannot be done it is a white square (U+25A1),
     * with one warning a call.
     *
     * @p leftCellPercent is the width of the left cell of full-width rows in percent of the table, 1 to 99 (the right
     * cell gets the rest); any other number leaves the widths to the browser. The first argument has no effect.
     */
    QString toHtml(bool unused, const SpecialCharacters &symbols, bool table, int leftCellPercent) const;

    /**
     * Reads the map that toMap() writes; a missing key reads as 0 or empty.
     *
     * The lines and the picture are emptied first, then what belongs to the "type" of the map is read; the rest stays.
     * The lists are taken as they are, of equal length or not.
     */
    void setMap(const QMap<QString, QVariant> &map);

    /**
     * "type", and what belongs to it: "img" of an image; "txt", "fnt", "fmt", "ls" and "align" of a text; "bar" and
     * "bt" of a barcode; "qr" of a QR code.
     *
     * A block that is none of these by isImage() and so on is written with "type" alone.
     */
    QMap<QString, QVariant> toMap() const;

    /** True when all eight fields are equal, whatever the type. */
    bool operator==(const DocumentBlock &other) const;
    bool operator!=(const DocumentBlock &other) const;

private:
    void setCode(EBlockType type, const QByteArray &data);

    EBlockType m_type = TextBlock;
    EBarcodeType m_barCodeType = NoBarcode;
    QStringList m_text;
    QList<QByteArray> m_font;
    QList<QByteArray> m_format;
    ETextAlignment m_alignment = TextAlignLeft;
    QList<int> m_lineSpacing;
    MonochromeImage m_img;
};

/** Writes type, alignment and the number of lines, never the text itself: it may be a customer's. */
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const DocumentBlock &block);

Q_DECLARE_METATYPE(ETextAlignment)
Q_DECLARE_METATYPE(DocumentBlock)

#endif
