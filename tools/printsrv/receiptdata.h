// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_RECEIPTDATA_H
#define PRINTSRV_RECEIPTDATA_H

#include "outcome.h"

#include <printerdocument.h>

#include <QByteArray>

namespace printsrv {

/** A receipt, and what its data says beyond it. */
struct ReceiptData
{
    PrinterDocument receipt;
    /** The entries when the data has a list of them, before TABs joined them. */
    std::optional<QStringList> entryList;
};

/**
 * The receipt that a JSON object describes; printsrv-data(5) has the form.
 *
 * Numbers keep the kind that they are written in: 12 is a whole number and 12.00 a decimal, since their formats in a
 * template differ. A key that is not known is refused, since a receipt without its sums must not be printed because of
 * a misspelt word.
 */
[[nodiscard]] Outcome<ReceiptData> readReceiptData(const QByteArray &json);

/** The receipt alone. */
[[nodiscard]] Outcome<PrinterDocument> readReceipt(const QByteArray &json);

} // namespace printsrv

#endif
