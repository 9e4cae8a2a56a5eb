// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_LINELAYOUT_H
#define PRINTSRV_LINELAYOUT_H

#include "documentblock.h"

#include <QString>

namespace printsrv {

/** A wider line is laid out as wide as this; no text printer comes near. */
constexpr int LargestLineWidth = 4096;

/** All TABs of one line together grow by at most this many blanks. */
constexpr int LargestTabPadding = 65536;

/**
 * Appends @p line to @p out, laid out for @p width characters as DocumentBlock::toStringList() describes.
 *
 * Takes time in proportion to what it appends.
 */
void appendLaidOutLine(QString &out, const QString &line, ETextAlignment alignment, int width);

} // namespace printsrv

#endif
