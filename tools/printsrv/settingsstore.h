// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SETTINGSSTORE_H
#define PRINTSRV_SETTINGSSTORE_H

#include "outcome.h"
#include "subcommand.h"

#include <QVariant>

namespace printsrv {

/**
 * The file in which settings last: an INI file with a section for each group, or, when its name ends in ".json", a JSON
 * array of descriptors.
 */
class SettingsStore
{
public:
    explicit SettingsStore(const QString &path);

    /** All descriptors of the file, those of the group "PRINTER" first; none when there is no file. */
    [[nodiscard]] Outcome<QVariantList> load() const;

    /**
     * Puts @p descriptors into the file and leaves its other entries as they are.
     *
     * A run that stops at any point, or a full disk, leaves the file before it or the new one. On failure standard
     * error says why, and the file is as it was.
     */
    [[nodiscard]] ExitCode save(const QVariantList &descriptors) const;

private:
    bool isJson() const;
    Outcome<QByteArray> content() const;
    Outcome<QByteArray> merged(const QVariantList &descriptors) const;

    QString m_path;
};

} // namespace printsrv

#endif
