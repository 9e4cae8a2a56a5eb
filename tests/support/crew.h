// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_CREW_H
#define PRINTSRV_CREW_H

#include <functional>

/**
 * Calls @p work with 0 to @p count - 1, each in a thread of its own, all at once, and returns when the last has ended.
 * Ends the process where they do not end within 100 s, since a thread that hangs cannot be joined.
 */
void runTogether(int count, const std::function<void(int)> &work);

#endif
