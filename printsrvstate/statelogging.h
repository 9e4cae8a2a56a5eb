// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_STATELOGGING_H
#define PRINTSRV_STATELOGGING_H

#include <QLoggingCategory>

namespace printsrv {

Q_DECLARE_LOGGING_CATEGORY(STATE)

} // namespace printsrv

#endif
