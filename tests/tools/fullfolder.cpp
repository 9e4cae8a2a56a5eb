// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "fullfolder.h"

#include <QDir>

#include <sys/mount.h>

namespace {

constexpr int DiskBytes = 64 * 1024;

bool mountDisk(const QString &path)
{
    const QByteArray options = "size=" + QByteArray::number(DiskBytes);
    return QDir().mkdir(path)
        && ::mount("tmpfs", QFile::encodeName(path).constData(), "tmpfs", 0, options.constData()) == 0;
}

} // namespace

FullFolder::FullFolder(const QString &path)
    : m_path(path)
    , m_isDisk(mountDisk(path))
{
}

FullFolder::~FullFolder()
{
    QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (m_isDisk) {
        ::umount(QFile::encodeName(m_path).constData());
    }
}

void FullFolder::fill() const
{
    if (!m_isDisk) {
        QFile::setPermissions(m_path, QFile::ReadOwner | QFile::ExeOwner);
        return;
    }
    QFile filler(QDir(m_path).filePath(QStringLiteral("filler")));
    if (filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        while (filler.write(QByteArray(1024, 'x')) > 0) { }
    }
}

QByteArray FullFolder::reason() const
{
    return m_isDisk ? QByteArrayLiteral("No space left on device") : QByteArrayLiteral("Permission denied");
}
