// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PRINTERDOCSLOG_H
#define PRINTSRV_PRINTERDOCSLOG_H

#include <QLoggingCategory>

namespace printsrv {

/** "printsrv.printerdocs": every log line of this folder. */
Q_DECLARE_LOGGING_CATEGORY(printerDocsLog)

} // namespace printsrv

#endif
