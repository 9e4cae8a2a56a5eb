// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SPECIALCHARACTERS_H
#define PRINTSRV_SPECIALCHARACTERS_H

#include "monochromeimage.h"

#include <QDebug>
#include <QImage>
#include <QMetaType>
#include <QMultiMap>
#include <QString>
#include <QStringList>

class QXmlStreamReader;

/**
 * A small bitmap font of symbols that a printer's own fonts lack, in several sizes, read from an ".ssi" file.
 *
 * The file is XML: the root "SpecialSymbolImages" holds "Font" elements with the attributes "Height" and "Width" in
 * dots, these hold "Symbol" elements with the attribute "Code", and these one "Line" element for each row of dots, the
 * text of which has one character for each dot: "0" for white, any other for black. Other elements are skipped.
 * A value; reentrant.
 */
class Q_DECL_EXPORT SpecialCharacters
{
public:
    /**
     * Reads the file @p path in place of what was loaded before.
     *
     * False with one critical line when the file cannot be read, is no regular file, is larger than 16 MiB, declares a
     * document type, needs more memory than there is or, when it is larger than 64 KiB, has an element of more than 256
     * attributes or an encoding without ASCII: the object is empty then. False with one warning when the root
     * element or a symbol is malformed: the symbols before it stay loaded. A code outside -128 to 127 is cut to 8 bits.
     *
     * Contract: an XML error is logged with one critical line and makes the result false only when it stands inside a
     * symbol: the file ends there, and the symbols before it stay loaded.
     */
    bool load(const QString &path);

    /** Forgets all symbols. */
    void clear();

    /** All images of all symbols by their code; several sizes of a symbol stand under one code. */
    QMultiMap<signed char, MonochromeImage> images() const;

    /**
     * The largest image by area of the symbol @p code that is valid and fits into @p width x @p height dots.
     *
     * Where there is none it is MonochromeImage::createEmpty() of that size. @p code is cut to 8 bits, as in load().
     */
    MonochromeImage getImage(int code, int width, int height) const;

    /**
     * The image that getImage() finds, drawn black on white as 32-bit RGB; a null picture when it has no dots or would
     * take more than 64 MiB.
     *
     * Contract: the last row stays white unless the data has bytes behind it, and each group of eight dots is drawn
     * mirrored.
     */
    QImage getPngImage(int code, int width, int height) const;

    /** Contract: always empty; nothing sets it. */
    QString fileName() const;

    /** True when the images are equal; the file name does not count. */
    bool operator==(const SpecialCharacters &other) const;
    bool operator!=(const SpecialCharacters &other) const;

private:
    bool parseDocument(QXmlStreamReader *reader);
    bool parseImages(QXmlStreamReader *reader);
    bool parseFonts(QXmlStreamReader *reader);
    bool parseSymbols(QXmlStreamReader *reader, int width, int height);
    bool parseLines(QXmlStreamReader *reader, QString &text);
    bool strToData(const QString &text, int width, QByteArray &data);
    bool createImage(int code, const QStringList &lines, int width, int height);

    QMultiMap<signed char, MonochromeImage> m_images;
    QString m_fileName;
};

/** Writes the number of images. */
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const SpecialCharacters &symbols);

Q_DECLARE_METATYPE(SpecialCharacters)

#endif
