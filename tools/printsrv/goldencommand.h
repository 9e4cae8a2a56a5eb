// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_GOLDENCOMMAND_H
#define PRINTSRV_GOLDENCOMMAND_H

#include "subcommand.h"

#include <QString>

namespace printsrv {

/** What becomes of expectations that no longer hold. */
enum class EExpectation {
    Compare, /**< The difference is shown. */
    Update, /**< What the receipts give now is taken over. */
};

/** Makes every receipt of a folder, see goldenReceipts(), and compares it with what is expected of it. */
[[nodiscard]] ExitCode testReceipts(const QString &folder, EExpectation expectation);

} // namespace printsrv

#endif
