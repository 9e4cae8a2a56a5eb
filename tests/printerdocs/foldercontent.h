// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_FOLDERCONTENT_H
#define PRINTSRV_FOLDERCONTENT_H

#include <QDir>
#include <QMap>

/** The files of a folder, hidden ones too, by name. */
using FolderContent = QMap<QString, QByteArray>;

inline FolderContent readFolder(const QString &path)
{
    FolderContent content;
    const QDir folder(path);
    const QStringList names = folder.entryList(QDir::Files | QDir::Hidden);
    for (const QString &name : names) {
        QFile file(folder.filePath(name));
        content.insert(name, file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
    }
    return content;
}

/** Makes the folder hold these files and no others. */
inline bool writeFolder(const QString &path, const FolderContent &content)
{
    const QDir folder(path);
    bool isDone = true;
    const QStringList names = folder.entryList(QDir::Files | QDir::Hidden);
    for (const QString &name : names) {
        isDone = (content.contains(name) || QFile::remove(folder.filePath(name))) && isDone;
    }
    for (auto entry = content.begin(); entry != content.end(); ++entry) {
        QFile file(folder.filePath(entry.key()));
        isDone = file.open(QIODevice::WriteOnly) && file.write(*entry) == entry->size() && isDone;
    }
    return isDone;
}

#endif
