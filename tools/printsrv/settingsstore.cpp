// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "settingsstore.h"

#include "descriptorlist.h"
#include "inifile.h"
#include "inputfile.h"
#include "outputwriter.h"
#include "report.h"

#include <printersettings.h>

#include <QFileInfo>
#include <QLockFile>
#include <QTemporaryFile>

#include <algorithm>

namespace printsrv {

namespace {

constexpr int LockTimeoutMs = 5000;

QVariantList mergedList(const QVariantList &former, const QVariantList &changes)
{
    QVariantList list = former;
    for (const QVariant &change : changes) {
        const QVariantMap descriptor = change.toMap();
        const int index = indexOf(list, groupOf(descriptor), keyOf(descriptor));
        if (index < 0) {
            list.append(descriptor);
        } else {
            list[index] = descriptor;
        }
    }
    return list;
}

// The printer must be known before the settings of its group are recognised.
void putPrinterFirst(QVariantList &list)
{
    std::stable_partition(list.begin(), list.end(),
                          [](const QVariant &element) { return groupOf(element.toMap()) == PrinterSettings::SECTION; });
}

// The lock does not say it.
QString reasonOfNoFile(const QString &folder)
{
    QTemporaryFile attempt(folder + QLatin1String("/.printsrv-XXXXXX"));
    const bool isWritten = attempt.open() && attempt.write("?") == 1 && attempt.flush();
    return isWritten ? QString() : QStringLiteral(": ") + attempt.errorString();
}

QString lockFailure(QLockFile::LockError error, const QString &path)
{
    const QString folder = QFileInfo(path).path();
    if (error == QLockFile::LockFailedError) {
        return QStringLiteral("another command has been writing it for %1 seconds").arg(LockTimeoutMs / 1000);
    }
    return QFileInfo(folder).isDir()
        ? QStringLiteral("nothing can be written into the folder '%1'").arg(folder) + reasonOfNoFile(folder)
        : QStringLiteral("there is no folder '%1'").arg(folder);
}

} // namespace

SettingsStore::SettingsStore(const QString &path)
    : m_path(path)
{
}

bool SettingsStore::isJson() const
{
    return m_path.endsWith(QLatin1String(".json"), Qt::CaseInsensitive);
}

Outcome<QByteArray> SettingsStore::content() const
{
    return QFileInfo::exists(m_path) ? readInput(m_path) : QByteArray(isJson() ? "[]" : "");
}

Outcome<QVariantList> SettingsStore::load() const
{
    const Outcome<QByteArray> bytes = content();
    if (!bytes) {
        return bytes.failure();
    }
    const Outcome<QVariantList> read = isJson() ? descriptorsFromJson(*bytes) : descriptorsFromIni(*bytes);
    if (!read) {
        return read.failure();
    }
    QVariantList list = *read;
    putPrinterFirst(list);
    return list;
}

Outcome<QByteArray> SettingsStore::merged(const QVariantList &descriptors) const
{
    const Outcome<QByteArray> bytes = content();
    if (!bytes || !isJson()) {
        return bytes ? mergedIni(*bytes, descriptors) : bytes;
    }
    const Outcome<QVariantList> former = descriptorsFromJson(*bytes);
    if (!former) {
        return former.failure();
    }
    return descriptorsToJson(mergedList(*former, descriptors));
}

ExitCode SettingsStore::save(const QVariantList &descriptors) const
{
    QLockFile lock(m_path + QStringLiteral(".lock"));
    if (!lock.tryLock(LockTimeoutMs)) {
        return complainAt({QStringLiteral("not written: ") + lockFailure(lock.error(), m_path)}, m_path);
    }
    const Outcome<QByteArray> bytes = merged(descriptors);
    if (!bytes) {
        return complainAt(bytes.failure(), m_path);
    }
    return writeOutput(m_path, *bytes);
}

} // namespace printsrv
