// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "replacedfile.h"

#include "printerdocslog.h"

#include <QCryptographicHash>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace printsrv::replacedfile {

namespace {

constexpr mode_t Permissions = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr char NewSuffix[] = ".new";

// The file that is to be replaced, if there is one.
struct OldFile
{
    bool exists;
    struct stat status;
};

OldFile oldFile(const fs::path &path)
{
    OldFile old{false, {}};
    old.exists = ::stat(path.c_str(), &old.status) == 0;
    return old;
}

// The renamed file takes the place of anything, but for a folder, whatever the rights of that are.
bool mayBeReplaced(const fs::path &path, const OldFile &old)
{
    std::error_code error;
    return old.exists ? S_ISREG(old.status.st_mode) && ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0
                      : fs::symlink_status(path, error).type() == fs::file_type::not_found;
}

bool takeRights(int descriptor, const OldFile &old)
{
    return !old.exists
        || (::fchown(descriptor, old.status.st_uid, old.status.st_gid) == 0
            && ::fchmod(descriptor, old.status.st_mode & Permissions) == 0);
}

bool writeAll(int descriptor, const QByteArray &bytes)
{
    for (int written = 0; written < bytes.size();) {
        const ssize_t count = ::write(descriptor, bytes.constData() + written, size_t(bytes.size() - written));
        if (count < 0 && errno != EINTR) {
            return false;
        }
        written += int(qMax(count, ssize_t(0)));
    }
    return true;
}

// The descriptor's own error is the one to tell; that of closing it counts only when there was none.
bool closeAfter(bool isDone, int descriptor)
{
    const int error = errno;
    const bool isClosed = ::close(descriptor) == 0;
    errno = isDone ? errno : error;
    return isDone && isClosed;
}

bool writeNewFile(const fs::path &path, const OldFile &old, const QByteArray &bytes)
{
    constexpr mode_t Default = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP | S_IROTH | S_IWOTH;
    const mode_t mode = old.exists ? old.status.st_mode & S_IRWXU : Default;
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    return descriptor >= 0 && closeAfter(takeRights(descriptor, old) && writeAll(descriptor, bytes), descriptor);
}

} // namespace

// Not by Qt, whose names of links that are no valid text lead elsewhere.
fs::path linkTarget(const QString &path)
{
    constexpr int MostLinks = 40; // as the system
    std::error_code error;
    fs::path target(QFile::encodeName(path).toStdString());
    for (int i = 0; i < MostLinks && fs::is_symlink(target, error); ++i) {
        target = target.parent_path() / fs::read_symlink(target, error);
    }
    return target;
}

fs::path hiddenName(const fs::path &path, const char *suffix)
{
    constexpr int Digits = 16;
    const QByteArray name = QByteArray::fromStdString(path.filename().string());
    const QByteArray digits = QCryptographicHash::hash(name, QCryptographicHash::Sha1).toHex().left(Digits);
    return path.parent_path() / (".printsrv-" + digits.toStdString() + suffix);
}

bool replaceFile(const QString &path, const QByteArray &bytes)
{
    const fs::path target = linkTarget(path);
    const OldFile old = oldFile(target);
    if (!mayBeReplaced(target, old)) {
        qCCritical(printerDocsLog) << "Cannot write" << path << "which is no regular file or may not be written";
        return false;
    }
    const fs::path newFile = hiddenName(target, NewSuffix);
    removeRemains(path);
    // Not synced here: one "sync" does that for a file and its sum, and until it has, the other copy is good.
    if (writeNewFile(newFile, old, bytes) && std::rename(newFile.c_str(), target.c_str()) == 0) {
        return true;
    }
    const QString reason = qt_error_string(errno);
    qCCritical(printerDocsLog) << "Cannot write" << path << reason;
    removeRemains(path);
    return false;
}

void removeRemains(const QString &path)
{
    ::unlink(hiddenName(linkTarget(path), NewSuffix).c_str());
}

} // namespace printsrv::replacedfile
