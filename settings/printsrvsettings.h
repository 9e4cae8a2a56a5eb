// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PRINTSRVSETTINGS_H
#define PRINTSRV_PRINTSRVSETTINGS_H

#include "initconfig.h"

/**
 * The fixed paths and the state interval of the print service, on top of the terminal's system configuration.
 *
 * The configuration is `/etc/orbek/orbek.conf`. The environment variable `ORBEK_CONFIG`, unless it is empty, names
 * another file, for tests and for users without rights to that one; it is read at every construction. Reentrant.
 */
class Q_DECL_EXPORT PrintSrvSettings : public InitConfig
{
public:
    /**
     * Reads the system configuration and creates the folders serviceDataPath() and "png" of the work folder where they
     * are missing. A folder that cannot be created costs one warning and changes nothing else.
     */
    PrintSrvSettings();

    /** Time between two state reports of the service in milliseconds: always 30000. */
    int stateInterval() const;

    /** Folder of the service's data: "printsrv" in the data folder. */
    QString serviceDataPath() const;

    /** Path of the generator's file: "kpk.gen" in serviceDataPath(). */
    QString kpkGenConfig() const;

    /**
     * Path of the picture of document number @p number: "png/doc_<number>.png" in the data folder.
     * Contract: the folder that is created is in the work folder; the two differ when the data folder is another one.
     */
    QString pngOutputFile(int number);
};

#endif
