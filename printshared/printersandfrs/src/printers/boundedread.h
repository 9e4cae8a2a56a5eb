// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_BOUNDEDREAD_H
#define PRINTSRV_BOUNDEDREAD_H

#include <QByteArray>

class QIODevice;

namespace printsrv {

/**
 * What is left in @p device, cut off soon behind @p limit bytes, so that too long a content can be told by its size.
 *
 * Unlike QIODevice::read(), it takes memory for what is there and not for what could be.
 */
QByteArray readBounded(QIODevice &device, int limit);

} // namespace printsrv

#endif
