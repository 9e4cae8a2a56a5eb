// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_INIFILE_H
#define PRINTSRV_INIFILE_H

#include "outcome.h"

#include <QVariant>

namespace printsrv {

/** The descriptors of an INI file's text in UTF-8: sections are groups, entries before the first one have none. */
[[nodiscard]] Outcome<QVariantList> descriptorsFromIni(const QByteArray &text);

/** The text with @p descriptors put in; all other entries stay, comments do not. */
[[nodiscard]] Outcome<QByteArray> mergedIni(const QByteArray &text, const QVariantList &descriptors);

} // namespace printsrv

#endif
