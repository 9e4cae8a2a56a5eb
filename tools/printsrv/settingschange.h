// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SETTINGSCHANGE_H
#define PRINTSRV_SETTINGSCHANGE_H

#include <printersettings.h>

namespace printsrv {

/** What became of one descriptor. */
struct ChangeResult
{
    /** True when the settings now hold the value, or the nearest one that is possible. */
    bool isStored = false;
    /** Why it was refused, or stored otherwise than asked; empty when all is well. */
    QString note;
    /** The descriptor with the value that was stored. */
    QVariantMap stored;
};

/**
 * Applies one descriptor and tells what became of it. Refused, with nothing changed, are a key that is unknown or does
 * not apply to the current printer, another printer's group, and a value of the wrong kind or range; a timeout out of
 * range is stored as the nearest one in it.
 */
[[nodiscard]] ChangeResult applyChange(PrinterSettings &settings, const QVariantMap &descriptor);

} // namespace printsrv

#endif
