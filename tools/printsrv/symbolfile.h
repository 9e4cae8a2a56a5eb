// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SYMBOLFILE_H
#define PRINTSRV_SYMBOLFILE_H

#include "outcome.h"

#include <specialcharacters.h>

#include <QImage>
#include <QSize>
#include <QVector>

namespace printsrv {

/** The largest code that a receipt shows as a symbol. */
constexpr int LastSymbolCode = 7;

/** One symbol in one size. */
struct SymbolImage
{
    int code = 0;
    MonochromeImage image;
};

/** The sizes of own symbols that the models of the catalogue have, each once, by width and height. */
QVector<QSize> catalogueSizes();

/** Each character of the text in each size; the first has the code 1. At most seven, which the bundled font has. */
[[nodiscard]] Outcome<QVector<SymbolImage>> symbolsOfText(const QString &text, const QVector<QSize> &sizes);

/** A symbol of the picture's size; dots darker than middle grey are black, transparent ones white. */
SymbolImage symbolOfPicture(int code, const QImage &picture);

/** The symbols as the content of a ".ssi" file, sorted by size and code; of equal ones the last counts. */
QByteArray symbolFile(const QVector<SymbolImage> &symbols);

/** All symbols in one picture: a row for each size, a column for each code; a null picture when there are none. */
QImage symbolPicture(const SpecialCharacters &symbols);

} // namespace printsrv

#endif
