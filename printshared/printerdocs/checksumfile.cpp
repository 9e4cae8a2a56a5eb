// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "checksumfile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace printsrv::checksumfile {

namespace {

constexpr int HexDigits = 40;
constexpr char EscapeMark = '\\';

// "sha1sum" writes a name with one of these bytes in another way, and marks the line with a backslash.
QByteArray escapedName(QByteArray name)
{
    return name.replace('\\', "\\\\").replace('\n', "\\n").replace('\r', "\\r");
}

} // namespace

QString pathFor(const QString &path)
{
    return path + QLatin1String(".sha1");
}

QByteArray digestOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
}

QByteArray readDigest(const QString &path)
{
    QFile file(pathFor(path));
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) {
        return QByteArray();
    }
    return digestIn(file.read(HexDigits + 1));
}

QByteArray digestIn(const QByteArray &line)
{
    return QByteArray::fromHex(line.mid(line.startsWith(EscapeMark) ? 1 : 0, HexDigits));
}

QByteArray line(const QString &path, const QByteArray &digest)
{
    const QByteArray name = QFile::encodeName(path);
    const QByteArray escaped = escapedName(name);
    const QByteArray mark(escaped == name ? 0 : 1, EscapeMark);
    return mark + digest.toHex() + "  " + escaped + '\n';
}

} // namespace printsrv::checksumfile
