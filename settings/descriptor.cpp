// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "descriptor.h"

namespace printsrv {

Descriptor Descriptor::fromMap(const QVariantMap &map)
{
    return {map.value(QStringLiteral("group")).toString(), map.value(QStringLiteral("key")).toString(),
            map.value(QStringLiteral("value")), map.contains(QStringLiteral("group"))};
}

QVariantMap Descriptor::toMap() const
{
    return {{QStringLiteral("group"), group}, {QStringLiteral("key"), key}, {QStringLiteral("value"), value}};
}

} // namespace printsrv
