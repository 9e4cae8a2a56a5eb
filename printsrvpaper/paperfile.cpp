// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "paperfile.h"

#include "paperlog.h"
#include "picturewriters.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <new>

namespace {

using Writer = QByteArray (*)(const QImage &);

Writer writerFor(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("png")) {
        return PaperFile::toPng;
    }
    if (suffix == QLatin1String("pdf")) {
        return PaperFile::toPdf;
    }
    return suffix == QLatin1String("svg") ? PaperFile::toSvg : nullptr;
}

QByteArray guarded(Writer writer, const QImage &picture)
{
    try {
        return picture.isNull() ? QByteArray() : writer(picture);
    } catch (const std::bad_alloc &) {
        return {};
    }
}

QByteArray pngBytes(const QImage &picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return printsrv::blackOnWhite(picture).save(&buffer, "PNG") ? bytes : QByteArray();
}

bool fail(const QString &path, const QString &reason)
{
    qCWarning(printsrv::paperLog).noquote() << QStringLiteral("Picture \"%1\" is not written: %2").arg(path, reason);
    return false;
}

} // namespace

QByteArray PaperFile::toPng(const QImage &picture)
{
    return guarded(pngBytes, picture);
}

QByteArray PaperFile::toPdf(const QImage &picture)
{
    return guarded(printsrv::pdfBytes, picture);
}

QByteArray PaperFile::toSvg(const QImage &picture)
{
    return guarded(printsrv::svgBytes, picture);
}

QByteArray PaperFile::toBytes(const QImage &picture, const QString &path)
{
    const Writer writer = writerFor(path);
    return writer == nullptr ? QByteArray() : writer(picture);
}

bool PaperFile::save(const QImage &picture, const QString &path)
{
    if (writerFor(path) == nullptr) {
        return fail(path, QStringLiteral("its suffix is not png, pdf or svg"));
    }
    const QByteArray bytes = toBytes(picture, path);
    if (bytes.isEmpty()) {
        return fail(path, QStringLiteral("there is no picture"));
    }
    QSaveFile file(path);
    const bool isWritten
        = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush() && file.commit();
    return isWritten || fail(path, file.errorString());
}

bool PaperFile::saveOutput(const QImage &picture, PrintSrvSettings &settings, int number)
{
    const QString path = settings.pngOutputFile(number);
    // A folder that cannot be made shows when the file is opened.
    (void)QDir().mkpath(QFileInfo(path).path());
    return save(picture, path);
}
