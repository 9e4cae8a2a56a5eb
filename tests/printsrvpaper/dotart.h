// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_DOTART_H
#define PRINTSRV_DOTART_H

#include <monochromeimage.h>
#include <printerinfo.h>

#include <QImage>
#include <QStringList>

/** A picture as lines of text: "#" for a black dot, "." for a white one. */
QStringList dotArt(const QImage &picture);
QStringList dotArt(const MonochromeImage &image);

/** The image that such lines show. */
MonochromeImage imageOf(const QStringList &art);

/** The picture that such lines show, 1 bit a dot. */
QImage pictureOf(const QStringList &art);

/** A model that can do everything, with paper of @p width dots and one font whose cell and own symbols have this size.
 */
PrinterInfo smallModel(int width, int fontWidth, int fontHeight);

#endif
