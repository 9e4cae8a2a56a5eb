// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef ORBEKEXTLIB_DIRCREATOR_H
#define ORBEKEXTLIB_DIRCREATOR_H

#include <QString>

/** Makes sure that folders exist. Thread-safe. */
class Q_DECL_EXPORT DirCreator
{
public:
    /** How a missing folder is created. */
    enum ECreateMode {
        DEFAULT_ALL, /**< With every missing folder above it, all with the permissions that the process gives new
                        folders. */
    };

    /**
     * Creates the folder @p path when it is missing.
     *
     * Returns true when the folder exists afterwards, whoever created it; a link to a folder is one. False, with one
     * warning that names the path and the system's reason, when it cannot be created, when something else than a folder
     * stands there, or when @p path is empty; the caller may go on without it.
     */
    static bool checkAndCreate(const QString &path, ECreateMode mode);
};

#endif
