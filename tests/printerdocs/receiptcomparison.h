// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RECEIPTCOMPARISON_H
#define PRINTSRV_RECEIPTCOMPARISON_H

#include "randomreceipt.h"

#include <functional>

/**
 * What the library prints of a receipt, compared with what the rules of receiptreference.h print.
 *
 * Each function returns nothing when both are equal, otherwise what differs, the expected and the actual text.
 */
namespace comparison {

/** The prepared lines; calls @p announceWarning for each warning that the library is about to write. */
QStringList prepared(const Receipt &receipt, const std::function<void()> &announceWarning);

/** The outputs of the prepared lines, and of the raw template, which has tags that preparing takes out. */
QStringList outputs(const Receipt &receipt);

/** All steps in one call print what the steps one after the other print. */
QStringList whole(const Receipt &receipt);

/** The public steps of filling a line, called one by one, make what the library makes of it. */
QStringList steps(const Receipt &receipt);

} // namespace comparison

#endif
