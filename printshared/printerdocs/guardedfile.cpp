// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "guardedfile.h"

#include "checksumfile.h"
#include "checksumprogram.h"
#include "printerdocslog.h"
#include "replacedfile.h"
#include "savelock.h"

#include <boundedread.h>

#include <QFile>
#include <QFileInfo>
#include <QVector>

#include <climits>
#include <cstdlib>
#include <unistd.h>

namespace printsrv::guardedfile {

using replacedfile::removeRemains;
using replacedfile::replaceFile;

namespace {

constexpr int LongestSave = 4; // times that of a program: two that do not answer, and as long for the disk

QString backupOf(const QString &path)
{
    return path + QLatin1String(".bak");
}

// Without it, power cuts in the street lost documents.
void syncDisk()
{
    if (std::system("sync") != 0) {
        ::sync();
    }
}

// The line for the sum's file of the file; as the library writes it when the program does not.
QByteArray sumLine(const QString &path, const QByteArray &digest, int programTimeoutMs)
{
    const QByteArray printed = runChecksumProgram(path, programTimeoutMs);
    if (checksumfile::digestIn(printed) == digest) {
        return printed;
    }
    qCWarning(printerDocsLog) << "The program sha1sum gave no sum of" << path << "and the library writes it instead";
    return checksumfile::line(path, digest);
}

// False when the file could not be replaced and is what it was.
bool writeSummed(const QString &path, const QByteArray &bytes, int programTimeoutMs)
{
    if (!replaceFile(path, bytes)) {
        return false;
    }
    const QByteArray line = sumLine(path, checksumfile::digestOf(bytes), programTimeoutMs);
    static_cast<void>(replaceFile(checksumfile::pathFor(path), line)); // reading back tells
    syncDisk();
    return true;
}

bool isSameAndGood(const Content &content, const QByteArray &bytes)
{
    return content.state == EState::Good && content.bytes == bytes;
}

// Replacing a file and its sum are two steps, between which the file is not good. So before the main file is touched,
// its content must stand in the backup.
bool keepMainInBackup(const QString &path)
{
    const Content main = readSummed(path);
    const QString backup = backupOf(path);
    if (main.state != EState::Good || isSameAndGood(readSummed(backup), main.bytes)) {
        return true;
    }
    const QByteArray line = checksumfile::line(backup, checksumfile::digestOf(main.bytes));
    if (!replaceFile(backup, main.bytes) || !replaceFile(checksumfile::pathFor(backup), line)) {
        return false;
    }
    syncDisk();
    return readSummed(backup).state == EState::Good;
}

Content unusable(const QString &problem)
{
    return {EState::Unusable, QByteArray(), problem};
}

struct Rejected
{
    QString path;
    QString problem;
};

// The content of the main file, or of the backup when that is not good; and which files are there and unusable.
Content readEither(const QString &main, QVector<Rejected> &rejected)
{
    rejected.clear();
    for (const QString &path : {main, backupOf(main)}) {
        const Content content = readSummed(path);
        if (content.state == EState::Good) {
            return content;
        }
        if (content.state == EState::Unusable) {
            rejected.append({path, content.problem});
        }
    }
    return Content();
}

// Names that would lead to another file than the one meant, or whose sums could not be written. Empty when it is none.
QString problemOfName(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    if (path.contains(QChar::Null) || QFile::decodeName(name) != path) {
        return QStringLiteral("whose name the system cannot have");
    }
    const qint64 longest = name.size() - name.lastIndexOf('/') - 1 + qint64(sizeof(".bak.sha1")) - 1;
    return longest > NAME_MAX ? QStringLiteral("whose name leaves no room for \".bak.sha1\"") : QString();
}

void saveLocked(const QString &main, const QByteArray &bytes, int programTimeoutMs)
{
    const QString backup = backupOf(main);
    const bool isReplaced = keepMainInBackup(main) && writeSummed(main, bytes, programTimeoutMs);
    // A backup that is the only good file stays as it is: while it is replaced nothing could be loaded.
    const bool isBackupFree = !isReplaced && readSummed(backup).state != EState::Good;
    if (readSummed(main).state == EState::Good || isBackupFree) {
        writeSummed(backup, bytes, programTimeoutMs);
    }
}

} // namespace

Content readSummed(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        return Content();
    }
    const QByteArray expected = checksumfile::readDigest(path);
    if (expected.isEmpty()) {
        return unusable(QStringLiteral("its checksum file is missing or unreadable"));
    }
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        return unusable(info.isFile() ? file.errorString() : QStringLiteral("it is no regular file"));
    }
    const QByteArray bytes = readBounded(file, LargestBytes);
    if (bytes.size() > LargestBytes) {
        return unusable(QStringLiteral("it is larger than 64 MiB"));
    }
    if (checksumfile::digestOf(bytes) != expected) {
        return unusable(QStringLiteral("it does not fit its checksum"));
    }
    return {EState::Good, bytes, QString()};
}

bool save(const QString &path, const QByteArray &bytes, int programTimeoutMs)
{
    const QString main = path.contains(QChar::Null) ? path : QFileInfo(path).absoluteFilePath();
    const QString problem = bytes.size() > LargestBytes ? QStringLiteral("of more than 64 MiB") : problemOfName(main);
    if (!problem.isEmpty()) {
        qCCritical(printerDocsLog) << "Cannot write" << main << qPrintable(problem);
        return false;
    }
    SaveLock lock(main, LongestSave * programTimeoutMs);
    if (!lock.isHeld()) {
        qCCritical(printerDocsLog) << "Cannot write" << main << qPrintable(lock.problem());
        return false;
    }
    if (lock.isAfterKilledSaver()) {
        syncDisk(); // what it left may be all that is good
    }
    saveLocked(main, bytes, programTimeoutMs);
    const bool isSaved = isSameAndGood(readSummed(main), bytes) && isSameAndGood(readSummed(backupOf(main)), bytes);
    lock.setComplete();
    return isSaved;
}

bool load(const QString &path, QByteArray &bytes)
{
    constexpr int MostReads = 4;
    const QString main = QFileInfo(path).absoluteFilePath();
    QVector<Rejected> rejected;
    Content content = readEither(main, rejected);
    // Beside a saver, both can be met while they are replaced. They never are at one time.
    for (int reads = 1; reads < MostReads && rejected.size() == 2; ++reads) {
        content = readEither(main, rejected);
    }
    for (const Rejected &file : qAsConst(rejected)) {
        qCWarning(printerDocsLog) << "Document file" << file.path << "is not used:" << qPrintable(file.problem);
    }
    if (content.state != EState::Good) {
        return false;
    }
    bytes = content.bytes;
    return true;
}

void remove(const QString &path)
{
    const QString main = QFileInfo(path).absoluteFilePath();
    SaveLock lock(main, LongestSave * ProgramTimeoutMs);
    for (const QString &file : {main, backupOf(main)}) {
        for (const QString &name : {file, checksumfile::pathFor(file)}) {
            removeRemains(name);
            QFile::remove(name);
        }
    }
    syncDisk();
    lock.setComplete();
}

} // namespace printsrv::guardedfile
