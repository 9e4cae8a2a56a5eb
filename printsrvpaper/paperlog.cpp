// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "paperlog.h"

namespace printsrv {

Q_LOGGING_CATEGORY(paperLog, "printsrv.paper")

} // namespace printsrv
