// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "descriptorlist.h"

#include "jsontext.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace printsrv {

QString groupOf(const QVariantMap &descriptor)
{
    return descriptor.value(QStringLiteral("group")).toString();
}

QString keyOf(const QVariantMap &descriptor)
{
    return descriptor.value(QStringLiteral("key")).toString();
}

QVariant valueOf(const QVariantMap &descriptor)
{
    return descriptor.value(QStringLiteral("value"));
}

QVariantMap makeDescriptor(const QString &group, const QString &key, const QVariant &value)
{
    return {{QStringLiteral("group"), group}, {QStringLiteral("key"), key}, {QStringLiteral("value"), value}};
}

int indexOf(const QVariantList &list, const QString &group, const QString &key)
{
    for (int i = 0; i < list.size(); ++i) {
        const QVariantMap descriptor = list.at(i).toMap();
        if (groupOf(descriptor) == group && keyOf(descriptor) == key) {
            return i;
        }
    }
    return -1;
}

Outcome<QVariantList> descriptorsFromJson(const QByteArray &json)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        return jsonFailure(json, error);
    }
    if (!document.isArray()) {
        return Failure{QStringLiteral("no descriptor list: it is a JSON array of {\"group\", \"key\", \"value\"}")};
    }
    return document.toVariant().toList();
}

QByteArray descriptorsToJson(const QVariantList &list)
{
    QByteArrayList lines;
    for (const QVariant &element : list) {
        const QJsonObject object = QJsonObject::fromVariantMap(element.toMap());
        lines.append("  " + QJsonDocument(object).toJson(QJsonDocument::Compact));
    }
    return lines.isEmpty() ? QByteArrayLiteral("[]\n") : "[\n" + lines.join(",\n") + "\n]\n";
}

} // namespace printsrv
