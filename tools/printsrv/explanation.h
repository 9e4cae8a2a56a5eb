// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_EXPLANATION_H
#define PRINTSRV_EXPLANATION_H

#include <templatetext.h>

#include <printerdocument.h>

#include <QByteArray>

#include <optional>

namespace printsrv {

/**
 * Says of each line of the receipt which characters came from which place of the template or which attribute, and of
 * each line or group that vanished which value did it. Nothing when the memory does not suffice, which the library's
 * log tells.
 */
[[nodiscard]] std::optional<QByteArray> explanationOf(const TemplateText &templateText, const PrinterDocument &receipt);

} // namespace printsrv

#endif
