// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_CANDIDATESETTINGS_H
#define PRINTSRV_CANDIDATESETTINGS_H

#include <portsettings.h>

#include <QVector>

namespace printsrv {

/** The 54 settings that a search tries, fastest first. */
QVector<PortSettings> candidateSettings();

/** The 24 settings of a Star printer, fastest first. */
QVector<PortSettings> starSettings();

/** Those of @p settings whose speed is at most @p maximumBaudRate, in their order. */
QVector<PortSettings> notFasterThan(qint32 maximumBaudRate, const QVector<PortSettings> &settings);

} // namespace printsrv

#endif
