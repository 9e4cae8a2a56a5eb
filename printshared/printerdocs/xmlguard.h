// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_XMLGUARD_H
#define PRINTSRV_XMLGUARD_H

#include <QByteArray>
#include <QString>

namespace printsrv {

/**
 * Why Qt's XML reader must not be given @p xml; empty when it may.
 *
 * The reader compares each attribute of an element with all others, so that one element of some megabytes would take
 * it hours. An element may have 256 attributes, and a file of more than 64 KiB must be in an encoding that contains
 * ASCII, so that its attributes can be counted: UTF-8, ISO 8859, Windows, KOI8 or code page 866.
 */
QString xmlRefusal(const QByteArray &xml);

} // namespace printsrv

#endif
