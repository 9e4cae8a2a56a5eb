// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "builtinprinters.h"

#include <QMutex>

namespace {

// Not function-local: a static object of the program that uses them last would find them destroyed.
QBasicMutex loadMutex;
QMap<QString, PrinterInfo> loadedPrinters; // clazy:exclude=non-pod-global-static

} // namespace

QMap<QString, PrinterInfo> printsrv::builtInPrinters()
{
    const QMutexLocker locker(&loadMutex);
    if (loadedPrinters.isEmpty()) {
        const QList<PrinterInfo> printers = PrinterInfo::fromResources();
        for (const PrinterInfo &printer : printers) {
            loadedPrinters.insert(printer.id(), printer);
        }
    }
    return loadedPrinters;
}
