// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_CHARACTERFORMAT_H
#define PRINTSRV_CHARACTERFORMAT_H

#include "documentblock.h"

#include <QLatin1String>

namespace printsrv {

/** The bits of ECharFormat as bytes. */
namespace characterformat {

constexpr uchar Bold = CharFormatBold;
constexpr uchar Italic = CharFormatItalic;
constexpr uchar Driver = CharFormatDriver;
constexpr uchar Underline = CharFormatUnderline;
constexpr uchar DoubleWidth = CharFormatDoubleWidth;
constexpr uchar DoubleHeight = CharFormatDoubleHeight;
constexpr uchar PlacedByCode = CharFormatPlacedByCode;
constexpr uchar DoubleSize = DoubleWidth | DoubleHeight;

/** A format bit and the letter that selects it in templates. */
struct Letter
{
    QLatin1String name;
    uchar bit;
};

constexpr Letter Letters[] = {
    {QLatin1String("B", 1), Bold},      {QLatin1String("N", 1), Italic},       {QLatin1String("Z", 1), Driver},
    {QLatin1String("U", 1), Underline}, {QLatin1String("W2", 2), DoubleWidth}, {QLatin1String("H2", 2), DoubleHeight},
};

} // namespace characterformat

/** Width factor of a character: its font number + 1, doubled when both double width and double height are set. */
constexpr int widthFactor(uchar format, uchar font)
{
    const int isDouble = (format & characterformat::DoubleSize) == characterformat::DoubleSize ? 1 : 0;
    return (font + 1) << isDouble;
}

} // namespace printsrv

#endif
