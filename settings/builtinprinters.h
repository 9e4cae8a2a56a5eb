// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_BUILTINPRINTERS_H
#define PRINTSRV_BUILTINPRINTERS_H

#include "printerinfo.h"

namespace printsrv {

/**
 * The built-in models by their identifiers; of two with one identifier the later one counts.
 *
 * Read from the catalogue once in the process. A catalogue that cannot be read gives an empty map and the loader's
 * critical line, and is read again at the next call. Thread-safe.
 */
QMap<QString, PrinterInfo> builtInPrinters();

} // namespace printsrv

#endif
