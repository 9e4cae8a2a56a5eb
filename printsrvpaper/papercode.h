// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PAPERCODE_H
#define PRINTSRV_PAPERCODE_H

#include "raster.h"

#include <documentblock.h>

namespace printsrv {

/**
 * The barcode or QR code of a block with its quiet zone, at most @p largestWidth dots wide.
 *
 * An empty raster, and one warning that says why, when it cannot be made or does not fit.
 */
Raster codeRaster(const DocumentBlock &block, int largestWidth);

} // namespace printsrv

#endif
