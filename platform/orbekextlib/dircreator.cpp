// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "dircreator.h"

#include "logging.h"

#include <QFile>

#include <filesystem>

using namespace orbekext;

bool DirCreator::checkAndCreate(const QString &path, ECreateMode)
{
    const std::filesystem::path folder(QFile::encodeName(path).toStdString());
    std::error_code error;
    if (std::filesystem::is_directory(folder, error)) {
        return true;
    }
    std::filesystem::create_directories(folder, error);
    if (!error) {
        return true;
    }
    qCWarning(LOG) << "Folder" << path << "cannot be created:" << QString::fromLocal8Bit(error.message().c_str());
    return false;
}
