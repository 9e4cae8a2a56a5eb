// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_VALUEESCAPE_H
#define PRINTSRV_VALUEESCAPE_H

#include <QString>

namespace printsrv {

/** @p text as the value of an attribute that prints as the text was; PrinterDocumentFormatter::escapeValue(). */
QString escapedAttribute(const QString &text);

/** @p text as a part of the entry text that prints as the text was; PrinterDocumentFormatter::escapeValue(). */
QString escapedEntry(const QString &text);

} // namespace printsrv

#endif
