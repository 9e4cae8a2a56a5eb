// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "initconfig.h"

#include "logging.h"

#include <QDateTime>
#include <QFile>
#include <QMutex>
#include <QSettings>

#include <tuple>

#include <sys/stat.h>

using namespace orbekext;

namespace {

struct Folders
{
    QString workDir;
    QString dataDir;
};

/** The file that was read last and what stood in it. */
struct ReadFile
{
    QString path;
    struct stat version;
    Folders folders;
};

// Not function-local: a static object of the program that reads a file last would find them destroyed.
QBasicMutex lastReadMutex;
ReadFile lastRead; // clazy:exclude=non-pod-global-static

qint64 milliseconds(const timespec &time)
{
    return qint64(time.tv_sec) * 1000 + time.tv_nsec / 1000000;
}

bool isSameVersion(const struct stat &one, const struct stat &other)
{
    const auto version = [](const struct stat &file) {
        return std::make_tuple(file.st_dev, file.st_ino, file.st_size, file.st_mtim.tv_sec, file.st_mtim.tv_nsec,
                               file.st_ctim.tv_sec, file.st_ctim.tv_nsec);
    };
    return version(one) == version(other);
}

/** False for a file that changed just now: a second change may get the same time, as file times advance in steps. */
bool hasSettled(const struct stat &file)
{
    constexpr qint64 LongestStepMs = 100;
    return QDateTime::currentMSecsSinceEpoch() - milliseconds(file.st_ctim) >= LongestStepMs;
}

QString readPath(const QSettings &settings, const QString &key, const QString &defaultPath)
{
    // QSettings takes a comma outside quotes for a list.
    const QString path = settings.value(key).toStringList().join(QLatin1Char(','));
    return path.isEmpty() ? defaultPath : path;
}

bool readFile(const QString &path, Folders &folders)
{
    QSettings settings(path, QSettings::IniFormat);
    settings.setIniCodec("UTF-8");
    folders.workDir = readPath(settings, QStringLiteral("paths/workDir"), QStringLiteral("/var/lib/orbek"));
    folders.dataDir = readPath(settings, QStringLiteral("paths/dataDir"), folders.workDir);
    if (settings.status() != QSettings::NoError) {
        const char *reason = settings.status() == QSettings::AccessError ? "cannot be read" : "is no INI file";
        qCWarning(LOG) << "Configuration" << path << reason << "and the default folders are used";
    }
    return settings.status() == QSettings::NoError;
}

/** Reads the file, unless it is the one read last and has not changed since. */
Folders foldersOf(const QString &path)
{
    struct stat version = {};
    const bool isKnown = stat(QFile::encodeName(path).constData(), &version) == 0;
    const QMutexLocker locker(&lastReadMutex);
    if (isKnown && lastRead.path == path && isSameVersion(lastRead.version, version)) {
        return lastRead.folders;
    }
    Folders folders;
    if (readFile(path, folders) && isKnown && hasSettled(version)) {
        lastRead = {path, version, folders};
    }
    return folders;
}

} // namespace

InitConfig::InitConfig(const QString &path)
{
    const Folders folders = foldersOf(path);
    m_workDir = folders.workDir;
    m_dataDir = folders.dataDir;
}

InitConfig::~InitConfig() = default;

QString InitConfig::workDir() const
{
    return m_workDir;
}

QString InitConfig::dataDir() const
{
    return m_dataDir;
}
