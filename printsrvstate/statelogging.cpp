// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "statelogging.h"

namespace printsrv {

Q_LOGGING_CATEGORY(STATE, "printsrv.printsrvstate")

} // namespace printsrv
