// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PAPERLOG_H
#define PRINTSRV_PAPERLOG_H

#include <QLoggingCategory>

namespace printsrv {

/** "printsrv.paper". */
Q_DECLARE_LOGGING_CATEGORY(paperLog)

} // namespace printsrv

#endif
