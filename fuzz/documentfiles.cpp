// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "support.h"
#include "targets.h"

#include <textprinterdocument.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

namespace {

const char *const Suffixes[] = {"", ".sha1", ".bak", ".bak.sha1"};
constexpr int FileCount = 4;

/** What a part of the input stands for: nothing or one "!" for no file, one "=" for the right sum of the part before.
 */
QByteArray content(const QList<QByteArray> &parts, int index)
{
    const QByteArray part = parts.value(index, "!");
    if (index % 2 == 1 && part == "=") {
        return QCryptographicHash::hash(parts.value(index - 1), QCryptographicHash::Sha1).toHex() + "  name\n";
    }
    return part;
}

/** The bytes that have to be read: of the first file that is there and fits its checksum. */
QByteArray goodBytes(const QList<QByteArray> &files)
{
    for (int index = 0; index < FileCount; index += 2) {
        const QByteArray sum = files.at(index + 1);
        const QByteArray digits = sum.mid(sum.startsWith('\\') ? 1 : 0, 40);
        const QByteArray digest = QCryptographicHash::hash(files.at(index), QCryptographicHash::Sha1);
        if (files.at(index) != "!" && sum != "!" && QByteArray::fromHex(digits) == digest) {
            return files.at(index);
        }
    }
    return {};
}

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (bytes == "!") {
        return !file.exists() || file.remove();
    }
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

void fuzz::documentFiles(const QByteArray &input)
{
    const LogCount log;
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("last.doc"));
    QList<QByteArray> files;
    for (int index = 0; index < FileCount; ++index) {
        files.append(content(input.split(Separator), index));
        require(write(path + QLatin1String(Suffixes[index]), files.last()), "the input can be kept in files");
    }
    const QByteArray expected = goodBytes(files);
    TextPrinterDocument read;
    const bool isRead = read.loadFromFile(path);
    QJsonParseError error;
    const QJsonDocument json = QJsonDocument::fromJson(expected, &error);
    require(isRead == (error.error == QJsonParseError::NoError), "a document is read when a file fits its checksum");
    require(!isRead || read == TextPrinterDocument(json.toVariant().toMap()), "the first good file is read");
    require(log.lines() <= 3, "each file is complained of once");
}
