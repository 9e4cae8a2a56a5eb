// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "logtab.h"

QDebug operator<<(QDebug debug, LogTab)
{
    const bool hadSpaces = debug.autoInsertSpaces();
    debug.setAutoInsertSpaces(false);
    debug << '\t';
    debug.setAutoInsertSpaces(hadSpaces);
    return debug;
}
