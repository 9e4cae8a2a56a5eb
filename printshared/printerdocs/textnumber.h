// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TEXTNUMBER_H
#define PRINTSRV_TEXTNUMBER_H

#include <QVariant>

namespace printsrv {

/**
 * Returns the number that @p text stands for: a 64-bit integer when it is one of at most 18 characters, a double when
 * it is one of at most 15 characters, with a point or else with a comma; an invalid variant for any other text.
 */
QVariant numberFromText(const QString &text);

} // namespace printsrv

#endif
