// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef ORBEKEXTLIB_LOGTAB_H
#define ORBEKEXTLIB_LOGTAB_H

#include <QDebug>

/** The type of logtab. */
struct LogTab
{
};

/**
 * Separates two fields of a log line: writes one TAB character, without quotes and with nothing behind it.
 *
 * Used as `qWarning() << fileName << logtab << errorText`. A constant expression, usable in static initialisers.
 */
inline constexpr LogTab logtab{};

/** Writes the TAB of logtab to @p debug, whose spacing and quoting stay as they are. */
Q_DECL_EXPORT QDebug operator<<(QDebug debug, LogTab tab);

#endif
