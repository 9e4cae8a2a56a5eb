// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTERSIM_FAULT_H
#define PRINTERSIM_FAULT_H

#include <QStringList>

#include <optional>

namespace printersim {

/** What is wrong with a simulated printer. */
enum class EFault {
    None,
    /** Nothing is ever answered. */
    Silent,
    /** A loop-back plug: every byte comes back at once, at any settings. */
    Echo,
    /** Every request is answered with random bytes, at any settings. */
    Garbage,
    /** Every answer takes half of the time that the search waits for the printer's quickest one. */
    LateInside,
    /** Every answer comes just after the search stopped waiting for it. */
    LateOutside,
    /** Answers of several bytes come in two pieces, 20 ms apart. */
    TwoPieces,
    /** Every answer but the first differs from the one before it. */
    ChangesMind,
    /** The device goes away in the middle of its second answer. */
    Closes,
    /** The device goes away while the search waits for the first answer. */
    Unplugs,
    /** About a third of the bytes are lost in each direction. */
    Drops,
    /** Each request is answered with 1 MB of random bytes. */
    Noise,
    /** Every request is answered with the same one byte, at any settings. */
    Constant,
    /** Every byte comes back at any settings, each by itself, 20 ms apart. */
    SlowEcho,
};

/** The faults' names on the command line, in the order of EFault. */
QStringList faultNames();

/** The fault of this name; nothing for an unknown one. */
std::optional<EFault> faultFromName(const QString &name);

} // namespace printersim

#endif
