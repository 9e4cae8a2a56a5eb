// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "logging.h"

namespace orbekext {

Q_LOGGING_CATEGORY(LOG, "printsrv.orbekextlib")

} // namespace orbekext
