// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RASTER_H
#define PRINTSRV_RASTER_H

#include <monochromeimage.h>

#include <QByteArray>
#include <QImage>

namespace printsrv {

/**
 * A raster of black and white dots that can be drawn on: a character cell, a barcode or the whole paper.
 *
 * Rows are padded to whole bytes, the leftmost dot is the most significant bit, and the padding is always white. What
 * falls outside of the raster is left away. Sizes are those that the caller has bounded.
 */
class Raster
{
public:
    Raster() = default;
    /** A white raster; negative sides are taken as 0. */
    Raster(int width, int height);
    explicit Raster(const MonochromeImage &image);

    int width() const;
    int height() const;

    /** Black or not; white outside. */
    bool dot(int x, int y) const;
    void setDot(int x, int y);

    /** Blackens a rectangle. */
    void fill(int x, int y, int width, int height);

    /** Blackens the dots that are black in @p other, its left upper corner at @p x, @p y; both may be negative. */
    void draw(const Raster &other, int x, int y);

    /** Adds white rows at the lower end. */
    void grow(int rows);

    /** Black and white exchanged. */
    Raster inverted() const;

    /** Each dot becomes a rectangle of dots. */
    Raster scaled(int horizontal, int vertical) const;

    /** The raster in a cell of another size: in the middle, whole dots to the left and up, what is too much cut. */
    Raster centred(int width, int height) const;

    /** The same dots; a null picture when there are none. */
    QImage toImage() const;
    MonochromeImage toMonochromeImage() const;

private:
    void drawRow(const uchar *source, int sourceBytes, int x, uchar *target) const;
    void clearPadding(uchar *row) const;

    int m_width = 0;
    int m_height = 0;
    int m_rowBytes = 0;
    QByteArray m_bits;
};

} // namespace printsrv

#endif
