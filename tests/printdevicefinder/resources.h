// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RESOURCES_H
#define PRINTSRV_RESOURCES_H

#include <QString>

/** Bytes that the program has in use. */
qint64 heapBytes();

/** True while this process has this port open. */
bool isLocked(const QString &portName);

/** The serial ports' lock files of this process; other programs have theirs in the same place. */
int lockFiles();

/** The threads, descriptors and lock files of this process, as text; equal texts for equal numbers. */
QString inUse();

#endif
