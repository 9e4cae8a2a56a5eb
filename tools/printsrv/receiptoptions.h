// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RECEIPTOPTIONS_H
#define PRINTSRV_RECEIPTOPTIONS_H

#include "charactercase.h"
#include "commandline.h"
#include "templatefile.h"

namespace printsrv {

/** How a receipt is made of its template. */
struct ReceiptOptions
{
    TemplateSource source;
    /** Characters a line. */
    int width = 0;
    ECase letters = ECase::AsIs;
};

/** Adds --width, --codec, --template-codec, --symbols, --case and --part. */
void addReceiptOptions(CommandLine &line);

/**
 * Reads the options, the template's path from the first argument; nothing when one is wrong, and standard error says
 * so. @p codec is the template's encoding.
 */
std::optional<ReceiptOptions> readReceiptOptions(const CommandLine &line, const QString &codec);

} // namespace printsrv

#endif
