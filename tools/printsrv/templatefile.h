// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TEMPLATEFILE_H
#define PRINTSRV_TEMPLATEFILE_H

#include "outcome.h"

#include <printerdocumentformatter.h>
#include <templatetext.h>

namespace printsrv {

/** A formatter with its template. */
using Formatter = QSharedPointer<PrinterDocumentFormatter>;

/** Where a template is and how it is read. */
struct TemplateSource
{
    QString path;
    /** Name of the encoding. */
    QString codec;
    /** Folder of the special-symbol files; empty for the template's own folder. */
    QString symbolsFolder;
    EPart part = EPart::All;
};

/**
 * A formatter with the template as it stands in the file, "<FISCAL_INFO>" included. Refused are an empty file and bytes
 * that are no text in the named encoding.
 */
[[nodiscard]] Outcome<Formatter> loadWholeTemplate(const TemplateSource &source);

/** A formatter with the wanted part of a whole template; refused when the template does not have it. A missing symbol
 * file is told on standard error. */
[[nodiscard]] Outcome<Formatter> partOf(const Formatter &whole, const TemplateSource &source);

/** Both, one after the other. */
[[nodiscard]] Outcome<Formatter> loadTemplate(const TemplateSource &source);

} // namespace printsrv

#endif
