// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "outputwriter.h"

#include "report.h"

#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <unistd.h>

namespace printsrv {

namespace {

ExitCode fileFailure(const QString &path, const QString &reason)
{
    complain(QStringLiteral("%1: not written: %2").arg(path, reason));
    return ExitWrongInput;
}

// Goes on after a short write, so that the system says why it took no more.
bool writeAll(QFileDevice &file, const QByteArray &bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 written = file.write(bytes.constData() + done, bytes.size() - done);
        if (written <= 0) {
            return false;
        }
        done += written;
    }
    // A buffer that a full disk takes in part only shows here, not in QSaveFile::commit().
    return file.flush();
}

ExitCode writeDevice(const QString &path, const QByteArray &bytes)
{
    QFile device(path);
    const bool isWritten = device.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && writeAll(device, bytes);
    return isWritten ? ExitDone : fileFailure(path, device.errorString());
}

ExitCode writeFile(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    const bool isWritten = file.open(QIODevice::WriteOnly) && writeAll(file, bytes) && file.commit();
    return isWritten ? ExitDone : fileFailure(path, file.errorString());
}

EWriteResult refusedWrite(int error)
{
    if (error == EPIPE) {
        return EWriteResult::ReaderGone;
    }
    complain(QStringLiteral("standard output: not written: ") + qt_error_string(error));
    return EWriteResult::Failed;
}

} // namespace

EWriteResult writeStandardOutput(const QByteArray &bytes)
{
    for (int done = 0; done < bytes.size();) {
        const ssize_t written
            = ::write(STDOUT_FILENO, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (written >= 0) {
            done += static_cast<int>(written);
        } else if (errno != EINTR) {
            return refusedWrite(errno);
        }
    }
    return EWriteResult::Written;
}

ExitCode writeOutput(const QString &path, const QByteArray &bytes)
{
    if (path.isEmpty() || path == QLatin1String("-")) {
        return writeStandardOutput(bytes) == EWriteResult::Failed ? ExitWrongInput : ExitDone;
    }
    const QFileInfo target(path);
    if (target.exists() && !target.isFile() && !target.isDir()) {
        return writeDevice(path, bytes);
    }
    return writeFile(path, bytes);
}

} // namespace printsrv
