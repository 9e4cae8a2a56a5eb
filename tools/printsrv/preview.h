// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PREVIEW_H
#define PRINTSRV_PREVIEW_H

#include <QByteArray>
#include <QImage>

namespace printsrv {

/** What a terminal can show. */
enum class EShades {
    BlackAndWhite, /**< Half blocks alone. */
    Grey, /**< Half blocks in the 24 greys of 256 colours. */
};

/** Columns of the terminal at standard output; 80 when it is none. */
int terminalColumns();

/** Greys for a terminal whose TERM or COLORTERM promises 256 colours and more. */
EShades terminalShades();

/**
 * The picture as lines of half blocks in UTF-8, at most @p columns wide: black on white with greys, and in black and
 * white a block for each black dot.
 *
 * Where the picture is wider, each half block stands for a square of dots, black when a fifth of it is.
 */
QByteArray previewText(const QImage &picture, int columns, EShades shades);

} // namespace printsrv

#endif
