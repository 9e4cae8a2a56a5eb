// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef ORBEKEXTLIB_INITCONFIG_H
#define ORBEKEXTLIB_INITCONFIG_H

#include <QString>

/**
 * The terminal's system configuration: the folders that its programs work in.
 *
 * Read once, at construction, from an INI file in UTF-8 with the section `[paths]`:
 *
 *     [paths]
 *     workDir=/var/lib/orbek
 *     dataDir=/srv/orbek
 *
 * The file that was read last is kept in mind, so that a further object costs one look at it: it is read again when its
 * path, its identity, its size or one of its times is another, when its last change is less than 100 ms ago, and when
 * it gave a warning.
 *
 * Reentrant.
 */
class Q_DECL_EXPORT InitConfig
{
public:
    /**
     * Reads the file @p path. A missing file, section or key, or an empty value, gives the default of each accessor
     * without a word; a file that cannot be read or is no INI file gives the defaults and one warning.
     */
    explicit InitConfig(const QString &path);
    virtual ~InitConfig();

    /** The work folder, key "workDir", as written in the file; "/var/lib/orbek" by default. Never empty. */
    QString workDir() const;

    /** The data folder, key "dataDir", as written in the file; workDir() by default. Never empty. */
    virtual QString dataDir() const;

private:
    QString m_workDir;
    QString m_dataDir;
};

#endif
