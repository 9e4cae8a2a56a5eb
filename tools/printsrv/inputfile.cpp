// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "inputfile.h"

#include <QFile>

#include <unistd.h>

namespace printsrv {

namespace {

constexpr int LargestInputBytes = 64 * 1024 * 1024;
constexpr int ChunkBytes = 64 * 1024;

bool openInput(QFile &file)
{
    if (file.fileName() == QLatin1String("-")) {
        return file.open(STDIN_FILENO, QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

Failure notRead(const QString &reason)
{
    return {QStringLiteral("not read: ") + reason};
}

} // namespace

Outcome<QByteArray> readInput(const QString &path)
{
    QFile file(path);
    if (!openInput(file)) {
        return notRead(file.errorString());
    }
    QByteArray bytes;
    QByteArray chunk(ChunkBytes, '\0');
    qint64 count = 0;
    while ((count = file.read(chunk.data(), chunk.size())) > 0) {
        bytes.append(chunk.constData(), static_cast<int>(count));
        if (bytes.size() > LargestInputBytes) {
            return notRead(QLatin1String("it is larger than 64 MiB"));
        }
    }
    if (file.error() != QFileDevice::NoError) {
        return notRead(file.errorString());
    }
    return bytes;
}

} // namespace printsrv
