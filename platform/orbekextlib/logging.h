// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef ORBEKEXTLIB_LOGGING_H
#define ORBEKEXTLIB_LOGGING_H

#include <QLoggingCategory>

namespace orbekext {

Q_DECLARE_LOGGING_CATEGORY(LOG)

} // namespace orbekext

#endif
