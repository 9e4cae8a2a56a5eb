// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_MEMORYGUARD_H
#define PRINTSRV_MEMORYGUARD_H

#include "printerdocslog.h"

#include <new>

namespace printsrv {

/**
 * Returns what @p make makes, or an empty result and one critical line when the memory does not suffice for it: no
 * exception leaves the library. @p what names the result in the line.
 */
template<typename Make>
auto madeOrEmpty(const char *what, Make make) -> decltype(make())
{
    try {
        return make();
    } catch (const std::bad_alloc &) {
        qCCritical(printerDocsLog, "The memory does not suffice for the %s", what);
        return {};
    }
}

} // namespace printsrv

#endif
