// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printerinfo.h"

#include "boundedread.h"

#include <QDebug>
#include <QFile>
#include <QJsonDocument>

namespace {

constexpr int LargestFileBytes = 16 * 1024 * 1024;

} // namespace

// Registered with the library's other initialisers; asked for once more here, so that the catalogue opens from a static
// initialiser that happens to run before it. The macro must stand outside every namespace.
static void registerCatalogue()
{
    Q_INIT_RESOURCE(devinfo);
}

QList<PrinterInfo> PrinterInfo::fromList(const QVariantList &list)
{
    QList<PrinterInfo> models;
    for (const QVariant &element : list) {
        models.append(PrinterInfo(element.toMap()));
    }
    return models;
}

QList<PrinterInfo> PrinterInfo::fromJson(const QByteArray &json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        qCritical() << error.errorString();
        return {};
    }
    return fromList(document.toVariant().toList());
}

QList<PrinterInfo> PrinterInfo::fromFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qCritical() << file.errorString();
        return {};
    }
    const QByteArray json = printsrv::readBounded(file, LargestFileBytes);
    if (json.size() > LargestFileBytes) {
        qCritical() << path << "is larger than 16 MiB, no catalogue of printer models";
        return {};
    }
    return fromJson(json);
}

QList<PrinterInfo> PrinterInfo::fromResources()
{
    registerCatalogue();
    return fromFile(RC_INFO_FILENAME);
}
