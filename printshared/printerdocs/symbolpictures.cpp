// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "symbolpictures.h"

#include "printerdocslog.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QUrl>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int CellDots = 48;
constexpr mode_t OwnerOnly = S_IRWXU;
constexpr QChar WhiteSquare(0x25A1);

// Size and dots as one name: the same picture always has the same file.
QString pictureName(const MonochromeImage &image)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(QByteArray::number(image.width()) + 'x' + QByteArray::number(image.height()) + ':');
    hash.addData(image.image());
    return QString::fromLatin1(hash.result().toHex()) + QLatin1String(".png");
}

// Whether the path is an object of the kind given that we own, not a link to one.
bool isOurs(const QString &path, mode_t kind)
{
    struct stat status;
    return lstat(QFile::encodeName(path).constData(), &status) == 0 && (status.st_mode & S_IFMT) == kind
        && status.st_uid == geteuid();
}

// The system's text for what last failed, or for a thing that was planted.
QString failureText(bool isSystemError)
{
    return isSystemError ? qt_error_string(errno) : QStringLiteral("it is a link, no folder, or another user's");
}

// Empty when the system has no temporary folder, one that is configured and is not there: Qt gives no path then.
QString pictureFolder()
{
    const QString temporary = QDir::tempPath();
    return temporary.isEmpty() ? QString() : temporary + QLatin1String("/tempimg");
}

// Makes the folder ours alone; one warning when that cannot be.
bool prepareFolder(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    const bool isMade = mkdir(name.constData(), OwnerOnly) == 0 || errno == EEXIST;
    const bool isGood = isMade && isOurs(path, S_IFDIR);
    if (isGood && chmod(name.constData(), OwnerOnly) == 0) {
        return true;
    }
    qCWarning(printsrv::printerDocsLog) << "Cannot use the folder of symbol pictures" << path
                                        << failureText(!isMade || isGood);
    return false;
}

bool writePicture(const QString &path, const QImage &picture)
{
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && picture.save(&file, "PNG") && file.flush() && file.commit()) {
        return true;
    }
    qCWarning(printsrv::printerDocsLog) << "Cannot write the symbol picture" << path << file.errorString();
    return false;
}

} // namespace

printsrv::SymbolPictures::SymbolPictures(const SpecialCharacters &symbols)
    : m_symbols(symbols)
{
}

const QString &printsrv::SymbolPictures::html(int code)
{
    QString &html = m_html.at(static_cast<std::size_t>(code - FirstSymbolCode));
    if (html.isEmpty()) {
        html = pictureHtml(code);
    }
    return html;
}

QString printsrv::SymbolPictures::pictureHtml(int code)
{
    const QString folder = pictureFolder();
    const QString path = folder + QLatin1Char('/') + pictureName(m_symbols.getImage(code, CellDots, CellDots));
    if (m_isBad) {
        return WhiteSquare;
    }
    m_isBad = !prepareFolder(folder)
        || (!isOurs(path, S_IFREG) && !writePicture(path, m_symbols.getPngImage(code, CellDots, CellDots)));
    if (m_isBad) {
        return WhiteSquare;
    }
    const QString url = QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
    return QLatin1String("<img src=\"") + url.toHtmlEscaped() + QLatin1String("\" width=\"10\" height=\"10\">");
}
