// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "boundedread.h"

#include <QIODevice>

QByteArray printsrv::readBounded(QIODevice &device, int limit)
{
    constexpr int ChunkBytes = 64 * 1024;
    QByteArray bytes;
    while (bytes.size() <= limit) {
        const QByteArray chunk = device.read(ChunkBytes);
        if (chunk.isEmpty()) {
            break;
        }
        bytes += chunk;
    }
    return bytes;
}
