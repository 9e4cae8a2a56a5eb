// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_MONOCHROMEIMAGE_H
#define PRINTSRV_MONOCHROMEIMAGE_H

#include <QByteArray>
#include <QDebug>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QVariant>

/**
 * A raster of black and white dots: the picture of an image block, a character image that a printer downloads, or a
 * glyph of a symbol font.
 *
 * The bits stand row after row from the top; within a byte the most significant bit is the leftmost dot, and a set bit
 * is a black dot. Nothing ties the data to the size: the setters and maps take any mismatch, and every reader checks.
 * An implicitly shared value; reentrant.
 */
class Q_DECL_EXPORT MonochromeImage
{
public:
    /** Makes an image of size 0 x 0 without data, which is not valid. */
    MonochromeImage() = default;

    /** Makes an image and fills it as setMap() does. */
    explicit MonochromeImage(const QMap<QString, QVariant> &map);

    /**
     * Makes a white image of @p width x @p height dots.
     *
     * Contract: a row takes width / 8 + 1 bytes when the width is a multiple of 8 and width / 8 bytes otherwise, so
     * that an image of width 12 has too few bytes to be valid and one of width 16 a byte too many. A negative size, or
     * one that needs more than 64 MiB (or more than the memory gives), keeps the size asked for and has no data.
     */
    static MonochromeImage createEmpty(int width, int height);

    /** Width in dots, 0 by default; any value that was set or read, negative ones included. */
    int width() const;
    /** Sets the width in dots; the data stays as it is. */
    void setWidth(int width);

    /** Height in dots, 0 by default; any value that was set or read, negative ones included. */
    int height() const;
    /** Sets the height in dots; the data stays as it is. */
    void setHeight(int height);

    /** The rows of dots; empty by default, and of any length whatever the size says. */
    QByteArray image() const;
    /** Replaces the rows of dots; the size stays as it is. */
    void setImage(const QByteArray &image);

    /**
     * True when both sides are at least 1 and the data has at least width * height / 8 bytes (rounded down).
     *
     * Contract: the padding of the rows is not counted, so that a valid image can lack the end of its last row.
     */
    bool isValid() const;

    /**
     * Whether the dot at @p x, @p y is black, when each row is padded to a multiple of @p align bits: 8 for the images
     * that this library makes.
     *
     * A place outside the size or behind the data is white, and so is everything when @p align is 0. Takes constant
     * time.
     */
    bool pixel(int x, int y, int align) const;

    /**
     * Reads "w" and "h" as numbers and "data" as Base64 text; a missing key reads as 0 or empty.
     *
     * Characters that are not Base64 are skipped, and nothing is checked against the size.
     */
    void setMap(const QMap<QString, QVariant> &map);

    /** The map that setMap() reads: "h" and "w" (int) and "data" (Base64 text with padding). */
    QMap<QString, QVariant> toMap() const;

    /** True when size and data are equal, byte by byte. */
    bool operator==(const MonochromeImage &other) const;
    bool operator!=(const MonochromeImage &other) const;

private:
    int m_width = 0;
    int m_height = 0;
    QByteArray m_image;
};

/** Writes the size and the number of data bytes. */
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const MonochromeImage &image);

Q_DECLARE_METATYPE(MonochromeImage)

#endif
