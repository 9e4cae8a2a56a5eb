// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "documentcopy.h"

#include "inputfile.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QJsonDocument>

namespace printsrv {

namespace {

constexpr int DigestDigits = 40;

// Empty when the file does not begin with a checksum.
QByteArray digest(const QByteArray &checksumFile)
{
    // "sha1sum" puts a backslash before the digits when it had to write a file name with backslashes.
    const QByteArray digits = checksumFile.mid(checksumFile.startsWith('\\') ? 1 : 0, DigestDigits);
    const QByteArray bytes = QByteArray::fromHex(digits);
    return bytes.toHex() == digits.toLower() && digits.size() == DigestDigits ? bytes : QByteArray();
}

QString problemOf(const QByteArray &content, const QString &checksumFile)
{
    const Outcome<QByteArray> checksum = readInput(checksumFile);
    if (!checksum) {
        return QStringLiteral("its checksum file %1 is %2").arg(checksumFile, checksum.failure().text);
    }
    const QByteArray expected = digest(*checksum);
    if (expected.isEmpty()) {
        return QStringLiteral("its checksum file %1 does not begin with 40 hexadecimal digits").arg(checksumFile);
    }
    if (QCryptographicHash::hash(content, QCryptographicHash::Sha1) != expected) {
        return QStringLiteral("its content does not have the checksum that stands in %1").arg(checksumFile);
    }
    QJsonParseError error{};
    if (!QJsonDocument::fromJson(content, &error).isObject()) {
        return QStringLiteral("its content is no document: %1").arg(error.errorString());
    }
    return {};
}

} // namespace

bool DocumentCopy::isGood() const
{
    return problem.isEmpty();
}

DocumentCopy inspectCopy(const QString &path)
{
    if (!QFileInfo::exists(path)) {
        return {path, QStringLiteral("there is no such file"), {}, true};
    }
    const Outcome<QByteArray> content = readInput(path);
    if (!content) {
        return {path, content.failure().text, {}, false};
    }
    return {path, problemOf(*content, checksumPath(path)), *content, true};
}

QString backupPath(const QString &path)
{
    return path + QStringLiteral(".bak");
}

QString checksumPath(const QString &path)
{
    return path + QStringLiteral(".sha1");
}

QByteArray checksumLine(const QString &path, const QByteArray &content)
{
    QByteArray name = QFile::encodeName(QFileInfo(path).absoluteFilePath());
    const bool isEscaped = name.contains('\\') || name.contains('\n') || name.contains('\r');
    name.replace('\\', "\\\\").replace('\n', "\\n").replace('\r', "\\r");
    const QByteArray digits = QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex();
    return (isEscaped ? QByteArrayLiteral("\\") : QByteArray()) + digits + "  " + name + '\n';
}

} // namespace printsrv
