// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printerdocslog.h"

namespace printsrv {

Q_LOGGING_CATEGORY(printerDocsLog, "printsrv.printerdocs")

} // namespace printsrv
