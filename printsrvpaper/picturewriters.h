// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PICTUREWRITERS_H
#define PRINTSRV_PICTUREWRITERS_H

#include <QByteArray>
#include <QImage>

namespace printsrv {

/** The picture with 1 bit a dot, a set bit for black. */
QImage blackOnWhite(const QImage &picture);

/** A PDF page of the picture's size. */
QByteArray pdfBytes(const QImage &picture);

/** An SVG of the picture's size. */
QByteArray svgBytes(const QImage &picture);

} // namespace printsrv

#endif
