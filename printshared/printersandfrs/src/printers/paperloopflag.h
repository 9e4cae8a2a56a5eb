// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PAPERLOOPFLAG_H
#define PRINTSRV_PAPERLOOPFLAG_H

#include <QFlags>
#include <QMetaType>

/**
 * Whether a printer with a presenter holds the receipt back in a loop while it prints, so that nobody can pull at paper
 * that is still being printed.
 *
 * Stored and exchanged as its integer, and as a flag set in documents. Only models whose catalogue entry says
 * `paperLoopSupported` obey it.
 */
enum EPaperLoopFlag : int {
    PaperLoopAsConfigured = 0, /**< Leaves the printer as its own setup says; the default. */
    PaperLoopOn = 1, /**< The receipt is held in a loop until it is complete. */
    PaperLoopOff = 2, /**< The receipt comes out while it is printed. */
};

Q_DECLARE_OPERATORS_FOR_FLAGS(QFlags<EPaperLoopFlag>)
Q_DECLARE_METATYPE(EPaperLoopFlag)

#endif
